#include "text/SourceDocument.h"

#include <gtest/gtest.h>

#include <optional>

namespace nib::test {
namespace {

TEST(FindRules, Table)
{
    struct Row {
        TextView text, word;
        Position from;
        FindOptions options;
        std::optional<Position> at;
    };
    const FindOptions any{};
    const FindOptions back{true, false, false};
    const FindOptions word{false, false, true};
    const Row rows[] = {
        {u"ab\ncd", u"bc", {}, any, {}},                            // no match spans lines
        {u"ab\ncd", u"b\nc", {}, any, {}},                          // nor does a text with a line break match
        {u"ab\ncd", u"", {}, any, {}},                              //
        {u"aaa", u"aa", {1, 0}, any, Position{1, 0}},               // forward: from the position on
        {u"aaa", u"aa", {1, 0}, back, Position{1, 0}},              // backward: starts at the position
        {u"aaa", u"aa", {9, 9}, back, Position{1, 0}},              // overlaps the one before it
        {u"x\na x", u"x", {1, 1}, back, Position{0, 0}},            //
        {u"A.B A", u"A", {}, word, Position{4, 0}},                 // "." belongs to a word
        {u"A$ A_ 1A A9 (A)", u"a", {}, word, Position{13, 0}},      //
        {u"\u00C9t\u00E9", u"\u00E9", {1, 0}, any, Position{2, 0}}, //
        {u"\u00C9t\u00E9", u"\u00C9T\u00C9", {}, any, Position{0, 0}},
        {u"\u00E9A \u00C9", u"\u00E9", {}, word, Position{3, 0}},
        {u"a\uF8FDb", u"b", {}, word, Position{2, 0}}, // marks part words
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::PrintToString(Text(row.text)) + " " + testing::PrintToString(Text(row.word)));
        SourceDocument buffer;
        buffer.SetText(row.text);
        FindHit hit;
        ASSERT_EQ(buffer.Find(row.word, row.from, row.options, hit), row.at.has_value());
        EXPECT_EQ(hit.at, row.at.value_or(Position{}));
    }
}

TEST(Bookmarks, NextAndPreviousGoRoundTheEnds)
{
    SourceDocument buffer;
    buffer.SetText(u"0\n1\n2\n3\n4");
    EXPECT_EQ(buffer.FindBookmark(2, false), -1);
    for (int32_t line : {1, 3}) buffer.ToggleBookmark(line);
    const int32_t next[] = {1, 3, 3, 1, 1};
    const int32_t previous[] = {3, 3, 1, 1, 3};
    for (int32_t line = 0; line < 5; ++line) {
        EXPECT_EQ(buffer.FindBookmark(line, false), next[line]) << line;
        EXPECT_EQ(buffer.FindBookmark(line, true), previous[line]) << line;
    }
    buffer.SetLineData(1, LineWord::Control, 0);
    EXPECT_EQ(buffer.FindBookmark(3, false), 3) << "the only one is its own neighbour";
    buffer.SetLineData(4, LineWord::Control, line_bits::kBookmark);
    EXPECT_EQ(buffer.BookmarkCount(), 2);
    buffer.ClearBookmarks();
    EXPECT_EQ(buffer.BookmarkCount(), 0);
    EXPECT_EQ(buffer.FindBookmark(0, true), -1);
}

} // namespace
} // namespace nib::test
