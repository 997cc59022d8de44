#include "base/Error.h"
#include "persistence/store/SettingsStore.h"

#include <gtest/gtest.h>

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
    {"add to a full list", [](auto& l) { (l.AddItem(u"e"), l.AddItem(u"f")); }, {u"f", u"e", u"d", u"c"}, 4},
    {"add what is there, in another case", [](auto& l) { l.AddItem(u"B"); }, {u"B", u"d", u"c"}, 4},
    {"add the first again", [](auto& l) { l.AddItem(u"D"); }, {u"D", u"c", u"b"}, 4},
    {"remove", [](auto& l) { l.RemoveItem(u"C"); }, {u"d", u"b"}, 4},
    {"remove the last", [](auto& l) { l.RemoveItem(u"b"); }, {u"d", u"c"}, 4},
    {"remove what is absent", [](auto& l) { l.RemoveItem(u"x"); }, {u"d", u"c", u"b"}, 4},
    {"clear", [](auto& l) { l.Clear(); }, {}, 4},
    {"size above the limit", [](auto& l) { l.SetListSize(100); }, {u"d", u"c", u"b"}, 30},
    {"size below 0", [](auto& l) { l.SetListSize(-1); }, {u"d", u"c", u"b"}, 4},
    {"size 0", [](auto& l) { l.SetListSize(0); }, {}, 0},
    {"size 0 takes nothing", [](auto& l) { (l.SetListSize(0), l.AddItem(u"x")); }, {}, 0},
    {"cut and grown again", [](auto& l) { (l.SetListSize(2), l.SetListSize(4)); }, {u"d", u"c"}, 4},
    {"limit of 0 is refused", [](auto& l) { (l.SetMaxListSize(0), l.SetListSize(100)); }, {u"d", u"c", u"b"}, 30},
    {"a lower limit leaves the size", [](auto& l) { l.SetMaxListSize(2); }, {u"d", u"c", u"b"}, 4}};

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

TEST(RecentListTest, CaseMayCount)
{
    clsRecentList list(clsRecentList::Case::Counts);
    for (TextView entry : {u"a", u"A", u"a"}) list.AddItem(entry);
    EXPECT_EQ(Entries(list), (List{u"a", u"A"}));
}

TEST(RecentListTest, BadIndex)
{
    clsRecentList list;
    for (TextView entry : {u"a", u"b", u"c", u"d"}) list.AddItem(entry);
    for (int32_t index : {0, -1, 5}) EXPECT_THROW(list.ListItem(index), Error) << index;
}

} // namespace
} // namespace nib::test
