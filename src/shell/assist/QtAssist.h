#pragma once
#include "shell/assist/Assistance.h"

#include <QMainWindow>
#include <QPointer>

#include <map>
#include <vector>

namespace nib {

class SourceViewWidget;
class frmProblems;

/// What the main window shows of an Assistance: waves in the views, and panels at its sides.
class QtAssist {
public:
    /// All outlive it.
    QtAssist(Assistance& assistance, DocumentServices& services, QMainWindow& window);
    ~QtAssist();
    QtAssist(const QtAssist&) = delete;
    QtAssist& operator=(const QtAssist&) = delete;

    /// A pane of a document's window, until it goes.
    void AddPane(int32_t documentId, SourceViewWidget& pane);
    /// The panels that the settings want.
    void ShowPanels();

private:
    void FindingsChanged(int32_t documentId);
    void Underline(SourceViewWidget& pane, int32_t documentId);

    Assistance& assistance_;
    DocumentServices& services_;
    QMainWindow& window_;
    std::multimap<int32_t, QPointer<SourceViewWidget>> panes_; ///< by DocumentID
    frmProblems* problems_;                                    ///< owned by the window
};

} // namespace nib
