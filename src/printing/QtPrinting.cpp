#include "printing/QtPrinting.h"

#include "diagnostics/Guarded.h"
#include "documents/mvDocument.h"
#include "platform/qt/QtDesktop.h"
#include "platform/qt/QtText.h"
#include "printing/PrintClass.h"
#include "printing/QtPrintingSurface.h"

#include <QAction>
#include <QCoreApplication>
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
#include <QRadioButton>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTimer>
#include <QToolBar>

#include <utility>

namespace nib {

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(Printing)
};

/// Where Qt keeps the words of its own dialog; no text of ours.
constexpr char kPreviewDialog[] = "QPrintPreviewDialog";

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

/// What was chosen in the dialog for the sheets that `device` takes.
Paper PaperOf(const QPrinter& chosen, QPagedPaintDevice& device)
{
    return {device, chosen.colorMode() == QPrinter::GrayScale, chosen.pageOrder() == QPrinter::LastPageFirst};
}

} // namespace

void DrawPages(SourceView& view, const DebugLog& log, const Text& title, const Paper& paper,
               const std::vector<PrintRange>& lines)
{
    PrintClass head(view, log, title, ToText(QLocale::system().toString(QDate::currentDate(), QLocale::ShortFormat)));
    QPainter painter;
    QtPrintingSurface surface(painter, paper, view.Font());
    PageLayout layout(view, head, surface, surface.Shape(), lines);
    const std::vector<int32_t> pages = ChosenPages(paper, layout.PageCount());
    if (!painter.begin(&paper.device)) RefuseDevice();
    layout.Print(pages);
    if (!painter.end()) RefuseDevice();
}

QtPrinting::QtPrinting(const DebugLog& log, MessageBoxes& boxes, FileWriter save, QWidget* owner)
    : choose([this](QPrinter& printer, const PrintJob& job, QWidget* over) { return Ask(printer, job, over); }),
      log_(log), boxes_(boxes), save_(std::move(save)), owner_(owner)
{
}

QString QtPrinting::Folder() const
{
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    for (const QString& folder : {folder_, documents}) {
        if (!folder.isEmpty() && QFileInfo(folder).isDir()) return folder;
    }
    return QDir::homePath();
}

void QtPrinting::Told(const std::function<void()>& body)
{
    Guarded(log_, u"QtPrinting.Print", body, [this](const Error& error) {
        boxes_.Show(ToText(Texts::tr("Printing failed.")) + u"\r\n\r\n" + error.description,
                    message_box::kOk | message_box::kError | message_box::kExtended, u"Nib");
    });
}

void QtPrinting::Print(mvDocument& document)
{
    SourceView& view = document.EnsureView().txtText();
    auto draw = [this, &view, title = document.PrintTitle()](const Paper& paper, const std::vector<PrintRange>& lines) {
        DrawPages(view, log_, title, paper, lines);
    };
    PrintJob job{ToQString(document.DisplayName()), [draw](const Paper& paper) { draw(paper, {}); }, {}};
    if (view.HasSelection()) {
        const auto [start, end] = view.Selection();
        // A selection that ends before the first character of a line takes nothing of it.
        int32_t last = end.col == 0 && end.line > start.line ? end.line - 1 : end.line;
        job.drawSelection = [draw, lines = PrintRange{start.line, last}](const Paper& paper) { draw(paper, {lines}); };
    }
    Told([&] { Run(owner_, job); });
}

void QtPrinting::PrintPages(const QString& title, const std::function<void(const Paper&)>& draw, QWidget* owner)
{
    PrintJob job{title, draw, {}};
    Told([&] { Run(owner, job); });
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
        printer.setOutputFileName(PdfPath(Folder(), job.title));
    }
    const bool agreed = choose(printer, job, owner);
    // Where the dialog and a question of its own go together, a window manager may give the focus to nobody.
    if (owner) owner->activateWindow();
    if (agreed) PrintOn(printer, job);
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
        WritePdf({path, job.title, printer.pageLayout(), pages}, save_,
                 [&](QPagedPaintDevice& device) { draw(PaperOf(printer, device)); });
        return;
    }
    // The other ranges the printer's own server picks from the whole text.
    if (printer.printRange() != QPrinter::PageRange) printer.setPageRanges({});
    draw(PaperOf(printer, printer));
    if (printer.printerState() == QPrinter::Error) RefuseDevice();
}

bool QtPrinting::Ask(QPrinter& printer, const PrintJob& job, QWidget* owner)
{
    QPrintDialog dialog(&printer, owner);
    dialog.setOption(QAbstractPrintDialog::PrintSelection, static_cast<bool>(job.drawSelection));
    dialog.setOption(QAbstractPrintDialog::PrintPageRange);
    dialog.setOption(QAbstractPrintDialog::PrintCurrentPage, false);
    dialog.setMinMax(1, kMostPages);
    // Without printers its properties hold nothing but the page set-up, and the preview could not see them.
    if (QPrinterInfo::availablePrinterNames().isEmpty()) {
        QTimer::singleShot(0, &dialog, [&] {
            if (auto* properties = dialog.findChild<QPushButton*>(QStringLiteral("properties"))) properties->hide();
        });
    }
    auto* selection = dialog.findChild<QRadioButton*>(QStringLiteral("printSelection"));
    if (auto* buttons = dialog.findChild<QDialogButtonBox*>()) {
        auto* preview = buttons->addButton(Texts::tr("Pre&view..."), QDialogButtonBox::ActionRole);
        QObject::connect(preview, &QPushButton::clicked, &dialog, [&, buttons] {
            const bool part = job.drawSelection && selection && selection->isChecked();
            if (!Preview(printer, part ? job.drawSelection : job.draw, job.title, &dialog)) return;
            // Only the dialog's own button asks before a file is written over.
            if (auto* print = buttons->button(QDialogButtonBox::Ok)) print->click();
        });
        auto* page = buttons->addButton(Texts::tr("Page Set&up..."), QDialogButtonBox::ActionRole);
        QObject::connect(page, &QPushButton::clicked, &dialog, [&] { QPageSetupDialog(&printer, &dialog).exec(); });
    }
    return dialog.exec() == QDialog::Accepted;
}

bool QtPrinting::Preview(QPrinter& printer, const std::function<void(const Paper&)>& draw, const QString& title,
                         QWidget* owner)
{
    QPrintPreviewDialog preview(&printer, owner);
    preview.setWindowTitle(title.isEmpty() ? Texts::tr("Preview") : Texts::tr("%1 - Preview").arg(title));
    QObject::connect(&preview, &QPrintPreviewDialog::paintRequested, &preview,
                     [&](QPrinter* target) { Told([&] { draw(PaperOf(printer, *target)); }); });
    for (auto* bar : preview.findChildren<QToolBar*>()) bar->setMovable(false);
    // Its own way to the printer would ask a second time, and write a file that a full disk cuts off.
    for (auto* action : preview.findChildren<QAction*>()) {
        if (action->text() != QCoreApplication::translate(kPreviewDialog, "Print")) continue;
        action->disconnect(&preview);
        QObject::connect(action, &QAction::triggered, &preview, &QDialog::accept);
    }
    return preview.exec() == QDialog::Accepted;
}

} // namespace nib
