// Where the movement keys take the caret; part of SourceView.

#include "text/SourceView.h"
#include "text/WordBreak.h"

#include <algorithm>

namespace nib {

void SourceView::MoveCaret(Move move, bool extendSelection)
{
    document_.BreakTyping();
    bool vertical = move == Move::Up || move == Move::Down || move == Move::PageUp || move == Move::PageDown;
    if (!vertical) goal_ = -1;
    Position to = vertical ? VerticalTarget(move) : HorizontalTarget(move, extendSelection);
    Place(extendSelection ? anchor_ : to, to);
}

Position SourceView::StepLeft(Position from, bool word)
{
    if (from.col > 0) {
        TextView line = document_.LineText(from.line, scratch_);
        return {word ? PreviousWord(line, from.col) : PreviousGrapheme(line, from.col), from.line};
    }
    int32_t index = document_.VisibleIndex(from.line);
    if (index == 0) return from;
    int32_t line = document_.VisibleLine(index - 1);
    return {document_.LineLength(line), line};
}

Position SourceView::StepRight(Position from, bool word)
{
    TextView line = document_.LineText(from.line, scratch_);
    if (from.col < static_cast<int32_t>(line.size())) {
        return {word ? NextWord(line, from.col) : NextGrapheme(line, from.col), from.line};
    }
    int32_t index = document_.VisibleIndex(from.line) + 1;
    return index < document_.VisibleCount() ? Position{0, document_.VisibleLine(index)} : from;
}

Position SourceView::HomeOf(Position from)
{
    int32_t first = 0;
    int32_t last = 0;
    if (host_->RowOf(from, first, last) && first > 0 && from.col != first) return {first, from.line};
    int32_t indent = IndentOf(document_.LineText(from.line, scratch_));
    return {from.col == indent ? 0 : indent, from.line};
}

Position SourceView::EndOf(Position from)
{
    int32_t first = 0;
    int32_t last = 0;
    if (host_->RowOf(from, first, last) && from.col != last) return {last, from.line};
    return {document_.LineLength(from.line), from.line};
}

Position SourceView::HorizontalTarget(Move move, bool extendSelection)
{
    bool collapse = HasSelection() && !extendSelection;
    switch (move) {
    case Move::Left: return collapse ? std::min(anchor_, caret_) : StepLeft(caret_, false);
    case Move::Right: return collapse ? std::max(anchor_, caret_) : StepRight(caret_, false);
    case Move::WordLeft: return StepLeft(caret_, true);
    case Move::WordRight: return StepRight(caret_, true);
    case Move::LineStart: return HomeOf(caret_);
    case Move::LineEnd: return EndOf(caret_);
    case Move::TextStart: return {};
    case Move::TextEnd: return document_.End();
    default: return caret_;
    }
}

Position SourceView::VerticalTarget(Move move)
{
    // A page keeps one line of the one before in sight.
    bool page = move == Move::PageUp || move == Move::PageDown;
    int32_t rows = page ? std::max(host_->PageLines() - 1, 1) : 1;
    if (move == Move::Up || move == Move::PageUp) rows = -rows;

    Position to = caret_;
    if (host_->MoveRows(to, rows, goal_)) return SnapToGrapheme(to);
    if (goal_ < 0) goal_ = caret_.col;
    int32_t last = document_.VisibleCount() - 1;
    to.line = document_.VisibleLine(std::clamp(document_.VisibleIndex(caret_.line) + rows, 0, last));
    to.col = static_cast<int32_t>(goal_);
    return SnapToGrapheme(to);
}

} // namespace nib
