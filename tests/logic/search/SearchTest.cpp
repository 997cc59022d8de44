#include "fakes/FakeSearch.h"
#include "fakes/Patience.h"

namespace nib::test::search_test {

using Texts = std::vector<Text>;

const Text kNotFound = u"Search text not found in document.";
const Text kNoMore = u"No more occurrences of search text found.";
const Text kAskDown =
    u"Search has reached the end of the document. Do you want to continue searching at the beginning?";
const Text kAskUp = u"Search has reached the beginning of the document. Do you want to continue searching at the end?";

TEST(CaretWordTest, Table)
{
    const std::tuple<Text, int32_t, Text> rows[] = {{u"", 0, u""},          {u"AB CD", 0, u"AB"}, {u"AB CD", 1, u"AB"},
                                                    {u"AB CD", 2, u""},     {u"AB\tC", 2, u""},   {u"AB CD", 5, u"CD"},
                                                    {u"._$9+", 3, u"._$9"}, {u"A+BC", 1, u"BC"},  {u"A+(BC", 1, u""},
                                                    {u"dé f", 0, u"d"},     {u"AB+", 3, u""},     {u"AB", 7, u""}};
    for (const auto& [line, column, word] : rows) EXPECT_EQ(GetCaretWord(line, column), word) << ToUtf8(line) << column;
}

TEST(FindDialogTest, ComesUpAsTheDocumentSays)
{
    struct {
        Position anchor, caret;
        bool second;
        LookIn before, lookIn;
        Text findText;
        bool all, selection;
    } const rows[] = {{{}, {}, false, LookIn::Nothing, LookIn::Document, u"old", false, false},
                      {{1, 0}, {1, 0}, false, LookIn::Selection, LookIn::Document, u"one", false, false},
                      {{1, 0}, {1, 0}, true, LookIn::AllDocuments, LookIn::AllDocuments, u"one", true, false},
                      {{1, 0}, {1, 0}, false, LookIn::AllDocuments, LookIn::Document, u"one", false, false},
                      {{3, 0}, {3, 0}, false, LookIn::Nothing, LookIn::Document, u"old", false, false},
                      {{4, 0}, {6, 0}, false, LookIn::Selection, LookIn::Document, u"tw", false, true},
                      {{6, 0}, {4, 0}, true, LookIn::AllDocuments, LookIn::AllDocuments, u"tw", true, true},
                      {{4, 0}, {1, 1}, true, LookIn::Document, LookIn::Selection, u"old", true, true}};
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

constexpr int32_t kYes = message_box::kAnswerYes;
constexpr int32_t kNo = message_box::kAnswerNo;

TEST(FindNextTest, WhatIsSaidAtTheEnd)
{
    const Text one = u"-\r\nab\r\n-\r\n-";
    const struct {
        const char* name;
        Text text;
        Position caret;
        bool up;
        int16_t setting;
        int32_t answer;
        bool found;
        Texts said;
    } rows[] = {{"a hit", one, {}, false, 0, 0, true, {}},
                {"first line does not wrap", u"ab   cd", {5, 0}, false, 0, 0, false, {kNotFound}},
                {"wraps when told to", one, {0, 3}, false, 0, kYes, true, {kAskDown}},
                {"stays when told to", one, {0, 3}, false, 0, kNo, false, {kAskDown, kNotFound}},
                {"wraps and beeps", one, {0, 3}, false, 1, 0, true, {}},
                {"wraps quietly", one, {0, 3}, false, 2, 0, true, {}},
                {"up wraps", one, {1, 0}, true, 0, kYes, true, {kAskUp}},
                {"up from the last line does not wrap", u"-\r\ncd ab", {2, 1}, true, 0, 0, false, {kNotFound}}};
    for (auto& row : rows) {
        SCOPED_TRACE(row.name);
        TestSearch search;
        search.Add(row.text, row.caret);
        search.Settings().SearchEOD = row.setting;
        search.OpenFind(u"ab");
        search.engine.SetSearchUp(row.up);
        if (row.answer) search.program.boxes.Answer({row.answer});
        EXPECT_EQ(search.engine.FindNext(), row.found);
        Boxes shown = search.program.boxes.Take();
        ASSERT_EQ(shown.size(), row.said.size());
        for (size_t i = 0; i < shown.size(); ++i) {
            const bool asks = i == 0 && row.answer;
            EXPECT_EQ(shown[i].text, row.said[i]);
            EXPECT_EQ(shown[i].flags,
                      asks ? message_box::kYesNoCancel | message_box::kQuestion : message_box::kInformation);
        }
        EXPECT_EQ(search.program.boxes.beeps, row.setting == 1 || row.answer ? 1 : 0);
        EXPECT_EQ(search.program.journal.Has(u"status Searched past end of document"), row.setting > 0);
        if (!row.found) continue;
        EXPECT_FALSE(search.engine.FindNext());
        EXPECT_EQ(search.Said(), Texts{kNoMore});
        EXPECT_EQ(search.program.window.status[1], u"") << "it was of the step before";
    }
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

TEST(FindListTest, NumbersAreWhole)
{
    TestSearch search;
    Text text;
    for (int i = 1; i < 12345; ++i) text += u"\r\n";
    search.Add(text + u"ab");
    search.OpenFind(u"ab");
    EXPECT_EQ(search.engine.FindAll(FindMode::List), 1);
    EXPECT_EQ(search.results.lines.back(), u"12345 [ab]");
}

TEST(FindListTest, ClosedDocumentEndsTheWalk)
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
    EXPECT_EQ(search.engine.FindAll(FindMode::List), 1);
}

TEST(FindBookmarksTest, MarksAndCounts)
{
    TestSearch search;
    auto& document = search.Add(u"ab ab\r\n-\r\nab\r\ncd");
    SourceDocument& text = search.View(document).Document();
    text.ToggleBookmark(2);
    search.OpenFind(u"ab");
    search.program.window.status[1] = u"Searched past end of document";
    EXPECT_EQ(search.engine.FindAll(FindMode::Bookmark), 3);
    EXPECT_EQ(search.program.window.status[1], u"") << "it was of the search before";
    EXPECT_EQ(text.BookmarkCount(), 2);
    EXPECT_EQ(search.Said(), Texts{u"3 occurrences found and bookmarked."});
    search.Dialog().findText = u"cd";
    search.engine.FindAll(FindMode::Bookmark);
    EXPECT_EQ(search.Said(), Texts{u"One occurrence found and bookmarked."});
    search.Dialog().findText = u"zz";
    search.engine.FindAll(FindMode::Bookmark);
    EXPECT_EQ(search.Said(), Texts{kNotFound});
}

TEST(ReplaceAllTest, WithLineBreaks)
{
    TestSearch search;
    auto& document = search.Add(u"ab-ab\r\nab");
    search.OpenReplace(u"ab", u"1\n2");
    EXPECT_EQ(search.engine.ReplaceAll(), 3);
    EXPECT_EQ(search.Said(), Texts{u"3 occurrences replaced."});
    EXPECT_FALSE(search.program.window.waiting);
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(search.View(document).GetText(), u"1\r\n2-1\r\n2\r\n1\r\n2");
        for (int step = 0; step < 3; ++step) document.Undo();
        EXPECT_EQ(search.View(document).GetText(), u"ab-ab\r\nab") << "a step a replacement";
        for (int step = 0; step < 3; ++step) document.Redo();
    }
}

TEST(ReplaceAllTest, IsUndoneAsAWholeAsFarAsItStandsOnTop)
{
    struct Row {
        TextView text, with;
        bool wholeWord;
        int32_t steps; ///< of them taken back one by one before
    };
    const Row rows[] = {{u"ab-ab\r\nab", u"1\n2", false, 0},
                        {u"ab-ab\r\nab {", u"{,", false, 1},
                        {u"ab-ab-ab ab\r\nab", u"c d", true, 0},
                        {u"ab AB ab", u"", false, 2}};
    for (const Row& row : rows) {
        TestSearch search;
        auto& document = search.Add(row.text);
        SourceDocument& text = search.View(document).Document();
        text.InsertText({0, 0}, u"own ");
        EXPECT_FALSE(document.CanUndoSweep());
        const Text before = text.GetText();
        search.OpenReplace(u"ab", row.with);
        search.Dialog().wholeWord = row.wholeWord;
        search.engine.ReplaceAll();
        search.Said();
        const Text after = text.GetText();
        for (int32_t step = 0; step < row.steps; ++step) document.Undo();
        ASSERT_TRUE(document.CanUndoSweep());
        document.UndoSweep();
        EXPECT_EQ(text.GetText(), before) << ToUtf8(row.text);
        EXPECT_FALSE(document.CanUndoSweep()) << "what was typed before is another step";
        EXPECT_EQ(search.View(document).Caret().line, 0) << "at the first of them";
        while (document.CanRedo()) document.Redo();
        EXPECT_EQ(text.GetText(), after) << ToUtf8(row.text);
        text.InsertText({0, 0}, u"x");
        EXPECT_FALSE(document.CanUndoSweep());
    }
}

TEST(ReplaceAllTest, ADroppedSelectionStillBoundsIt)
{
    TestSearch search;
    auto& document = search.Add(u"ab\r\nab\r\nab ab\r\nab");
    search.Select(document, {0, 1}, {2, 2});
    search.OpenReplace(u"ab", u"c");
    search.View(document).SetCaret({0, 1});
    search.View(document).Document().InsertText({0, 0}, u"new\r\n");
    EXPECT_EQ(search.engine.ReplaceAll(), 2);
    EXPECT_EQ(search.View(document).GetText(), u"new\r\nab\r\nc\r\nc ab\r\nab");

    search.Add(u"ab"); // another document, in which nothing was selected
    EXPECT_EQ(search.engine.ReplaceAll(), 0);
    EXPECT_EQ(search.Said(), (Texts{u"2 occurrences replaced.", u"Search text not found in selection."}));
}

TEST(ReplaceAllTest, AReadOnlyDocumentKeepsItsHits)
{
    TestSearch search;
    auto& document = search.Add(u"ab ab");
    auto& other = search.Add(u"ab");
    search.View(document).SetReadOnly(true);
    search.Settings().SearchEOD = 2;
    search.OpenReplace(u"ab", u"c");
    search.Dialog().lookIn = LookIn::AllDocuments;
    EXPECT_EQ(search.engine.ReplaceAll(), 1);
    EXPECT_EQ(search.View(document).GetText(), u"ab ab");
    EXPECT_EQ(search.View(other).GetText(), u"c");
    search.Said();
}

TEST(ReplaceAllTest, AnEditDuringTheQuestionStaysItsOwnStep)
{
    TestSearch search;
    auto& document = search.Add(u"ab\r\n-\r\nab", {0, 1});
    search.OpenReplace(u"ab", u"c");
    search.program.boxes.Answer({message_box::kAnswerYes});
    search.program.boxes.whileShown = [&] {
        search.View(document).Document().InsertText({0, 1}, u"+");
        search.program.boxes.whileShown = nullptr;
    };
    search.engine.ReplaceAll();
    search.Said();
    EXPECT_EQ(search.View(document).GetText(), u"c\r\n+-\r\nc");
    document.Undo();
    EXPECT_EQ(search.View(document).GetText(), u"ab\r\n+-\r\nc");
    document.Undo();
    document.Undo();
    EXPECT_EQ(search.View(document).GetText(), u"ab\r\n-\r\nab");
}

TEST(ReplaceAllTest, LargeTextsInATimeThatGrowsWithTheirSize)
{
    Text lines;
    for (int i = 0; i < 1000000; ++i) lines += i % 10 == 0 ? u"  CALL SUB(ab)\r\n" : u"  X = Y + 1\r\n";
    Text oneLine;
    for (int i = 0; i < 200000; ++i) oneLine += u"ab, ";
    for (const Text& text : {lines, oneLine}) {
        TestSearch search;
        auto& document = search.Add(text);
        search.OpenReplace(u"AB", u"longer");
        Patience patience("replace, undo, list");
        EXPECT_GE(search.engine.ReplaceAll(), 100000);
        search.Said();
        Text replaced = search.View(document).GetText();
        // Each step of a line so long moves most of it: one is enough there.
        int32_t steps = text == oneLine ? 1 : 100000;
        for (int32_t step = 0; step < steps; ++step) document.Undo();
        if (steps == 1) {
            document.Redo();
            EXPECT_TRUE(search.View(document).GetText() == replaced);
            continue;
        }
        EXPECT_TRUE(search.View(document).GetText() == text);
        EXPECT_GE(search.engine.FindAll(FindMode::List), 100000);
    }
}

} // namespace nib::test::search_test
