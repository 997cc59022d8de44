#pragma once
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QWidget>

namespace nib {

/// A value to read, select and copy, in the middle of which a text too long is cut short; the whole of it is the tool
/// tip, and shows while the field has the focus.
class ElidedValue final : public QLineEdit {
public:
    explicit ElidedValue(const QString& value, QWidget* parent = nullptr);

    QString Value() const { return value_; }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    QSize SizeFor(int textWidth) const;
    void ShowText();

    QString value_;
};

/// A plain text of one line, of which both ends show where there is no room for all.
class ElidedLabel final : public QLabel {
public:
    explicit ElidedLabel(const QString& text = {}, QWidget* parent = nullptr);

    QSize minimumSizeHint() const override { return {40, QLabel::minimumSizeHint().height()}; }

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};

/// The first size of a window: what its texts would like, as far as the screen has it.
inline void ResizeOnScreen(QWidget& window, const QSize& wanted)
{
    window.resize(wanted.boundedTo(window.screen()->availableSize() * 0.9));
}

} // namespace nib
