#include "shell/assist/QtAssist.h"

#include "documents/mvDocument.h"
#include "shell/assist/QtPaneHelp.h"
#include "shell/assist/QtPhrase.h"
#include "shell/assist/frmOutline.h"
#include "shell/assist/frmProblems.h"
#include "shell/assist/frmQuickOpen.h"
#include "shell/assist/frmRename.h"
#include "text/widget/SourceViewWidget.h"

#include <QTimer>

namespace nib {

namespace {

// Until the user chooses, in lines and in letters.
constexpr int kProblemsHeight = 11;
constexpr int kOutlineWidth = 35;

} // namespace

QtAssist::QtAssist(Assistance& assistance, NameCommands& names, DocumentServices& services, QMainWindow& window)
    : assistance_(assistance), names_(names), services_(services), window_(window),
      problems_(new frmProblems(assistance, &window)), outline_(new frmOutline(assistance, services, &window))
{
    assistance_.said = ShownText;
    assistance_.FindingsChanged = [this](int32_t documentId) { FindingsChanged(documentId); };
    assistance_.FindingsMoved = [this] { problems_->FindingsChanged(); };
    assistance_.TextTold = [this](int32_t documentId) {
        if (documentId == services_.frame.ActiveDocument()) outline_->TextChanged();
    };
    assistance_.PanelsChanged = [this] { ShowPanels(); };
    assistance_.Show = [this](AssistForm form, mvDocument* document) { ShowForm(form, document); };
    const auto closed = [this](bool MvEdit::*shown) {
        services_.settings.*shown = false;
        if (assistance_.StateChanged) assistance_.StateChanged();
    };
    problems_->onJump = [this](const ProblemList::Row& row) { assistance_.GoTo(row.documentId, row.at, row.message); };
    problems_->onClose = [closed] { closed(&MvEdit::ProblemsShown); };
    outline_->onJump = [this](Position at) { assistance_.GoTo(services_.frame.ActiveDocument(), at, {}); };
    outline_->onClose = [closed] { closed(&MvEdit::OutlineShown); };
    window_.addDockWidget(Qt::BottomDockWidgetArea, problems_);
    window_.addDockWidget(Qt::RightDockWidgetArea, outline_);
    window_.resizeDocks({problems_}, {window_.fontMetrics().lineSpacing() * kProblemsHeight}, Qt::Vertical);
    window_.resizeDocks({outline_}, {window_.fontMetrics().averageCharWidth() * kOutlineWidth}, Qt::Horizontal);
    ShowPanels();
}

QtAssist::~QtAssist()
{
    assistance_.said = English;
    assistance_.FindingsChanged = nullptr;
    assistance_.FindingsMoved = nullptr;
    assistance_.TextTold = nullptr;
    assistance_.PanelsChanged = nullptr;
    assistance_.Show = nullptr;
    delete problems_;
    delete outline_;
}

void QtAssist::ShowPanels()
{
    const bool comes = services_.settings.ProblemsShown && problems_->isHidden();
    problems_->setVisible(services_.settings.ProblemsShown);
    if (comes) problems_->raise(); // other lists may lie in the same place
    const bool outlineComes = services_.settings.OutlineShown && outline_->isHidden();
    outline_->setVisible(services_.settings.OutlineShown);
    if (outlineComes) outline_->raise();
    KeepCaretsSeen();
}

void QtAssist::KeepCaretsSeen()
{
    // The views are smaller or larger once the window has made room.
    QTimer::singleShot(0, problems_, [this] {
        for (const auto& [id, pane] : panes_)
            if (pane.widget && pane.widget->isVisible()) pane.widget->RevealPlace(pane.widget->Model().Caret());
    });
}

void QtAssist::AddPane(int32_t documentId, SourceViewWidget& pane)
{
    std::erase_if(panes_, [](const auto& entry) { return !entry.second.widget; });
    auto* help = new QtPaneHelp(assistance_, services_, names_, documentId, pane);
    panes_.emplace(documentId, Pane{&pane, help});
    Underline(pane, documentId);
}

void QtAssist::CaretMoved()
{
    outline_->Follow();
}

QtPaneHelp* QtAssist::ActivePane(const mvDocument& document) const
{
    const auto [first, last] = panes_.equal_range(document.DocumentID());
    QtPaneHelp* found = nullptr;
    for (auto entry = first; entry != last; ++entry)
        if (entry->second.help && (!found || entry->second.widget->hasFocus())) found = entry->second.help;
    return found;
}

void QtAssist::ShowForm(AssistForm form, mvDocument* document)
{
    QtPaneHelp* pane = document ? ActivePane(*document) : nullptr;
    switch (form) {
    case AssistForm::Completion:
        if (pane) pane->Complete();
        break;
    case AssistForm::Mends:
        if (pane) pane->ShowMends();
        break;
    case AssistForm::Rename:
        if (document)
            names_.AskRename(*document, [this, document](const NameCommands::Renamed& renamed) {
                if (renamed.name.empty()) return services_.frame.SetStatusText(1, renamed.refusal);
                frmRename(names_, *document, renamed.name, &window_).ShowDialog();
            });
        break;
    case AssistForm::QuickOpen:
        if (const auto chosen = frmQuickOpen(assistance_, &window_).Ask()) names_.GoTo(*chosen);
        break;
    }
}

void QtAssist::FindingsChanged(int32_t documentId)
{
    const auto [first, last] = panes_.equal_range(documentId);
    for (auto entry = first; entry != last; ++entry)
        if (entry->second.widget) Underline(*entry->second.widget, documentId);
    problems_->FindingsChanged();
}

void QtAssist::Underline(SourceViewWidget& pane, int32_t documentId)
{
    std::vector<nib::Underline> underlines;
    for (const ProgramFinding& finding : assistance_.Findings(documentId)) {
        TextRange range = finding.at;
        if (range.end.line != range.start.line)
            range.end = {pane.Model().Document().LineLength(range.start.line), range.start.line};
        underlines.push_back({range, static_cast<Severity>(finding.level)});
    }
    pane.SetUnderlines(std::move(underlines));
    std::vector<int32_t> marked;
    for (const CompileMark& mark : assistance_.Marks(documentId))
        if (marked.empty() || marked.back() != mark.line) marked.push_back(mark.line);
    pane.SetMarkedLines(std::move(marked));
}

} // namespace nib
