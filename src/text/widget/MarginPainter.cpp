#include "text/widget/MarginPainter.h"

#include "text/widget/SignPainter.h"

#include <QFontMetricsF>

#include <algorithm>
#include <cmath>

namespace nib {

MarginPlaces MarginPlaces::Of(const SourceView& model, const ViewMetrics& metrics)
{
    MarginPlaces places;
    places.blocks = model.ShowBlocks() && model.MarginWidth() >= 2;
    qreal cell = metrics.CharWidth();
    int32_t width = model.MarginWidth();
    places.width = std::round(cell * width);
    places.numbers = cell * std::max(width - (places.blocks ? 3 : 1), 0);
    places.select = places.blocks ? cell * (width - 2) : std::max(cell * width - cell / 2, 0.0);
    return places;
}

void MarginPainter::Paint(QPainter& painter, const MarginPlaces& places, const MarginLine& line) const
{
    if (places.numbers > 0) {
        QString number = QString::number(line.line + 1);
        qreal width = QFontMetricsF(metrics_.StyledFont(0)).horizontalAdvance(number);
        if (line.bookmark) {
            painter.save();
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setPen(Qt::NoPen);
            painter.setBrush(colors_.bookmark);
            qreal pad = metrics_.CharWidth() * 0.35;
            QRectF plate(1, line.y + 1, places.numbers - 1 + pad, metrics_.LineHeight() - 2);
            painter.drawRoundedRect(plate, 3, 3);
            painter.restore();
        }
        painter.setFont(metrics_.StyledFont(0));
        painter.setPen(line.bookmark ? colors_.onBookmark : line.current ? colors_.strong : colors_.faint);
        painter.drawText(QPointF(places.numbers - width, line.y + metrics_.Ascent()), number);
    }
    if (places.blocks) PaintFold(painter, places, line);
}

void MarginPainter::PaintSeparator(QPainter& painter, const MarginPlaces& places, qreal top, qreal bottom) const
{
    if (places.width <= 0) return;
    painter.fillRect(QRectF(std::floor(places.select), top, 1, bottom - top), colors_.line);
}

void MarginPainter::PaintFold(QPainter& painter, const MarginPlaces& places, const MarginLine& line) const
{
    const BlockPart& block = line.block;
    if (!block.Any()) return;
    bool end = block.kind == BlockPart::Kind::End;
    // Half a pixel off, so that lines of one pixel are sharp.
    qreal x = std::floor((places.select + places.width) / 2) + 0.5;
    qreal middle = std::floor(line.y + metrics_.LineHeight() / 2) + 0.5;
    qreal bottom = line.y + line.height;
    painter.setPen(QPen(colors_.faint, 1));
    bool above = block.inside || !block.IsHead();
    bool below = block.inside || !(end || block.IsCollapsed());
    if (above) painter.drawLine(QPointF(x, line.y), QPointF(x, middle));
    if (below) painter.drawLine(QPointF(x, middle), QPointF(x, bottom));
    if (end) painter.drawLine(QPointF(x, middle), QPointF(x + metrics_.CharWidth() * 0.6, middle));
    if (block.IsHead()) {
        qreal side = std::clamp(std::floor(metrics_.CharWidth() * 1.1), 6.0, metrics_.LineHeight() - 2);
        SignPainter::PaintFoldBox(painter, {x, middle}, side, block.IsCollapsed(), colors_.faint, colors_.base);
    }
}

} // namespace nib
