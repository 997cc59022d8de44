#include "base/DynamicArray.h"

#include <gtest/gtest.h>

namespace nib::test {
namespace {

struct Row {
    Text before;
    bool appends; ///< else replaces
    ElementPath at;
    Text after;
};

// "^" parts fields, "]" values, "\" subvalues.
const Row kRows[] = {
    {u"", true, {}, u"x"},
    {u"a", true, {}, u"a^x"},
    {u"a^b", true, {1}, u"a]x^b"},
    {u"a", true, {3}, u"a^^x"},
    {u"a^b]c", true, {2, 2}, u"a^b]c\\x"},
    {u"a^b", false, {2}, u"a^x"},
    {u"a^b", false, {3, 2}, u"a^b^]x"},
    {u"a^b", false, {-1}, u"a^b^x"},
    {u"a^b]c\\d", false, {2, 2, 2}, u"a^b]c\\x"},
};

TEST(DynamicArrayTest, Operations)
{
    for (const Row& row : kRows) {
        DynamicArray a;
        a.Parse(row.before, u"^]\\");
        row.appends ? a.Append(u"x", row.at) : a.Replace(u"x", row.at);
        EXPECT_EQ(a.ToString(), row.after) << "from " << ToUtf8(row.before);
    }
}

TEST(DynamicArrayTest, Reading)
{
    DynamicArray a;
    a.Parse(u"A]B]^^x\\y]z^", u"^]\\");
    const std::pair<ElementPath, Text> extracts[] = {
        {{}, u"A]B]^^x\\y]z^"}, {{1}, u"A]B]"}, {{1, 2}, u"B"},    {{1, 3}, u""}, {{3, 1, 2}, u"y"},
        {{3, 2, 1}, u"z"},      {{5}, u""},     {{1, 1, 1}, u"A"}, {{-1}, u""}};
    for (auto& [at, text] : extracts) EXPECT_EQ(a.Extract(at), text) << at.field << at.value << at.subValue;
    const std::pair<ElementPath, int32_t> counts[] = {{{}, 4},     {{1}, 3}, {{2}, 0},      {{3}, 2},
                                                      {{3, 1}, 2}, {{9}, 0}, {{3, 1, 1}, 0}};
    for (auto& [at, count] : counts) EXPECT_EQ(a.Count(at), count) << at.field << at.value;
}

} // namespace
} // namespace nib::test
