// Searching and replacing by expressions, and what is shown of a search while it is typed.

#include "fakes/FakeSearch.h"
#include "fakes/Patience.h"
#include "search/BesideMatch.h"
#include "search/ItemSearch.h"
#include "search/TypedFind.h"

namespace nib::test::regex_find_test {

using Texts = std::vector<Text>;
using std::chrono::milliseconds;

const Text kEndless = u"x\r\n" + Text(60, u'a') + u"c\r\nx";

struct RegexFindTest : testing::Test {
    mvDocument& Open(TextView text, TextView find, TextView with = {})
    {
        mvDocument& document = search.Add(text);
        search.OpenReplace(find, with);
        search.Dialog().regex = true;
        search.Dialog().matchCase = true;
        return document;
    }
    Text TextOf(mvDocument& document) { return search.View(document).GetText(); }

    TestSearch search;
};

TEST_F(RegexFindTest, ReplaceAllIsUndoneStepByStepAndAtOnce)
{
    const struct {
        Text find, with, text, wanted;
        int32_t count;
    } rows[] = {{u"(\\w)(\\d+)", u"$2$1", u"a1 b22\r\nc333", u"1a 22b\r\n333c", 3},
                {u"^", u"* ", u"a\r\n\r\nb", u"* a\r\n* \r\n* b", 3},
                {u"$", u";", u"a\r\nb", u"a;\r\nb;", 2},
                {u", *", u"\\n", u"a, b,c\r\nd,e", u"a\r\nb\r\nc\r\nd\r\ne", 3},
                {u"(a+)", u"", u"aabaa\r\naa", u"b\r\n", 3},
                {u"a*", u"x", u"aab", u"xxbx", 3}};
    for (const auto& row : rows) {
        mvDocument& document = Open(row.text, row.find, row.with);
        EXPECT_EQ(search.engine.ReplaceAll(), row.count) << ToUtf8(row.find);
        EXPECT_EQ(ToUtf8(TextOf(document)), ToUtf8(row.wanted));
        for (int32_t i = 0; i < row.count; ++i) document.Undo();
        EXPECT_EQ(ToUtf8(TextOf(document)), ToUtf8(row.text)) << ToUtf8(row.find);
        for (int32_t i = 0; i < row.count; ++i) document.Redo();
        EXPECT_EQ(ToUtf8(TextOf(document)), ToUtf8(row.wanted)) << ToUtf8(row.find);
        document.UndoSweep();
        EXPECT_EQ(ToUtf8(TextOf(document)), ToUtf8(row.text)) << ToUtf8(row.find);
        search.Said();
    }
}

TEST_F(RegexFindTest, StepsReplaceOneByOne)
{
    mvDocument& document = Open(u"a1 a22\r\nb", u"a(\\d*)", u"<$1>");
    search.engine.ReplaceNext();
    EXPECT_EQ(search.Selection(document), std::make_pair(Position{0, 0}, Position{2, 0}));
    search.engine.ReplaceNext();
    EXPECT_EQ(search.Selection(document), std::make_pair(Position{4, 0}, Position{7, 0}));
    EXPECT_FALSE(search.engine.ReplaceNext());
    EXPECT_EQ(TextOf(document), u"<1> <22>\r\nb");
    search.Said();
    search.View(document).SetCaret({});
    search.Dialog().findText = u"^";
    for (const Position wanted : {Position{0, 1}, Position{0, 1}}) {
        search.engine.FindNext();
        EXPECT_EQ(search.View(document).Caret(), wanted) << "an empty hit at the caret is not the next one";
    }
    EXPECT_EQ(search.Said().size(), 1U);
}

TEST_F(RegexFindTest, InTheSelection)
{
    mvDocument& document = Open(u"a1\r\na2 a3\r\na4", u"a(\\d)", u"[$1]");
    search.Select(document, {1, 0}, {2, 1});
    search.Dialog().lookIn = LookIn::Selection;
    EXPECT_EQ(search.engine.ReplaceAll(), 1);
    EXPECT_EQ(search.Said(), Texts{u"1 occurrences replaced."});
    EXPECT_EQ(TextOf(document), u"a1\r\n[2] a3\r\na4");
    EXPECT_EQ(search.Selection(document), std::make_pair(Position{1, 0}, Position{3, 1}));
}

TEST_F(RegexFindTest, WhatTakesForEverChangesNothing)
{
    Patience patience("four searches");
    mvDocument& document = Open(kEndless, u"x|(a+)+b", u"y");
    const Texts told{u"The search was stopped: the expression takes too much time."};
    EXPECT_EQ(search.engine.ReplaceAll(), 0);
    EXPECT_EQ(search.Said(), told);
    EXPECT_EQ(search.engine.FindAll(FindMode::Bookmark), 0);
    EXPECT_EQ(search.View(document).Document().BookmarkCount(), 0);
    EXPECT_EQ(search.engine.FindAll(FindMode::List), 0);
    EXPECT_EQ(search.results.lines.size(), 0U);
    search.Said();
    EXPECT_EQ(TextOf(document), kEndless);
    EXPECT_FALSE(document.CanUndo());
}

TEST_F(RegexFindTest, FaultsAreTold)
{
    mvDocument& document = Open(u"a(", u"a(", u"b");
    EXPECT_EQ(search.engine.ReplaceAll(), 0);
    EXPECT_EQ(search.Said(), Texts{u"The regular expression is faulty.\nCharacter 2: A parenthesis has no partner."});
    search.Dialog().findText = u"a";
    search.Dialog().replaceText = u"$1";
    EXPECT_EQ(search.engine.ReplaceAll(), 0);
    EXPECT_EQ(search.Said(), Texts{u"The replacement names a group that the expression does not have."});
    EXPECT_EQ(TextOf(document), u"a(");
}

TEST_F(RegexFindTest, InTheTextOfAnItem)
{
    const TextPattern pattern(u"(\\d+)$", {.regex = true});
    const Text text = u"a 1\r\nb 22\r\n3 c";
    const TextHits found = FindInText(pattern, text, 3, 10);
    EXPECT_EQ(found.hits, 2);
    EXPECT_EQ(found.lines, (std::vector<FoundLine>{{0, 2, 1, u"a 1"}, {1, 2, 2, u"b 22"}}));
    EXPECT_EQ(ReplaceInText(pattern, text, u"<$1>", 3).text, u"a <1>\r\nb <22>\r\n3 c");
}

TEST(HitLightsTest, CountsAndLights)
{
    TestSearch search;
    mvDocument& document = search.Add(u"ab\r\n-\r\nAB ab");
    SourceDocument& text = search.View(document).Document();
    search.OpenFind(u"ab");
    search.lights.Show();
    EXPECT_EQ(search.lights.Count(), (HitCount{.all = 3, .done = true}));
    EXPECT_EQ(text.Lit().lines, (std::vector<int32_t>{0, 2}));
    search.engine.FindNext();
    search.engine.FindNext();
    search.program.clock.Advance(milliseconds(200));
    EXPECT_EQ(search.lights.Count().at, 2);
    text.InsertText({0, 1}, u"ab");
    search.program.clock.Advance(milliseconds(2000));
    EXPECT_EQ(search.lights.Count().all, 4);
    search.Dialog().regex = true;
    search.Dialog().findText = u"a(";
    search.lights.Show();
    EXPECT_EQ(search.lights.Count().fault, u"Character 2: A parenthesis has no partner.");
    EXPECT_FALSE(text.Lit().pattern);
    search.Dialog().findText = u"^a.";
    search.Dialog().lookIn = LookIn::Selection;
    search.Select(document, {0, 1}, {1, 2});
    search.lights.Show();
    EXPECT_EQ(search.lights.Count().all, 1) << "of the selected text";
    mvDocument& other = search.Add(u"ab");
    search.Dialog().lookIn = LookIn::Document;
    search.program.clock.Advance(milliseconds(200));
    EXPECT_FALSE(text.Lit().pattern);
    EXPECT_TRUE(search.View(other).Document().Lit().pattern) << "it is in front now";
    search.View(other).Document().SetModified(false);
    other.FileClose(false);
    search.program.clock.Advance(milliseconds(200));
    search.lights.Hide();
    EXPECT_EQ(search.program.clock.RunningTimers(), 0U);
}

TEST(TypedFindTest, FollowsWhatIsTyped)
{
    using Outcome = TypedFind::Outcome;
    TestSearch search;
    mvDocument& document = search.Add(u"end abc\r\nab\r\nabcd", {4, 0});
    TypedFind find(search.program.program.Services(), search.engine);
    ASSERT_TRUE(find.Begin());
    const auto type = [&](TextView text) {
        search.Dialog().findText = text;
        return find.Typed();
    };
    const auto selected = [&] { return search.Selection(document); };
    EXPECT_EQ(type(u"ab"), Outcome::Found);
    EXPECT_EQ(selected(), std::make_pair(Position{4, 0}, Position{6, 0}));
    EXPECT_EQ(type(u"abcd"), Outcome::Found);
    EXPECT_EQ(selected().first, (Position{0, 2}));
    EXPECT_EQ(type(u"abc"), Outcome::Found) << "from where it began, not from the last hit";
    EXPECT_EQ(selected().first, (Position{4, 0}));
    EXPECT_EQ(type(u"abx"), Outcome::NotFound);
    EXPECT_EQ(search.View(document).Caret(), (Position{4, 0}));
    EXPECT_EQ(type(u"end"), Outcome::Wrapped);
    type(u"ab");
    EXPECT_EQ(find.Step(false), Outcome::Found);
    EXPECT_EQ(selected().first, (Position{0, 1}));
    EXPECT_EQ(find.Step(true), Outcome::Found);
    EXPECT_EQ(find.Step(true), Outcome::Wrapped);
    EXPECT_EQ(selected().first, (Position{0, 2}));
    EXPECT_EQ(find.Step(false), Outcome::Wrapped);
    search.Dialog().regex = true;
    EXPECT_EQ(type(u"a["), Outcome::Faulty);
    EXPECT_EQ(search.program.boxes.Take().size(), 0U) << "nobody who types is asked anything";
    EXPECT_EQ(search.recent.ListItem(1), u"ab");
}

TEST(BesideMatchTest, LeavesTheMatchInSight)
{
    const ScreenArea screen{0, 0, 1280, 800};
    const struct {
        ScreenArea window, match, wanted;
    } rows[] = {{{100, 100, 400, 200}, {600, 100, 50, 16}, {100, 100, 400, 200}},
                {{100, 100, 400, 200}, {200, 150, 50, 16}, {100, 206, 400, 200}},
                {{100, 500, 400, 200}, {200, 650, 50, 16}, {100, 410, 400, 200}},
                {{100, 300, 400, 490}, {110, 400, 50, 16}, {200, 300, 400, 490}},
                {{-50, 700, 400, 200}, {900, 0, 50, 16}, {0, 600, 400, 200}},
                {{100, 100, 1200, 700}, {200, 150, 50, 16}, {80, 100, 1200, 700}}};
    for (const auto& row : rows) {
        const ScreenArea area = BesideMatch(row.window, row.match, screen);
        EXPECT_EQ(area, row.wanted) << area.left << " " << area.top;
    }
}

} // namespace nib::test::regex_find_test
