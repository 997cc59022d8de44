#pragma once
// The dialog that searches and replaces in the items of an account: shows an AccountFind's state and hands it what the
// user does.

#include "search/AccountFind.h"

#include <QCoreApplication>
#include <QDialog>

#include <functional>

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace nib {

class frmFindAccount final : public QDialog {
    Q_DECLARE_TR_FUNCTIONS(frmFindAccount)
public:
    /// `find` outlives the form; `owner` is the main window.
    explicit frmFindAccount(AccountFind& find, QWidget* owner = nullptr);
    ~frmFindAccount() override;

    void ShowDialog();
    /// Stops what is under way, else closes.
    void reject() override;

private:
    void Build();
    void BuildFiles(QGridLayout& grid);
    QWidget* BuildButtons();
    void Connect();
    void ShowState();
    void ShowFiles();
    void ShowEnabled();
    QString Status() const;
    void Changed();
    void ChooseAll(bool chosen);

    AccountFind& find_;
    QComboBox* cboFind_ = nullptr;
    QLineEdit* txtRepl_ = nullptr;
    QLineEdit* txtAccount_ = nullptr;
    QLabel* lbHost_ = nullptr;
    QListWidget* lstFiles_ = nullptr;
    QLineEdit* txtItems_ = nullptr;
    QCheckBox* chkMatchCase_ = nullptr;
    QCheckBox* chkWholeWord_ = nullptr;
    QCheckBox* chkRegex_ = nullptr;
    QPushButton* cmdAll_ = nullptr;
    QPushButton* cmdNone_ = nullptr;
    QPushButton* cmdFind_ = nullptr;
    QPushButton* cmdRepl_ = nullptr;
    QPushButton* cmdStop_ = nullptr;
    QPushButton* cmdClose_ = nullptr;
    QLabel* lbStatus_ = nullptr;
    bool positioned_ = false;
    bool running_ = false; ///< as it was shown last
    bool listed_ = false;
};

} // namespace nib
