#include "text/widget/LinePainter.h"

#include "base/Text.h"
#include "platform/qt/QtText.h"
#include "text/TextSearch.h"
#include "text/widget/LineLayout.h"

#include <QFontMetricsF>
#include <QGlyphRun>

#include <algorithm>
#include <array>
#include <cmath>

namespace nib {

namespace {

/// Letters of the marks U+F8FB to U+F8FF.
constexpr char kLetters[] = {'t', 's', 'v', '^', 'i'};

} // namespace

void SignPainter::Build(const QFont& font, qreal ascent)
{
    small_ = font;
    small_.setBold(false);
    small_.setItalic(false);
    small_.setPointSizeF(std::max(font.pointSizeF() * 0.72, 3.0));
    capital_ = std::round(ascent * 0.8);
}

void SignPainter::PaintSign(QPainter& painter, const QRectF& cell, qreal baseline, char16_t c, const QColor& color,
                            const char* name) const
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    // On whole pixels, or the small box blurs; its frame steps back behind the letter.
    qreal left = std::ceil(cell.left());
    qreal right = std::max(std::floor(cell.right()), left + 4);
    QRectF box(left + 0.5, baseline - capital_ + 0.5, right - left - 1, capital_ + 1);
    QColor frame = color;
    frame.setAlphaF(0.5F);
    painter.setPen(QPen(frame, 1));
    painter.drawRoundedRect(box, 2, 2);
    if (IsMark(c) || *name) {
        painter.setFont(small_);
        painter.setPen(color);
        const QString letter = *name ? QString::fromLatin1(name) : QString(QLatin1Char(kLetters[c - kTextMark]));
        QRectF ink = QFontMetricsF(small_).tightBoundingRect(letter);
        painter.drawText(box.center() - ink.center(), letter);
    } else {
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        qreal dot = std::max(box.width() * 0.2, 1.0);
        painter.drawEllipse(box.center(), dot, dot);
    }
    painter.restore();
}

void SignPainter::PaintDots(QPainter& painter, const QRectF& cell, const QColor& color) const
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, 1));
    QRectF box = cell.adjusted(0.5, cell.height() * 0.2, -0.5, -cell.height() * 0.2);
    painter.drawRoundedRect(box, 3, 3);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    qreal dot = std::max(box.height() * 0.09, 0.9);
    for (int i = -1; i <= 1; ++i) painter.drawEllipse(box.center() + QPointF(i * box.width() * 0.24, 0), dot, dot);
    painter.restore();
}

void SignPainter::PaintFoldBox(QPainter& painter, QPointF centre, qreal side, bool collapsed, const QColor& color,
                               const QColor& fill)
{
    qreal half = std::floor(side / 2);
    QRectF box(centre.x() - half, centre.y() - half, 2 * half, 2 * half);
    painter.setPen(QPen(color, 1));
    painter.setBrush(fill);
    painter.drawRect(box);
    qreal arm = std::max(half - 2, 1.0);
    painter.drawLine(centre - QPointF(arm, 0), centre + QPointF(arm, 0));
    if (collapsed) painter.drawLine(centre - QPointF(0, arm), centre + QPointF(0, arm));
}

MarginPlaces MarginPlaces::Of(const SourceView& model, const ViewMetrics& metrics, int32_t noteColumns)
{
    MarginPlaces places;
    places.blocks = model.ShowBlocks() && model.MarginWidth() >= 2;
    qreal cell = metrics.CharWidth();
    int32_t width = model.MarginWidth();
    if (width <= 0) return places;
    const qreal edge = std::floor(cell / 2); // a number that fills its columns does not touch the window's frame
    places.width = std::round(cell * width);
    places.numbers = cell * std::max(width - (places.blocks ? 3 : 1), 0);
    places.select = places.blocks ? cell * (width - 2) : cell * width - cell / 2;
    places.notes = std::round(cell * noteColumns);
    const bool numbers = places.numbers > 0;
    for (qreal* place : {&places.width, &places.numbers, &places.select}) *place += places.notes + edge;
    if (!numbers) places.numbers = places.notes;
    return places;
}

void MarginPainter::Paint(QPainter& painter, const MarginPlaces& places, const MarginLine& line) const
{
    if (places.numbers > places.notes) {
        if (line.bookmark || line.wrong) PaintPlate(painter, places, line);
        painter.setPen(line.bookmark  ? colors_.onBookmark
                       : line.wrong   ? colors_.onWrong
                       : line.current ? colors_.strong
                                      : colors_.faint);
        PaintNumber(painter, {places.numbers, line.y + metrics_.Ascent()}, line.line + 1);
    }
    if (places.blocks) PaintFold(painter, places, line);
}

/// A line may have both: the frame stands round the plate then.
void MarginPainter::PaintPlate(QPainter& painter, const MarginPlaces& places, const MarginLine& line) const
{
    constexpr qreal kFrame = 1.5;
    const qreal pad = metrics_.CharWidth() * 0.35;
    const qreal left = places.notes + 1;
    const QRectF plate(left, line.y + 1, places.numbers - left + pad, metrics_.LineHeight() - 2);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(line.wrong ? QPen(colors_.hidden, kFrame) : QPen(Qt::NoPen));
    painter.setBrush(line.bookmark ? colors_.bookmark : colors_.wrong);
    painter.drawRoundedRect(line.wrong ? plate.adjusted(kFrame / 2, 0, 0, 0) : plate, 3, 3);
    painter.restore();
}

void MarginPainter::PaintNumber(QPainter& painter, QPointF end, int32_t number) const
{
    if (metrics_.Glyph(0, u'0') == 0) {
        const QString text = QString::number(number);
        painter.setFont(metrics_.StyledFont(0));
        painter.drawText(end - QPointF(QFontMetricsF(metrics_.StyledFont(0)).horizontalAdvance(text), 0), text);
        return;
    }
    std::array<quint32, 10> glyphs{};
    std::array<QPointF, 10> places;
    size_t count = 0;
    for (; number > 0; number /= 10) {
        end.rx() -= metrics_.CharWidth();
        glyphs[count] = metrics_.Glyph(0, static_cast<char16_t>(u'0' + number % 10));
        places[count++] = end;
    }
    QGlyphRun run;
    run.setRawFont(metrics_.StyledRawFont(0));
    run.setRawData(glyphs.data(), places.data(), static_cast<int>(count));
    painter.drawGlyphRun({}, run);
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

void LinePainter::Paint(QPainter& painter, const PaintedLine& line)
{
    const LineLayout& layout = line.entry->layout;
    qreal height = metrics_.LineHeight();
    auto firstRow = std::max(static_cast<int32_t>(std::floor((line.clip.top() - line.origin.y()) / height)), 0);
    auto lastRow = std::min(static_cast<int32_t>(std::floor((line.clip.bottom() - line.origin.y()) / height)),
                            layout.RowCount() - 1);
    auto rowAt = [&](int32_t number) {
        Row row{number, layout.RowStart(number), layout.RowEnd(number), line.origin.y() + number * height};
        if (!layout.Shaped()) {
            row.first = layout.ColumnAt(number, line.clip.left() - line.origin.x(), true);
            row.last = std::min(layout.ColumnAt(number, line.clip.right() - line.origin.x(), true) + 8, row.last);
        }
        return row;
    };
    for (int32_t number = firstRow; number <= lastRow; ++number) PaintSelections(painter, line, rowAt(number));
    if (layout.Shaped()) PaintShaped(painter, line);
    for (int32_t number = firstRow; number <= lastRow; ++number) {
        Row row = rowAt(number);
        if (layout.Shaped()) {
            PaintShapedSigns(painter, line, row);
        } else {
            PaintCells(painter, line, row);
        }
        PaintPreedit(painter, line, row);
    }
    if (line.collapsed && lastRow == layout.RowCount() - 1) {
        qreal x = line.origin.x() + layout.RowWidth(lastRow) + metrics_.CharWidth() * 0.5;
        signs_.PaintDots(painter, {x, line.origin.y() + lastRow * height, metrics_.CharWidth() * 2.5, height},
                         colors_.faint);
    }
}

void LinePainter::PaintSelections(QPainter& painter, const PaintedLine& line, const Row& row) const
{
    for (ColumnRange columns : line.selections) PaintSelection(painter, line, row, columns);
    if (row.number != line.entry->layout.RowCount() - 1) return;
    const qreal left = line.origin.x() + line.entry->layout.RowWidth(row.number);
    const qreal width = metrics_.CharWidth();
    const auto [first, last] = line.selectedBeyond;
    if (first < last)
        painter.fillRect(QRectF(left + first * width, row.y, (last - first) * width, metrics_.LineHeight()),
                         colors_.highlight);
    if (line.selectsBreak) painter.fillRect(QRectF(left, row.y, width * 0.6, metrics_.LineHeight()), colors_.highlight);
}

void LinePainter::PaintSelection(QPainter& painter, const PaintedLine& line, const Row& row, ColumnRange columns) const
{
    const LineLayout& layout = line.entry->layout;
    qreal height = metrics_.LineHeight();
    int32_t start = std::max(columns.first, layout.RowStart(row.number));
    int32_t end = std::min(columns.last, layout.RowEnd(row.number));
    if (start < end && layout.Shaped()) {
        // In mixed directions a selection is several stretches; character by character finds them all.
        for (int32_t column = start; column < end;) {
            int32_t next = std::max(layout.Shape().nextCursorPosition(column), column + 1);
            auto [left, width] = layout.SpanOf(row.number, column);
            painter.fillRect(QRectF(line.origin.x() + left, row.y, width, height), colors_.highlight);
            column = next;
        }
    } else if (start < end) {
        qreal left = std::max(line.origin.x() + layout.XIn(row.number, start), line.clip.left() - height);
        qreal right = std::min(line.origin.x() + layout.XIn(row.number, end), line.clip.right() + height);
        if (left < right) painter.fillRect(QRectF(left, row.y, right - left, height), colors_.highlight);
    }
}

void LinePainter::PaintCells(QPainter& painter, const PaintedLine& line, const Row& row)
{
    const std::vector<Token>& tokens = line.entry->tokens;
    auto next = std::upper_bound(tokens.begin(), tokens.end(), row.first, [](int32_t column, const Token& token) {
        return column < token.start + token.length;
    });
    for (int32_t at = row.first; at < row.last;) {
        while (next != tokens.end() && next->start + next->length <= at) ++next;
        bool covered = next != tokens.end() && next->start <= at && next->type != 0;
        int32_t end = covered                                    ? next->start + next->length
                      : next != tokens.end() && next->start > at ? next->start
                                                                 : row.last;
        ScreenStyle style = colors_.Style(covered ? next->type : kPlainToken);
        if (line.IsSelected(at)) style.color = colors_.highlightedText;
        end = std::min({end, line.SelectionEdge(at), row.last});
        PaintRun(painter, line, row, at, end, style);
        at = end;
    }
}

void LinePainter::PaintRun(QPainter& painter, const PaintedLine& line, const Row& row, int32_t from, int32_t to,
                           const ScreenStyle& style)
{
    const LineLayout& layout = line.entry->layout;
    qreal width = metrics_.CharWidth();
    qreal baseline = row.y + metrics_.Ascent();
    qreal x = line.origin.x() + layout.XIn(row.number, from);
    bool plain = layout.Cells().Plain();
    while (from < to) {
        char16_t c = line.text[static_cast<size_t>(from)];
        if (!plain) x = line.origin.x() + layout.XIn(row.number, from);
        if (quint32 glyph = metrics_.Glyph(style.style, c)) {
            if (c != u' ') {
                glyphs_.push_back(glyph);
                places_.emplace_back(x, baseline);
            }
            ++from;
        } else if (const auto sign = SignAt(line.text, static_cast<size_t>(from))) {
            PaintSign(painter, line, from, {x, row.y, width * sign->cells, metrics_.LineHeight()}, *sign);
            from += sign->units;
        } else {
            int32_t next = NextGrapheme(line.text, from);
            painter.setPen(style.color);
            painter.setFont(metrics_.StyledFont(style.style));
            painter.drawText(QPointF(x, baseline),
                             ToQString(line.text.substr(static_cast<size_t>(from), static_cast<size_t>(next - from))));
            from = next;
        }
        x += width;
    }
    Flush(painter, style);
}

void LinePainter::Flush(QPainter& painter, const ScreenStyle& style)
{
    if (glyphs_.empty()) return;
    QGlyphRun run;
    run.setRawFont(metrics_.StyledRawFont(style.style));
    run.setRawData(glyphs_.data(), places_.data(), static_cast<int>(glyphs_.size()));
    painter.setPen(style.color);
    painter.drawGlyphRun({}, run);
    glyphs_.clear();
    places_.clear();
}

void LinePainter::PaintShaped(QPainter& painter, const PaintedLine& line) const
{
    QList<QTextLayout::FormatRange> selections;
    for (ColumnRange columns : line.selections) {
        QTextLayout::FormatRange range;
        range.start = columns.first;
        range.length = columns.last - columns.first;
        range.format.setForeground(colors_.highlightedText);
        selections.append(range);
    }
    painter.setPen(colors_.text);
    line.entry->layout.Shape().draw(&painter, line.origin, selections, line.clip);
}

void LinePainter::PaintShapedSigns(QPainter& painter, const PaintedLine& line, const Row& row) const
{
    const LineLayout& layout = line.entry->layout;
    for (int32_t column = row.first; column < row.last; ++column) {
        const auto sign = SignAt(line.text, static_cast<size_t>(column));
        if (!sign) continue;
        auto [left, width] = layout.SpanOf(row.number, column);
        QRectF cell(line.origin.x() + left, row.y, width, metrics_.LineHeight());
        if (sign->units > 1) {
            const LineLayout::Span trail = layout.SpanOf(row.number, ++column);
            cell |= QRectF(line.origin.x() + trail.left, row.y, trail.width, metrics_.LineHeight());
        }
        PaintSign(painter, line, column, cell, *sign);
    }
}

void LinePainter::PaintSign(QPainter& painter, const PaintedLine& line, int32_t column, const QRectF& cell,
                            const Sign& sign) const
{
    const bool selected = line.IsSelected(column);
    const QColor& color = sign.name[0] ? colors_.hidden : colors_.sign;
    signs_.PaintSign(painter, cell, cell.top() + metrics_.Ascent(), line.text[static_cast<size_t>(column)],
                     selected ? colors_.highlightedText : color, sign.name.data());
}

void LinePainter::PaintPreedit(QPainter& painter, const PaintedLine& line, const Row& row) const
{
    const LineEntry& entry = *line.entry;
    if (entry.preeditAt < 0) return;
    int32_t start = std::max(entry.preeditAt, entry.layout.RowStart(row.number));
    int32_t end = std::min(entry.preeditAt + entry.preeditLength, entry.layout.RowEnd(row.number));
    if (start >= end) return;
    qreal y = std::floor(row.y + metrics_.LineHeight()) - 1;
    painter.fillRect(QRectF(line.origin.x() + entry.layout.XIn(row.number, start), y,
                            entry.layout.XIn(row.number, end) - entry.layout.XIn(row.number, start), 1),
                     colors_.text);
}

} // namespace nib
