#include "base/Error.h"
#include "fakes/MemoryReader.h"
#include "records/RecordGrid.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

namespace nib::test {

constexpr TextView kV = ValueMark;
constexpr TextView kS = SubValueMark;

/// "]" and "\" stand for the marks.
Text Marked(TextView text)
{
    return Replace(Replace(text, u"]", kV), u"\\", kS);
}

/// An order as a list of attributes and its lines.
struct Order {
    static Dictionary Names()
    {
        Dictionary names;
        names.Add(u"@", u"PH\nCUSTOMER DATE");
        names.Add(u"CUSTOMER", u"D\n1\n\nCustomer\n10L\nS");
        names.Add(u"DATE", u"D\r\n2\r\nD4-YMD\r\nDate\r\n10R\r\nS");
        names.Add(u"DATE.SHORT", u"D\n2\nD2/\n\n8R\nS");
        names.Add(u"PART", u"D\n3\n\nPart\n8L\nM\nLINES");
        names.Add(u"QTY", u"D\n4\nMD0\nQuantity\n8R\nM\nLINES");
        names.Add(u"PRICE", u"D\n5\nMD2\nPrice\n8R\nM\nLINES");
        names.Add(u"LINES", u"PH\nPART QTY PRICE LINES");
        return names;
    }
    GridTable& Lines() { return grid.Tables()[1]; }
    void Settle()
    {
        grid.Refresh();
        for (GridTable& table : grid.Tables()) table.Refresh();
    }
    void Type(GridTable& table, int32_t row, int32_t column, TextView text)
    {
        grid.Type(table.At(row, column), text);
        Settle();
    }
    std::string Line(int32_t attribute)
    {
        return ToUtf8(Replace(Replace(document.GetLine(attribute - 1), kV, u"]"), kS, u"\\"));
    }

    struct Content : SourceDocument {
        Content() { SetText(Marked(u"C1001\r\n21137\r\nP100]P101]P102\r\n12]100]2\r\n]600]\r\n]]A\\B\r\nO")); }
    } document;
    RecordGrid grid{document, Names()};
};

TEST(RecordsTest, AttributesThatBelongTogetherMakeATable)
{
    Order o;
    ASSERT_EQ(o.grid.Tables().size(), 2U);
    GridTable& list = o.grid.Tables()[0];
    EXPECT_EQ(list.Attributes(), (std::vector{1, 2, 6, 7, 8}));
    EXPECT_EQ(list.RowTitle(1), u"2  Date") << "the one that a list shows by itself";
    EXPECT_EQ(list.RowTitle(2), u"6");
    EXPECT_EQ(o.grid.Show(list.At(1, 0)).text, u"2025-11-13");
    EXPECT_EQ(o.grid.Show(list.At(2, 2)).text, u"A\u00A6B");
    EXPECT_EQ(o.Lines().Attributes(), (std::vector{3, 4, 5}));
    EXPECT_EQ(o.Lines().ColumnTitle(1), u"Quantity");
    EXPECT_EQ(o.Lines().Rows(), 4) << "one more to type into";
    EXPECT_EQ(o.grid.Show(o.Lines().At(1, 2)).text, u"6.00");
    EXPECT_EQ(o.Lines().Find(4, 2), std::pair(1, 1));
    EXPECT_EQ(list.Find(4, 2).first, -1);
}

TEST(RecordsTest, ACellIsOneStepOfUndoAndLeavesAllElseAlone)
{
    Order o;
    const Text first = o.document.GetText();
    o.Type(o.grid.Tables()[0], 1, 0, u"2025-11-14");
    EXPECT_EQ(o.Line(2), "21138");
    o.Type(o.Lines(), 3, 2, u"1.5");
    EXPECT_EQ(o.Line(5), "]600]]150");
    EXPECT_EQ(o.Lines().Rows(), 5);
    o.Type(o.grid.Tables()[0], 4, 0, u"new");
    EXPECT_EQ(o.Line(8), "new");
    EXPECT_EQ(o.grid.Tables()[0].Attributes().back(), 9);
    EXPECT_THROW(o.Type(o.Lines(), 0, 2, u"dear"), Error);
    EXPECT_THROW(o.Type(o.Lines(), 0, 0, u"A\nB"), Error);
    for (int i = 0; i < 3; ++i) o.document.Undo();
    EXPECT_EQ(o.document.GetText(), first);
    EXPECT_FALSE(o.document.CanUndo());
}

TEST(RecordsTest, ValuesOfAnAssociationStayInStep)
{
    Order o;
    o.Lines().Insert(1, 0);
    EXPECT_EQ(o.Line(3) + " " + o.Line(4) + " " + o.Line(5), "P100]]P101]P102 12]]100]2 ]]600]");
    o.Settle();
    EXPECT_TRUE(o.Lines().Move(0, 1, false));
    EXPECT_EQ(o.Line(3) + " " + o.Line(4) + " " + o.Line(5), "]P100]P101]P102 ]12]100]2 ]]600]");
    o.Lines().Delete(0, 0);
    EXPECT_EQ(o.Line(3) + " " + o.Line(4) + " " + o.Line(5), "P100]P101]P102 12]100]2 ]600]");
    EXPECT_FALSE(o.Lines().Move(0, 0, true));
    EXPECT_EQ(o.Line(6), "]]A\\B");
}

TEST(RecordsTest, OrderAndFilterAreOfTheViewAlone)
{
    Order o;
    const Text before = o.document.GetText();
    const auto quantities = [&] {
        std::string all;
        for (int32_t row = 0; row < o.Lines().Rows(); ++row)
            all += ToUtf8(o.grid.Show(o.Lines().At(row, 1)).text) + " ";
        return all;
    };
    o.Lines().Sort(1, GridTable::Order::Up);
    EXPECT_EQ(quantities(), "2 12 100  ");
    o.Lines().Sort(1, GridTable::Order::Down);
    EXPECT_EQ(quantities(), "100 12 2  ");
    EXPECT_FALSE(o.Lines().Move(0, 0, false));
    o.Lines().Filter(u"p101");
    EXPECT_EQ(quantities(), "100 ");
    EXPECT_EQ(o.document.GetText(), before);
    o.Type(o.Lines(), 0, 1, u"7");
    EXPECT_EQ(o.Line(4), "12]7]2");
}

TEST(RecordsTest, WhatWasNotTouchedOfAValueStaysAsItIsStored)
{
    const DictionaryField price{u"PRICE", u"Price", 5, Conversion(u"MD2"), true, true, {}};
    const DictionaryField nonsense{u"X", u"X", 1, Conversion(u"ZZ9"), false, false, {}};
    const DictionaryField date{u"D", u"D", 1, Conversion(u"D4/"), false, false, {}};
    struct Row {
        TextView stored;
        const DictionaryField* field;
        TextView shown;
        bool odd;
        TextView typed;
        TextView after;
    };
    const Row rows[] = {
        {u"12.5\uF8FC600", &price, u"0.13\u00A66.00", false, u"0.13\u00A67", u"12.5\uF8FC700"},
        {u"12.5\uF8FC600", &price, u"0.13\u00A66.00", false, u"1\u00A60.13\u00A66.00", u"100\uF8FC12.5\uF8FC600"},
        {u"12.5\uF8FC600", &price, u"0.13\u00A66.00", false, u"6.00", u"600"},
        {u"500", &price, u"5.00", false, u"", u""},
        {u"123", &nonsense, u"123", true, u"124", u"124"},
        {u"soon", &date, u"soon", true, u"12/31/1967", u"0"},
        {u"a\uF8FBb\uF8FEc\u00A6d", nullptr, u"a\u00ACb\u00B6c\u00A6d", false, u"a\u00ACb\u00B6c\u00A6e",
         u"a\uF8FBb\uF8FEc\u00A6e"},
        {u"a\u00A6b", &price, u"a\u00A6b", true, u"a\u00A6c", u"a\u00A6c"},
        {u"ab", nullptr, u"ab", false, u"a\u00A6b", u"a\uF8FCb"},
    };
    EXPECT_THROW(StoredValue(u"a\u00A6b", u"xa\u00A6bx", nullptr), Error) << "which of the two would it be?";
    EXPECT_TRUE(ShowValue(Text(20'000, u'1'), &price).odd) << "it would take too long each time";
    for (const Row& row : rows) {
        SCOPED_TRACE(ToUtf8(row.shown));
        const ShownValue shown = ShowValue(row.stored, row.field);
        EXPECT_EQ(shown.text, row.shown);
        EXPECT_EQ(shown.odd, row.odd);
        EXPECT_EQ(StoredValue(row.stored, row.shown, row.field), row.stored);
        EXPECT_EQ(StoredValue(row.stored, row.typed, row.field), row.after);
    }
}

TEST(RecordsTest, DictionariesAreFoundWhereHostsKeepThem)
{
    const Text name = u"D\n1\n\nName\n10L\nS";
    const Text old = u"A\n2\nTotal\nD;3\n\n\nMR2\n\nR\n10";
    for (const Text& file : {Text(u"DICT ORDERS"), Text(u"ORDERS.DIC"), Text(u"DICT.ORDERS")}) {
        MemoryItems items{
            {file, {{u"NAME", name}, {u"TOTAL", old}, {u"VIRTUAL", u"I\nNAME[1,1]"}, {u"BAD", u"D\n-7"}}}};
        MemoryReader host(items);
        const Dictionary found = ReadDictionary(host, u"ORDERS");
        EXPECT_EQ(found.name, file);
        ASSERT_EQ(found.Fields().size(), 2U);
        EXPECT_EQ(found.Fields()[1].association, u"3");
        EXPECT_EQ(found.Fields()[1].conversion.Show(u"150"), u"1.50");
        EXPECT_TRUE(ReadDictionary(host, u"NOTHING").IsEmpty());
        EXPECT_EQ(ReadDictionary(host, file).Fields().size(), 7U) << "a dictionary's own items are known";
    }
}

TEST(RecordsTest, OfSeveralNamesTheOneThatExplainsTheValueCounts)
{
    Dictionary names;
    names.Add(u"DATE", u"D\n1\nD4/\nDate\n10R\nS");
    names.Add(u"NAME", u"D\n1\n\nName\n10L\nS");
    names.Add(u"NAMES", u"D\n1\n\nNames\n10L\nM");
    for (const auto& [text, heading] :
         {std::pair(u"21137", u"Date"), {u"Miller", u"Name"}, {u"A\uF8FDB", u"Names"}, {u"", u"Date"}}) {
        SourceDocument document;
        document.SetText(text);
        RecordGrid grid(document, names);
        EXPECT_EQ(grid.FieldOf(1)->heading, heading) << ToUtf8(text);
    }
}

TEST(RecordsTest, AnAssociationCountsWhereItsFirstFieldDoes)
{
    Dictionary names;
    names.Add(u"PART", u"D\n1\nP(1A3N)\nPart\n6L\nM\nLINES");
    names.Add(u"COUNTRY", u"D\n1\nP(2A)\nCountry\n2L\nS");
    names.Add(u"BALANCE", u"D\n2\nMD2\nBalance\n8R\nS");
    names.Add(u"PRICE", u"D\n2\nMD2\nPrice\n8R\nM\nLINES");
    for (const auto& [text, heading] : {std::pair(u"P100\r\n600", u"Price"), {u"GB\r\n600", u"Balance"}}) {
        SourceDocument document;
        document.SetText(text);
        EXPECT_EQ(RecordGrid(document, names).FieldOf(2)->heading, heading);
    }
}

TEST(RecordsTest, LargeRecordsOpenOrAreRefused)
{
    SourceDocument document;
    Text values;
    for (int32_t i = 0; i < 10'000; ++i) values += Decimal(i) + Text(kV);
    document.SetText(u"\r\n" + values);
    RecordGrid grid(document, {});
    GridTable& list = grid.Tables()[0];
    EXPECT_EQ(list.Columns(), 10'002);
    EXPECT_EQ(grid.Show(list.At(1, 9'999)).text, u"9999");
    document.SetText(Text(17 << 20, u'x'));
    EXPECT_THROW(RecordGrid(document, {}), Error);
    document.SetText(Text(200'000, kValueMark));
    EXPECT_THROW(RecordGrid(document, {}), Error);
}

// Random records under random operations, beside a model of values in vectors

using Values = std::vector<Text>;

struct Model {
    explicit Model(TextView text)
    {
        for (size_t at = 0; at != Text::npos;) {
            const size_t end = text.find(u"\r\n", at);
            attributes.push_back(Split(text.substr(at, end == Text::npos ? end : end - at), kValueMark));
            at = end == Text::npos ? end : end + 2;
        }
    }
    Text ToText() const
    {
        Text text;
        for (size_t i = 0; i < attributes.size(); ++i) {
            if (i > 0) text += u"\r\n";
            for (size_t v = 0; v < attributes[i].size(); ++v) text += (v > 0 ? Text(kV) : Text()) + attributes[i][v];
        }
        return text;
    }
    void Set(size_t attribute, size_t value, const Text& text)
    {
        if (text.empty() && (attribute >= attributes.size() || value >= attributes[attribute].size())) return;
        if (attribute >= attributes.size()) attributes.resize(attribute + 1);
        Values& values = attributes[attribute];
        if (value >= values.size()) values.resize(value + 1);
        values[value] = text;
        Tidy(values);
    }
    /// One empty value is none.
    static void Tidy(Values& values)
    {
        if (values.size() == 1 && values[0].empty()) values.clear();
    }
    std::vector<Values> attributes;
};

struct Shaking {
    std::mt19937 random;
    size_t Below(size_t n) { return random() % n; }
    Text Piece()
    {
        constexpr TextView kChars = u"ab7\uF8FC\uF8FB\uF8FF\uF8FE\u00A6\u00E9 ";
        Text text;
        for (size_t i = Below(4); i > 0; --i) text += kChars[Below(kChars.size())];
        return text;
    }
    Text Record()
    {
        Text text;
        for (size_t line = Below(5) + 1; line > 0; --line) {
            for (size_t value = Below(4); value > 0; --value) text += Piece() + Text(kV);
            text += Piece() + (line > 1 ? u"\r\n" : u"");
        }
        return text;
    }
    void Run()
    {
        const Text first = Record();
        SourceDocument document;
        document.SetText(first);
        nib::Record record(document);
        Model model(first);
        for (Values& values : model.attributes) Model::Tidy(values);
        for (size_t step = Below(6) + 1; step > 0; --step) Step(record, model);
        ASSERT_EQ(ToUtf8(document.GetText()), ToUtf8(model.ToText())) << ToUtf8(first);
        while (document.CanUndo()) document.Undo();
        ASSERT_EQ(document.GetText(), first);
    }
    void Step(nib::Record& record, Model& model)
    {
        const size_t attribute = Below(model.attributes.size() + 2);
        const size_t value = Below(5);
        if (Below(2) == 0) {
            const Text text = Piece();
            record.SetValue(static_cast<int32_t>(attribute) + 1, static_cast<int32_t>(value) + 1, text);
            return model.Set(attribute, value, text);
        }
        std::vector<int32_t> affected;
        for (size_t i = attribute; i < std::min(attribute + 3, model.attributes.size()); ++i)
            affected.push_back(static_cast<int32_t>(i) + 1);
        const auto number = static_cast<int32_t>(value) + 1;
        const size_t kind = Below(3);
        const size_t to = Below(5);
        if (kind == 0)
            record.InsertValues(affected, number);
        else if (kind == 1)
            record.DeleteValues(affected, number);
        else
            record.MoveValues(affected, number, static_cast<int32_t>(to) + 1);
        for (int32_t one : affected) Change(model.attributes[static_cast<size_t>(one) - 1], kind, value, to);
    }
    static void Change(Values& values, size_t kind, size_t value, size_t to)
    {
        const auto at = [&](size_t i) { return values.begin() + static_cast<std::ptrdiff_t>(i); };
        const size_t count = values.size();
        if (kind < 2 && value >= count) return;
        if (kind == 0) values.insert(at(value), Text());
        if (kind == 1) {
            values.erase(at(value));
            Model::Tidy(values);
        }
        if (kind != 2 || std::min(value, to) >= count) return;
        values.resize(std::max({count, value + 1, to + 1}));
        const Text moved = values[value];
        values.erase(at(value));
        values.insert(at(to), moved);
        while (values.size() > count && values.back().empty()) values.pop_back();
    }
};

TEST(RecordsTest, RandomRecordsUnderRandomOperationsEqualAModel)
{
    // As many as the environment asks for: a million take a few minutes.
    const char* wanted = std::getenv("NIB_RANDOM_RECORDS");
    Shaking shaking;
    for (int64_t left = wanted ? std::atoll(wanted) : 5000; left > 0 && !testing::Test::HasFatalFailure(); --left)
        shaking.Run();
}

} // namespace nib::test
