#pragma once
#include "compare/history/VersionList.h"

#include <QCoreApplication>
#include <QDockWidget>

#include <functional>

class QPushButton;
class QTreeView;

namespace nib {

/// The versions of the active document, at the right of the main window.
class frmHistory final : public QDockWidget {
    Q_DECLARE_TR_FUNCTIONS(frmHistory)
public:
    /// Both outlive it.
    frmHistory(ItemHistory& history, DocumentServices& services, QWidget* window);
    ~frmHistory() override;

    /// The active document or its versions are others.
    void Follow();
    /// The user wants to see what differs. Empty: it cannot be shown, and nothing offers it.
    using Compare = std::function<void(const Text& leftCaption, const Text& leftText, const Text& rightCaption,
                                       const Text& rightText)>;
    void SetCompare(Compare compare);
    void TakeFocus();
    /// The user has closed it.
    std::function<void()> onClose;
    /// The user is done with it and goes back to the text.
    std::function<void()> onLeave;
    /// What the user asked for failed.
    std::function<void(const Text& why)> onFailure;

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    class Model;

    void Try(const std::function<void()>& what);
    void ShowButtons();
    void BringBack();
    void CompareChosen();
    /// Rows that are chosen, ascending.
    std::vector<size_t> Chosen() const;
    Text CaptionOf(size_t row) const;

    VersionList list_;
    Model* model_;
    QTreeView* view_;
    QPushButton* bringBack_;
    QPushButton* compareButton_;
    Compare compare_;
};

/// When a version was saved, for the user to read.
QString TimeText(const Version& version);

} // namespace nib
