#pragma once
// Which lines are in sight, where they stand in the viewport, and what is under a point. Scrolling lives here; the
// widget's bars only show it.

#include "text/SourceView.h"
#include "text/widget/LineCache.h"
#include "text/widget/LinePainter.h"

#include <QRectF>
#include <QSizeF>

#include <optional>

namespace nib {

class ViewGeometry {
public:
    ViewGeometry(SourceView& model, LineCache& cache, const ViewMetrics& metrics)
        : model_(model), cache_(cache), metrics_(metrics)
    {
    }

    /// Reads margin, wrap and size anew; keeps the top line. `tallest`: the viewport's height without a bar below.
    void Measure(QSizeF viewport, qreal tallest);
    /// After an edit or a fold: keeps the top line where it is, as far as the text allows.
    void TextMoved(const TextChange* change);
    const MarginPlaces& Margin() const { return margin_; }
    /// Room for notes in it; for the next Measure.
    void SetNoteColumns(int32_t columns) { noteColumns_ = columns; }

    // Scrolling. The top is a visible line and the pixels of it that are out of sight.
    struct Place {
        int32_t index = 0;
        qreal offset = 0;
        qreal left = 0;
        friend bool operator==(const Place&, const Place&) = default;
    };
    Place TopPlace() const { return {topIndex_, topOffset_, left_}; }
    /// Pixels from an earlier top down to this one; none when that is too far to matter.
    std::optional<qreal> Distance(const Place& old);
    int32_t TopIndex() const { return topIndex_; }
    qreal Left() const { return left_; }
    /// Range and place of a scroll bar that counts lines: its end is that of the text, although the top line there is
    /// seldom whole.
    int32_t MaxTopIndex();
    int32_t BarIndex();
    qreal MaxLeft();
    int32_t PageLines() const;
    void ScrollToIndex(int32_t index);
    void ScrollBy(qreal pixels);
    void SetLeft(qreal left);
    /// Scrolls as little as brings the place into sight.
    void Reveal(Position p, int32_t beyond = 0);

    // Places
    qreal TextX() const { return margin_.width - left_; }
    Position PositionAt(QPointF point, bool covering = false);
    /// Top of a line when it is in sight.
    std::optional<qreal> TopOf(int32_t line);
    qreal HeightOf(int32_t line);
    /// The cell of the character behind the place, in the viewport; empty when its line is out of sight.
    QRectF CellOf(Position p);
    /// The upper end of the caret at a place whose line is in sight.
    std::optional<QPointF> CaretAt(Position p, int32_t shownOffset = 0);
    bool MoveRows(Position& at, int32_t rows, double& goal);
    /// The columns of the place's row; of a row that goes on below, `last` is its last caret place.
    void RowOf(Position at, int32_t& first, int32_t& last);
    /// Cells from the left, by which lines stand under one another; in wrapped lines a column is one.
    int32_t CellsBefore(Position p);
    int32_t ColumnAtCell(int32_t line, int32_t cell);
    CellPlace CellAt(QPointF point);
    /// Calls `visit(line, y)` for the lines between two heights.
    template <typename Visit>
    void ForEach(qreal top, qreal bottom, Visit visit)
    {
        qreal y = -topOffset_;
        int32_t count = Buffer().VisibleCount();
        for (int32_t index = topIndex_; index < count && y < bottom; ++index) {
            int32_t line = Buffer().VisibleLine(index);
            qreal height = HeightOf(line);
            if (y + height > top) visit(line, y);
            y += height;
        }
    }

private:
    /// Known without a layout: a character is a cell.
    bool IsOnGrid(int32_t line) { return metrics_.FixedPitch() && !Buffer().LineUnits(line).wide; }
    SourceDocument& Buffer() { return model_.Document(); }
    struct Top {
        int32_t index = 0;
        qreal offset = 0;
    };
    /// The lowest top: the last line then stands at the bottom.
    Top MaxTop();
    void SetTop(Top top);
    void Normalize(Top& top);

    SourceView& model_;
    LineCache& cache_;
    const ViewMetrics& metrics_;
    MarginPlaces margin_;
    int32_t noteColumns_ = 0;
    QSizeF size_;
    qreal tallest_ = 0;
    int32_t topIndex_ = 0;
    int32_t topLine_ = 0;
    qreal topOffset_ = 0;
    qreal left_ = 0;
    qreal widest_ = 0;
};

} // namespace nib
