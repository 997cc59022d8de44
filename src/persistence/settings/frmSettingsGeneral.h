#pragma once
#include "persistence/settings/SettingsModel.h"

#include <QCoreApplication>
#include <QWidget>

#include <functional>

class QBoxLayout;
class QCheckBox;
class QGroupBox;
class QLabel;

namespace nib {

class GeneralPage final : public QWidget {
    Q_DECLARE_TR_FUNCTIONS(frmSettings)
public:
    /// `changed` hears of what can be seen in the preview. The model outlives the page.
    GeneralPage(SettingsModel& model, std::function<void()> changed);
    /// Shows what an import may have changed.
    void Refresh();

private:
    QCheckBox* AddCheck(TextView name, bool state, std::function<void(QCheckBox&, bool)> clicked);
    QGroupBox* BuildFont();
    void ChooseFont();
    void ShowFont();

    SettingsModel& model_;
    std::function<void()> changed_;
    QCheckBox* chkCaseSensitive_ = nullptr;
    QLabel* lblFontName_ = nullptr;
    QLabel* lblFontSize_ = nullptr;
};

} // namespace nib
