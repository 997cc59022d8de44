#pragma once
// What the pages of the settings dialog are put together from.

#include "persistence/settings/ColorTable.h"
#include "persistence/settings/SettingsModel.h"

#include <QComboBox>
#include <QPalette>
#include <QSpinBox>

#include <functional>
#include <iterator>
#include <span>

class QAbstractButton;
class QButtonGroup;
class QGroupBox;
class QLabel;

namespace nib {

/// The caption of a control, as the model has it.
QString CaptionOf(const SettingsModel& model, TextView control);
/// The caption without its access key, for those who hear the screen.
QString SpokenName(QString caption);
/// Names the control, and where it has a text, captions it.
void NameControl(const SettingsModel& model, TextView control, QWidget& widget);
void CaptionButton(const SettingsModel& model, TextView control, QAbstractButton& button);
/// A label in front of a field, as its buddy.
QLabel* LabelFor(const SettingsModel& model, TextView control, QWidget& field);

/// Radio buttons in a frame, numbered from 0; `chosen` hears of each choice of the user.
QGroupBox* BuildOptions(const SettingsModel& model, TextView control, std::span<const TextView> captions,
                        int32_t present, std::function<void(int32_t)> chosen);

/// A number from 0 up. Whatever is typed counts: too small is 0, too large the most.
class NumberField final : public QSpinBox {
public:
    NumberField(int32_t most, int32_t present);

protected:
    QValidator::State validate(QString& input, int& position) const override;
    int valueFromText(const QString& text) const override;
    void fixup(QString& input) const override;
};

// The combo of colours with its swatches.

/// Rows of the table, each with its colour beside its name; the headings cannot be chosen.
class ColorCombo final : public QComboBox {
public:
    /// `chosen` hears of each choice of the user.
    explicit ColorCombo(std::function<void(int32_t)> chosen);
    /// `preview` has the name of the colour as a tip; the colour in it is `ShowPainted`'s.
    void SetPreview(QLabel* preview);
    void ShowPainted(const QColor& color);
    int32_t Value() const { return value_; }
    void SetValue(int32_t value);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void Fill();
    void Choose(int row);
    void AskForColor();
    void ShowPreview();

    std::function<void(int32_t)> chosen_;
    std::vector<ColorRow> rows_;
    QLabel* preview_ = nullptr;
    int32_t value_ = 0;
    bool filling_ = false;
};

} // namespace nib
