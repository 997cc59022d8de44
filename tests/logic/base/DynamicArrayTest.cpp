#include "base/DynamicArray.h"

#include <gtest/gtest.h>

#include <random>

namespace nib::test {
namespace {

struct Row {
    Text before;
    char op; ///< append, insert, replace, delete, clear
    ElementPath at;
    Text after;
};

// "^" parts fields, "]" values, "\" subvalues.
const Row kRows[] = {
    {u"", 'a', {}, u"x"},
    {u"a", 'a', {}, u"a^x"},
    {u"a^b", 'a', {1}, u"a]x^b"},
    {u"a", 'a', {3}, u"a^^x"},
    {u"a^b]c", 'a', {2, 2}, u"a^b]c\\x"},
    {u"a^b", 'i', {1}, u"x^a^b"},
    {u"a^b", 'i', {2, 1}, u"a^x]b"},
    {u"a^b", 'i', {4}, u"a^b^^x"},
    {u"a^b", 'i', {-1}, u"a^b^x"},
    {u"a^b", 'i', {1, -1}, u"a]x^b"},
    {u"", 'i', {1}, u"x"},
    {u"a^^b", 'i', {2, 1}, u"a^x^b"},
    {u"a^b", 'r', {2}, u"a^x"},
    {u"a^b", 'r', {3, 2}, u"a^b^]x"},
    {u"a^b", 'r', {-1}, u"a^b^x"},
    {u"a^b]c\\d", 'r', {2, 2, 2}, u"a^b]c\\x"},
    {u"a^b^c", 'd', {2}, u"a^c"},
    {u"a^b^c", 'd', {3}, u"a^b"},
    {u"a^b]c^d", 'd', {2, 1}, u"a^c^d"},
    {u"a^b]c^d", 'd', {2, 2}, u"a^b^d"},
    {u"a^b^c", 'd', {2, 1}, u"a^^c"},
    {u"a^b", 'd', {9}, u"a^b"},
    {u"a^b", 'd', {}, u""},
    {u"a^b", 'c', {}, u""},
};

void Do(DynamicArray& a, const Row& row)
{
    switch (row.op) {
    case 'a': return a.Append(u"x", row.at);
    case 'i': return a.Insert(u"x", row.at);
    case 'r': return a.Replace(u"x", row.at);
    case 'd': return a.Delete(row.at);
    default: a.Clear();
    }
}

TEST(DynamicArrayTest, Operations)
{
    for (const Row& row : kRows) {
        DynamicArray a;
        a.Parse(row.before, u"^]\\");
        Do(a, row);
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
    EXPECT_EQ(a.Locate(u"B", {1}), 2);
    EXPECT_EQ(a.Locate(u"b", {1}), 0);
    EXPECT_EQ(a.Locate(u"", {1}), 3);
    EXPECT_EQ(a.Locate(u"", {2}), 0) << "an empty field holds nothing";
    EXPECT_EQ(a.Locate(u"y", {3, 1}), 2);
    EXPECT_EQ(a.Locate(u"A]B]"), 1);
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
            switch (random() % 4) {
            case 0: {
                a.Replace(value, at);
                auto& values = model.Field(f);
                if (values.size() < v) values.resize(v);
                values[v - 1] = value;
                break;
            }
            case 1: {
                a.Insert(value, at);
                auto& values = model.Field(f);
                if (values.size() < v) values.resize(v - 1);
                values.insert(values.begin() + static_cast<std::ptrdiff_t>(v - 1), value);
                break;
            }
            case 2:
                a.Append(value, {at.field});
                model.Field(f).push_back(value);
                break;
            default: {
                a.Delete(at);
                if (f > model.fields.size()) break;
                auto& values = model.fields[f - 1];
                if (v <= values.size()) values.erase(values.begin() + static_cast<std::ptrdiff_t>(v - 1));
                if (values == std::vector<Text>{u""}) values.clear();
            }
            }
            ASSERT_EQ(a.ToString(), model.Join()) << "round " << round << ", step " << step;
            EXPECT_EQ(a.Count({at.field}), f > model.fields.size() ? 0 : static_cast<int32_t>(model.Field(f).size()));
            if (random() % 8 == 0) {
                a.Delete({at.field});
                if (f <= model.fields.size())
                    model.fields.erase(model.fields.begin() + static_cast<std::ptrdiff_t>(f - 1));
                if (model.fields.size() == 1 && model.fields[0].empty()) model.fields.clear();
            }
        }
    }
}

} // namespace
} // namespace nib::test
