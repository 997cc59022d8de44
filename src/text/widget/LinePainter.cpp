#include "text/widget/LinePainter.h"

#include "platform/qt/QtText.h"
#include "text/TextSearch.h"
#include "text/widget/CharacterKind.h"

#include <QGlyphRun>

#include <algorithm>
#include <cmath>

namespace nib {

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
    for (int32_t number = firstRow; number <= lastRow; ++number) PaintSelection(painter, line, rowAt(number));
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

void LinePainter::PaintSelection(QPainter& painter, const PaintedLine& line, const Row& row) const
{
    const LineLayout& layout = line.entry->layout;
    qreal height = metrics_.LineHeight();
    int32_t start = std::max(line.selectionStart, layout.RowStart(row.number));
    int32_t end = std::min(line.selectionEnd, layout.RowEnd(row.number));
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
    if (line.selectsBreak && row.number == layout.RowCount() - 1) {
        qreal left = line.origin.x() + layout.RowWidth(row.number);
        painter.fillRect(QRectF(left, row.y, metrics_.CharWidth() * 0.6, height), colors_.highlight);
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
        bool selected = at >= line.selectionStart && at < line.selectionEnd;
        if (selected) {
            style.color = colors_.highlightedText;
            end = std::min(end, line.selectionEnd);
        } else if (at < line.selectionStart) {
            end = std::min(end, line.selectionStart);
        }
        end = std::min(end, row.last);
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
        } else if (IsSign(c)) {
            bool selected = from >= line.selectionStart && from < line.selectionEnd;
            signs_.PaintSign(painter, {x, row.y, width, metrics_.LineHeight()}, baseline, c,
                             selected ? colors_.highlightedText : colors_.sign);
            ++from;
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
    if (line.selectionStart < line.selectionEnd) {
        QTextLayout::FormatRange range;
        range.start = line.selectionStart;
        range.length = line.selectionEnd - line.selectionStart;
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
        char16_t c = line.text[static_cast<size_t>(column)];
        if (!IsSign(c)) continue;
        auto [left, width] = layout.SpanOf(row.number, column);
        QRectF cell(line.origin.x() + left, row.y, width, metrics_.LineHeight());
        bool selected = column >= line.selectionStart && column < line.selectionEnd;
        signs_.PaintSign(painter, cell, row.y + metrics_.Ascent(), c,
                         selected ? colors_.highlightedText : colors_.sign);
    }
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
