#pragma once
#include "shell/assist/NameCommands.h"

#include <QCoreApplication>
#include <QDialog>
#include <QTimer>

class QLabel;
class QLineEdit;
class QPushButton;
class QTreeWidget;

namespace nib {

/// Asks for a new name and shows every place that it will have, each of which can be left out.
class frmRename final : public QDialog {
    Q_DECLARE_TR_FUNCTIONS(frmRename)
public:
    /// Both outlive it; `oldName` is at the caret of the document.
    frmRename(NameCommands& names, mvDocument& document, const Text& oldName, QWidget* owner);

    /// Modal. Renames when the user says so.
    void ShowDialog();

private:
    void Build();
    void AskPreview();
    void ShowPreview();
    void TakeChoices();

    NameCommands& names_;
    mvDocument& document_;
    const Text oldName_;
    RenamePreview preview_;
    QLineEdit* name_ = nullptr;
    QTreeWidget* places_ = nullptr;
    QLabel* note_ = nullptr;
    QPushButton* ok_ = nullptr;
    QTimer soon_;
    int32_t asked_ = 0;
};

} // namespace nib
