#pragma once
#include "compare/QtMergeRows.h"

#include <QDialog>

class QLabel;
class QPushButton;
class QTableView;

namespace nib {

/// Three texts side by side, and what becomes of them: what overlaps is chosen here, conflict by conflict.
class frmMerge final : public QDialog {
    Q_DECLARE_TR_FUNCTIONS(frmMerge)
public:
    /// The model outlives it. `name` is the document's, `font` that of its text.
    frmMerge(MergeModel& merge, TextView name, const QFont& font, QWidget* owner);

    MergeAnswer ShowDialog();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QTableView* BuildSides(const QFont& font);
    QTableView* BuildOutcome(const QFont& font);
    QWidget* BuildChoices();
    QWidget* BuildAnswers();
    void Build(TextView name, const QFont& font);
    void Show(int32_t conflict);
    void ShowState();
    void Choose(MergeChoice choice);
    void Follow(int row);

    MergeModel& merge_;
    SidesTable* sidesTable_;
    OutcomeTable* outcomeTable_;
    QTableView* sides_ = nullptr;
    QTableView* outcome_ = nullptr;
    QLabel* state_ = nullptr;
    QPushButton* ok_ = nullptr;
    int32_t conflict_ = -1;
    bool following_ = false;
    MergeAnswer answer_ = MergeAnswer::Cancel;
};

} // namespace nib
