#pragma once
#include "compare/history/frmHistory.h"

#include <QMainWindow>
#include <QPointer>
#include <QTimer>

#include <vector>

namespace nib {

class SourceViewWidget;

/// What the main window shows of the history: a panel with the versions of the active document, and in the margin of
/// its text who last changed each line.
class QtHistory {
public:
    /// All outlive it. `stateChanged` is called when the user closes the panel.
    QtHistory(ItemHistory& history, DocumentServices& services, QtCompareWindows& compare, QMainWindow& window,
              std::function<void()> stateChanged);
    ~QtHistory();
    QtHistory(const QtHistory&) = delete;
    QtHistory& operator=(const QtHistory&) = delete;

    /// After the panel took room from the texts or gave it back.
    std::function<void()> onRoomChanged;

    /// The user goes back to the text.
    std::function<void()> onLeave;

private:
    void Refresh();
    void AskAuthors();
    void ShowAuthors(int32_t documentId, const AuthoredText& authors);
    std::vector<SourceViewWidget*> PanesOf(int32_t documentId) const;

    ItemHistory& history_;
    DocumentServices& services_;
    QMainWindow& window_;
    QPointer<frmHistory> panel_; ///< the window's own
    QTimer old_;                 ///< looks for authors that stand beside an edited text
    std::vector<QPointer<SourceViewWidget>> shown_;
    bool started_ = false;
    bool placed_ = false;
};

} // namespace nib
