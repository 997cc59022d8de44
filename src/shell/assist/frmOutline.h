#pragma once
#include "shell/assist/Assistance.h"
#include "shell/assist/OutlineModel.h"

#include <QCoreApplication>
#include <QDockWidget>
#include <QTimer>

#include <functional>

class QLineEdit;
class QListWidget;

namespace nib {

/// Labels and subroutines of the active program, at the right of the main window.
class frmOutline final : public QDockWidget {
    Q_DECLARE_TR_FUNCTIONS(frmOutline)
public:
    /// The assistance outlives it.
    frmOutline(Assistance& assistance, DocumentServices& services, QWidget* window);

    /// The active document, its text or the caret in it are others.
    void Follow();
    void TextChanged();
    /// The user wants to be at a place of the active document.
    std::function<void(Position at)> onJump;
    /// The user has closed it.
    std::function<void()> onClose;

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Ask();
    void FillIn();
    void ShowPlace();
    void Jump(int row);

    Assistance& assistance_;
    DocumentServices& services_;
    OutlineModel model_;
    QLineEdit* filter_;
    QListWidget* list_;
    QTimer soon_;
    int32_t documentId_ = 0; ///< whose entries are listed
};

} // namespace nib
