#pragma once
// The Find and Replace dialog: shows a FindEngine's state and hands it what the user does.

#include "search/HitLights.h"

#include <QCoreApplication>
#include <QDialog>

#include <functional>

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace nib {

class frmFind final : public QDialog {
    Q_DECLARE_TR_FUNCTIONS(frmFind)
public:
    /// `engine` and `lights` outlive the form; `owner` is the main window.
    frmFind(FindEngine& engine, HitLights& lights, QWidget* owner = nullptr);

    /// The editor's font in the two fields, no larger than they can hold.
    void SetFont();
    void Find();
    void Replace();
    /// Also the main window's command, whether the dialog shows or not.
    bool FindNext();

    void reject() override;

    /// Where the selected text is on the screen; empty when it is not in sight.
    std::function<QRect()> matchPlace;
    /// Searches the account for the same.
    std::function<void()> findInAccount;

protected:
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Build();
    QWidget* BuildLookIn();
    QWidget* BuildDirection();
    QWidget* BuildRules();
    QWidget* BuildButtons();
    void Connect();
    void ShowDialog();
    void ShowState();
    void RefreshFindList();
    void Step(const std::function<void()>& body);
    void ListAll(FindMode mode);
    void Sought();
    /// The dialog never lies on what it has found.
    void StayBeside();

    FindEngine& engine_;
    HitLights& lights_;
    QLabel* lbFind_ = nullptr;
    QComboBox* cboFind_ = nullptr;
    QLabel* lbRepl_ = nullptr;
    QLineEdit* txtRepl_ = nullptr;
    QButtonGroup* optLookIn_ = nullptr;
    QButtonGroup* optDirection_ = nullptr;
    QCheckBox* chkMatchCase_ = nullptr;
    QCheckBox* chkWholeWord_ = nullptr;
    QCheckBox* chkRegex_ = nullptr;
    QLabel* lbState_ = nullptr;
    QLabel* lbDownOnly_ = nullptr;
    QPushButton* cmdFind_ = nullptr;
    QPushButton* cmdFindAll_ = nullptr;
    QPushButton* cmdBookmark_ = nullptr;
    QPushButton* cmdRepl_ = nullptr;
    QPushButton* cmdReplAll_ = nullptr;
    QPushButton* cmdAccount_ = nullptr;
    QPushButton* cmdCancel_ = nullptr;
    bool positioned_ = false;
};

} // namespace nib
