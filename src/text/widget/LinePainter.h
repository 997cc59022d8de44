#pragma once
// Paints one line: selection, tokens, signs, text in composition.

#include "text/widget/LineCache.h"
#include "text/widget/SignPainter.h"

namespace nib {

struct PaintedLine {
    TextView text;
    const LineEntry* entry = nullptr;
    QPointF origin; ///< of column 0 in the first row
    QRectF clip;
    int32_t selectionStart = -1; ///< shown columns
    int32_t selectionEnd = -1;
    bool selectsBreak = false;
    bool collapsed = false;
};

class LinePainter {
public:
    LinePainter(const ViewMetrics& metrics, const ScreenColors& colors, const SignPainter& signs)
        : metrics_(metrics), colors_(colors), signs_(signs)
    {
    }
    void Paint(QPainter& painter, const PaintedLine& line);

private:
    struct Row {
        int32_t number;
        int32_t first; ///< columns in sight
        int32_t last;
        qreal y;
    };
    void PaintSelection(QPainter& painter, const PaintedLine& line, const Row& row) const;
    void PaintCells(QPainter& painter, const PaintedLine& line, const Row& row);
    void PaintRun(QPainter& painter, const PaintedLine& line, const Row& row, int32_t from, int32_t to,
                  const ScreenStyle& style);
    void PaintShaped(QPainter& painter, const PaintedLine& line) const;
    void PaintShapedSigns(QPainter& painter, const PaintedLine& line, const Row& row) const;
    void PaintPreedit(QPainter& painter, const PaintedLine& line, const Row& row) const;
    void Flush(QPainter& painter, const ScreenStyle& style);

    const ViewMetrics& metrics_;
    const ScreenColors& colors_;
    const SignPainter& signs_;
    std::vector<quint32> glyphs_;
    std::vector<QPointF> places_;
};

} // namespace nib
