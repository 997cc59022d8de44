#pragma once
#include "shell/assist/Assistance.h"

#include <QCoreApplication>
#include <QDialog>

#include <optional>

class QLineEdit;
class QListWidget;

namespace nib {

/// Goes to an item of the account by a few letters of its name, or, with "@" in front, to a label or subroutine.
class frmQuickOpen final : public QDialog {
    Q_DECLARE_TR_FUNCTIONS(frmQuickOpen)
public:
    /// The assistance outlives it.
    frmQuickOpen(Assistance& assistance, QWidget* owner);

    /// Modal. The place that was chosen; nothing when it was cancelled.
    std::optional<PathRange> Ask();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Search();
    void Show(std::vector<FoundSymbol> found);

    Assistance& assistance_;
    QLineEdit* query_;
    QListWidget* list_;
    std::vector<FoundSymbol> found_;
    int32_t asked_ = 0; ///< counts the questions: only the last one's answer is shown
};

} // namespace nib
