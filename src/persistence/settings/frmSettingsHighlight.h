#pragma once
#include "persistence/settings/SettingsModel.h"

#include <QWidget>

#include <functional>
#include <vector>

class QCheckBox;
class QGridLayout;

namespace nib {

class ColorCombo;
class StylePreview;

/// Colours and styles, and how they look.
class HighlightPage final : public QWidget {
public:
    /// The model outlives the page.
    explicit HighlightPage(SettingsModel& model);
    /// Shows the present settings on the sample.
    void ShowPreview();

private:
    struct Row {
        ColorCombo* cbColor = nullptr;
        QCheckBox* chkBold = nullptr;
        QCheckBox* chkItalic = nullptr;
    };
    void AddRow(QGridLayout& grid, const HighlightRow& setting);
    QCheckBox* AddStyle(const HighlightRow& setting, const QString& caption, TextView name, int32_t bit);
    void ShowRows();

    SettingsModel& model_;
    std::vector<Row> rows_;
    StylePreview* preview_ = nullptr;
};

} // namespace nib
