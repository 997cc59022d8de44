#pragma once
#include "shell/assist/NameCommands.h"

#include <QMainWindow>
#include <QPointer>

#include <map>
#include <vector>

namespace nib {

class QtPaneHelp;
class SourceViewWidget;
class frmOutline;
class frmProblems;

/// What the main window shows of an Assistance: waves in the views, and panels at its sides.
class QtAssist {
public:
    /// All outlive it.
    QtAssist(Assistance& assistance, NameCommands& names, DocumentServices& services, QMainWindow& window);
    ~QtAssist();
    QtAssist(const QtAssist&) = delete;
    QtAssist& operator=(const QtAssist&) = delete;

    /// A pane of a document's window, until it goes.
    void AddPane(int32_t documentId, SourceViewWidget& pane);
    /// Caret or active document are others.
    void CaretMoved();
    /// The panels that the settings want.
    void ShowPanels();
    /// After a panel took room from the texts or gave it back.
    void KeepCaretsSeen();

private:
    void FindingsChanged(int32_t documentId);
    void Underline(SourceViewWidget& pane, int32_t documentId);

    struct Pane {
        QPointer<SourceViewWidget> widget;
        QPointer<QtPaneHelp> help; ///< the widget's own
    };

    void ShowForm(AssistForm form, mvDocument* document);
    QtPaneHelp* ActivePane(const mvDocument& document) const;

    Assistance& assistance_;
    NameCommands& names_;
    DocumentServices& services_;
    QMainWindow& window_;
    std::multimap<int32_t, Pane> panes_; ///< by DocumentID
    frmProblems* problems_;              ///< these two are owned by the window
    frmOutline* outline_;
};

} // namespace nib
