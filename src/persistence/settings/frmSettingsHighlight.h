#pragma once
#include "editing/LexClass.h"
#include "editing/MvEdit.h"
#include "persistence/settings/SettingsModel.h"
#include "platform/qt/QtDesktop.h"
#include "text/SourceDocument.h"

#include <QCoreApplication>
#include <QFrame>
#include <QWidget>

#include <functional>
#include <vector>

class QCheckBox;
class QGridLayout;

namespace nib {

class SourceViewWidget;

/// A sample program in the colours being chosen; it is for looking at alone.
class StylePreview final : public QFrame {
    Q_DECLARE_TR_FUNCTIONS(frmSettings)
public:
    StylePreview();
    ~StylePreview() override;
    void Show(const MvEdit& settings);

private:
    MvEdit sample_;
    LexClass lexer_;
    SourceDocument buffer_;
    QtClipboard clipboard_;
    std::unique_ptr<SourceViewWidget> view_;
};

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
