#include "editing/operations/BlockRectangle.h"

#include <algorithm>

namespace nib {

void BlockRectangle::Shift(int32_t line, int32_t column, int32_t by)
{
    for (Position* place : {&start, &end, &caret})
        if (place->line == line && place->col > column) place->col = std::max(place->col + by, 0);
}

BlockRectangle TakeBlock(const SourceView& view)
{
    BlockRectangle block;
    block.caret = view.Caret();
    block.selected = view.HasSelection();
    if (!block.selected) {
        block.start = block.end = block.caret;
        if (block.caret.col == 0) ++block.end.line;
        return block;
    }
    view.GetSelection(block.start, block.end);
    block.swapped = block.end < block.start;
    if (block.swapped) std::swap(block.start, block.end);
    return block;
}

void FinishBlock(SourceDocument& document, SourceView& view, const BlockRectangle& block)
{
    document.UpdateLines(block.FirstLine(), block.LastLine());
    document.NotifyChange(kLinesChanged, block.FirstLine(), block.LastLine(), block.caret);
    if (!block.selected) return;
    view.SetSelection(block.swapped ? block.end : block.start, block.swapped ? block.start : block.end);
}

} // namespace nib
