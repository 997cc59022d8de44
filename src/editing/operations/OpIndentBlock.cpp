#include "editing/operations/OpIndentBlock.h"

#include <cstdlib>

namespace nib {

void OpIndentBlock::DoOp(SourceDocument& document)
{
    if (!block_) {
        block_ = TakeBlock(view_);
        amount_ = view_.TabSize();
    }
    BlockRectangle block = *block_;
    shortLines_.clear();
    for (int32_t line = block.FirstLine(), last = block.LastLine(); line <= last; ++line) {
        int32_t moved = document.ShiftLine(line, indent_ ? amount_ : -amount_, SourceDocument::EmptyLine::IsPadded);
        if (std::abs(moved) != amount_) shortLines_.push_back({line, -moved});
        block.Shift(line, 0, moved);
    }
    FinishBlock(document, view_, block);
}

void OpIndentBlock::UndoOp(SourceDocument& document)
{
    Text blanks(static_cast<size_t>(amount_), u' ');
    auto next = shortLines_.begin();
    int32_t last = block_->LastLine();
    for (int32_t line = block_->FirstLine(); line <= last; ++line) {
        if (indent_) {
            document.DeleteRange({0, line}, {amount_, line});
            continue;
        }
        bool isShort = next != shortLines_.end() && next->line == line;
        int32_t count = isShort ? next++->blanks : amount_;
        if (count > 0) document.InsertText({0, line}, TextView(blanks).substr(0, static_cast<size_t>(count)));
    }
    FinishBlock(document, view_, *block_);
}

} // namespace nib
