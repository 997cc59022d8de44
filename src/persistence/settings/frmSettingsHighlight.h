#pragma once
#include "editing/LexClass.h"
#include "editing/MvEdit.h"
#include "persistence/settings/SettingsModel.h"
#include "platform/qt/QtDesktop.h"
#include "text/SourceDocument.h"
#include "text/widget/ScreenColors.h"

#include <QCoreApplication>
#include <QFrame>
#include <QWidget>

#include <functional>
#include <vector>

class QCheckBox;
class QGridLayout;
class QLabel;

namespace nib {

class SourceViewWidget;

/// A sample program in the colours being chosen; it is for looking at alone.
class StylePreview final : public QFrame {
    Q_DECLARE_TR_FUNCTIONS(frmSettings)
public:
    StylePreview();
    ~StylePreview() override;
    void Show(const MvEdit& settings);
    /// The colours that it is painted in now.
    ScreenColors Painted() const;

    std::function<void()> paletteChanged = [] {};

protected:
    void changeEvent(QEvent* event) override;

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
        QLabel* lblHard = nullptr; ///< shown where the colour can hardly be read
    };
    void AddRow(QGridLayout& grid, const HighlightRow& setting);
    QCheckBox* AddStyle(const HighlightRow& setting, const QString& caption, TextView name, int32_t bit);
    void ShowRows();
    void ShowPainted();

    SettingsModel& model_;
    std::vector<Row> rows_;
    StylePreview* preview_ = nullptr;
};

} // namespace nib
