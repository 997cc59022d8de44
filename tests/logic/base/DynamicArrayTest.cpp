#include "base/DynamicArray.h"

#include <gtest/gtest.h>

#include <random>

namespace nib::test {
namespace {

using Op = void (*)(DynamicArray&);

struct Row {
    Text before;
    Op run;
    Text after;
};

// "^" parts fields, "]" values, "\" subvalues.
const Row kRows[] = {
    {u"", [](auto& a) { a.Append(u"x"); }, u"x"},
    {u"a", [](auto& a) { a.Append(u"x"); }, u"a^x"},
    {u"a^b", [](auto& a) { a.Append(u"x", {1}); }, u"a]x^b"},
    {u"a", [](auto& a) { a.Append(u"x", {3}); }, u"a^^x"},
    {u"a^b]c",
     [](auto& a) {
         a.Append(u"x", {2, 2});
     },
     u"a^b]c\\x"},
    {u"a^b", [](auto& a) { a.Replace(u"x", {2}); }, u"a^x"},
    {u"a^b",
     [](auto& a) {
         a.Replace(u"x", {3, 2});
     },
     u"a^b^]x"},
    {u"a^b", [](auto& a) { a.Replace(u"x", {-1}); }, u"a^b^x"},
    {u"a^b]c\\d",
     [](auto& a) {
         a.Replace(u"x", {2, 2, 2});
     },
     u"a^b]c\\x"},
};

TEST(DynamicArrayTest, Operations)
{
    for (const Row& row : kRows) {
        DynamicArray a;
        a.Parse(row.before, u"^]\\");
        row.run(a);
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

/// The same on nested lists: what is empty has no elements, except as one of several.
struct Model {
    std::vector<std::vector<Text>> fields;

    std::vector<Text>& Field(size_t n)
    {
        if (fields.size() < n) fields.resize(n);
        return fields[n - 1];
    }
    Text Join() const
    {
        Text text;
        for (size_t f = 0; f < fields.size(); ++f) {
            if (f) text += u'^';
            for (size_t v = 0; v < fields[f].size(); ++v) text.append(v ? u"]" : u"").append(fields[f][v]);
        }
        return text;
    }
};

TEST(DynamicArrayTest, BehavesAsNestedLists)
{
    std::mt19937 random(42);
    for (int32_t round = 0; round < 300; ++round) {
        DynamicArray a;
        a.Parse(u"", u"^]");
        Model model;
        for (int32_t step = 0; step < 25; ++step) {
            size_t f = random() % 4 + 1;
            size_t v = random() % 4 + 1;
            ElementPath at{static_cast<int32_t>(f), static_cast<int32_t>(v)};
            Text value(random() % 2 + 1, static_cast<char16_t>(u'a' + random() % 5));
            switch (random() % 2) {
            case 0: {
                a.Replace(value, at);
                auto& values = model.Field(f);
                if (values.size() < v) values.resize(v);
                values[v - 1] = value;
                break;
            }
            default:
                a.Append(value, {at.field});
                model.Field(f).push_back(value);
                break;
            }
            ASSERT_EQ(a.ToString(), model.Join()) << "round " << round << ", step " << step;
            EXPECT_EQ(a.Count({at.field}), f > model.fields.size() ? 0 : static_cast<int32_t>(model.Field(f).size()));
        }
    }
}

} // namespace
} // namespace nib::test
