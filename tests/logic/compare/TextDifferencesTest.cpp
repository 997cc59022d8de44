#include "compare/TextDifferences.h"

#include "compare/GitLibrary.h"
#include "compare/LineNumbers.h"
#include "compare/WordDifferences.h"
#include "hosts/ItemText.h"

#include <gtest/gtest.h>

#include <random>

namespace nib {

namespace {

using Lines = std::vector<Text>;

Text Joined(const Lines& lines)
{
    Text text;
    for (const Text& line : lines) text += (&line == lines.data() ? u"" : u"\r\n") + line;
    return text;
}

TextDifferences Compared(const Text& left, const Text& right, const CompareOptions& options = {})
{
    return *CompareLines(LinesIn(left), LinesIn(right), options);
}

/// The left text with all changes taken over, and the two sides of the rest must count as alike.
Lines Applied(const TextDifferences& found, const Lines& left, const Lines& right)
{
    Lines out;
    const auto take = [&](const Lines& from, int32_t first, int32_t count) {
        for (int32_t n = first; n < first + count; ++n) out.push_back(from[static_cast<size_t>(n)]);
    };
    int32_t l = 0;
    int32_t r = 0;
    for (const LineBlock& block : found.blocks) {
        EXPECT_EQ(block.left, l);
        EXPECT_EQ(block.right, r);
        EXPECT_TRUE(block.kind != BlockKind::Same || block.leftCount == block.rightCount);
        if (block.IsChange())
            take(right, block.right, block.rightCount);
        else
            take(left, block.left, block.leftCount);
        l = block.LeftEnd();
        r = block.RightEnd();
    }
    EXPECT_EQ(static_cast<size_t>(l), left.size());
    EXPECT_EQ(static_cast<size_t>(r), right.size());
    return out;
}

/// As far as the options look.
Lines Counting(const Lines& lines, const CompareOptions& options)
{
    Lines out;
    for (const Text& line : lines)
        if (!options.comments || !IsCommentLine(line)) out.push_back(ComparedForm(line, options));
    return out;
}

class Texts {
public:
    Text Line()
    {
        static const Lines kLines{u"",           u"END",         u"  END",      u"end",
                                  u"* A remark", u"  ! another", u"REM third",  u"X = X+1",
                                  u"X  = X+1 ",  u"\u00e4 = 1",  u"\u4e2d = 2", u"REMOVE X FROM Y"};
        return random_() % 3 ? kLines[random_() % kLines.size()]
                             : Text(u"LINE ") + Decimal(static_cast<int64_t>(random_() % 30));
    }
    Lines Some(size_t most)
    {
        Lines lines(1 + random_() % most);
        for (Text& line : lines) line = Line();
        return lines;
    }
    Lines Edited(Lines lines)
    {
        for (size_t edits = random_() % 8; edits > 0; --edits) {
            const auto at = lines.begin() + static_cast<std::ptrdiff_t>(random_() % lines.size());
            if (random_() % 2 || lines.size() == 1)
                lines.insert(at, Line());
            else if (random_() % 2)
                *at = Line();
            else
                lines.erase(at);
        }
        return lines;
    }

private:
    std::mt19937 random_{71};
};

} // namespace

TEST(TextDifferences, ChangesTakenOverGiveTheOtherText)
{
    const GitLibrary kept; // it takes longer to load than to compare
    Texts texts;
    for (int round = 0; round < 4000; ++round) {
        const Lines left = texts.Some(40);
        const Lines right = round % 4 ? texts.Edited(left) : texts.Some(40);
        const CompareOptions options{(round & 1) != 0, (round & 2) != 0, (round & 4) != 0};
        const TextDifferences found = Compared(Joined(left), Joined(right), options);
        const Lines applied = Applied(found, left, right);
        ASSERT_EQ(Counting(applied, options), Counting(right, options)) << "round " << round;
        ASSERT_EQ(found.AreSame(), Counting(left, options) == Counting(right, options)) << "round " << round;
        ASSERT_FALSE(found.coarse);
    }
}

TEST(TextDifferences, BlocksTellWhatCameAndWent)
{
    const TextDifferences found = Compared(u"A\nB\nC\nD\nE\n* x", u"A\nC\nd\nE\nF\n* y", {false, false, true});
    const std::vector<LineBlock> expected{
        {BlockKind::Same, 0, 1, 0, 1},    {BlockKind::LeftOnly, 1, 1, 1, 0}, {BlockKind::Same, 2, 1, 1, 1},
        {BlockKind::Changed, 3, 1, 2, 1}, {BlockKind::Same, 4, 1, 3, 1},     {BlockKind::RightOnly, 5, 0, 4, 1},
        {BlockKind::Passed, 5, 1, 5, 1},
    };
    EXPECT_EQ(found.blocks, expected);
    EXPECT_EQ(found.LinesLeft(), 2);
    EXPECT_EQ(found.LinesRight(), 2);
}

TEST(TextDifferences, LongTextsAreComparedInPieces)
{
    Lines left;
    for (int32_t n = 0; n < 200'000; ++n) left.push_back(n % 5 ? u"LINE " + Decimal(n) : Text(u"END"));
    Lines right = left;
    for (size_t n = 0; n < right.size(); n += 1000) right[n] += u" !";
    right.erase(right.begin() + 1500, right.begin() + 1700);
    const TextDifferences found = Compared(Joined(left), Joined(right));
    EXPECT_EQ(Applied(found, left, right), right);
    EXPECT_EQ(found.ChangeCount(), 201);
    EXPECT_FALSE(found.coarse);
}

TEST(TextDifferences, TextsThatRepeatThemselvesAreComparedWhereTheyStand)
{
    Lines left;
    for (int32_t n = 0; n < 200'000; ++n) left.push_back(u"LINE " + Decimal(n % 97));
    Lines right = left;
    for (size_t n = 0; n < right.size(); n += 1000) right[n] += u" !";
    right.erase(right.begin() + 150'101, right.begin() + 150'141);
    const TextDifferences found = Compared(Joined(left), Joined(right));
    EXPECT_EQ(Applied(found, left, right), right);
    EXPECT_EQ(found.ChangeCount(), 201);
    EXPECT_FALSE(found.coarse);
}

TEST(TextDifferences, AMillionLinesWithNothingInCommonTakeNotLong)
{
    Text left;
    Text right;
    Text few;
    for (int32_t n = 0; n < 1'000'000; ++n) {
        left += u"L" + Decimal(n) + u"\n";
        right += u"R" + Decimal(n) + u"\n";
        few += int64_t{n} * 7919 % 31 < 15 ? u"R1\n" : u"R2\n";
    }
    const TextDifferences found = Compared(left, right);
    EXPECT_EQ(found.ChangeCount(), 1);
    EXPECT_FALSE(found.coarse);
    // Lines that are everywhere lead nowhere: that is told.
    EXPECT_TRUE(Compared(right, few).coarse);
    const std::atomic<bool> cancelled = true;
    EXPECT_FALSE(CompareLines(LinesIn(left), LinesIn(right), {}, &cancelled));
}

TEST(TextDifferences, ATextWithNulCharactersIsBinary)
{
    EXPECT_TRUE(LooksBinary(LinesIn(Text(u"A\nB\0C", 5))));
    EXPECT_FALSE(LooksBinary(LinesIn(u"A\nB")));
}

struct WordCase {
    const char* what;
    TextView left; ///< brackets round what differs
    TextView right;
    CompareOptions options = {};
};

TEST(WordDifferences, MarkWhatDiffersInALine)
{
    const CompareOptions blanks{true, false, false};
    const CompareOptions letters{false, true, false};
    const WordCase cases[]{
        {"a character of a word", u"TOTAL[1] = X", u"TOTAL[2] = X"},
        {"a word", u"X = [A.NAME] + 1", u"X = [ZOO] + 1"},
        {"words that came", u"CALL SUB(A)", u"CALL SUB(A[, B])"},
        {"nothing in common", u"[X = 1]", u"[PRINT Y:Z]"},
        {"blanks do not count", u"   IF  A THEN X = [1]", u"IF A THEN X = [2] ", blanks},
        {"letters do not count", u"print a:[b]", u"PRINT A:[C]", letters},
        {"a pair of surrogates stays whole", u"PRINT 'ABCDEF[\U0001F600]'", u"PRINT 'ABCDEF[\U0001F601]'"},
        {"the same", u"X", u"X"},
    };
    for (const WordCase& each : cases) {
        const auto bare = [](TextView marked) { return Replace(Replace(marked, u"[", u""), u"]", u""); };
        const auto marked = [](Text line, const std::vector<ColumnRange>& ranges) {
            for (auto range = ranges.rbegin(); range != ranges.rend(); ++range) {
                line.insert(static_cast<size_t>(range->last), u"]");
                line.insert(static_cast<size_t>(range->first), u"[");
            }
            return ToUtf8(line);
        };
        const WordDifferences found = CompareWords(bare(each.left), bare(each.right), each.options);
        EXPECT_EQ(marked(bare(each.left), found.left), ToUtf8(each.left)) << each.what;
        EXPECT_EQ(marked(bare(each.right), found.right), ToUtf8(each.right)) << each.what;
    }
}

TEST(WordDifferences, LikeLinesOfABlockStandSideBySide)
{
    const std::vector<LinePair> found =
        PairLines({u"X = 1 + A", u"PRINT X", u"STOP"}, {u"* new", u"X = 2 + A", u"PRINT X:Y", u"CALL Z", u"RETURN"});
    const std::vector<LinePair> expected{{-1, 0}, {0, 1}, {1, 2}, {2, 3}, {-1, 4}};
    EXPECT_EQ(found, expected);
}

} // namespace nib
