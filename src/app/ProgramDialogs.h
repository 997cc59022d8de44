#pragma once
// The forms beside the main window, and what commands want of them.

#include "compare/QtCompareWindows.h"
#include "compare/history/QtHistory.h"
#include "persistence/settings/SettingsModel.h"
#include "platform/qt/QtDesktop.h"
#include "search/QtResultsPanel.h"
#include "search/frmFind.h"
#include "search/frmFindAccount.h"
#include "search/frmFindBar.h"
#include "shell/frame/frmMain.h"
#include "shell/help/QtHelpWindow.h"
#include "shell/navigation/frmGoto.h"

namespace nib {

class QtPrinting;

class ProgramDialogs final : public Dialogs, public SettingsApplied {
public:
    /// All outlive it. `editConnections` does so over a widget.
    ProgramDialogs(frmMain& mainWindow, SettingsStore& store, QtPrinting& printing,
                   std::function<void(QWidget*)> editConnections)
        : mainWindow_(mainWindow), store_(store), printing_(printing), editConnections_(std::move(editConnections))
    {
    }

    // Dialogs
    void Load(Program& program) override;
    void Unload() override;
    void Show(Form form, mvDocument* document) override;
    void ShowHelp(TextView page) override;
    void Goto(Text& target) override { goto_->ShowGoto(target, &mainWindow_); }
    MergeAnswer Merge(MergeModel& merge, TextView name) override;
    void OfferRecovered(modAutoRecover& recovery, TextView folder, const DynamicArray& names) override;
    // SettingsApplied
    void IconsChosen(bool large) override;
    void FontChanged() override;

private:
    void LoadSearch(Program& program);

    frmMain& mainWindow_;
    SettingsStore& store_;
    QtPrinting& printing_;
    std::function<void(QWidget*)> editConnections_;
    Program* program_ = nullptr;
    std::unique_ptr<ResultsModel> resultsModel_;
    std::unique_ptr<QtResultsPanel> resultsPanel_;
    std::unique_ptr<frmResults> results_; ///< may lie in the panel
    std::unique_ptr<FindEngine> engine_;
    QtTimers timers_;
    std::unique_ptr<HitLights> lights_;
    std::unique_ptr<frmFind> find_;
    std::unique_ptr<TypedFind> typedFind_;
    std::unique_ptr<frmFindBar> findBar_;
    std::unique_ptr<AccountFind> accountFind_;
    std::unique_ptr<frmFindAccount> findAccount_;
    std::unique_ptr<frmGoto> goto_;
    std::unique_ptr<HelpWindow> help_;
    std::unique_ptr<QtCompareWindows> compare_;
    std::unique_ptr<QtHistory> history_;
};

} // namespace nib
