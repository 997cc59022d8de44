#include "editing/operations/OpIndentBlock.h"

#include <algorithm>

namespace nib {

void OpIndentBlock::DoOp(SourceDocument& document)
{
    if (!block_) {
        block_ = TakeBlock(view_);
        amount_ = view_.TabSize();
    }
    BlockRectangle block = *block_;
    if (indent_)
        Indent(document, block);
    else
        Outdent(document, block);
    FinishBlock(document, view_, block);
}

void OpIndentBlock::Indent(SourceDocument& document, BlockRectangle& block)
{
    Text blanks(static_cast<size_t>(amount_), u' ');
    int32_t last = block.LastLine();
    for (int32_t line = block.FirstLine(); line <= last; ++line) {
        document.InsertText({0, line}, blanks);
        block.Shift(line, 0, amount_);
    }
}

void OpIndentBlock::Outdent(SourceDocument& document, BlockRectangle& block)
{
    shortLines_.clear();
    Text scratch;
    int32_t last = block.LastLine();
    for (int32_t line = block.FirstLine(); line <= last; ++line) {
        TextView text = document.LineText(line, scratch).substr(0, static_cast<size_t>(amount_));
        auto blanks = static_cast<int32_t>(std::min(text.find_first_not_of(u' '), text.size()));
        if (blanks > 0) document.DeleteRange({0, line}, {blanks, line});
        if (blanks != amount_) shortLines_.push_back({line, blanks});
        block.Shift(line, 0, -blanks);
    }
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
