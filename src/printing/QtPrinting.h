#pragma once
// Printing on the desktop: the dialog with preview and page set-up, printers, PDF files.

#include "diagnostics/DebugLog.h"
#include "platform/MessageBoxes.h"
#include "printing/PageLayout.h"
#include "printing/QtPrintingSurface.h"

#include <QPageLayout>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <optional>

class QPrinter;

namespace nib {

class mvDocument;

/// The view's lines on pages under a head with `title` and the present date; the paper's page ranges count. `lines`
/// empty: all.
void DrawPages(SourceView& view, const DebugLog& log, const Text& title, const Paper& paper,
               const std::vector<PrintRange>& lines = {});

/// What can be printed, again and again for each preview.
struct PrintJob {
    QString title;
    std::function<void(const Paper&)> draw;
    std::function<void(const Paper&)> drawSelection; ///< none: nothing is selected
};

class QtPrinting {
public:
    /// The references outlive the object. PDF files are written by `save`; the dialogs stand over `owner`.
    QtPrinting(const DebugLog& log, MessageBoxes& boxes, FileWriter save, QWidget* owner = nullptr);

    /// Asks where to and which pages, and prints the text. Tells the user of any failure itself.
    void Print(mvDocument& document);
    /// Whatever `draw` puts on paper; the dialogs stand over `owner`.
    void PrintPages(const QString& title, const std::function<void(const Paper&)>& draw, QWidget* owner);

    /// Asks for printer, pages and the like; false when nothing is left to print.
    std::function<bool(QPrinter&, const PrintJob&, QWidget*)> choose;

private:
    void Run(QWidget* owner, const PrintJob& job);
    void PrintOn(QPrinter& printer, const PrintJob& job);
    bool Ask(QPrinter& printer, const PrintJob& job, QWidget* owner);
    /// True when what was shown is to be printed.
    bool Preview(QPrinter& printer, const std::function<void(const Paper&)>& draw, const QString& title,
                 QWidget* owner);
    /// Where PDF files are offered to go.
    QString Folder() const;
    /// Runs `body`; the user is told how it fails.
    void Told(const std::function<void()>& body);

    const DebugLog& log_;
    MessageBoxes& boxes_;
    FileWriter save_;
    QPointer<QWidget> owner_;
    std::optional<QPageLayout> layout_; ///< as last chosen
    QString folder_;                    ///< of the last PDF file, if there was one
};

} // namespace nib
