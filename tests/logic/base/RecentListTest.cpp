#include "base/Error.h"
#include "persistence/store/clsRecentList.h"

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

/// Does what the words say: "+x" adds, "-x" removes, "@2x" sets the second, "=4" the size, "<4" its limit, "!" clears.
void Do(clsRecentList& list, const Text& words)
{
    for (const Text& word : Split(words, u' ')) {
        const Text rest = word.substr(1);
        switch (word.front()) {
        case u'+': list.AddItem(rest); break;
        case u'-': list.RemoveItem(rest); break;
        case u'@': list.SetListItem(ToInt(rest.substr(0, 1)), rest.substr(1)); break;
        case u'=': list.SetListSize(ToInt(rest)); break;
        case u'<': list.SetMaxListSize(ToInt(rest)); break;
        default: list.Clear();
        }
    }
}

TEST(RecentListTest, Operations)
{
    // Each begins with a list of size 4 that holds d, c, b.
    const struct {
        const char* name;
        Text words;
        List after;
        int32_t size;
    } rows[] = {
        {"add to a list with room", u"+e", {u"e", u"d", u"c", u"b"}, 4},
        {"add to a full list", u"+e +f", {u"f", u"e", u"d", u"c"}, 4},
        {"add what is there, in another case", u"+B", {u"B", u"d", u"c"}, 4},
        {"add the first again", u"+D", {u"D", u"c", u"b"}, 4},
        {"remove", u"-C", {u"d", u"b"}, 4},
        {"remove the last", u"-b", {u"d", u"c"}, 4},
        {"remove what is absent", u"-x", {u"d", u"c", u"b"}, 4},
        {"clear", u"!", {}, 4},
        {"size above the limit", u"=100", {u"d", u"c", u"b"}, 30},
        {"size below 0", u"=-1", {u"d", u"c", u"b"}, 4},
        {"size 0", u"=0", {}, 0},
        {"size 0 takes nothing", u"=0 +x", {}, 0},
        {"cut and grown again", u"=2 =4", {u"d", u"c"}, 4},
        {"limit of 0 is refused", u"<0 =100", {u"d", u"c", u"b"}, 30},
        {"a lower limit leaves the size", u"<2", {u"d", u"c", u"b"}, 4},
        {"set", u"@2x", {u"d", u"x", u"b"}, 4},
        {"set behind the last", u"@4x", {u"d", u"c", u"b", u"x"}, 4},
    };
    for (const auto& row : rows) {
        clsRecentList list;
        for (TextView entry : {u"b", u"c", u"d"}) list.AddItem(entry);
        Do(list, row.words);
        EXPECT_EQ(Entries(list), row.after) << row.name;
        EXPECT_EQ(list.ListSize(), row.size) << row.name;
    }
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
    for (int32_t index : {0, -1, 5}) {
        EXPECT_EQ(number([&] { list.ListItem(index); }), 381) << index;
        EXPECT_EQ(number([&] { list.SetListItem(index, u"x"); }), 381) << index;
    }
    list.SetListSize(6);
    EXPECT_EQ(number([&] { list.SetListItem(6, u"x"); }), 381) << "leaves a gap";
    list.SetListItem(5, u"x");
    EXPECT_EQ(list.ListCount(), 5);
}

} // namespace
} // namespace nib::test
