#pragma once
// The settings dialog: shows a SettingsModel, and hands it what the user does.

#include "persistence/settings/SettingsModel.h"

#include <QCoreApplication>
#include <QDialog>

class QLabel;
class QTabWidget;

namespace nib {

class GeneralPage;
class HighlightPage;
class KeywordsPage;

class frmSettings final : public QDialog {
    Q_DECLARE_TR_FUNCTIONS(frmSettings)
public:
    /// Modal over the owner, opened at a page numbered from 1; true when the user agreed and all was applied.
    static bool ShowSettings(SettingsModel& model, QWidget* owner, int32_t page = 1);

    /// The model outlives the form.
    explicit frmSettings(SettingsModel& model, QWidget* owner = nullptr);
    void ShowPage(int32_t page);
    void accept() override;

private:
    void BuildTabs();
    void PageShown(int index);

    SettingsModel& model_;
    QTabWidget* tabStrip_ = nullptr;
    GeneralPage* general_ = nullptr;
    HighlightPage* highlight_ = nullptr;
    KeywordsPage* keywords_ = nullptr;
    QLabel* lbHostNote_ = nullptr;
};

} // namespace nib
