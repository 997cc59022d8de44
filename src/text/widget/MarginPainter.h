#pragma once
// Paints the margin beside one line: number, bookmark, fold mark.

#include "text/widget/ScreenColors.h"
#include "text/widget/ViewMetrics.h"

#include <QPainter>

namespace nib {

/// Where the margin's columns end, from its left.
struct MarginPlaces {
    qreal numbers = 0; ///< right edge of the numbers
    qreal select = 0;  ///< a click left of it selects lines
    qreal width = 0;
    bool blocks = false;
    static MarginPlaces Of(const SourceView& model, const ViewMetrics& metrics);
};

struct MarginLine {
    int32_t line = 0;
    qreal y = 0;
    qreal height = 0; ///< of all its rows
    bool bookmark = false;
    BlockPart block;
    bool current = false;
};

class MarginPainter {
public:
    MarginPainter(const ViewMetrics& metrics, const ScreenColors& colors) : metrics_(metrics), colors_(colors) {}
    void Paint(QPainter& painter, const MarginPlaces& places, const MarginLine& line) const;
    void PaintSeparator(QPainter& painter, const MarginPlaces& places, qreal top, qreal bottom) const;

private:
    void PaintFold(QPainter& painter, const MarginPlaces& places, const MarginLine& line) const;

    const ViewMetrics& metrics_;
    const ScreenColors& colors_;
};

} // namespace nib
