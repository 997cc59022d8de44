#include "platform/qt/ElidedValue.h"

#include <QEvent>
#include <QFocusEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFrame>

#include <algorithm>

namespace nib {

namespace {

constexpr int kWidestChars = 64;
constexpr int kNarrowestChars = 16;
constexpr int kTextMargin = 2; // that of QLineEdit, on either side of the text

} // namespace

ElidedValue::ElidedValue(const QString& value, QWidget* parent) : QLineEdit(parent), value_(value)
{
    setReadOnly(true);
    setFrame(false);
    QPalette colors = palette();
    colors.setBrush(QPalette::Base, Qt::transparent);
    setPalette(colors);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    ShowText();
}

QSize ElidedValue::SizeFor(int textWidth) const
{
    QStyleOptionFrame option;
    initStyleOption(&option);
    // One more: the caret needs room behind the text.
    const QSize content(textWidth + 2 * kTextMargin + 1, std::max(fontMetrics().height(), 14) + 2);
    return style()->sizeFromContents(QStyle::CT_LineEdit, &option, content, this);
}

QSize ElidedValue::sizeHint() const
{
    const int widest = fontMetrics().averageCharWidth() * kWidestChars;
    return SizeFor(std::min(fontMetrics().horizontalAdvance(value_) + fontMetrics().averageCharWidth(), widest));
}

QSize ElidedValue::minimumSizeHint() const
{
    return SizeFor(std::min(fontMetrics().averageCharWidth() * kNarrowestChars, sizeHint().width()));
}

void ElidedValue::resizeEvent(QResizeEvent* event)
{
    QLineEdit::resizeEvent(event);
    if (!hasFocus()) ShowText();
}

void ElidedValue::changeEvent(QEvent* event)
{
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::FontChange && !hasFocus()) ShowText();
}

void ElidedValue::focusInEvent(QFocusEvent* event)
{
    QLineEdit::focusInEvent(event);
    if (text() == value_) return;
    setText(value_);
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason) selectAll();
}

void ElidedValue::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    // Its own context menu takes the focus for a while only.
    if (event->reason() != Qt::PopupFocusReason) ShowText();
}

void ElidedValue::ShowText()
{
    const int room = width() - 2 * kTextMargin - 1;
    const QString shown = fontMetrics().elidedText(value_, Qt::ElideMiddle, room);
    setText(shown);
    setToolTip(shown == value_ ? QString() : value_);
    setCursorPosition(0);
}

ElidedLabel::ElidedLabel(const QString& text, QWidget* parent) : QLabel(text, parent)
{
    setTextFormat(Qt::PlainText);
}

void ElidedLabel::resizeEvent(QResizeEvent* event)
{
    QLabel::resizeEvent(event);
    update();
}

void ElidedLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(contentsRect(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(text(), Qt::ElideMiddle, contentsRect().width()));
}

} // namespace nib
