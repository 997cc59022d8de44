#pragma once
// The settings dialog: shows a SettingsModel, and hands it what the user does.

#include "persistence/settings/SettingsModel.h"

#include <QCoreApplication>
#include <QDialog>
#include <QWidget>

#include <functional>

class QBoxLayout;
class QCheckBox;
class QGroupBox;
class QHBoxLayout;
class QLabel;
class QSpinBox;
class QTabWidget;

namespace nib {

class GeneralPage final : public QWidget {
    Q_DECLARE_TR_FUNCTIONS(frmSettings)
public:
    /// `changed` hears of what can be seen in the preview; `connections` edits those to hosts. The model outlives the
    /// page.
    GeneralPage(SettingsModel& model, std::function<void()> changed, std::function<void(QWidget*)> connections);
    /// Shows what an import may have changed.
    void Refresh();

private:
    QCheckBox* AddCheck(TextView name, bool state, std::function<void(QCheckBox&, bool)> clicked);
    QHBoxLayout* BuildDialect();
    QGroupBox* BuildFont();
    void ChooseFont();
    void ShowFont();

    SettingsModel& model_;
    std::function<void()> changed_;
    QCheckBox* chkCaseSensitive_ = nullptr;
    QLabel* lblFontName_ = nullptr;
    QLabel* lblFontSize_ = nullptr;
};

class ToolsPage final : public QWidget {
    Q_DECLARE_TR_FUNCTIONS(frmSettings)
public:
    /// `changed` hears of what can be seen in the preview. The model outlives the page.
    ToolsPage(SettingsModel& model, std::function<void()> changed);

private:
    QGroupBox* BuildCompile();
    QGroupBox* BuildFormat();
    QGroupBox* BuildUserComment();
    QGroupBox* BuildHistory();
    QHBoxLayout* BuildNumbers(std::initializer_list<std::pair<TextView, int16_t MvEdit::*>> fields);
    QGroupBox* BuildIndent(TextView name, int16_t MvEdit::*member);
    QSpinBox* BuildNumber(int16_t MvEdit::*member);

    SettingsModel& model_;
    std::function<void()> changed_;
};

class HighlightPage;
class KeywordsPage;

class frmSettings final : public QDialog {
    Q_DECLARE_TR_FUNCTIONS(frmSettings)
public:
    /// Modal over the owner, opened at a page numbered from 1; true when the user agreed and all was applied.
    /// `connections` edits those to hosts over a widget.
    static bool ShowSettings(SettingsModel& model, QWidget* owner, int32_t page,
                             std::function<void(QWidget*)> connections);

    /// The model outlives the form.
    explicit frmSettings(SettingsModel& model, QWidget* owner = nullptr,
                         std::function<void(QWidget*)> connections = {});
    void ShowPage(int32_t page);
    void accept() override;

private:
    void BuildTabs(std::function<void(QWidget*)> connections);
    void PageShown(int index);

    SettingsModel& model_;
    QTabWidget* tabStrip_ = nullptr;
    GeneralPage* general_ = nullptr;
    HighlightPage* highlight_ = nullptr;
    KeywordsPage* keywords_ = nullptr;
    QLabel* lbHostNote_ = nullptr;
};

} // namespace nib
