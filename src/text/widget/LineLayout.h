#pragma once
// The measures of a view's font, and where the columns of one line stand in its rows. Lines of plain characters in a
// font of one pitch lie on a grid and cost nothing; only others are shaped.

#include "base/Text.h"
#include "text/Signs.h"
#include "text/SourceContract.h"

#include <QFont>
#include <QRawFont>
#include <QTextLayout>

#include <array>
#include <memory>
#include <vector>

namespace nib {

/// Cell size, baseline, and glyph numbers for text that needs no shaping.
class ViewMetrics {
public:
    /// Cheap when nothing changed.
    void Build(const SourceFont& font, int zoom);

    qreal CharWidth() const { return charWidth_; }
    /// Whole, so that rows meet without seams at scale 1.
    qreal LineHeight() const { return lineHeight_; }
    qreal Ascent() const { return ascent_; }
    /// All printable ASCII characters have one width.
    bool FixedPitch() const { return fixedPitch_; }

    /// `style` holds bits of token_style.
    const QFont& StyledFont(int32_t style) const { return faces_[Index(style)].font; }
    const QRawFont& StyledRawFont(int32_t style) const { return faces_[Index(style)].raw; }
    /// 0 when the character must be shaped or is drawn as a sign.
    quint32 Glyph(int32_t style, char16_t c) const { return c < kGlyphs ? faces_[Index(style)].glyphs[c] : 0; }

private:
    static constexpr size_t kGlyphs = 0x180;
    struct Face {
        QFont font;
        QRawFont raw;
        std::array<quint32, kGlyphs> glyphs{};
    };
    static size_t Index(int32_t style) { return static_cast<size_t>(style) & 3; }
    void BuildFace(Face& face, const QFont& base, int32_t style);

    std::array<Face, 4> faces_;
    qreal charWidth_ = 8;
    qreal lineHeight_ = 16;
    qreal ascent_ = 12;
    bool fixedPitch_ = true;
};

/// Columns of a line against the cells of a fixed grid.
class CellMap {
public:
    /// A line whose every unit takes one cell.
    void BuildPlain(int32_t columns);
    /// Any other line; keeps its text. Wide characters take two cells, combining ones none.
    void Build(TextView text);

    bool Plain() const { return checkpoints_.empty(); }
    int32_t Columns() const { return columns_; }
    int32_t Cells() const { return cells_; }
    /// Cells in front of a column.
    int32_t CellOf(int32_t column) const;
    /// The column of the grapheme that covers the cell.
    int32_t ColumnOf(int32_t cell) const;

private:
    static constexpr int32_t kStep = 256;

    Text text_;
    std::vector<int32_t> checkpoints_; ///< cells in front of every kStep-th column
    int32_t columns_ = 0;
    int32_t cells_ = 0;
};

/// The rows of one line: where its columns stand, and which column is under a point.
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
