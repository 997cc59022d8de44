#include "compare/history/QtHistory.h"

#include "diagnostics/Guarded.h"
#include "documents/mvDocument.h"
#include "platform/qt/QtDesktop.h"
#include "platform/qt/QtText.h"
#include "text/widget/SourceViewWidget.h"

#include <QDateTime>
#include <QLocale>
#include <QMdiArea>
#include <QMdiSubWindow>

#include <algorithm>

namespace nib {

namespace {

// Until the user chooses:
constexpr int kWidth = 360;
constexpr int kLeastChars = 39; ///< the heads of the columns, in large letters too
constexpr int kOld = 1500;      ///< milliseconds
constexpr qsizetype kLongestName = 10;

QString NoteOf(const Version& version)
{
    const QDate day = QDateTime::fromSecsSinceEpoch(version.time).date();
    return ToQString(version.author).left(kLongestName) + u' ' + QLocale().toString(day, QLocale::ShortFormat);
}

std::vector<MarginNote> NotesOf(const AuthoredText& authors)
{
    std::vector<MarginNote> notes;
    std::vector<QString> names;
    names.reserve(authors.versions.size());
    for (const Version& version : authors.versions) names.push_back(NoteOf(version));
    const auto count = static_cast<int32_t>(authors.lines.size());
    for (int32_t line = 0; line < count;) {
        const int32_t version = authors.lines[static_cast<size_t>(line)];
        const int32_t first = line;
        while (line < count && authors.lines[static_cast<size_t>(line)] == version) ++line;
        if (version >= 0) notes.push_back({first, line - 1, names[static_cast<size_t>(version)]});
    }
    return notes;
}

} // namespace

QtHistory::QtHistory(ItemHistory& history, DocumentServices& services, QtCompareWindows& compare, QMainWindow& window,
                     std::function<void()> stateChanged)
    : history_(history), services_(services), window_(window),
      panel_(new frmHistory(history, services, compare, &window))
{
    window_.addDockWidget(Qt::RightDockWidgetArea, panel_);
    const int least = window_.fontMetrics().averageCharWidth() * kLeastChars;
    window_.resizeDocks({panel_}, {std::max(kWidth, least)}, Qt::Horizontal);
    panel_->onClose = [this, stateChanged = std::move(stateChanged)] {
        services_.settings.HistoryShown = false;
        stateChanged();
        if (onRoomChanged) onRoomChanged();
    };
    panel_->onLeave = [this] {
        if (onLeave) onLeave();
    };
    panel_->onFailure = [this](const Text& why) { services_.shell.ReportError(why); };
    history_.Changed = [this] { Refresh(); };
    // Also without a panel: what is told of the margin is of the window in front.
    if (auto* area = window_.findChild<QMdiArea*>())
        QObject::connect(
            area, &QMdiArea::subWindowActivated, panel_, [this] { Refresh(); }, Qt::QueuedConnection);
    QObject::connect(&old_, &QTimer::timeout, panel_, [this] {
        for (SourceViewWidget* pane : PanesOf(services_.frame.ActiveDocument()))
            if (pane->Notes().AreOld()) return AskAuthors();
    });
    Refresh();
}

QtHistory::~QtHistory()
{
    history_.Changed = nullptr;
    delete panel_;
}

void QtHistory::Refresh()
{
    const bool wanted = services_.settings.HistoryShown;
    const bool comes = wanted && panel_->isHidden();
    const bool moves = wanted == panel_->isHidden();
    if (comes && !std::exchange(placed_, true)) JoinPanels(window_, *panel_);
    panel_->setVisible(wanted);
    if (comes) panel_->raise();
    if (moves && onRoomChanged) onRoomChanged();
    panel_->Follow();
    if (comes && started_) panel_->TakeFocus();
    started_ = true;
    AskAuthors();
}

std::vector<SourceViewWidget*> QtHistory::PanesOf(int32_t documentId) const
{
    std::vector<SourceViewWidget*> panes;
    const auto document = services_.openDocuments.ById(documentId);
    if (!document || !document->View()) return panes;
    const SourceDocument& text = document->View()->txtText().Document();
    const auto all = window_.findChildren<SourceViewWidget*>();
    for (SourceViewWidget* pane : all)
        if (&pane->Model().Document() == &text) panes.push_back(pane);
    return panes;
}

void QtHistory::AskAuthors()
{
    if (!services_.settings.AuthorsShown) {
        old_.stop();
        for (const auto& pane : std::exchange(shown_, {}))
            if (pane) pane->SetNotes({});
        return;
    }
    old_.start(kOld);
    const auto document = services_.openDocuments.ById(services_.frame.ActiveDocument());
    if (!document) return;
    const int32_t id = document->DocumentID();
    IgnoringErrors([&] {
        history_.AskAuthors(*document, [this, id, panel = panel_](const AuthoredText& authors) {
            if (panel) ShowAuthors(id, authors);
        });
    });
}

void QtHistory::ShowAuthors(int32_t documentId, const AuthoredText& authors)
{
    if (!services_.settings.AuthorsShown) return;
    std::erase_if(shown_, [](const auto& pane) { return !pane; });
    for (SourceViewWidget* pane : PanesOf(documentId)) {
        shown_.emplace_back(pane);
        // Of a text that has been edited since: the next answer fits.
        if (!authors.lines.empty() && pane->Model().Document().LineCount() != std::ssize(authors.lines)) continue;
        pane->SetNotes(NotesOf(authors));
    }
}

} // namespace nib
