#include "base/DynamicArray.h"
#include "base/Error.h"
#include "base/Text.h"
#include "persistence/store/SettingsStore.h"

#include <gtest/gtest.h>

namespace nib::test::base_test {

TEST(BaseTextTest, Utf8)
{
    const std::pair<std::string, Text> valid[] = {
        {"", u""},
        {"plain ASCII, longer than a word", u"plain ASCII, longer than a word"},
        {"12345678\xC3\xA9", u"12345678é"},
        {"\xF0\x9F\x98\x80!", u"😀!"},
        {"\xEF\xA3\xBE", u"\xF8FE"}};
    for (auto& [bytes, text] : valid) {
        EXPECT_EQ(FromUtf8(bytes), text);
        EXPECT_EQ(ToUtf8(text), bytes);
        EXPECT_TRUE(IsValidUtf8(bytes));
    }
    for (const char* bytes : {"\xFF", "a\xC3", "\xC0\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80"}) {
        EXPECT_FALSE(IsValidUtf8(bytes));
        EXPECT_NE(FromUtf8(bytes).find(u'\xFFFD'), Text::npos);
    }
    EXPECT_EQ(ToUtf8(Text(1, u'\xD83D')), "\xEF\xBF\xBD");
}

TEST(BaseTextTest, Case)
{
    EXPECT_EQ(ToUpper(u"aß1é"), u"ASS1É");
    EXPECT_EQ(ToLower(u"ÄBC"), u"äbc");
    const std::tuple<Text, Text, bool, bool> rows[] = {{u"", u"", true, true},         {u"abc", u"ABC", true, true},
                                                       {u"abcd", u"ABC", false, true}, {u"ab", u"ABC", false, false},
                                                       {u"É", u"é", true, true},       {u"abc", u"abd", false, false},
                                                       {u"a", u"", false, true}};
    for (const auto& [a, b, equal, starts] : rows) {
        EXPECT_EQ(EqualsNoCase(a, b), equal) << ToUtf8(a);
        EXPECT_EQ(StartsWithNoCase(a, b), starts) << ToUtf8(a);
    }
    EXPECT_FALSE(EqualsNoCase({}, u"a"));
    EXPECT_FALSE(EqualsNoCase(u"a", {}));
}

TEST(BaseTextTest, Fields)
{
    const std::pair<Text, std::vector<Text>> rows[] = {
        {u"", {}}, {u"a", {u"a"}}, {u"a,b", {u"a", u"b"}}, {u",", {u"", u""}}, {u"a,,b,", {u"a", u"", u"b", u""}}};
    for (auto& [text, fields] : rows) {
        auto count = static_cast<int32_t>(fields.size());
        EXPECT_EQ(Split(text, u','), fields);
        EXPECT_EQ(CountFields(text, u','), count);
        for (int32_t n = 1; n <= count; ++n) EXPECT_EQ(Field(text, u',', n), fields[static_cast<size_t>(n - 1)]);
        EXPECT_EQ(Field(text, u',', count + 1), u"");
        EXPECT_EQ(Field(text, u',', 0), u"");
    }
}

TEST(BaseTextTest, SmallHelpers)
{
    EXPECT_EQ(Trim(u"  a b "), u"a b");
    EXPECT_EQ(Trim(u"   "), u"");
    EXPECT_EQ(Trim(u"\ta\t"), u"\ta\t");
    EXPECT_EQ(Replace(u"aXbXX", u"X", u"XX"), u"aXXbXXXX");
    EXPECT_EQ(Replace(u"aaa", u"aa", u"b"), u"ba");
    EXPECT_EQ(DoubleAmpersands(u"&a & b&&"), u"&&a && b&&&&");
    EXPECT_EQ(Hex(error_number::kNoUpdate), u"80049D12");
    EXPECT_EQ(Hex(0), u"0");
    EXPECT_EQ(Decimal(INT64_MIN), u"-9223372036854775808");
    EXPECT_STREQ((Error{5, u"é"}).what(), "\xC3\xA9");
}

TEST(BaseTextTest, Numbers)
{
    const std::pair<Text, int32_t> rows[] = {{u"", 0},    {u"12", 12}, {u" -7 ", -7}, {u"+3", 3},
                                             {u"4x9", 4}, {u"x", 0},   {u"--1", 0},   {u"- 1", 0}};
    for (auto& [text, number] : rows) EXPECT_EQ(ToInt(text), number) << ToUtf8(text);
    EXPECT_EQ(ToInt(u"2147483648"), INT32_MAX);
    EXPECT_EQ(ToInt(u"-99999999999999999999"), INT32_MIN);
}

using List = std::vector<Text>;

List Entries(const clsRecentList& list)
{
    List entries;
    for (int32_t i = 1; i <= list.ListCount(); ++i) entries.push_back(list.ListItem(i));
    return entries;
}

struct ListRow {
    const char* name;
    void (*run)(clsRecentList&);
    List after;
    int32_t size;
};

// Each begins with a list of size 4 that holds d, c, b.
const ListRow kListRows[] = {
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
    for (const ListRow& row : kListRows) {
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

struct Row {
    Text before;
    bool appends; ///< else replaces
    ElementPath at;
    Text after;
};

// "^" parts fields, "]" values, "\" subvalues.
const Row kRows[] = {{u"", true, {}, u"x"},
                     {u"a", true, {}, u"a^x"},
                     {u"a^b", true, {1}, u"a]x^b"},
                     {u"a", true, {3}, u"a^^x"},
                     {u"a^b]c", true, {2, 2}, u"a^b]c\\x"},
                     {u"a^b", false, {2}, u"a^x"},
                     {u"a^b", false, {3, 2}, u"a^b^]x"},
                     {u"a^b", false, {-1}, u"a^b^x"},
                     {u"a^b]c\\d", false, {2, 2, 2}, u"a^b]c\\x"}};

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

} // namespace nib::test::base_test
