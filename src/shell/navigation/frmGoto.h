#pragma once
#include "shell/navigation/Navigation.h"

#include <QCoreApplication>
#include <QDialog>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace nib {

/// The go-to dialog. One instance lives from start to end; closing it hides it.
class frmGoto final : public QDialog {
    Q_DECLARE_TR_FUNCTIONS(frmGoto)
public:
    explicit frmGoto(DocumentServices& services, QWidget* owner = nullptr);

    /// Modal over `owner`. True when OK was pressed; `target` is then the label that was used.
    bool ShowGoto(Text& target, QWidget* owner);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Build();
    void Connect();
    void FillIn();
    void ShowChoice();
    void FocusChoice();
    void Jump();

    GotoModel model_;
    QRadioButton* optLabel_ = nullptr;
    QRadioButton* optLine_ = nullptr;
    QComboBox* cboTarget_ = nullptr;
    QLineEdit* txtLineNumber_ = nullptr;
    QCheckBox* chkNoGoDlg_ = nullptr;
    QPushButton* cmdOK_ = nullptr;
    QPushButton* cmdCancel_ = nullptr;
    bool preparing_ = true;
};

} // namespace nib
