// Replacing one hit and all of them, and taking it back.

#include "fakes/FakeSearch.h"
#include "fakes/Patience.h"

namespace nib::test {
namespace {

using Texts = std::vector<Text>;

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

} // namespace
} // namespace nib::test
