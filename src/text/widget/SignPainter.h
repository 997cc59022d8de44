#pragma once
// Small drawings within a cell: the MultiValue marks, control characters, fold boxes.

#include "base/Text.h"

#include <QFont>
#include <QPainter>

namespace nib {

class SignPainter {
public:
    void Build(const QFont& font, qreal ascent);
    /// A mark or control character in `cell`, whose text stands on `baseline`.
    void PaintSign(QPainter& painter, const QRectF& cell, qreal baseline, char16_t c, const QColor& color) const;
    /// The dots behind the head of a collapsed block.
    void PaintDots(QPainter& painter, const QRectF& cell, const QColor& color) const;
    static void PaintFoldBox(QPainter& painter, QPointF centre, qreal side, bool collapsed, const QColor& color,
                             const QColor& fill);

private:
    QFont small_;
    qreal capital_ = 8; ///< height of the box over the baseline
};

} // namespace nib
