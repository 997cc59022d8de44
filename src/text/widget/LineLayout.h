#pragma once
// The rows of one line: where its columns stand, and which column is under a point. Lines of plain characters in a
// font of one pitch lie on a grid and cost nothing; only others are shaped.

#include "text/widget/CellMap.h"
#include "text/widget/ViewMetrics.h"

#include <QTextLayout>

#include <memory>
#include <vector>

namespace nib {

class LineLayout {
public:
    /// True for a text with characters that the grid does not serve. A very long line never is shaped: it stands on the
    /// grid, cluster after cluster, so that its far end can be shown at once.
    static bool NeedsShaping(TextView text, const ViewMetrics& metrics);

    /// `wrapWidth` 0 means one row.
    void BuildCells(TextView text, const ViewMetrics& metrics, qreal wrapWidth);
    void BuildShaped(TextView text, const QList<QTextLayout::FormatRange>& formats, const ViewMetrics& metrics,
                     qreal wrapWidth);

    bool Shaped() const { return shaped_ != nullptr; }
    QTextLayout& Shape() const { return *shaped_; }
    const CellMap& Cells() const { return cells_; }

    int32_t RowCount() const;
    int32_t RowOf(int32_t column) const;
    int32_t RowStart(int32_t row) const;
    int32_t RowEnd(int32_t row) const;
    /// Of the caret in front of the column, from the start of its row.
    qreal XOf(int32_t column) const;
    /// The same within a given row, at whose end the place also counts as the row's last.
    qreal XIn(int32_t row, int32_t column) const;
    struct Span {
        qreal left = 0;
        qreal width = 0;
    };
    /// The cell of the character at a column, from the start of the row; no width behind the last one.
    Span SpanOf(int32_t row, int32_t column) const;
    /// The caret place nearest to `x`, or with `covering` the column whose character covers it.
    int32_t ColumnAt(int32_t row, qreal x, bool covering = false) const;
    /// Behind the last character of a row.
    qreal RowWidth(int32_t row) const;
    qreal Width() const;

private:
    void WrapCells(TextView text, int32_t cellsPerRow);

    std::unique_ptr<QTextLayout> shaped_;
    CellMap cells_;
    std::vector<int32_t> starts_; ///< columns at which further rows start
    qreal charWidth_ = 8;
};

} // namespace nib
