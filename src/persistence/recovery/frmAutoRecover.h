#pragma once
#include "persistence/recovery/RecoveryList.h"

#include <QCoreApplication>
#include <QDialog>

class QLabel;
class QPushButton;
class QTreeWidget;

namespace nib {

/// Offers the documents that an earlier session left behind. Made when there are some, for one call.
class frmAutoRecover final : public QDialog {
    Q_DECLARE_TR_FUNCTIONS(frmAutoRecover)
public:
    using ShowComparison = std::function<void(RecoveryComparison comparison, QWidget& owner)>;

    /// `showComparison` comes back when the user has seen it.
    frmAutoRecover(modAutoRecover& recovery, ShowComparison showComparison);

    /// Modal over the owner, again and again until nothing is left or the user has had enough. The names are of files
    /// in the folder.
    void ShowDialog(TextView folder, const DynamicArray& names, QWidget* owner);

private:
    void Build();
    void Connect();
    void FillIn();
    void FitColumns();
    void CheckAll(bool checked);
    void ShowState();
    size_t Row() const; ///< no row's while none has the focus
    void Compare();
    bool IsOverBox(const QPoint& point) const;
    RecoveryChoice ShowModal();
    void Leave(RecoveryChoice choice) { done(static_cast<int>(choice)); }

    RecoveryList list_;
    ShowComparison showComparison_;
    QLabel* whatToDo_ = nullptr;
    QLabel* caption_ = nullptr;
    QTreeWidget* lstDocuments_ = nullptr;
    QPushButton* cmdSelect_ = nullptr;
    QPushButton* cmdUnselect_ = nullptr;
    QPushButton* cmdCompare_ = nullptr;
    QPushButton* cmdRecover_ = nullptr;
    QPushButton* cmdDelete_ = nullptr;
    QPushButton* cmdCancel_ = nullptr;
    bool filling_ = false;
};

} // namespace nib
