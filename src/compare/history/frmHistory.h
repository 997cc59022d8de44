#pragma once
#include "compare/QtCompareWindows.h"
#include "compare/history/VersionList.h"

#include <QCoreApplication>
#include <QDockWidget>

#include <functional>

class QLabel;
class QPushButton;
class QTreeView;

namespace nib {

/// The versions of the document in front, be it in a comparison, at the right of the main window.
class frmHistory final : public QDockWidget {
    Q_DECLARE_TR_FUNCTIONS(frmHistory)
public:
    /// All outlive it.
    frmHistory(ItemHistory& history, DocumentServices& services, QtCompareWindows& compare, QWidget* window);
    ~frmHistory() override;

    /// The document in front or its versions are others.
    void Follow();
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
    class View;

    void Try(const std::function<void()>& what);
    void ShowButtons();
    void ShowWhyNone();
    void BringBack();
    void CompareChosen();
    /// Rows that are chosen, ascending.
    std::vector<size_t> Chosen() const;
    CompareText TextOf(size_t row) const;

    VersionList list_;
    QtCompareWindows& compare_;
    Model* model_;
    QTreeView* view_;
    QLabel* whyNone_; ///< in the place of versions
    QPushButton* bringBack_;
    QPushButton* compareButton_;
    bool fitted_ = false; ///< the columns are as wide as what the first versions need
};

/// When a version was saved, for the user to read.
QString TimeText(const Version& version);

} // namespace nib
