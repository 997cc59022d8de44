#pragma once
#include "persistence/settings/SettingsModel.h"

#include <QCoreApplication>
#include <QWidget>

#include <functional>

class QGroupBox;
class QSpinBox;

namespace nib {

class ToolsPage final : public QWidget {
    Q_DECLARE_TR_FUNCTIONS(frmSettings)
public:
    /// `changed` hears of what can be seen in the preview. The model outlives the page.
    ToolsPage(SettingsModel& model, std::function<void()> changed);

private:
    QGroupBox* BuildCompile();
    QGroupBox* BuildFormat();
    QGroupBox* BuildUserComment();
    QGroupBox* BuildIndent(TextView name, int16_t MvEdit::*member);
    QSpinBox* BuildNumber(int16_t MvEdit::*member);

    SettingsModel& model_;
    std::function<void()> changed_;
};

} // namespace nib
