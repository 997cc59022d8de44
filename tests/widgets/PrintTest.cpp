#include "platform/posix/FileSaver.h"
#include "platform/qt/QtText.h"
#include "printing/PrintClass.h"
#include "printing/QtPrinting.h"
#include "printing/QtPrintingSurface.h"
#include "text/SourceViewModel.h"
#include "text/widget/ScreenColors.h"

#include "fakes/FakeMessageBoxes.h"
#include "fakes/MemoryClipboard.h"
#include "fakes/Patience.h"
#include "fakes/WordLexer.h"

#include <QDir>
#include <QImage>
#include <QPrinter>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <map>

namespace nib::test {
namespace {

/// What a tool of poppler answers.
QString Poppler(const QString& tool, const QStringList& arguments)
{
    QProcess process;
    process.start(tool, arguments);
    if (!process.waitForFinished()) return QStringLiteral("no answer");
    return QString::fromUtf8(process.readAllStandardOutput());
}

struct PrintedPdf : testing::Test {
    QTemporaryDir folder;
    WordLexer lexer;
    SourceBuffer buffer;
    MemoryClipboard clipboard;
    SourceViewModel view{buffer, clipboard};
    DebugLog log;
    PrintClass handler{view, log, [] { return Text(u"11/21/26"); }};
    FakeMessageBoxes boxes;
    FileWriter saver = [keeper = FileSaver(folder.filePath(QStringLiteral("backup")).toStdString())](
                           const std::string& path, std::string_view bytes) { keeper.Save(path, bytes); };
    QtPrinting printing{log, boxes, saver};

    void SetUp() override
    {
        buffer.SetLexer(&lexer);
        view.SetDrawHandler(&handler);
        view.SetFont({u"DejaVu Sans Mono", 10});
        handler.SetNames(u"BP", u"SAMPLE");
        view.PrintTokenStyles().SetStyle(6, token_style::kItalic);
        view.PrintTokenStyles().SetColor(6, 0x008000);
        view.PrintTokenStyles().SetStyle(4, token_style::kBold);
    }
    void Sample(int32_t lines)
    {
        Text text;
        for (int32_t i = 1; i <= lines; ++i) {
            text += i % 5 == 0   ? u"* comment of line " + Decimal(i) + u"\r\n"
                    : i % 7 == 0 ? u"LONG = \"" + Text(90, u'l') + u" tail\"\r\n"
                    : i == 1     ? Text(u"REC<1> = \"a\uF8FDb\uF8FCc\"\r\n")
                    : i == 2     ? Text(u"PRINT \"\u00e4\u20ac\u4e2d\u6587 end\"\r\n")
                                 : u"   IF x" + Decimal(i) + u" = \"text\" THEN y = 1 END\r\n";
        }
        text.resize(text.size() - 2);
        view.SetText(text);
    }
    QString Path() const { return folder.filePath(QStringLiteral("out.pdf")); }
    QPageLayout Sheet(QPageSize::PageSizeId size) const
    {
        return QPageLayout(QPageSize(size), QPageLayout::Portrait, QMarginsF(15, 15, 15, 15), QPageLayout::Millimeter);
    }
    /// Of one page, small.
    std::vector<QRgb> PixelsOf(int page) const
    {
        const QString number = QString::number(page);
        const QString stem = folder.filePath(QStringLiteral("page"));
        Poppler(QStringLiteral("pdftoppm"),
                {QStringLiteral("-r"), QStringLiteral("75"), QStringLiteral("-f"), number, QStringLiteral("-l"), number,
                 QStringLiteral("-singlefile"), QStringLiteral("-png"), Path(), stem});
        const QImage image = QImage(stem + QStringLiteral(".png")).convertToFormat(QImage::Format_RGB32);
        std::vector<QRgb> pixels;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) pixels.push_back(image.pixel(x, y));
        }
        return pixels;
    }
    QString TextOf() const
    {
        return Poppler(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), Path(), QStringLiteral("-")});
    }
};

TEST_F(PrintedPdf, ASampleOnTwoSizesOfPaper)
{
    Sample(300);
    for (auto [size, points] :
         {std::pair(QPageSize::A4, "595 x 842 pts (A4)"), {QPageSize::Letter, "612 x 792 pts (letter)"}}) {
        WritePdf({Path(), QStringLiteral("BP SAMPLE"), Sheet(size), {}}, saver,
                 [&](QPagedPaintDevice& device) { DrawPages(view, {device}); });
        QString info = Poppler(QStringLiteral("pdfinfo"), {Path()});
        EXPECT_TRUE(info.contains(QLatin1String(points))) << info.toStdString();
        EXPECT_TRUE(info.contains(QLatin1String("BP SAMPLE")));
        const QStringList pages = TextOf().split(QChar(u'\f'), Qt::SkipEmptyParts);
        ASSERT_GT(pages.size(), 4);
        int32_t number = 0;
        for (qsizetype page = 0; page < pages.size(); ++page) {
            const QStringList rows = pages[page].split(QChar(u'\n'), Qt::SkipEmptyParts);
            EXPECT_EQ(rows[0].simplified(), QStringLiteral("Page %1 File: BP Item: SAMPLE 11/21/26").arg(page + 1));
            for (qsizetype row = 1; row < rows.size(); ++row) {
                if (!rows[row].trimmed().startsWith(QChar(u'0'))) continue;
                ++number;
                EXPECT_EQ(rows[row].trimmed().left(4), QStringLiteral("%1").arg(number, 4, 10, QChar(u'0')));
            }
        }
        EXPECT_EQ(number, 300);
        EXPECT_TRUE(pages[0].contains(QStringLiteral("\u00e4\u20ac"))) << pages[0].toStdString();
        EXPECT_TRUE(pages[0].contains(QLatin1String("* comment of line 5")));
    }
    const QString fonts = Poppler(QStringLiteral("pdffonts"), {Path()});
    for (const char* face : {"Oblique", "Bold"})
        EXPECT_TRUE(fonts.contains(QLatin1String(face))) << fonts.toStdString();
    if (QString keep = qEnvironmentVariable("NIB_KEEP_PDF"); !keep.isEmpty()) QFile::copy(Path(), keep);
}

TEST_F(PrintedPdf, ThePagesThatWereChosen)
{
    Sample(300);
    struct Case {
        QPrinter::PrintRange range;
        QStringList firstLines;
        bool box;
    };
    const Case cases[] = {{QPrinter::AllPages, {}, false},
                          {QPrinter::PageRange, {QStringLiteral("Page 2"), QStringLiteral("Page 3")}, false},
                          {QPrinter::Selection, {QStringLiteral("Page 1")}, false},
                          {QPrinter::PageRange, {}, true}};
    view.SetSelection({3, 9}, {0, 12});
    for (const Case& row : cases) {
        QFile::remove(Path());
        bool beyond = row.box;
        printing.choose = [&](QPrinter& printer, const PrintJob& job, QWidget*) {
            EXPECT_TRUE(job.drawSelection);
            EXPECT_EQ(printer.outputFormat(), QPrinter::PdfFormat) << "where there is no printer";
            EXPECT_TRUE(printer.outputFileName().endsWith(QLatin1String("BP SAMPLE.pdf")));
            printer.setOutputFileName(Path());
            printer.setPrintRange(row.range);
            if (row.range == QPrinter::PageRange) printer.setFromTo(beyond ? 90 : 2, beyond ? 91 : 3);
            return true;
        };
        printing.Print(view, u"BP SAMPLE");
        EXPECT_EQ(boxes.Take().size(), beyond ? 1U : 0U);
        EXPECT_EQ(QFile::exists(Path()), !beyond);
        const QStringList pages = TextOf().split(QChar(u'\f'), Qt::SkipEmptyParts);
        if (!row.firstLines.isEmpty()) {
            ASSERT_EQ(pages.size(), row.firstLines.size());
        }
        for (qsizetype i = 0; i < row.firstLines.size(); ++i)
            EXPECT_TRUE(pages[i].trimmed().startsWith(row.firstLines[i]));
        if (row.range == QPrinter::Selection) {
            EXPECT_EQ(pages[0].count(QRegularExpression(QStringLiteral("\\n *00\\d\\d  "))), 3);
            EXPECT_TRUE(pages[0].contains(QLatin1String("0012  ")));
        }
    }
}

TEST_F(PrintedPdf, GreyAndLastPageFirst)
{
    Sample(100);
    printing.choose = [&](QPrinter& printer, const PrintJob&, QWidget*) {
        printer.setOutputFileName(Path());
        printer.setColorMode(QPrinter::GrayScale);
        printer.setPageOrder(QPrinter::LastPageFirst);
        return true;
    };
    printing.Print(view, u"BP SAMPLE");
    const QStringList pages = TextOf().split(QChar(u'\f'), Qt::SkipEmptyParts);
    ASSERT_GT(pages.size(), 1);
    EXPECT_TRUE(pages.last().trimmed().startsWith(QLatin1String("Page 1")));
    for (QRgb pixel : PixelsOf(1)) ASSERT_TRUE(qRed(pixel) == qGreen(pixel) && qGreen(pixel) == qBlue(pixel));
}

TEST_F(PrintedPdf, EveryColourCanBeReadOnPaper)
{
    for (const int32_t color : {0xFFFFFF, 0xC8C8C8, 0x80FFFF, 0x79C398, 0x008000, 0}) {
        view.PrintTokenStyles().SetColor(6, color);
        view.SetText(u"* \u2588\u2588\u2588\u2588");
        WritePdf({Path(), {}, Sheet(QPageSize::A4), {}}, saver,
                 [&](QPagedPaintDevice& device) { DrawPages(view, {device}); });
        std::map<QRgb, int> counts;
        for (QRgb pixel : PixelsOf(1)) ++counts[pixel];
        counts.erase(QColor(Qt::white).rgb());
        auto most =
            std::max_element(counts.begin(), counts.end(), [](auto& a, auto& b) { return a.second < b.second; });
        ASSERT_NE(most, counts.end());
        const QColor ink(most->first);
        EXPECT_GE(Contrast(ink, Qt::white), 4) << std::hex << color << " as " << ink.name().toStdString();
        if (color == 0x008000) {
            EXPECT_EQ(ink, QColor(0, 0x80, 0)) << "a colour that can be read stays";
        }
    }
}

TEST_F(PrintedPdf, AFolderThatIsThereIsOffered)
{
    const QByteArray home = qgetenv("HOME");
    qputenv("HOME", folder.path().toLocal8Bit());
    QString offered;
    printing.choose = [&](QPrinter& printer, const PrintJob&, QWidget*) {
        offered = QFileInfo(printer.outputFileName()).absolutePath();
        return false;
    };
    printing.Print(view, u"a/b");
    EXPECT_EQ(offered, folder.path()) << "no folder of documents";
    QDir(folder.path()).mkdir(QStringLiteral("Documents"));
    printing.Print(view, u"a/b");
    EXPECT_EQ(offered, folder.filePath(QStringLiteral("Documents")));
    qputenv("HOME", home);
}

TEST_F(PrintedPdf, AFullDiskIsTold)
{
    Sample(300);
    for (const char* path : {"/dev/full", "/nowhere/at/all.pdf"}) {
        printing.choose = [&](QPrinter& printer, const PrintJob&, QWidget*) {
            printer.setOutputFormat(QPrinter::PdfFormat);
            printer.setOutputFileName(QLatin1String(path));
            return true;
        };
        printing.Print(view, u"BP SAMPLE");
        std::vector<ShownBox> told = boxes.Take();
        ASSERT_EQ(told.size(), 1U) << path;
        EXPECT_NE(told[0].text.find(FromUtf8(path)), Text::npos) << ToUtf8(told[0].text);
    }
}

TEST_F(PrintedPdf, TenThousandLinesInTime)
{
    Sample(10000);
    Patience patience("10,000 lines on paper");
    WritePdf({Path(), {}, Sheet(QPageSize::A4), {}}, saver,
             [&](QPagedPaintDevice& device) { DrawPages(view, {device}); });
}

} // namespace
} // namespace nib::test
