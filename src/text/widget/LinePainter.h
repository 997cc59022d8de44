#pragma once
// Paints one line and the margin beside it.

#include "text/TextSearch.h"
#include "text/widget/LineCache.h"

#include <QPainter>

#include <algorithm>
#include <limits>
#include <span>

namespace nib {

/// Small drawings within a cell: the MultiValue marks, control characters, fold boxes.
class SignPainter {
public:
    void Build(const QFont& font, qreal ascent);
    /// A mark or control character in `cell`, whose text stands on `baseline`; other signs have a name.
    void PaintSign(QPainter& painter, const QRectF& cell, qreal baseline, char16_t c, const QColor& color,
                   const char* name = "") const;
    /// The dots behind the head of a collapsed block.
    void PaintDots(QPainter& painter, const QRectF& cell, const QColor& color) const;
    static void PaintFoldBox(QPainter& painter, QPointF centre, qreal side, bool collapsed, const QColor& color,
                             const QColor& fill);

private:
    QFont small_;
    qreal capital_ = 8; ///< height of the box over the baseline
};

/// Where the margin's columns end, from its left.
struct MarginPlaces {
    qreal notes = 0;   ///< right edge of the notes
    qreal numbers = 0; ///< right edge of the numbers
    qreal select = 0;  ///< a click left of it selects lines
    qreal width = 0;
    bool blocks = false;
    static MarginPlaces Of(const SourceView& model, const ViewMetrics& metrics, int32_t noteColumns = 0);
};

struct MarginLine {
    int32_t line = 0;
    qreal y = 0;
    qreal height = 0; ///< of all its rows
    bool bookmark = false;
    BlockPart block;
    bool current = false;
    bool wrong = false; ///< a compiler says so
};

/// Number, bookmark, frame of what is wrong, fold mark.
class MarginPainter {
public:
    MarginPainter(const ViewMetrics& metrics, const ScreenColors& colors) : metrics_(metrics), colors_(colors) {}
    void Paint(QPainter& painter, const MarginPlaces& places, const MarginLine& line) const;
    void PaintSeparator(QPainter& painter, const MarginPlaces& places, qreal top, qreal bottom) const;

private:
    void PaintPlate(QPainter& painter, const MarginPlaces& places, const MarginLine& line) const;
    /// Up to `end` on its baseline.
    void PaintNumber(QPainter& painter, QPointF end, int32_t number) const;
    void PaintFold(QPainter& painter, const MarginPlaces& places, const MarginLine& line) const;

    const ViewMetrics& metrics_;
    const ScreenColors& colors_;
};

struct PaintedLine {
    TextView text;
    const LineEntry* entry = nullptr;
    QPointF origin; ///< of column 0 in the first row
    QRectF clip;
    std::span<const ColumnRange> selections; ///< shown columns, ascending and apart
    ColumnRange selectedBeyond;              ///< cells behind the end of the line
    bool selectsBreak = false;
    bool collapsed = false;

    bool IsSelected(int32_t column) const
    {
        const auto next = SelectionBehind(column);
        return next != selections.end() && next->first <= column;
    }
    /// The next column at which it is otherwise.
    int32_t SelectionEdge(int32_t column) const
    {
        const auto next = SelectionBehind(column);
        if (next == selections.end()) return std::numeric_limits<int32_t>::max();
        return next->first <= column ? next->last : next->first;
    }

private:
    std::span<const ColumnRange>::iterator SelectionBehind(int32_t column) const
    {
        return std::partition_point(selections.begin(), selections.end(),
                                    [&](const ColumnRange& range) { return range.last <= column; });
    }
};

/// Selection, tokens, signs, text in composition.
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
    void PaintSelections(QPainter& painter, const PaintedLine& line, const Row& row) const;
    void PaintSelection(QPainter& painter, const PaintedLine& line, const Row& row, ColumnRange columns) const;
    void PaintCells(QPainter& painter, const PaintedLine& line, const Row& row);
    void PaintRun(QPainter& painter, const PaintedLine& line, const Row& row, int32_t from, int32_t to,
                  const ScreenStyle& style);
    void PaintShaped(QPainter& painter, const PaintedLine& line) const;
    void PaintShapedSigns(QPainter& painter, const PaintedLine& line, const Row& row) const;
    void PaintSign(QPainter& painter, const PaintedLine& line, int32_t column, const QRectF& cell,
                   const Sign& sign) const;
    void PaintPreedit(QPainter& painter, const PaintedLine& line, const Row& row) const;
    void Flush(QPainter& painter, const ScreenStyle& style);

    const ViewMetrics& metrics_;
    const ScreenColors& colors_;
    const SignPainter& signs_;
    std::vector<quint32> glyphs_;
    std::vector<QPointF> places_;
};

} // namespace nib
