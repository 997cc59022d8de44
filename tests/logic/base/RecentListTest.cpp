#include "base/Error.h"
#include "persistence/store/SettingsStore.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace nib::test {
namespace {

using List = std::vector<Text>;

List Entries(const clsRecentList& list)
{
    List entries;
    for (int32_t i = 1; i <= list.ListCount(); ++i) entries.push_back(list.ListItem(i));
    return entries;
}

struct Row {
    const char* name;
    void (*run)(clsRecentList&);
    List after;
    int32_t size;
};

// Each begins with a list of size 4 that holds d, c, b.
const Row kRows[] = {
    {"add to a list with room", [](auto& l) { l.AddItem(u"e"); }, {u"e", u"d", u"c", u"b"}, 4},
    {"add to a full list",
     [](auto& l) {
         l.AddItem(u"e");
         l.AddItem(u"f");
     },
     {u"f", u"e", u"d", u"c"},
     4},
    {"add what is there, in another case", [](auto& l) { l.AddItem(u"B"); }, {u"B", u"d", u"c"}, 4},
    {"add the first again", [](auto& l) { l.AddItem(u"D"); }, {u"D", u"c", u"b"}, 4},
    {"remove", [](auto& l) { l.RemoveItem(u"C"); }, {u"d", u"b"}, 4},
    {"remove the last", [](auto& l) { l.RemoveItem(u"b"); }, {u"d", u"c"}, 4},
    {"remove what is absent", [](auto& l) { l.RemoveItem(u"x"); }, {u"d", u"c", u"b"}, 4},
    {"clear", [](auto& l) { l.Clear(); }, {}, 4},
    {"size above the limit", [](auto& l) { l.SetListSize(100); }, {u"d", u"c", u"b"}, 30},
    {"size below 0", [](auto& l) { l.SetListSize(-1); }, {u"d", u"c", u"b"}, 4},
    {"size 0", [](auto& l) { l.SetListSize(0); }, {}, 0},
    {"size 0 takes nothing",
     [](auto& l) {
         l.SetListSize(0);
         l.AddItem(u"x");
     },
     {},
     0},
    {"cut and grown again",
     [](auto& l) {
         l.SetListSize(2);
         l.SetListSize(4);
     },
     {u"d", u"c"},
     4},
    {"limit of 0 is refused",
     [](auto& l) {
         l.SetMaxListSize(0);
         l.SetListSize(100);
     },
     {u"d", u"c", u"b"},
     30},
    {"a lower limit leaves the size", [](auto& l) { l.SetMaxListSize(2); }, {u"d", u"c", u"b"}, 4},
};

TEST(RecentListTest, Operations)
{
    for (const Row& row : kRows) {
        clsRecentList list;
        for (TextView entry : {u"b", u"c", u"d"}) list.AddItem(entry);
        row.run(list);
        EXPECT_EQ(Entries(list), row.after) << row.name;
        EXPECT_EQ(list.ListSize(), row.size) << row.name;
    }
}

TEST(RecentListTest, TenCutToFive)
{
    clsRecentList list;
    list.SetListSize(10);
    for (char16_t c = u'a'; c < u'i'; ++c) list.AddItem(Text(1, c));
    list.SetListSize(5);
    list.SetListSize(10);
    EXPECT_EQ(Entries(list), (List{u"h", u"g", u"f", u"e", u"d"}));
}

TEST(RecentListTest, BadIndex)
{
    clsRecentList list;
    for (TextView entry : {u"a", u"b", u"c", u"d"}) list.AddItem(entry);
    auto number = [](auto&& body) {
        try {
            body();
        } catch (const Error& error) {
            return error.number;
        }
        return 0;
    };
    for (int32_t index : {0, -1, 5}) EXPECT_EQ(number([&] { list.ListItem(index); }), 381) << index;
}

TEST(RecentListTest, StoredCountAboveTheCapacityKeepsTheNewest)
{
    clsRecentList list;
    for (int32_t n = 9; n >= 1; --n) list.AddItem(Decimal(n));
    EXPECT_EQ(Entries(list), (List{u"1", u"2", u"3", u"4"}));
}

TEST(RecentListTest, BehavesAsAPlainList)
{
    std::mt19937 random(3);
    clsRecentList list;
    List model;
    for (int32_t step = 0; step < 3000; ++step) {
        Text entry(1, static_cast<char16_t>((random() % 2 ? u'a' : u'A') + random() % 10));
        auto same = [&](const Text& other) { return EqualsNoCase(other, entry); };
        switch (random() % 8) {
        case 0:
            list.RemoveItem(entry);
            std::erase_if(model, same);
            break;
        case 1: {
            size_t size = random() % 8;
            list.SetListSize(static_cast<int32_t>(size));
            if (model.size() > size) model.resize(size);
            break;
        }
        default:
            list.AddItem(entry);
            if (list.ListSize() == 0) break;
            std::erase_if(model, same);
            model.insert(model.begin(), entry);
            if (model.size() > static_cast<size_t>(list.ListSize())) model.pop_back();
        }
        ASSERT_EQ(Entries(list), model) << "step " << step;
    }
}

} // namespace
} // namespace nib::test
