#include "text/widget/LineLayout.h"

#include "text/TextSearch.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QTextOption>

#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <cmath>

namespace nib {

namespace {

constexpr int kSample = 64;

qreal Advance(const QFont& font, QChar c)
{
    return QFontMetricsF(font).horizontalAdvance(QString(kSample, c)) / kSample;
}

QFont BaseFont(const SourceFont& source, int zoom)
{
    QFont font = source.name.empty() ? QFontDatabase::systemFont(QFontDatabase::FixedFont)
                                     : QFont(QString::fromStdU16String(source.name));
    if (!source.name.empty()) font.setStyleHint(QFont::Monospace);
    font.setPointSizeF(std::clamp(source.size + zoom, 4.0, 144.0));
    font.setBold(source.bold);
    font.setItalic(source.italic);
    font.setKerning(false);
    return font;
}

/// Cells of the character that begins at `column`; the second half of a pair counts none.
int32_t CellsAt(TextView text, int32_t column)
{
    char16_t unit = text[static_cast<size_t>(column)];
    if (unit < 0x7F) return 1;
    if (const auto sign = SignAt(text, static_cast<size_t>(column))) return sign->cells;
    if (unit < 0x300) return 1;
    if (U16_IS_TRAIL(unit) && column > 0 && U16_IS_LEAD(text[static_cast<size_t>(column) - 1])) return 0;
    UChar32 c = 0;
    U16_GET(text.data(), 0, column, static_cast<int32_t>(text.size()), c);
    if (U_GET_GC_MASK(c) & (U_GC_MN_MASK | U_GC_ME_MASK | U_GC_CF_MASK)) return 0;
    int32_t width = u_getIntPropertyValue(c, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

constexpr size_t kLongLine = 4000;

/// All units take cells of the grid; `one`: each of them one.
bool OnGrid(TextView text, const ViewMetrics& metrics, bool one)
{
    return std::all_of(text.begin(), text.end(), [&](char16_t c) {
        return (c >= 0x20 && c < 0x7F) || metrics.Glyph(0, c) != 0 || (one ? IsSmallSign(c) : IsSign(c));
    });
}

/// The text to shape: signs become blanks that never break and have room for them, and are drawn over those.
QString ShapedText(TextView text, qreal cell, QList<QTextLayout::FormatRange>& formats)
{
    QString out(reinterpret_cast<const QChar*>(text.data()), static_cast<qsizetype>(text.size()));
    for (qsizetype at = 0; at < out.size(); ++at) {
        const auto sign = SignAt(text, static_cast<size_t>(at));
        if (!sign) continue;
        if (sign->cells > sign->units) {
            QTextLayout::FormatRange room{static_cast<int>(at), 1, {}};
            room.format.setFontLetterSpacingType(QFont::AbsoluteSpacing);
            room.format.setFontLetterSpacing((sign->cells - sign->units) * cell);
            formats.append(room);
        }
        out[at] = QChar::Nbsp;
        if (sign->units > 1) out[++at] = QChar::Nbsp;
    }
    return out;
}

} // namespace

void ViewMetrics::BuildFace(Face& face, const QFont& base, int32_t style)
{
    face.font = base;
    if (style & token_style::kBold) face.font.setBold(true);
    if (style & token_style::kItalic) face.font.setItalic(true);
    // A bold face of another width would leave the grid.
    qreal advance = Advance(face.font, u'0');
    if (fixedPitch_ && std::abs(advance - charWidth_) > 0.01) {
        face.font.setLetterSpacing(QFont::AbsoluteSpacing, charWidth_ - advance);
    }
    face.raw = QRawFont::fromFont(face.font);
    face.glyphs.fill(0);
    if (!fixedPitch_ || !face.raw.isValid()) return;
    QString characters;
    for (char16_t c = 0; c < kGlyphs; ++c) characters.append(c < 0x20 ? u' ' : c);
    QList<quint32> glyphs = face.raw.glyphIndexesForString(characters);
    if (glyphs.size() != static_cast<qsizetype>(kGlyphs)) return;
    QList<QPointF> advances = face.raw.advancesForGlyphIndexes(glyphs);
    for (char16_t c = 0x20; c < kGlyphs; ++c) {
        bool sameWidth = std::abs(advances[c].x() - advances[u'0'].x()) < 0.01;
        if (sameWidth && !IsShownControl(c)) face.glyphs[c] = glyphs[c];
    }
}

void ViewMetrics::Build(const SourceFont& font, int zoom)
{
    QFont base = BaseFont(font, zoom);
    if (faces_[0].raw.isValid() && base == faces_[0].font) return;
    QFontMetricsF metrics(base);
    charWidth_ = Advance(base, u'0');
    fixedPitch_ = std::all_of(std::begin("iMW.|"), std::end("iMW.|") - 1,
                              [&](char c) { return std::abs(Advance(base, QLatin1Char(c)) - charWidth_) < 0.01; });
    ascent_ = std::ceil(metrics.ascent());
    lineHeight_ = ascent_ + std::ceil(metrics.descent()) + std::max(1.0, std::ceil(metrics.leading()));
    // The plain face is left as asked for, so that the same font is known again.
    for (int32_t style = 0; style < 4; ++style) BuildFace(faces_[Index(style)], base, style);
}

void CellMap::BuildPlain(int32_t columns)
{
    text_.clear();
    checkpoints_.clear();
    columns_ = cells_ = columns;
}

void CellMap::Build(TextView text)
{
    text_ = text;
    checkpoints_.clear();
    columns_ = static_cast<int32_t>(text.size());
    cells_ = 0;
    checkpoints_.reserve(text.size() / kStep + 1);
    for (int32_t column = 0; column < columns_; ++column) {
        if (column % kStep == 0) checkpoints_.push_back(cells_);
        cells_ += CellsAt(text, column);
    }
    if (columns_ == 0) checkpoints_.push_back(0);
}

int32_t CellMap::CellOf(int32_t column) const
{
    column = std::clamp(column, 0, columns_);
    if (Plain()) return column;
    auto step = std::min(static_cast<size_t>(column / kStep), checkpoints_.size() - 1);
    int32_t cells = checkpoints_[step];
    for (int32_t at = static_cast<int32_t>(step) * kStep; at < column; ++at) cells += CellsAt(text_, at);
    return cells;
}

int32_t CellMap::ColumnOf(int32_t cell) const
{
    cell = std::clamp(cell, 0, cells_);
    if (Plain()) return cell;
    auto above = std::upper_bound(checkpoints_.begin(), checkpoints_.end(), cell);
    auto step = static_cast<int32_t>(std::distance(checkpoints_.begin(), above)) - 1;
    int32_t cells = checkpoints_[static_cast<size_t>(step)];
    int32_t column = step * kStep;
    while (column < columns_) {
        cells += CellsAt(text_, column);
        if (cells > cell) break;
        ++column;
    }
    return GraphemeStart(text_, column);
}

bool LineLayout::NeedsShaping(TextView text, const ViewMetrics& metrics)
{
    if (text.size() > kLongLine) return false;
    return !metrics.FixedPitch() ? !text.empty() : !OnGrid(text, metrics, false);
}

void LineLayout::BuildCells(TextView text, const ViewMetrics& metrics, qreal wrapWidth)
{
    shaped_.reset();
    starts_.clear();
    charWidth_ = metrics.CharWidth();
    if (metrics.FixedPitch() && OnGrid(text, metrics, true)) {
        cells_.BuildPlain(static_cast<int32_t>(text.size()));
    } else {
        cells_.Build(text);
    }
    if (wrapWidth > 0) WrapCells(text, std::max(static_cast<int32_t>(wrapWidth / charWidth_), 2));
}

void LineLayout::WrapCells(TextView text, int32_t cellsPerRow)
{
    int32_t start = 0;
    int32_t startCell = 0;
    while (cells_.Cells() - startCell > cellsPerRow) {
        int32_t end = std::max(cells_.ColumnOf(startCell + cellsPerRow), start + 1);
        // Behind the last blank, if the row has one; blanks at the edge stay with the row above.
        auto first = text.begin() + start;
        auto blank = std::find(std::make_reverse_iterator(text.begin() + end), std::make_reverse_iterator(first), u' ');
        if (blank.base() != first) end = static_cast<int32_t>(blank.base() - text.begin());
        starts_.push_back(end);
        start = end;
        startCell = cells_.CellOf(end);
    }
}

void LineLayout::BuildShaped(TextView text, const QList<QTextLayout::FormatRange>& formats, const ViewMetrics& metrics,
                             qreal wrapWidth)
{
    starts_.clear();
    charWidth_ = metrics.CharWidth();
    QList<QTextLayout::FormatRange> all = formats;
    const QString shown = ShapedText(text, charWidth_, all);
    shaped_ = std::make_unique<QTextLayout>(shown, metrics.StyledFont(0));
    QTextOption option;
    option.setTextDirection(Qt::LeftToRight);
    option.setAlignment(Qt::AlignLeft | Qt::AlignAbsolute);
    option.setWrapMode(wrapWidth > 0 ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::NoWrap);
    option.setFlags(QTextOption::IncludeTrailingSpaces);
    shaped_->setTextOption(option);
    shaped_->setFormats(all);
    shaped_->setCacheEnabled(true);
    shaped_->beginLayout();
    constexpr qreal unlimited = 1 << 22;
    for (int32_t row = 0;; ++row) {
        QTextLine line = shaped_->createLine();
        if (!line.isValid()) break;
        line.setLineWidth(wrapWidth > 0 ? wrapWidth : unlimited);
        // One baseline for all rows, whatever fallback fonts a row needs.
        line.setPosition({0, row * metrics.LineHeight() + metrics.Ascent() - line.ascent()});
    }
    shaped_->endLayout();
}

int32_t LineLayout::RowCount() const
{
    return shaped_ ? std::max(shaped_->lineCount(), 1) : static_cast<int32_t>(starts_.size()) + 1;
}

int32_t LineLayout::RowOf(int32_t column) const
{
    if (shaped_) {
        QTextLine line = shaped_->lineForTextPosition(column);
        return line.isValid() ? line.lineNumber() : RowCount() - 1;
    }
    return static_cast<int32_t>(std::upper_bound(starts_.begin(), starts_.end(), column) - starts_.begin());
}

int32_t LineLayout::RowStart(int32_t row) const
{
    if (row <= 0) return 0;
    if (shaped_) return row < shaped_->lineCount() ? shaped_->lineAt(row).textStart() : 0;
    return starts_[static_cast<size_t>(row) - 1];
}

int32_t LineLayout::RowEnd(int32_t row) const
{
    if (row + 1 < RowCount()) return RowStart(row + 1);
    return shaped_ ? static_cast<int32_t>(shaped_->text().size()) : cells_.Columns();
}

qreal LineLayout::XOf(int32_t column) const
{
    return XIn(RowOf(column), column);
}

qreal LineLayout::XIn(int32_t row, int32_t column) const
{
    if (shaped_) return row < shaped_->lineCount() ? shaped_->lineAt(row).cursorToX(column) : 0;
    return (cells_.CellOf(column) - cells_.CellOf(RowStart(row))) * charWidth_;
}

LineLayout::Span LineLayout::SpanOf(int32_t row, int32_t column) const
{
    if (column >= RowEnd(row)) return {XIn(row, column), 0};
    if (shaped_) {
        QTextLine line = shaped_->lineAt(row);
        int at = column;
        qreal leading = line.cursorToX(&at, QTextLine::Leading);
        at = column;
        qreal trailing = line.cursorToX(&at, QTextLine::Trailing);
        return {std::min(leading, trailing), std::abs(trailing - leading)};
    }
    qreal left = XIn(row, column);
    int32_t next = column + 1;
    while (next < RowEnd(row) && cells_.CellOf(next) == cells_.CellOf(column)) ++next;
    return {left, XIn(row, next) - left};
}

int32_t LineLayout::ColumnAt(int32_t row, qreal x, bool covering) const
{
    row = std::clamp(row, 0, RowCount() - 1);
    if (shaped_) {
        if (row >= shaped_->lineCount()) return 0;
        int32_t column = shaped_->lineAt(row).xToCursor(x, covering ? QTextLine::CursorOnCharacter
                                                                    : QTextLine::CursorBetweenCharacters);
        // The place behind a wrapped row is the start of the next one.
        if (row + 1 < RowCount() && column >= RowEnd(row)) column = shaped_->previousCursorPosition(RowEnd(row));
        return column;
    }
    int32_t first = cells_.CellOf(RowStart(row));
    int32_t last = cells_.CellOf(RowEnd(row)) - (row + 1 < RowCount() ? 1 : 0);
    qreal exact = std::clamp(x / charWidth_, 0.0, static_cast<qreal>(last - first));
    auto cell = first + static_cast<int32_t>(exact);
    int32_t column = cells_.ColumnOf(cell);
    if (covering || column >= RowEnd(row)) return column;
    int32_t width = 1;
    while (cell + width < last && cells_.ColumnOf(cell + width) == column) ++width;
    bool behind = first + exact > (cells_.CellOf(column) + cell + width) / 2.0;
    return behind && cell + width <= last ? cells_.ColumnOf(cell + width) : column;
}

qreal LineLayout::RowWidth(int32_t row) const
{
    if (shaped_) return row < shaped_->lineCount() ? shaped_->lineAt(row).naturalTextWidth() : 0;
    return (cells_.CellOf(RowEnd(row)) - cells_.CellOf(RowStart(row))) * charWidth_;
}

qreal LineLayout::Width() const
{
    if (!shaped_) return cells_.Cells() * charWidth_;
    qreal widest = 0;
    for (int row = 0; row < shaped_->lineCount(); ++row) widest = std::max(widest, RowWidth(row));
    return widest;
}

} // namespace nib
