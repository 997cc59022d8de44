#include "base/Text.h"
#include "base/Error.h"

#include <gtest/gtest.h>

namespace nib::test {
namespace {

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
    struct {
        Text a, b;
        bool equal, starts;
    } const rows[] = {{u"", u"", true, true},        {u"abc", u"ABC", true, true}, {u"abcd", u"ABC", false, true},
                      {u"ab", u"ABC", false, false}, {u"É", u"é", true, true},     {u"abc", u"abd", false, false},
                      {u"a", u"", false, true}};
    for (auto& row : rows) {
        EXPECT_EQ(EqualsNoCase(row.a, row.b), row.equal) << ToUtf8(row.a);
        EXPECT_EQ(StartsWithNoCase(row.a, row.b), row.starts) << ToUtf8(row.a);
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
    const std::pair<Text, int32_t> rows[] = {{u"", 0},
                                             {u"12", 12},
                                             {u" -7 ", -7},
                                             {u"+3", 3},
                                             {u"4x9", 4},
                                             {u"x", 0},
                                             {u"--1", 0},
                                             {u"- 1", 0},
                                             {u"2147483648", INT32_MAX},
                                             {u"-99999999999999999999", INT32_MIN}};
    for (auto& [text, number] : rows) EXPECT_EQ(ToInt(text), number) << ToUtf8(text);
}

} // namespace
} // namespace nib::test
