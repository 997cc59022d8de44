#include "printing/PrintClass.h"

#include "fakes/PaperSurface.h"
#include "fakes/TestProgram.h"
#include "fakes/WordLexer.h"

namespace nib::test::print_test {

/// A view whose text goes to paper of 40 by 10 characters: 8 rows below the header, 33 characters behind the numbers.
struct Printed : testing::Test {
    WordLexer lexer;
    SourceDocument buffer;
    MemoryClipboard clipboard;
    SourceView view{buffer, clipboard};
    RecordingTrace trace;
    DebugLog log{&trace};
    Text title = u"File: (untitled)";
    PaperSurface paper;

    void SetUp() override { buffer.SetLexer(&lexer); }
    void Lines(int32_t count)
    {
        Text text = u"X";
        for (int32_t i = 1; i < count; ++i) text += u"\r\nX";
        view.SetText(text);
    }
    void Print(const std::vector<PrintRange>& pages = {}, const std::vector<PrintRange>& lines = {})
    {
        PrintOn(paper, pages, lines);
    }
    void PrintOn(PaperSurface& sheet, const std::vector<PrintRange>& pages = {},
                 const std::vector<PrintRange>& lines = {})
    {
        PrintClass handler(view, log, title, u"1/2/03");
        PageLayout layout(view, handler, sheet, sheet.shape, lines);
        layout.Print(PagesToPrint(pages, layout.PageCount(), false));
    }
};

TEST_F(Printed, HeaderNamesTheDocument)
{
    struct Case {
        TextView title;
        TextView row; ///< on paper of 60 characters
    };
    const Case cases[] = {{u"File: (untitled)", u"    Page 1              File: (untitled)              1/2/03"},
                          {u"File: /a/B", u"    Page 1                 File: /a/B                 1/2/03"},
                          {u"File: BP     Item: MAIN", u"    Page 1          File: BP     Item: MAIN           1/2/03"},
                          {u"File: /home/someone/a/long/way/to/the/source",
                           u"    Page 1    File: \u2026eone/a/long/way/to/the/source    1/2/03"}};
    for (const Case& row : cases) {
        PaperSurface sheet;
        sheet.shape.width = 640;
        title = row.title;
        PrintOn(sheet);
        EXPECT_EQ(ToUtf8(sheet.Row(1, 0)), ToUtf8(row.row));
        EXPECT_EQ(sheet.Row(1, 1), u"") << "a blank row below it";
        EXPECT_EQ(sheet.Row(1, 2), u" 0001");
    }
}

TEST_F(Printed, NumbersAreAsWideAsTheLastOneNeeds)
{
    const std::pair<int32_t, TextView> cases[] = {
        {1, u" 0001  X"}, {120, u" 0120  X"}, {9999, u" 9999  X"}, {12345, u" 12345  X"}};
    for (auto [count, last] : cases) {
        paper = PaperSurface();
        Lines(count);
        Print();
        const size_t pages = paper.pages.size();
        EXPECT_EQ(pages, static_cast<size_t>((count + 7) / 8));
        EXPECT_EQ(ToUtf8(paper.Row(pages, static_cast<size_t>((count - 1) % 8) + 2)), ToUtf8(last));
        EXPECT_EQ(paper.Row(pages, 0).substr(4, 5), u"Page ");
        EXPECT_EQ(ToInt(TextView(paper.Row(pages, 0)).substr(9)), static_cast<int32_t>(pages));
    }
}

TEST_F(Printed, WrappedLinesAreNumberedOnce)
{
    const Text x(33, u'x');
    const std::tuple<const char*, Text, std::vector<Text>> cases[] = {
        {"fits", x, {u" 0001  " + x, u" 0002  END"}},
        {"anywhere in a long word", x + u"yz", {u" 0001  " + x, u"       yz", u" 0002  END"}},
        {"at a blank", u"one " + x, {u" 0001  one", u"       " + x, u" 0002  END"}},
        {"not behind the indent", u"    " + x, {u" 0001      " + x.substr(4), u"       xxxx", u" 0002  END"}},
        {"blanks hang over", x + u"   y", {u" 0001  " + x, u"       y", u" 0002  END"}},
        {"blanks at the end need no row", x + u"   ", {u" 0001  " + x, u" 0002  END"}}};
    for (const auto& [why, line, rows] : cases) {
        SCOPED_TRACE(why);
        paper = PaperSurface();
        view.SetText(line + u"\r\nEND");
        Print();
        for (size_t i = 0; i < rows.size(); ++i) EXPECT_EQ(ToUtf8(paper.Row(1, i + 2)), ToUtf8(rows[i]));
    }
}

TEST_F(Printed, PagesAndLinesAreChosen)
{
    struct Case {
        std::vector<PrintRange> pages, lines;
        std::vector<TextView> firstRows; ///< of each sheet
    };
    const Case cases[] = {{{}, {}, {u" 0001  X", u" 0009  X", u" 0017  X", u" 0025  X"}},
                          {{{2, 3}}, {}, {u" 0009  X", u" 0017  X"}},
                          {{{4, 9}, {1, 1}}, {}, {u" 0001  X", u" 0025  X"}},
                          {{}, {{9, 19}}, {u" 0010  X", u" 0018  X"}},
                          {{{2, 2}}, {{9, 19}}, {u" 0018  X"}}};
    Lines(30);
    for (const Case& row : cases) {
        paper = PaperSurface();
        Print(row.pages, row.lines);
        ASSERT_EQ(paper.pages.size(), row.firstRows.size());
        for (size_t i = 0; i < row.firstRows.size(); ++i) EXPECT_EQ(paper.Row(i + 1, 2), row.firstRows[i]);
    }
}

TEST_F(Printed, TokensKeepTheirStyles)
{
    view.PrintTokenStyles().SetColor(8, 0);
    view.PrintTokenStyles().SetColor(6, 0);
    view.PrintTokenStyles().SetStyle(6, token_style::kItalic);
    view.PrintTokenStyles().SetColor(4, 0xFF0000);
    view.TokenStyles().SetColor(8, 0x123456);
    view.SetText(u"IF a\uF8FDb * why, and more than one row of it");
    Print();
    struct Want {
        TextView text;
        int32_t color, style;
    };
    const Want wanted[] = {{u"IF", 0xFF0000, 0},
                           {u" a\uF8FDb ", 0, 0},
                           {u"* why, and more than one ", 0, token_style::kItalic},
                           {u"row of it", 0, token_style::kItalic}};
    ASSERT_EQ(paper.runs.size(), std::size(wanted));
    for (size_t i = 0; i < std::size(wanted); ++i) {
        EXPECT_EQ(ToUtf8(paper.runs[i].text), ToUtf8(wanted[i].text));
        EXPECT_EQ(paper.runs[i].style.color, wanted[i].color);
        EXPECT_EQ(paper.runs[i].style.style, wanted[i].style);
    }
}

TEST(PrintTitle, NamesTheDocument)
{
    TestProgram test;
    test.Store(kMain, u"A");
    test.Store(kLocal, u"B");
    EXPECT_EQ(test.New()->PrintTitle(), u"File: (untitled)");
    EXPECT_EQ(test.Open(kLocal)->PrintTitle(), u"File: </home/x/a.bas>");
    EXPECT_EQ(test.Open(kMain)->PrintTitle(), u"File: BP     Item: MAIN");
}

} // namespace nib::test::print_test
