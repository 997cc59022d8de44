#include "editing/operations/OpToggleCase.h"

#include "editing/operations/CaseConversion.h"

#include <algorithm>
#include <utility>

namespace nib {

namespace {

/// Gives a range a text of as many lines, one by one, so that each line stays the same one. Answers the new end.
Position ReplaceLineByLine(SourceDocument& document, Position start, Position end, TextView text)
{
    Text scratch;
    for (Position from = start;; from = {0, from.line + 1}) {
        size_t cut = std::min(text.find(u'\r'), text.size());
        TextView piece = text.substr(0, cut);
        TextView line = document.LineText(from.line, scratch);
        bool last = from.line == end.line;
        int32_t to = last ? end.col : static_cast<int32_t>(line.size());
        if (line.substr(static_cast<size_t>(from.col), static_cast<size_t>(to - from.col)) != piece) {
            document.DeleteRange(from, {to, from.line});
            document.InsertText(from, piece);
        }
        if (last) return {from.col + static_cast<int32_t>(piece.size()), from.line};
        text.remove_prefix(std::min(cut + 2, text.size()));
    }
}

} // namespace

void OpToggleCase::DoOp(SourceDocument& document)
{
    if (!std::exchange(taken_, true)) block_ = TakeBlock(view_);
    if (!block_.selected) return;
    oldText_ = document.GetRange(block_.start, block_.end);
    std::optional<Text> newText = WithToggledCase(oldText_);
    if (!newText) {
        oldText_ = {};
        return;
    }
    newEnd_ = ReplaceLineByLine(document, block_.start, block_.end, *newText);
    BlockRectangle block = block_;
    block.end = newEnd_;
    if (!block.swapped) block.caret = newEnd_;
    FinishBlock(document, view_, block);
}

void OpToggleCase::UndoOp(SourceDocument& document)
{
    if (oldText_.empty()) return;
    ReplaceLineByLine(document, block_.start, newEnd_, oldText_);
    FinishBlock(document, view_, block_);
}

} // namespace nib
