#include "text/LineDiff.h"

#include "text/SourceDocument.h"

#include <gtest/gtest.h>

#include <random>

namespace nib {
namespace {

Text RandomText(std::mt19937& random, int mostLines, int kinds)
{
    Text text;
    for (auto lines = std::uniform_int_distribution(0, mostLines)(random); lines > 0; --lines) {
        const int kind = std::uniform_int_distribution(0, kinds)(random);
        text += kind == 0 ? Text(u"\r\n") : Text(static_cast<size_t>(kind), u'x') + Decimal(kind) + u"\r\n";
    }
    return std::uniform_int_distribution(0, 1)(random) ? text + u"end" : text;
}

size_t CommonLines(const std::vector<TextView>& a, const std::vector<TextView>& b)
{
    std::vector<std::vector<size_t>> best(a.size() + 1, std::vector<size_t>(b.size() + 1));
    for (size_t i = 1; i <= a.size(); ++i)
        for (size_t j = 1; j <= b.size(); ++j)
            best[i][j] = a[i - 1] == b[j - 1] ? best[i - 1][j - 1] + 1 : std::max(best[i - 1][j], best[i][j - 1]);
    return best.back().back();
}

TEST(LineDiff, TakesAndGivesAsFewLinesAsCanBe)
{
    std::mt19937 random(71);
    for (int round = 0; round < 2000; ++round) {
        const Text before = RandomText(random, 14, 1 + round % 6);
        const Text after = RandomText(random, 14, 1 + round % 6);
        const auto a = LinesOf(before);
        const auto b = LinesOf(after);
        size_t gone = 0;
        int32_t at = 0;
        std::vector<TextView> made;
        for (const LineHunk& hunk : DiffLines(a, b)) {
            made.insert(made.end(), a.begin() + at, a.begin() + hunk.oldLine);
            ASSERT_EQ(static_cast<int32_t>(made.size()), hunk.newLine);
            made.insert(made.end(), b.begin() + hunk.newLine, b.begin() + hunk.newLine + hunk.newCount);
            at = hunk.oldLine + hunk.oldCount;
            gone += static_cast<size_t>(hunk.oldCount);
        }
        made.insert(made.end(), a.begin() + at, a.end());
        ASSERT_EQ(made, b) << round;
        ASSERT_EQ(a.size() - gone, CommonLines(a, b)) << round;
    }
}

TEST(LineDiff, TextsWithoutAnythingInCommonAreComparedInTime)
{
    Text before;
    Text after;
    for (int32_t n = 0; n < 60'000; ++n) {
        before += Decimal(n) + u"\n";
        after += (n % 7 == 0 ? Decimal(n) : u"x" + Decimal(n)) + u"\n";
        if (n % 5 == 0) after += u"same\n";
    }
    const auto hunks = DiffLines(LinesOf(before), LinesOf(after));
    EXPECT_GT(hunks.size(), 1U);
    EXPECT_EQ(hunks.front().oldLine, 1);
}

TEST(LineDiff, ATextBecomesAnotherAndUndoGivesItBack)
{
    std::mt19937 random(72);
    for (int round = 0; round < 1500; ++round) {
        SourceDocument document;
        const Text before = RandomText(random, 20, 1 + round % 8);
        const Text after = RandomText(random, 20, 1 + round % 8);
        document.SetText(before);
        document.ClearUndo();
        const bool changed = ReplaceByLines(document, after);
        ASSERT_EQ(document.GetText(), after) << round;
        ASSERT_EQ(changed, before != after);
        ASSERT_EQ(document.CanUndo(), changed);
        document.Undo();
        ASSERT_EQ(document.GetText(), before) << round;
        ASSERT_FALSE(document.CanUndo());
    }
}

TEST(LineDiff, LinesInBothTextsStayThemselves)
{
    SourceDocument document;
    document.SetText(u"a\r\nb\r\nc\r\nd");
    document.ToggleBookmark(2);
    document.SetLineData(3, LineWord::Identity, 7);
    ReplaceByLines(document, u"new\r\na\r\nc\r\nd and more\r\ne");
    EXPECT_TRUE(document.HasBookmark(2));
    EXPECT_EQ(document.BookmarkCount(), 1);
    EXPECT_EQ(document.GetLineData(3, LineWord::Identity), 7U);
}

} // namespace
} // namespace nib
