#pragma once
#include "shell/assist/ProblemList.h"

#include <QAbstractTableModel>
#include <QCoreApplication>
#include <QDockWidget>
#include <QTimer>

#include <array>
#include <functional>

class QToolButton;
class QTreeView;

namespace nib {

/// The list of problems at the bottom of the main window.
class frmProblems final : public QDockWidget {
    Q_DECLARE_TR_FUNCTIONS(frmProblems)
public:
    /// The assistance outlives it.
    frmProblems(const Assistance& assistance, QWidget* window);
    ~frmProblems() override;

    /// Soon, however often it is called.
    void FindingsChanged();
    /// The user wants to be at the place of a row.
    std::function<void(const ProblemList::Row&)> onJump;
    /// The user has closed it.
    std::function<void()> onClose;

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    class Model;

    void Refresh();
    void ShowCounts();
    void Jump(int row);

    ProblemList list_;
    std::array<QToolButton*, ProblemList::kLevels> levels_{};
    QTreeView* view_;
    Model* model_;
    QTimer soon_;
};

/// The desktop's picture of a level.
QIcon LevelIcon(FindingLevel level);

} // namespace nib
