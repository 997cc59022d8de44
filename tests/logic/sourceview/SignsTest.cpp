#include "text/Signs.h"

#include <gtest/gtest.h>

namespace nib::test::signs_test {

struct Row {
    Text text;
    const char* shown;
};

const Row kRows[] = {
    {u"a\u0007\uF8FD\u007F", "a..."},
    {u"\u202Ea\u2066b\u2069\u200F\u200B\u200D\u00AD\uFEFF\u061C", "<RLO>a<LRI>b<PDI><RLM><ZWSP><ZWJ><SHY><BOM><ALM>"},
    {u"\u0085\u206A", "<85><206A>"},
    {u"x\U000E0041\U000E0062\U000E0001y", "x<tA><tb><E0001>y"},
    {u"\u2764\uFE0F x\uFE0F \uFE01\uFE02 \u2764\uFE0F\uFE0F", "__ x<VS16> <VS2><VS3> __<VS16>"},
    {u"\u845B\U000E0100 a\U000E0100\U000E01EF", "___ a<VS17><VS256>"},
    {u"\u05D0\u0308\u4F60\U0001F600\xDB40", "______"},
};

TEST(Signs, NameWhatWouldHideOrReorder)
{
    for (const Row& row : kRows) {
        std::string shown;
        for (size_t at = 0; at < row.text.size(); ++at) {
            const auto sign = SignAt(row.text, at);
            if (sign) shown += sign->name[0] ? "<" + std::string(sign->name.data()) + ">" : ".";
            if (!sign) shown += row.text[at] < 0x7F ? static_cast<char>(row.text[at]) : '_';
            if (sign) at += static_cast<size_t>(sign->units) - 1;
        }
        EXPECT_EQ(shown, row.shown) << ToUtf8(row.text);
    }
}

} // namespace nib::test::signs_test
