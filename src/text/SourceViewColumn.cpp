// Columns: a caret in each of the lines from corner to corner; part of SourceView. A column goes on behind the end of
// short lines, which typing fills with blanks, so that what is typed stands under one another.

#include "text/SourceView.h"

#include <algorithm>

namespace nib {

void SourceView::PutAtCell(int32_t line, int32_t cell, Position& at, int32_t& beyond)
{
    at = SnapToGrapheme({std::min(host_->ColumnAtCell(line, cell), document_.LineLength(line)), line});
    const bool atEnd = at.col == document_.LineLength(line);
    beyond = atEnd ? std::max(cell - host_->CellsBefore(at), 0) : 0;
}

void SourceView::SelectColumn(CellPlace anchor, CellPlace caret)
{
    document_.BreakTyping();
    const int32_t from = document_.VisibleIndex(anchor.line);
    const int32_t to = document_.VisibleIndex(caret.line);
    anchor = {document_.VisibleLine(from), std::max(anchor.cell, 0)};
    caret = {document_.VisibleLine(to), std::max(caret.cell, 0)};
    std::vector<CaretSpan> spans;
    spans.reserve(static_cast<size_t>(std::abs(to - from)) + 1);
    for (int32_t index = std::min(from, to); index <= std::max(from, to); ++index) {
        const int32_t line = document_.VisibleLine(index);
        CaretSpan& span = spans.emplace_back();
        PutAtCell(line, anchor.cell, span.anchor, span.anchorBeyond);
        PutAtCell(line, caret.cell, span.caret, span.caretBeyond);
    }
    const size_t main = to < from ? 0 : spans.size() - 1;
    Carets carets;
    carets.Set(std::move(spans), main);
    PlaceAll(std::move(carets));
    column_ = {anchor, caret};
}

CellPlace SourceView::ColumnAnchor() const
{
    return column_ ? column_->anchor : CellOf(anchor_, 0);
}

void SourceView::ExtendColumn(Move move)
{
    const CellPlace anchor = ColumnAnchor();
    CellPlace caret = column_ ? column_->caret : CellOf(caret_, 0);
    const int32_t index = document_.VisibleIndex(caret.line);
    const int32_t page = std::max(host_->PageLines() - 1, 1);
    const int32_t last = document_.VisibleCount() - 1;
    auto goTo = [&](int32_t to) { caret.line = document_.VisibleLine(std::clamp(to, 0, last)); };
    switch (move) {
    case Move::Left: --caret.cell; break;
    case Move::Right: ++caret.cell; break;
    case Move::Up: goTo(index - 1); break;
    case Move::Down: goTo(index + 1); break;
    case Move::PageUp: goTo(index - page); break;
    case Move::PageDown: goTo(index + page); break;
    case Move::LineStart: caret.cell = 0; break;
    case Move::LineEnd: // of the longest
        caret.cell = 0;
        for (const CaretSpan& span : CaretSpans()) {
            const int32_t line = span.caret.line;
            caret.cell = std::max(caret.cell, host_->CellsBefore({document_.LineLength(line), line}));
        }
        break;
    default: return;
    }
    SelectColumn(anchor, caret);
}

/// After an edit: still one if all carets stand under one another.
void SourceView::StraightenColumn(Column column)
{
    if (!HasSeveral()) return;
    const CellPlace main = CellOf(caret_, CaretBeyond());
    for (const CaretSpan& span : carets_.Spans()) {
        if (!span.IsEmpty() || CellOf(span.caret, span.caretBeyond).cell != main.cell) return;
    }
    const bool upwards = column.caret.line < column.anchor.line;
    const CaretSpan& other = upwards ? carets_.Spans().back() : carets_.Spans().front();
    column_ = {{other.caret.line, main.cell}, main};
}

} // namespace nib
