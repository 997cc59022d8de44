#include "fakes/TestProgram.h"
#include "shell/frame/DocumentProperties.h"
#include "shell/frame/WindowPlacement.h"

namespace nib {
void PrintTo(const PropertyRow& row, std::ostream* out)
{
    *out << ToUtf8(row.name) << ": " << ToUtf8(row.value);
}
} // namespace nib

namespace nib::test::frame_test {

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
              (Cells{{0, 0, 60, 40}, {20, 20, 60, 40}, {40, 40, 60, 40}}));
    EXPECT_EQ(ArrangedCells(Arrangement::Cascade, 5, 100, 80, 30),
              (Cells{{25, 30, 50, 20}, {50, 60, 50, 20}, {0, 0, 50, 20}, {25, 30, 50, 20}, {50, 60, 50, 20}}))
        << "the last round is whole";
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

using Values = StoredValues;

/// One screen of 1920 by 1080 at 96 dots to the inch.
const Desktop kOne{{0, 0, 28800, 16200}, 28800, 16200, {{0, 0, 28800, 16200}}};
/// A second one of the same size to the left of it.
const Desktop kTwo{{-28800, 0, 57600, 16200}, 28800, 16200, {{0, 0, 28800, 16200}, {-28800, 0, 28800, 16200}}};
/// The same with a panel of 600 on top, beside a smaller one that stands lower.
const Desktop kUneven{{0, 0, 48000, 16200}, 28800, 16200, {{0, 600, 28800, 15600}, {28800, 4200, 19200, 12000}}};

constexpr FrameBounds kUsual{3600, 2025, 21600, 12150};

struct Row {
    const char* what;
    Desktop desktop;
    Values stored;
    FrameBounds bounds;
    int32_t state = 0;
};

Values Bounds(const char16_t* left, const char16_t* top, const char16_t* width, const char16_t* height)
{
    return {{u"MainLeft", left}, {u"MainTop", top}, {u"MainWidth", width}, {u"MainHeight", height}};
}

TEST(FramePlacementTest, StoredBoundsAreFittedToTheDesktop)
{
    const Row rows[] = {
        {"nothing stored", kOne, {}, kUsual},
        {"as stored", kOne, Bounds(u"150", u"300", u"9000", u"7500"), {150, 300, 9000, 7500}},
        {"left and top of the desktop", kOne, Bounds(u"-1", u"-9999", u"9000", u"7500"), {0, 0, 9000, 7500}},
        {"at nine tenths", kOne, Bounds(u"25920", u"14580", u"9000", u"7500"), {19800, 8700, 9000, 7500}},
        {"below a panel", kUneven, Bounds(u"0", u"0", u"9000", u"16200"), {0, 600, 9000, 15600}},
        {"across two monitors", kUneven, Bounds(u"26000", u"0", u"9000", u"7500"), {28800, 4200, 9000, 7500}},
        {"above the lower monitor", kUneven, Bounds(u"30000", u"0", u"21000", u"2000"), {7800, 600, 21000, 3600}},
        {"behind nine tenths", kOne, Bounds(u"25921", u"14581", u"9000", u"7500"), {3600, 2025, 9000, 7500}},
        {"too large", kOne, Bounds(u"0", u"0", u"28801", u"2000000000"), {0, 0, 28800, 16200}},
        {"nothing to see", kOne, Bounds(u"0", u"0", u"0", u"-5"), {0, 0, 4800, 3600}},
        {"huge", kOne, Bounds(u"99999999999", u"-99999999999", u"99999999999", u"1"), {0, 0, 28800, 3600}},
        {"no numbers", kOne, Bounds(u"", u"x", u"wide", u"-"), kUsual},
        {"on the left screen", kTwo, Bounds(u"-20000", u"0", u"9000", u"7500"), {-20000, 0, 9000, 7500}},
        {"the left screen has gone", kOne, Bounds(u"-20000", u"0", u"9000", u"7500"), {0, 0, 9000, 7500}},
        {"nine tenths of the right end", kTwo, Bounds(u"26000", u"0", u"9000", u"7500"), {3600, 0, 9000, 7500}},
        {"small", {{0, 0, 3000, 3000}, 3000, 3000, {}}, Bounds(u"0", u"0", u"9000", u"1"), {0, 0, 3000, 3000}},
        {"no desktop", {}, Bounds(u"5", u"5", u"9000", u"9000"), {0, 0, 0, 0}},
        {"maximised", kOne, {{u"MainState", u"2"}}, kUsual, 2},
        {"minimised", kOne, {{u"MainState", u"1"}}, kUsual, 1},
        {"no such state", kOne, {{u"MainState", u"7"}}, kUsual, 0}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        MemorySettings store;
        store.values = row.stored;
        FramePlacement placement;
        placement.Load(store, row.desktop);
        EXPECT_EQ(placement.Bounds().left, row.bounds.left);
        EXPECT_EQ(placement.Bounds().top, row.bounds.top);
        EXPECT_EQ(placement.Bounds().width, row.bounds.width);
        EXPECT_EQ(placement.Bounds().height, row.bounds.height);
        EXPECT_EQ(placement.State(), row.state);
    }
}

TEST(FramePlacementTest, WhatIsWrittenDependsOnTheState)
{
    struct {
        int32_t state;
        Text savedState; ///< "-" not written
        Text savedLeft;
    } const rows[] = {{0, u"0", u"111"}, {1, u"-", u"3600"}, {2, u"2", u"3600"}};
    for (const auto& row : rows) {
        MemorySettings store;
        FramePlacement placement;
        placement.Load(store, kOne);
        placement.Placed(row.state, {111, 222, 9000, 7500});
        placement.statusbarVisible = false;
        placement.Save(store, row.state);
        EXPECT_EQ(store.Get(u"MainState", u"-"), row.savedState);
        EXPECT_EQ(store.Get(u"MainLeft", u"-"), row.savedLeft);
        EXPECT_EQ(store.values.size(), row.state == 1 ? 6U : 7U);
        EXPECT_EQ(store.values[u"ToolbarVisible"], u"True");
        EXPECT_EQ(store.values[u"StatusbarVisible"], u"False");
        FramePlacement again;
        again.Load(store, kOne);
        EXPECT_EQ(again.Bounds(), placement.Bounds());
        EXPECT_FALSE(again.statusbarVisible);
    }
}

TEST(FramePlacementTest, TwipsAndPixels)
{
    const std::tuple<int32_t, double, int32_t> rows[] = {{0, 96, 0},       {1, 96, 15}, {-100, 96, -1500},
                                                         {100, 144, 1000}, {7, 0, 0},   {2000000000, 96, 2147483647}};
    for (const auto& [pixels, dots, twips] : rows) {
        EXPECT_EQ(PixelsToTwips(pixels, dots), twips);
        if (dots > 0 && twips < 2147483647) {
            EXPECT_EQ(TwipsToPixels(twips, dots), pixels);
        }
    }
}

using Rows = std::vector<PropertyRow>;

TEST(DocumentPropertiesTest, SizeAndLines)
{
    const std::tuple<Text, int32_t, int32_t, int32_t> rows[] = {
        {u"", 0, 0, 0},         {u"A", 1, 1, 1},           {u"A\r\nB", 3, 4, 2},  {u"A\r\nB\r\n", 4, 6, 2},
        {u"\r\n", 1, 2, 1},     {u"\r\n\r\n", 2, 4, 2},    {u"A\nB\rC", 5, 5, 1}, {u"A\r", 2, 2, 1},
        {u"\r\r\n\n", 3, 4, 2}, {u"a\uF8FDb\r\n", 4, 5, 1}};
    for (const auto& [text, hostSize, fileSize, lines] : rows) {
        EXPECT_EQ(TextSize(text, u"mvdb"), hostSize) << ToUtf8(text);
        EXPECT_EQ(TextSize(text, u"file"), fileSize) << ToUtf8(text);
        EXPECT_EQ(TextLines(text), lines) << ToUtf8(text);
    }
}

TEST(DocumentPropertiesTest, PlaceByKindOfDocument)
{
    TestProgram t;
    const Text remote = u"mvdb:prod*2/ACCT/BP/MAIN";
    t.Store(remote, u"A\r\nB", true);
    t.Store(kLocal, u"A\r\nB");
    t.Store(kMain, u"");
    const Rows tail = {{u"Modified", u"no"}, {u"Read only", u"no"}, {u"Size", u"0"}, {u"Lines", u"0"}};
    Rows locked = tail;
    locked.push_back({u"Lock", u"Locked here"});
    const std::tuple<std::shared_ptr<mvDocument>, Location, Rows, Rows> rows[] = {
        {t.Open(kMain),
         {},
         {{u"Host", u"server1"}, {u"Account", u"DEMO"}, {u"File name", u"BP"}, {u"Item ID", u"MAIN"}},
         locked},
        {t.Open(remote, true),
         {},
         {{u"Host", u"prod"}, {u"Account", u"ACCT"}, {u"File name", u"BP"}, {u"Item ID", u"MAIN"}},
         {{u"Modified", u"no"}, {u"Read only", u"yes"}, {u"Size", u"3"}, {u"Lines", u"2"}, {u"Lock", u"Read only"}}},
        {t.Open(kLocal),
         {},
         {{u"Location", u"/home/x"}, {u"File name", u"a.bas"}},
         {{u"Modified", u"no"}, {u"Read only", u"no"}, {u"Size", u"4"}, {u"Lines", u"2"}}},
        {t.New(),
         {u"mvdb", u"*", u"DEMO", u"BP"},
         {{u"Host", u"mvdb"}, {u"Account", u"DEMO"}, {u"File name", u"BP"}, {u"Item ID", u"NewItem1"}},
         tail},
        {t.New(),
         {u"mvdb", u"prod", u"", u""},
         {{u"Host", u"prod"}, {u"Account", u""}, {u"File name", u""}, {u"Item ID", u"NewItem2"}},
         tail},
        {t.New(), {u"file", u"*", u"", u""}, {{u"Location", u""}, {u"File name", u"NewItem3"}}, tail}};
    for (const auto& [document, current, place, rest] : rows) {
        Rows wanted = place;
        wanted.insert(wanted.end(), rest.begin(), rest.end());
        EXPECT_EQ(DocumentProperties(*document, current), wanted);
    }
}

TEST(DocumentPropertiesTest, SelectionAddsItsMeasures)
{
    TestProgram t;
    auto document = t.New();
    document->SetText(u"first\r\nsecond\r\nlast");
    t.View(*document).txtText().SetSelection({1, 2}, {3, 0});
    Rows rows = DocumentProperties(*document, {u"mvdb", u"*", u"", u""});
    ASSERT_EQ(rows.size(), 10u);
    EXPECT_EQ(rows[4], (PropertyRow{u"Modified", u"yes"}));
    EXPECT_EQ(rows[8], (PropertyRow{u"Selection size", u"11"}));
    EXPECT_EQ(rows[9], (PropertyRow{u"Selected lines", u"3"}));
}

} // namespace nib::test::frame_test
