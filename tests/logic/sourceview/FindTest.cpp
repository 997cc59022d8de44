#include "BufferModel.h"

#include <gtest/gtest.h>
#include <unicode/uchar.h>

#include <optional>

namespace nib::test {
namespace {

char16_t Folded(char16_t c)
{
    return static_cast<char16_t>(u_foldCase(c, U_FOLD_CASE_DEFAULT));
}

bool IsWord(char16_t c)
{
    return u_isalnum(c) || c == u'.' || c == u'_' || c == u'$';
}

bool MatchesAt(const Text& line, size_t at, TextView word, FindOptions options)
{
    if (at + word.size() > line.size()) return false;
    for (size_t i = 0; i < word.size(); ++i) {
        bool same = options.matchCase ? line[at + i] == word[i] : Folded(line[at + i]) == Folded(word[i]);
        if (!same) return false;
    }
    if (!options.wholeWord) return true;
    size_t end = at + word.size();
    return (at == 0 || !IsWord(line[at - 1])) && (end == line.size() || !IsWord(line[end]));
}

std::optional<Position> NaiveFind(const std::vector<Text>& lines, TextView word, Position from, FindOptions options)
{
    auto count = static_cast<int32_t>(lines.size());
    if (word.empty()) return {};
    for (int32_t i = from.line; i >= 0 && i < count; i += options.backward ? -1 : 1) {
        const Text& line = lines[static_cast<size_t>(i)];
        auto length = static_cast<int32_t>(line.size());
        int32_t first = options.backward ? length : 0;
        if (i == from.line) first = from.col;
        for (int32_t col = first; col >= 0 && col <= length; col += options.backward ? -1 : 1)
            if (MatchesAt(line, static_cast<size_t>(col), word, options)) return Position{col, i};
    }
    return {};
}

class Find : public ::testing::TestWithParam<int> {};

TEST_P(Find, FindsWhatANaiveSearchFinds)
{
    FindOptions options{(GetParam() & 1) != 0, (GetParam() & 2) != 0, (GetParam() & 4) != 0};
    // Both cases of letters inside and outside of 8 bits, and letters whose other case lies on the other side.
    constexpr TextView kAlphabets[] = {u"aAb. ", u"kK\u212A\u00E9\u00C9\u00B5\u03BC\u039C",
                                       u"sS\u017F\u00FF\u0178\u0416\u0436", u"aA\u00D7\u00F7\u00DF\u00DE\u00FE@`[{"};
    for (uint32_t seed = 1; seed <= 400; ++seed) {
        SCOPED_TRACE(seed);
        Dice dice(seed);
        TextView alphabet = kAlphabets[dice.Below(4)];
        Text text;
        for (int32_t n = dice.Below(40); n >= 0; --n) text += dice.Line(dice.OneIn(4) ? 60 : 5, alphabet) + u"\r\n";
        SourceDocument buffer;
        buffer.SetText(text);
        // Some lines in blocks of their own among those as loaded.
        for (int32_t n = dice.Below(4); n > 0; --n)
            buffer.InsertText(dice.At(BufferModel::Of(buffer)), dice.Lines(2, alphabet));
        BufferModel model = BufferModel::Of(buffer);
        std::vector<Text> lines = CutLines(buffer.GetText());
        for (int32_t n = 0; n < 12; ++n) {
            Text word = dice.Line(dice.OneIn(5) ? 20 : 3, alphabet);
            Position from = dice.At(model);
            FindHit hit;
            auto expected = NaiveFind(lines, word, from, options);
            ASSERT_EQ(buffer.Find(word, from, options, hit), expected.has_value());
            if (!expected) continue;
            EXPECT_EQ(hit.at, *expected);
            EXPECT_EQ(hit.length, static_cast<int32_t>(word.size()));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Options, Find, ::testing::Range(0, 8));

TEST(FindRules, Table)
{
    struct Row {
        TextView text;
        TextView word;
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
