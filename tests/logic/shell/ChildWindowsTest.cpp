// The order of the child windows, where they are put, and what is said of drops that open nothing.

#include "shell/FileCommands.h"
#include "shell/frame/WindowPlacement.h"

#include <gtest/gtest.h>

namespace nib::test {
namespace {

TEST(ChildOrderTest, ARoundVisitsAllAndBackUndoesIt)
{
    int a = 0;
    int b = 0;
    int c = 0;
    ChildOrder<int> order;
    EXPECT_EQ(order.Step(false), nullptr);
    order.ToFront(&c);
    EXPECT_EQ(order.Step(true), &c);
    order.ToFront(&b);
    order.ToFront(&a);
    for (int* next : {&b, &c, &a, &b}) EXPECT_EQ(order.Step(false), next);
    for (int* next : {&a, &c, &b}) EXPECT_EQ(order.Step(true), next);
    order.ToFront(&a); // a click
    EXPECT_EQ(order.All(), (std::vector<int*>{&a, &b, &c}));
    order.Remove(&a);
    EXPECT_EQ(order.Front(), &b);
}

TEST(ArrangementTest, TilesFillTheAreaWithoutOverlap)
{
    for (Arrangement how : {Arrangement::TileHorizontal, Arrangement::TileVertical}) {
        for (int32_t count = 1; count <= 40; ++count) {
            auto cells = ArrangedCells(how, count, 1001, 701, 20);
            ASSERT_EQ(cells.size(), static_cast<size_t>(count));
            int64_t area = 0;
            for (const Cell& one : cells) {
                area += int64_t(one.width) * one.height;
                EXPECT_TRUE(one.left >= 0 && one.left + one.width <= 1001);
                EXPECT_TRUE(one.top >= 0 && one.top + one.height <= 701);
                for (const Cell& other : cells) {
                    if (&one == &other) continue;
                    EXPECT_FALSE(one.left < other.left + other.width && other.left < one.left + one.width &&
                                 one.top < other.top + other.height && other.top < one.top + one.height);
                }
            }
            EXPECT_EQ(area, 1001 * 701);
        }
    }
}

TEST(ArrangementTest, Places)
{
    using Cells = std::vector<Cell>;
    EXPECT_EQ(ArrangedCells(Arrangement::TileHorizontal, 2, 100, 60, 5), (Cells{{0, 0, 100, 30}, {0, 30, 100, 30}}));
    EXPECT_EQ(ArrangedCells(Arrangement::TileVertical, 2, 100, 60, 5), (Cells{{0, 0, 50, 60}, {50, 0, 50, 60}}));
    EXPECT_EQ(ArrangedCells(Arrangement::Cascade, 3, 100, 80, 20),
              (Cells{{0, 0, 75, 60}, {20, 20, 75, 60}, {0, 0, 75, 60}}));
    EXPECT_TRUE(ArrangedCells(Arrangement::Cascade, 0, 100, 80, 20).empty());
}

TEST(DropComplaintTest, SaysWhatAndWhy)
{
    EXPECT_EQ(DropComplaint({}, {}), u"");
    EXPECT_EQ(DropComplaint({u"/a"}, {u"http://x/y"}),
              u"A folder cannot be opened as a document. Drop the files in it instead.\n/a\n\n"
              u"Only files of this computer can be opened by dropping them.\nhttp://x/y");
    Text many = DropComplaint({u"1", u"2", u"3", u"4", u"5", u"6", u"7"}, {});
    EXPECT_TRUE(many.ends_with(u"\n5\nand 2 more"));
}

} // namespace
} // namespace nib::test
