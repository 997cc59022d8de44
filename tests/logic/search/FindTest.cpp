// Stepping, listing and marking: where a walk goes, where it ends, what the user is told.

#include "fakes/FakeSearch.h"

#include <gtest/gtest.h>

namespace nib::test {
namespace {

using Ends = std::pair<Position, Position>;
using Texts = std::vector<Text>;

const Text kNotFound = u"Search text not found in document.";
const Text kNoMore = u"No more occurrences of search text found.";
const Text kAskDown =
    u"Search has reached the end of the document. Do you want to continue searching at the beginning?";
const Text kAskUp = u"Search has reached the beginning of the document. Do you want to continue searching at the end?";

TEST(CaretWordTest, Table)
{
    struct {
        Text line;
        int32_t column;
        Text word;
    } const rows[] = {{u"", 0, u""},
                      {u"AB CD", 0, u"AB"},
                      {u"AB CD", 1, u"AB"},
                      {u"AB CD", 2, u""},
                      {u"AB\tC", 2, u""},
                      {u"AB CD", 5, u"CD"},
                      {u"X.A_$9+1", 3, u"X.A_$9"},
                      {u"A+BC", 1, u"BC"},
                      {u"A+(BC", 1, u""},
                      {u"dé f", 0, u"d"},
                      {u"AB+", 3, u""},
                      {u"AB", 7, u""}};
    for (auto& row : rows) EXPECT_EQ(GetCaretWord(row.line, row.column), row.word) << ToUtf8(row.line) << row.column;
}

TEST(FindDialogTest, ComesUpAsTheDocumentSays)
{
    struct {
        Position anchor;
        Position caret;
        bool second;
        LookIn before;
        LookIn lookIn;
        Text findText;
        bool all;
        bool selection;
    } const rows[] = {
        {{}, {}, false, LookIn::Nothing, LookIn::Document, u"old", false, false},
        {{1, 0}, {1, 0}, false, LookIn::Selection, LookIn::Document, u"one", false, false},
        {{1, 0}, {1, 0}, true, LookIn::AllDocuments, LookIn::AllDocuments, u"one", true, false},
        {{1, 0}, {1, 0}, false, LookIn::AllDocuments, LookIn::Document, u"one", false, false},
        {{3, 0}, {3, 0}, false, LookIn::Nothing, LookIn::Document, u"old", false, false},
        {{4, 0}, {6, 0}, false, LookIn::Selection, LookIn::Document, u"tw", false, true},
        {{6, 0}, {4, 0}, true, LookIn::AllDocuments, LookIn::AllDocuments, u"tw", true, true},
        {{4, 0}, {1, 1}, true, LookIn::Document, LookIn::Selection, u"old", true, true},
    };
    for (auto& row : rows) {
        TestSearch search;
        if (row.second) search.Add(u"other");
        auto& document = search.Add(u"one two\r\nthree");
        search.Select(document, row.anchor, row.caret);
        search.Dialog().findText = u"old";
        search.Dialog().lookIn = row.before;
        ASSERT_TRUE(search.engine.Find());
        const FindDialog& state = search.Dialog();
        EXPECT_EQ(state.lookIn, row.lookIn) << row.anchor.col;
        EXPECT_EQ(state.findText, row.findText);
        EXPECT_EQ(state.allDocumentsEnabled, row.all);
        EXPECT_EQ(state.selectionEnabled, row.selection);
    }
}

TEST(FindDialogTest, ReplaceSearchesDownAndFindKeepsThat)
{
    TestSearch search;
    EXPECT_FALSE(search.engine.Find()) << "no document";
    search.Add(u"x");
    search.engine.SetSearchUp(true);
    ASSERT_TRUE(search.engine.Replace());
    EXPECT_EQ(search.Dialog().Caption(), u"Replace");
    EXPECT_FALSE(search.Dialog().up);
    EXPECT_FALSE(search.Dialog().upEnabled);
    ASSERT_TRUE(search.engine.Find());
    EXPECT_EQ(search.Dialog().Caption(), u"Find");
    EXPECT_FALSE(search.Dialog().up);
    EXPECT_TRUE(search.Dialog().upEnabled);
}

struct Step {
    Ends selected; ///< anchor and caret; equal ends for a step without a hit
    Texts said;
};

struct WalkRow {
    const char* name;
    Text text;
    Position caret;
    bool up;
    int16_t setting;
    std::vector<int32_t> answers;
    std::vector<Step> steps;
};

constexpr int32_t kYes = message_box::kAnswerYes;
constexpr int32_t kNo = message_box::kAnswerNo;

const WalkRow kWalks[] = {
    {"down from the top",
     u"ab\r\nab",
     {},
     false,
     0,
     {},
     {{{{0, 0}, {2, 0}}, {}}, {{{0, 1}, {2, 1}}, {}}, {{}, {kNoMore}}}},
    {"first line does not wrap", u"ab   cd", {5, 0}, false, 0, {}, {{{}, {kNotFound}}}},
    {"wraps when told to",
     u"-\r\nab\r\n-\r\n-",
     {0, 3},
     false,
     0,
     {kYes},
     {{{{0, 1}, {2, 1}}, {kAskDown}}, {{}, {kNoMore}}}},
    {"stays when told to", u"-\r\nab\r\n-\r\n-", {0, 3}, false, 0, {kNo}, {{{}, {kAskDown, kNotFound}}}},
    {"wraps and beeps", u"-\r\nab\r\n-\r\n-", {0, 3}, false, 1, {}, {{{{0, 1}, {2, 1}}, {}}}},
    {"wraps quietly", u"-\r\nab\r\n-\r\n-", {0, 3}, false, 2, {}, {{{{0, 1}, {2, 1}}, {}}}},
    {"up",
     u"ab ab\r\nab",
     {1, 1},
     true,
     0,
     {},
     {{{{2, 1}, {0, 1}}, {}}, {{{5, 0}, {3, 0}}, {}}, {{{2, 0}, {0, 0}}, {}}, {{}, {kNoMore}}}},
    {"up wraps", u"-\r\n-\r\nab", {0, 1}, true, 0, {kYes}, {{{{2, 2}, {0, 2}}, {kAskUp}}, {{}, {kNoMore}}}},
    {"up from the last line does not wrap", u"-\r\ncd ab", {2, 1}, true, 0, {}, {{{}, {kNotFound}}}},
    {"a wrap does not pass the start",
     u"-\r\nabab\r\n-",
     {2, 1},
     false,
     2,
     {},
     {{{{2, 1}, {4, 1}}, {}}, {{{0, 1}, {2, 1}}, {}}, {{}, {kNoMore}}}},
};

TEST(FindNextTest, Walks)
{
    for (const WalkRow& row : kWalks) {
        SCOPED_TRACE(row.name);
        TestSearch search;
        auto& document = search.Add(row.text, row.caret);
        search.Settings().SearchEOD = row.setting;
        search.OpenFind(u"ab");
        search.engine.SetSearchUp(row.up);
        for (int32_t answer : row.answers) search.program.boxes.Answer({answer});
        for (const Step& step : row.steps) {
            bool hit = step.selected.first != step.selected.second;
            EXPECT_EQ(search.engine.FindNext(), hit);
            if (hit) {
                EXPECT_EQ(search.Selection(document), step.selected);
            }
            EXPECT_EQ(search.Said(), step.said);
        }
        bool wrapped = row.steps.front().said.empty() && row.setting > 0;
        EXPECT_EQ(search.program.boxes.beeps, row.setting == 1 || !row.answers.empty() ? 1 : 0);
        if (wrapped) {
            EXPECT_TRUE(search.program.journal.Has(u"status Searched past end of document"));
        }
    }
}

TEST(FindNextTest, BoxesAreInformationAndQuestion)
{
    TestSearch search;
    search.Add(u"-\r\nx", {0, 1});
    search.OpenFind(u"ab");
    search.program.boxes.Answer({message_box::kAnswerCancel});
    search.engine.FindNext();
    EXPECT_EQ(search.program.boxes.Take(),
              (Boxes{Question(kAskDown, message_box::kYesNoCancel), {kNotFound, message_box::kInformation}}));
}

TEST(FindNextTest, EmptyTextAndNoDocumentAreSilent)
{
    TestSearch search;
    EXPECT_FALSE(search.engine.FindNext());
    search.Add(u"x");
    search.OpenFind(u"");
    EXPECT_FALSE(search.engine.FindNext());
    EXPECT_FALSE(search.engine.ReplaceNext());
    EXPECT_EQ(search.engine.ReplaceAll(), 0);
    EXPECT_EQ(search.engine.FindAll(FindMode::List), 0);
    EXPECT_EQ(search.engine.FindAll(FindMode::Bookmark), 0);
    EXPECT_EQ(search.recent.ListCount(), 0);
}

TEST(FindNextTest, GoesOnOnlyFromWhereTheHitLeftTheCaret)
{
    TestSearch search;
    auto& document = search.Add(u"ab\r\nab\r\nab\r\nab");
    search.OpenFind(u"ab");
    search.engine.FindNext();
    search.engine.FindNext();
    EXPECT_EQ(search.View(document).Caret(), (Position{2, 1}));
    search.View(document).SetCaret({0, 0});
    search.View(document).SetCaret({2, 1});
    EXPECT_TRUE(search.engine.FindNext()) << "away and back is no move";
    EXPECT_EQ(search.View(document).Caret(), (Position{2, 2}));
    search.View(document).SetCaret({0, 0});
    search.engine.FindNext();
    EXPECT_EQ(search.View(document).Caret(), (Position{2, 0}));
}

TEST(FindNextTest, SelectedMatchMovesOn)
{
    TestSearch search;
    auto& document = search.Add(u"ab ab");
    search.Select(document, {2, 0}, {0, 0});
    search.OpenFind(u"ab");
    search.Dialog().lookIn = LookIn::Document;
    EXPECT_TRUE(search.engine.FindNext());
    EXPECT_EQ(search.Selection(document), (Ends{{3, 0}, {5, 0}}));
}

TEST(FindNextTest, RangeFollowsEditsBelowTheHit)
{
    TestSearch search;
    auto& document = search.Add(u"-\r\nab\r\n-\r\nab", {0, 2});
    search.Settings().SearchEOD = 2;
    search.OpenFind(u"ab");
    search.engine.FindNext();
    ASSERT_EQ(search.View(document).Caret(), (Position{2, 3}));
    search.View(document).Document().InsertText({2, 3}, u"\r\nmore ab");
    search.View(document).SetCaret({2, 3});
    search.engine.FindNext();
    EXPECT_EQ(search.View(document).Caret(), (Position{7, 4}));
    search.engine.FindNext();
    EXPECT_EQ(search.View(document).Caret(), (Position{2, 1}));
}

TEST(FindNextTest, SelectionIsTheWholeWorld)
{
    TestSearch search;
    auto& document = search.Add(u"ab\r\nab ab\r\nxab\r\nab");
    search.Select(document, {1, 0}, {2, 2}); // ends within the hit of line 2
    search.OpenFind(u"ab");
    ASSERT_EQ(search.Dialog().lookIn, LookIn::Selection);
    std::vector<Position> carets;
    while (search.engine.FindNext()) carets.push_back(search.View(document).Caret());
    EXPECT_EQ(carets, (std::vector<Position>{{2, 1}, {5, 1}}));
    EXPECT_EQ(search.Said(), Texts{kNoMore});
    search.Select(document, {1, 0}, {0, 1});
    search.engine.SetSearchUp(true);
    EXPECT_FALSE(search.engine.FindNext());
    EXPECT_EQ(search.Said(), Texts{u"Search text not found in selection."});
}

TEST(FindNextTest, RulesGoToTheText)
{
    TestSearch search;
    auto& document = search.Add(u"xAB ab AB.1 AB");
    search.OpenFind(u"AB");
    search.Dialog().matchCase = search.Dialog().wholeWord = true;
    search.engine.FindNext();
    EXPECT_EQ(search.View(document).Caret(), (Position{14, 0}));
}

TEST(FindAllDocumentsTest, WrapsInTheFirstThenTakesTheOthersWhole)
{
    TestSearch search;
    auto& other = search.Add(u"ab other", {5, 0});
    auto& first = search.Add(u"-\r\nab\r\n-\r\nab", {0, 2});
    search.Settings().SearchEOD = 2;
    search.OpenFind(u"ab");
    search.Dialog().lookIn = LookIn::AllDocuments;
    std::vector<std::pair<int32_t, Position>> hits;
    while (search.engine.FindNext())
        hits.emplace_back(search.program.window.activeDocument,
                          search.View(*search.program.Documents().ById(search.program.window.activeDocument)).Caret());
    EXPECT_EQ(hits, (std::vector<std::pair<int32_t, Position>>{
                        {first.DocumentID(), {2, 3}}, {first.DocumentID(), {2, 1}}, {other.DocumentID(), {2, 0}}}));
    EXPECT_EQ(search.Said(), Texts{kNoMore});
    search.OpenFind(u"zz");
    EXPECT_FALSE(search.engine.FindNext());
    EXPECT_EQ(search.Said(), Texts{u"Search text not found in any document."});
}

TEST(FindListTest, OneLinePerSourceLineUnderHeaders)
{
    TestSearch search;
    auto& other = search.Add(u"x ab");
    auto& document = search.Add(u"ab ab\r\n-\r\nxAB{\\");
    search.OpenFind(u"ab");
    search.Dialog().lookIn = LookIn::AllDocuments;
    EXPECT_EQ(search.engine.FindAll(FindMode::List), 4);
    EXPECT_EQ(search.results.lines, (Texts{u"= Search Results", u"", u"# " + document.ListName(), u"0001 [ab] ab",
                                           u"0003 x[AB]{\\", u"", u"# " + other.ListName(), u"0001 x [ab]"}));
    EXPECT_EQ(search.results.shown, 1);
    EXPECT_FALSE(search.program.window.waiting);
    EXPECT_EQ(search.engine.FindList(), Texts{u"ab"});
}

TEST(FindListTest, NumbersKeepFourDigits)
{
    TestSearch search;
    Text text;
    for (int i = 1; i < 12345; ++i) text += u"\r\n";
    search.Add(text + u"ab");
    search.OpenFind(u"ab");
    EXPECT_EQ(search.engine.FindAll(FindMode::List), 1);
    EXPECT_EQ(search.results.lines.back(), u"2345 [ab]");
}

TEST(FindListTest, GoesOnWithTheWalkUnderWay)
{
    TestSearch search;
    search.Add(u"ab\r\nab\r\nab");
    search.OpenFind(u"ab");
    search.engine.FindNext();
    EXPECT_EQ(search.engine.FindAll(FindMode::List), 2);
    EXPECT_EQ(search.results.lines.back(), u"0003 [ab]");
    EXPECT_EQ(search.engine.FindAll(FindMode::List), 3) << "a new one, from the top";
}

TEST(FindListTest, UpEndsAtTheFirstPlace)
{
    TestSearch search;
    search.Add(u"ab ab\r\nab");
    search.OpenFind(u"ab");
    search.engine.SetSearchUp(true);
    EXPECT_EQ(search.engine.FindAll(FindMode::List), 3);
    EXPECT_EQ(search.results.lines[3], u"0002 [ab]");
    EXPECT_EQ(search.results.lines[4], u"0001 ab [ab]");
}

TEST(FindListTest, ClosedDocumentEndsTheWalkAndIsLogged)
{
    TestSearch search;
    search.Add(u"ab");
    auto gone = search.program.New();
    search.View(*gone).SetText(u"ab\r\nab");
    search.OpenFind(u"ab");
    search.engine.FindNext();
    search.View(*gone).Document().SetModified(false);
    std::weak_ptr<mvDocument> watched = gone;
    gone->FileClose(false);
    gone.reset();
    EXPECT_TRUE(watched.expired()) << "a search keeps no document";
    search.program.Documents().All().front()->Activate();
    EXPECT_EQ(search.engine.FindAll(FindMode::List), 0);
    auto lines = search.program.trace.Take();
    ASSERT_FALSE(lines.empty());
    EXPECT_TRUE(StartsWithNoCase(lines.back().second, u"frmFind.FindNextMatch: error=0x5 "));
    search.Said();
    EXPECT_EQ(search.engine.FindAll(FindMode::List), 1);
}

TEST(FindBookmarksTest, MarksAndCounts)
{
    TestSearch search;
    auto& document = search.Add(u"ab ab\r\n-\r\nab\r\ncd");
    SourceDocument& text = search.View(document).Document();
    text.ToggleBookmark(2);
    search.OpenFind(u"ab");
    EXPECT_EQ(search.engine.FindAll(FindMode::Bookmark), 3);
    EXPECT_EQ(text.BookmarkCount(), 2);
    EXPECT_EQ(search.Said(), Texts{u"3 occurrences found and bookmarked."});
    search.Dialog().findText = u"cd";
    search.engine.FindAll(FindMode::Bookmark);
    EXPECT_EQ(search.Said(), Texts{u"One occurrence found and bookmarked."});
    search.Dialog().findText = u"zz";
    search.engine.FindAll(FindMode::Bookmark);
    EXPECT_EQ(search.Said(), Texts{kNotFound});
}

} // namespace
} // namespace nib::test
