#include "printing/QtPrintingText.h"

#include <QAbstractTextDocumentLayout>
#include <QFontMetricsF>
#include <QPainter>
#include <QTextDocument>

#include <utility>

namespace nib {

void DrawTextPages(QTextDocument& text, const Paper& paper)
{
    QPagedPaintDevice& device = paper.device;
    const QSizeF sheet = device.pageLayout().paintRectPixels(device.logicalDpiX()).size();
    const QFont font(text.defaultFont(), &device);
    const QFontMetricsF metrics(font, &device);
    const QSizeF body(sheet.width(), sheet.height() - 2 * metrics.lineSpacing());
    text.documentLayout()->setPaintDevice(&device);
    text.setDocumentMargin(0);
    text.setPageSize(body);
    const std::vector<int32_t> pages = ChosenPages(paper, text.pageCount());

    QPainter painter;
    if (!painter.begin(&device)) RefuseDevice();
    bool first = true;
    for (const int32_t page : pages) {
        if (!std::exchange(first, false) && !device.newPage()) RefuseDevice();
        const QRectF part(QPointF(0, (page - 1) * body.height()), body);
        QAbstractTextDocumentLayout::PaintContext context;
        context.palette.setColor(QPalette::Text, Qt::black);
        context.clip = part;
        painter.save();
        painter.translate(-part.topLeft());
        painter.setClipRect(part);
        text.documentLayout()->draw(&painter, context);
        painter.restore();
        painter.setFont(font);
        painter.setPen(Qt::black);
        painter.drawText(QRectF(QPointF(0, 0), sheet), Qt::AlignRight | Qt::AlignBottom, QString::number(page));
    }
    if (!painter.end()) RefuseDevice();
}

} // namespace nib
