#include "shell/frame/DocumentProperties.h"

#include "fakes/TestProgram.h"

namespace nib {
void PrintTo(const PropertyRow& row, std::ostream* out)
{
    *out << ToUtf8(row.name) << ": " << ToUtf8(row.value);
}
} // namespace nib

namespace nib::test {
namespace {

using Rows = std::vector<PropertyRow>;

TEST(DocumentPropertiesTest, SizeAndLines)
{
    struct {
        Text text;
        int32_t hostSize, fileSize, lines;
    } const rows[] = {
        {u"", 0, 0, 0},         {u"A", 1, 1, 1},           {u"A\r\nB", 3, 4, 2},  {u"A\r\nB\r\n", 4, 6, 2},
        {u"\r\n", 1, 2, 1},     {u"\r\n\r\n", 2, 4, 2},    {u"A\nB\rC", 5, 5, 1}, {u"A\r", 2, 2, 1},
        {u"\r\r\n\n", 3, 4, 2}, {u"a\uF8FDb\r\n", 4, 5, 1}};
    for (auto& row : rows) {
        EXPECT_EQ(TextSize(row.text, u"mvdb"), row.hostSize) << ToUtf8(row.text);
        EXPECT_EQ(TextSize(row.text, u"file"), row.fileSize) << ToUtf8(row.text);
        EXPECT_EQ(TextLines(row.text), row.lines) << ToUtf8(row.text);
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
    struct {
        std::shared_ptr<mvDocument> document;
        Location current;
        Rows place, rest;
    } const rows[] = {{t.Open(kMain),
                       {},
                       {{u"Host", u"server1"}, {u"Account", u"DEMO"}, {u"File name", u"BP"}, {u"Item ID", u"MAIN"}},
                       tail},
                      {t.Open(remote, true),
                       {},
                       {{u"Host", u"prod"}, {u"Account", u"ACCT"}, {u"File name", u"BP"}, {u"Item ID", u"MAIN"}},
                       {{u"Modified", u"no"}, {u"Read only", u"yes"}, {u"Size", u"3"}, {u"Lines", u"2"}}},
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
    for (auto& row : rows) {
        Rows wanted = row.place;
        wanted.insert(wanted.end(), row.rest.begin(), row.rest.end());
        EXPECT_EQ(DocumentProperties(*row.document, row.current), wanted);
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

} // namespace
} // namespace nib::test
