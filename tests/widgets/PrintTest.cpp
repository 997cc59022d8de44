#include "platform/posix/FileSaver.h"
#include "platform/qt/QtText.h"
#include "printing/QtPrinting.h"
#include "printing/QtPrintingSurface.h"
#include "text/SourceView.h"
#include "text/widget/ScreenColors.h"

#include "fakes/FakeMessageBoxes.h"
#include "fakes/MemoryClipboard.h"
#include "fakes/WordLexer.h"
#include "logic/storage/TempFolder.h"

#include <QPrinter>
#include <QtTest>
#include <QtWidgets>

#include <map>

namespace nib::test::widget_print_test {

const Text kTitle = u"File: BP     Item: SAMPLE";

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
    SourceDocument buffer;
    MemoryClipboard clipboard;
    SourceView view{buffer, clipboard};
    DebugLog log;
    FakeMessageBoxes boxes;
    FileWriter saver = [keeper = FileSaver(folder.filePath(QStringLiteral("backup")).toStdString())](
                           const std::string& path, std::string_view bytes) { keeper.Save(path, bytes); };
    QtPrinting printing{log, boxes, saver};

    void SetUp() override
    {
        buffer.SetLexer(&lexer);
        view.SetFont({u"DejaVu Sans Mono", 10});
        view.PrintTokenStyles().SetColor(6, 0x008000);
    }
    void Sample(int32_t lines)
    {
        Text text = u"* comment";
        for (int32_t i = 1; i < lines; ++i) text += u"\r\n   IF x" + Decimal(i) + u" = \"text\" THEN y = 1 END";
        view.SetText(text);
    }
    void Print(const QString& name)
    {
        printing.PrintPages(
            name, [&](const Paper& paper) { DrawPages(view, log, kTitle, paper); }, nullptr);
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
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) pixels.push_back(image.pixel(x, y));
        return pixels;
    }
    QString TextOf() const
    {
        return Poppler(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), Path(), QStringLiteral("-")});
    }
};

TEST_F(PrintedPdf, GreyAndLastPageFirst)
{
    Sample(100);
    printing.choose = [&](QPrinter& printer, const PrintJob&, QWidget*) {
        printer.setOutputFileName(Path());
        printer.setColorMode(QPrinter::GrayScale);
        printer.setPageOrder(QPrinter::LastPageFirst);
        return true;
    };
    Print(QStringLiteral("BP SAMPLE"));
    const QStringList pages = TextOf().split(QChar(u'\f'), Qt::SkipEmptyParts);
    ASSERT_GT(pages.size(), 1);
    EXPECT_TRUE(pages.last().trimmed().startsWith(QLatin1String("Page 1")));
    for (QRgb pixel : PixelsOf(1)) ASSERT_TRUE(qRed(pixel) == qGreen(pixel) && qGreen(pixel) == qBlue(pixel));
}

TEST_F(PrintedPdf, PagesBeyondTheLastAreTold)
{
    printing.choose = [&](QPrinter& printer, const PrintJob&, QWidget*) {
        printer.setOutputFileName(Path());
        printer.setPrintRange(QPrinter::PageRange);
        printer.setFromTo(90, 91);
        return true;
    };
    Print(QStringLiteral("BP SAMPLE"));
    EXPECT_EQ(boxes.Take().size(), 1U);
    EXPECT_FALSE(QFile::exists(Path()));
}

TEST_F(PrintedPdf, AFullDiskIsToldAndKeepsTheOldFile)
{
    const TempFolder disk;
    const std::string path = disk.File("out.pdf", "old");
    printing.choose = [&](QPrinter& printer, const PrintJob&, QWidget*) {
        printer.setOutputFileName(QString::fromStdString(path));
        return true;
    };
    Sample(100);
    const FullDisk full(1000);
    Print(QStringLiteral("BP SAMPLE"));
    EXPECT_EQ(boxes.Take().size(), 1U);
    EXPECT_EQ(BytesOf(path), "old");
    const auto draw = [&](QPagedPaintDevice& device) { DrawPages(view, log, kTitle, {device}); };
    EXPECT_THROW(WritePdf({QStringLiteral("/dev/full"), {}, Sheet(QPageSize::A4), {}}, saver, draw), Error);
}

TEST_F(PrintedPdf, EveryColourCanBeReadOnPaper)
{
    for (const int32_t color : {0xFFFFFF, 0xC8C8C8, 0x80FFFF, 0x79C398, 0x008000, 0}) {
        view.PrintTokenStyles().SetColor(6, color);
        view.SetText(u"* \u2588\u2588\u2588\u2588");
        WritePdf({Path(), {}, Sheet(QPageSize::A4), {}}, saver,
                 [&](QPagedPaintDevice& device) { DrawPages(view, log, kTitle, {device}); });
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
    Print(QStringLiteral("a/b"));
    EXPECT_EQ(offered, folder.path()) << "no folder of documents";
    QDir(folder.path()).mkdir(QStringLiteral("Documents"));
    Print(QStringLiteral("a/b"));
    EXPECT_EQ(offered, folder.filePath(QStringLiteral("Documents")));
    qputenv("HOME", home);
}

} // namespace nib::test::widget_print_test
