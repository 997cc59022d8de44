#include "platform/qt/QtPrinting.h"

#include "diagnostics/Guarded.h"
#include "platform/qt/QtPrintingFile.h"
#include "platform/qt/QtPrintingSurface.h"
#include "platform/qt/QtText.h"
#include "platform/qt/QtWaitCursor.h"
#include "search/frmResults.h"

#include <QDate>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QPushButton>
#include <QRegularExpression>
#include <QStandardPaths>

#include <utility>

namespace nib {

namespace {

constexpr qreal kMargin = 15; ///< millimetres
constexpr int kMostPages = 99999;

/// A sheet as it is usual where the user lives.
QPageLayout UsualLayout()
{
    bool letter = QLocale().measurementSystem() == QLocale::ImperialUSSystem;
    return QPageLayout(QPageSize(letter ? QPageSize::Letter : QPageSize::A4), QPageLayout::Portrait,
                       QMarginsF(kMargin, kMargin, kMargin, kMargin), QPageLayout::Millimeter);
}

/// Where a printed text goes that no printer takes.
QString PdfPath(const QString& folder, QString title)
{
    title.replace(QRegularExpression(QStringLiteral(R"([/\\:*?"<>|\x{0}-\x{1F}]+)")), QStringLiteral("_"));
    title = title.trimmed();
    if (title.isEmpty()) title = QStringLiteral("print");
    return QDir(folder).filePath(title + QStringLiteral(".pdf"));
}

std::vector<PrintRange> RangesOf(const QPagedPaintDevice& device)
{
    std::vector<PrintRange> ranges;
    const QPageRanges pages = device.pageRanges();
    for (const auto& range : pages.toRangeList()) ranges.push_back({range.from, range.to});
    return ranges;
}

} // namespace

Text ShortDate()
{
    return ToText(QLocale::system().toString(QDate::currentDate(), QLocale::ShortFormat));
}

void DrawPages(SourceViewModel& view, QPagedPaintDevice& device, const std::vector<PrintRange>& lines)
{
    QPainter painter;
    if (!painter.begin(&device)) throw Error(error_number::kDeviceUnavailable, u"The printer cannot be reached.");
    QtPrintingSurface surface(painter, device, view.Font());
    PageLayout layout(view, surface, surface.Shape(), lines);
    const std::vector<PrintRange> pages = RangesOf(device);
    if (!pages.empty() && pages.front().first > layout.PageCount()) {
        throw Error(error_number::kInvalidCall,
                    u"The text ends on page " + Decimal(layout.PageCount()) + u"; the pages asked for lie behind it.");
    }
    layout.Print(pages);
    if (!painter.end()) throw Error(error_number::kDeviceUnavailable, u"The printer did not take all pages.");
}

QtPrinting::QtPrinting(const DebugLog& log, MessageBoxes& boxes)
    : choose([this](QPrinter& printer, const PrintJob& job, QWidget* owner) { return Ask(printer, job, owner); }),
      log_(log), boxes_(boxes), folder_(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation))
{
}

void QtPrinting::Told(const std::function<void()>& body)
{
    Guarded(log_, u"QtPrinting.Print", body, [this](const Error& error) {
        boxes_.Show(u"Printing failed.\r\n\r\n" + error.description,
                    message_box::kOk | message_box::kError | message_box::kExtended, u"Nib");
    });
}

void QtPrinting::Print(SourceViewModel& view, TextView title)
{
    PrintJob job{ToQString(title), [&view](QPagedPaintDevice& device) { DrawPages(view, device); }, {}};
    if (view.HasSelection()) {
        Position start;
        Position end;
        view.GetSelection(start, end);
        if (end < start) std::swap(start, end);
        // A selection that ends before the first character of a line takes nothing of it.
        int32_t last = end.col == 0 && end.line > start.line ? end.line - 1 : end.line;
        job.drawSelection = [&view, lines = PrintRange{start.line, last}](QPagedPaintDevice& device) {
            DrawPages(view, device, {lines});
        };
    }
    Told([&] { Run(owner_, job); });
}

void QtPrinting::PrintResults(frmResults& results)
{
    PrintJob job{results.windowTitle(), [&](QPagedPaintDevice& device) { results.PrintTo(device); }, {}};
    Told([&] { Run(&results, job); });
}

void QtPrinting::Run(QWidget* owner, const PrintJob& job)
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(job.title);
    printer.setCreator(QStringLiteral("Nib"));
    if (layout_ || !printer.isValid() || QPrinterInfo::availablePrinterNames().isEmpty()) {
        printer.setPageLayout(layout_.value_or(UsualLayout()));
    } else {
        printer.setPageMargins(QMarginsF(kMargin, kMargin, kMargin, kMargin), QPageLayout::Millimeter);
    }
    // The dialog then starts at its entry for PDF files.
    if (QPrinterInfo::availablePrinterNames().isEmpty()) {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(PdfPath(folder_, job.title));
    }
    if (choose(printer, job, owner)) PrintOn(printer, job);
    layout_ = printer.pageLayout();
}

void QtPrinting::PrintOn(QPrinter& printer, const PrintJob& job)
{
    QtWaitCursor wait;
    bool selection = printer.printRange() == QPrinter::Selection && job.drawSelection;
    const auto& draw = selection ? job.drawSelection : job.draw;
    if (printer.outputFormat() == QPrinter::PdfFormat) {
        QString path = printer.outputFileName();
        folder_ = QFileInfo(path).absolutePath();
        QPageRanges pages = printer.printRange() == QPrinter::PageRange ? printer.pageRanges() : QPageRanges();
        WritePdf({path, job.title, printer.pageLayout(), pages}, draw);
        return;
    }
    // The other ranges the printer's own server picks from the whole text.
    if (printer.printRange() != QPrinter::PageRange) printer.setPageRanges({});
    draw(printer);
    if (printer.printerState() == QPrinter::Error)
        throw Error(error_number::kDeviceUnavailable, u"The printer reports an error.");
}

bool QtPrinting::Ask(QPrinter& printer, const PrintJob& job, QWidget* owner)
{
    QPrintDialog dialog(&printer, owner);
    dialog.setOption(QAbstractPrintDialog::PrintSelection, static_cast<bool>(job.drawSelection));
    dialog.setOption(QAbstractPrintDialog::PrintPageRange);
    dialog.setOption(QAbstractPrintDialog::PrintCurrentPage, false);
    dialog.setMinMax(1, kMostPages);
    if (auto* buttons = dialog.findChild<QDialogButtonBox*>()) {
        auto* preview = buttons->addButton(QObject::tr("Pre&view..."), QDialogButtonBox::ActionRole);
        QObject::connect(preview, &QPushButton::clicked, &dialog, [&] {
            if (Preview(printer, job, &dialog)) dialog.reject();
        });
        auto* page = buttons->addButton(QObject::tr("Page Set&up..."), QDialogButtonBox::ActionRole);
        QObject::connect(page, &QPushButton::clicked, &dialog, [&] { QPageSetupDialog(&printer, &dialog).exec(); });
    }
    return dialog.exec() == QDialog::Accepted;
}

bool QtPrinting::Preview(QPrinter& printer, const PrintJob& job, QWidget* owner)
{
    QPrintPreviewDialog preview(&printer, owner);
    preview.setWindowTitle(job.title.isEmpty() ? QObject::tr("Preview") : job.title + QObject::tr(" - Preview"));
    QObject::connect(&preview, &QPrintPreviewDialog::paintRequested, &preview,
                     [&](QPrinter* target) { Told([&] { job.draw(*target); }); });
    if (preview.exec() != QDialog::Accepted) return false;
    if (printer.outputFormat() == QPrinter::PdfFormat) Told([&] { CheckPdf(printer.outputFileName()); });
    return true;
}

} // namespace nib
