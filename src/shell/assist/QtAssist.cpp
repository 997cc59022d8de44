#include "shell/assist/QtAssist.h"

#include "documents/mvDocument.h"
#include "shell/assist/frmProblems.h"
#include "text/widget/SourceViewWidget.h"

namespace nib {

QtAssist::QtAssist(Assistance& assistance, DocumentServices& services, QMainWindow& window)
    : assistance_(assistance), services_(services), window_(window), problems_(new frmProblems(assistance, &window))
{
    assistance_.FindingsChanged = [this](int32_t documentId) { FindingsChanged(documentId); };
    assistance_.PanelsChanged = [this] { ShowPanels(); };
    problems_->onJump = [this](const ProblemList::Row& row) { assistance_.GoTo(row.documentId, row.at, row.message); };
    problems_->onClose = [this] {
        services_.settings.ProblemsShown = false;
        assistance_.StateChanged();
    };
    window_.addDockWidget(Qt::BottomDockWidgetArea, problems_);
    ShowPanels();
}

QtAssist::~QtAssist()
{
    assistance_.FindingsChanged = nullptr;
    assistance_.PanelsChanged = nullptr;
    delete problems_;
}

void QtAssist::ShowPanels()
{
    problems_->setVisible(services_.settings.ProblemsShown);
}

void QtAssist::AddPane(int32_t documentId, SourceViewWidget& pane)
{
    std::erase_if(panes_, [](const auto& entry) { return !entry.second; });
    panes_.emplace(documentId, &pane);
    Underline(pane, documentId);
}

void QtAssist::FindingsChanged(int32_t documentId)
{
    const auto [first, last] = panes_.equal_range(documentId);
    for (auto entry = first; entry != last; ++entry)
        if (entry->second) Underline(*entry->second, documentId);
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
}

} // namespace nib
