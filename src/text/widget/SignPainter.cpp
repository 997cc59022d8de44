#include "text/widget/SignPainter.h"

#include "base/Text.h"

#include <QFontMetricsF>

#include <algorithm>
#include <cmath>

namespace nib {

namespace {

/// Letters of the marks U+F8FB to U+F8FF.
constexpr char kLetters[] = {'t', 's', 'v', '^', 'i'};

} // namespace

void SignPainter::Build(const QFont& font, qreal ascent)
{
    small_ = font;
    small_.setBold(false);
    small_.setItalic(false);
    small_.setPointSizeF(std::max(font.pointSizeF() * 0.72, 3.0));
    capital_ = std::round(ascent * 0.8);
}

void SignPainter::PaintSign(QPainter& painter, const QRectF& cell, qreal baseline, char16_t c,
                            const QColor& color) const
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    // On whole pixels, or the small box blurs; its frame steps back behind the letter.
    qreal left = std::ceil(cell.left());
    qreal right = std::max(std::floor(cell.right()), left + 4);
    QRectF box(left + 0.5, baseline - capital_ + 0.5, right - left - 1, capital_ + 1);
    QColor frame = color;
    frame.setAlphaF(0.5F);
    painter.setPen(QPen(frame, 1));
    painter.drawRoundedRect(box, 2, 2);
    if (IsMark(c)) {
        painter.setFont(small_);
        painter.setPen(color);
        QString letter{QLatin1Char(kLetters[c - kTextMark])};
        QRectF ink = QFontMetricsF(small_).tightBoundingRect(letter);
        painter.drawText(box.center() - ink.center(), letter);
    } else {
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        qreal dot = std::max(box.width() * 0.2, 1.0);
        painter.drawEllipse(box.center(), dot, dot);
    }
    painter.restore();
}

void SignPainter::PaintDots(QPainter& painter, const QRectF& cell, const QColor& color) const
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, 1));
    QRectF box = cell.adjusted(0.5, cell.height() * 0.2, -0.5, -cell.height() * 0.2);
    painter.drawRoundedRect(box, 3, 3);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    qreal dot = std::max(box.height() * 0.09, 0.9);
    for (int i = -1; i <= 1; ++i) painter.drawEllipse(box.center() + QPointF(i * box.width() * 0.24, 0), dot, dot);
    painter.restore();
}

void SignPainter::PaintFoldBox(QPainter& painter, QPointF centre, qreal side, bool collapsed, const QColor& color,
                               const QColor& fill)
{
    qreal half = std::floor(side / 2);
    QRectF box(centre.x() - half, centre.y() - half, 2 * half, 2 * half);
    painter.setPen(QPen(color, 1));
    painter.setBrush(fill);
    painter.drawRect(box);
    qreal arm = std::max(half - 2, 1.0);
    painter.drawLine(centre - QPointF(arm, 0), centre + QPointF(arm, 0));
    if (collapsed) painter.drawLine(centre - QPointF(0, arm), centre + QPointF(0, arm));
}

} // namespace nib
