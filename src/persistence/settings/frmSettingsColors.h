#pragma once
// The combo of colours with its swatches.

#include "persistence/settings/ColorTable.h"

#include <QComboBox>
#include <QPalette>

#include <functional>

class QLabel;

namespace nib {

/// Rows of the table, each with its colour beside its name; the headings cannot be chosen.
class ColorCombo final : public QComboBox {
public:
    /// `chosen` hears of each choice of the user.
    explicit ColorCombo(std::function<void(int32_t)> chosen);
    /// `preview` shows the colour, and its name as a tip.
    void SetPreview(QLabel* preview);
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
