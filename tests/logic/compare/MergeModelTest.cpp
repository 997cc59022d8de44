#include "compare/MergeModel.h"

#include <gtest/gtest.h>

namespace nib::test::merge_model_test {

Text Numbered(int32_t count, TextView changed = {})
{
    Text text;
    for (int32_t line = 0; line < count; ++line) text += (line == 9 ? Text(changed) : Decimal(line)) + u"\r\n";
    return text;
}

struct OutcomeCase {
    const char* name;
    Text base, theirs, mine;
    std::vector<MergeChoice> choices;
    Text outcome;
};

const OutcomeCase kCases[] = {
    {"nothing to choose", u"a\nb\nc\n", u"A\nb\nc\n", u"a\nb\nC\n", {}, u"A\nb\nC\n"},
    {"theirs", u"a", u"b", u"c", {MergeChoice::Theirs}, u"b"},
    {"mine", u"a", u"b", u"c", {MergeChoice::Mine}, u"c"},
    {"both, theirs first", u"a", u"b", u"c", {MergeChoice::TheirsThenMine}, u"b\nc"},
    {"both, mine first", u"a", u"b", u"c", {MergeChoice::MineThenTheirs}, u"c\nb"},
    {"neither", u"a", u"b", u"c", {MergeChoice::Base}, u"a"},
    {"one by one", u"a\n-\nz", u"b\n-\ny", u"c\n-\nx", {MergeChoice::Theirs, MergeChoice::Mine}, u"b\n-\nx"},
    {"an end that came", u"a\n\nb", u"a\n\nb\n", u"A\n\nb", {}, u"A\n\nb\n"},
    {"all is gone there", u"a\nb\n", u"", u"a\nb\n", {}, u""},
    {"half characters, markers", u"=\n-\n", u"=\n-\n\xD800", u"<<< \xDC00\n-\n", {}, u"<<< \xDC00\n-\n\xD800"}};

TEST(MergeModelTest, Outcomes)
{
    for (const OutcomeCase& row : kCases) {
        SCOPED_TRACE(row.name);
        MergeModel merge(row.base, row.theirs, row.mine);
        ASSERT_EQ(merge.Conflicts(), static_cast<int32_t>(row.choices.size()));
        EXPECT_EQ(merge.Undecided(), merge.Conflicts());
        for (size_t i = 0; i < row.choices.size(); ++i) merge.Choose(static_cast<int32_t>(i), row.choices[i]);
        EXPECT_EQ(merge.Undecided(), 0);
        EXPECT_EQ(merge.Outcome(), Replace(row.outcome, u"\n", u"\r\n"));
    }
}

TEST(MergeModelTest, GoesRoundTheConflictsAndFoldsWhatIsTheSame)
{
    MergeModel merge(Numbered(20, u"b") + u"x", Numbered(20, u"t") + u"y", Numbered(20, u"m") + u"z");
    ASSERT_EQ(merge.Conflicts(), 2);
    EXPECT_EQ(merge.Next(-1, true), 1);
    EXPECT_EQ(merge.Next(1, false), 0);
    // 6 lines, 3 next to the change, the change, 3 + 3 next to changes with 4 between, the change.
    ASSERT_EQ(merge.Rows().size(), 13U);
    EXPECT_EQ(merge.Rows()[0].folded, 6);
    EXPECT_EQ(merge.RowOf(0), 4);
    EXPECT_EQ(merge.OutcomeRowOf(1), 12);
    EXPECT_EQ(merge.OutcomeRows()[4].line, -1) << "not chosen yet";
    merge.Choose(0, MergeChoice::TheirsThenMine);
    EXPECT_EQ(merge.OutcomeRows()[5].number, 10);
    EXPECT_EQ(merge.NextUndecided(0), 1);
    merge.Choose(1, MergeChoice::Mine);
    EXPECT_EQ(merge.NextUndecided(1), -1);
}

} // namespace nib::test::merge_model_test
