#include "persistence/settings/ColorTable.h"

#include "editing/MvEdit.h"

#include <gtest/gtest.h>

namespace nib::test {
namespace {

/// All that there are but the last.
std::optional<int32_t> SomeColors(int32_t index)
{
    if (index < 0 || index > 29) return std::nullopt;
    return index == 5 ? 0x030201 : 0;
}

TEST(ColorTableTest, RowsAndTips)
{
    const SystemColors system = SomeColors;
    std::vector<ColorRow> rows = ColorRows(system);
    ASSERT_EQ(rows.size(), 1U + 16 + 1 + 30 + 1) << "without what the desktop does not know";
    EXPECT_EQ(rows[0].value, color_row::kStandardHeading);
    EXPECT_EQ(rows[17].value, color_row::kSystemHeading);
    EXPECT_EQ(rows.back().value, color_row::kCustom);
    EXPECT_EQ(rows[RowOfColor(rows, 0x000080)].name, u"Dark Red");
    EXPECT_EQ(rows[RowOfColor(rows, system_color::kWindow)].name, u"Window Background");
    EXPECT_EQ(rows[RowOfColor(rows, 0x123456)].value, color_row::kCustom);
    struct Tip {
        uint32_t value;
        TextView text;
    };
    for (const Tip& tip : {Tip{0x000080, u"Dark Red (standard color) R=128 G=0 B=0"},
                           {0x80000005U, u"Window Background (system color) R=1 G=2 B=3"},
                           {0x1515A3, u"custom color: R=163 G=21 B=21"},
                           {0x80000063U, u"unknown system color 99 R=0 G=0 B=0"}})
        EXPECT_EQ(ColorTip(static_cast<int32_t>(tip.value), system), tip.text);
}

} // namespace
} // namespace nib::test
