#pragma once
#include "editing/operations/BlockRectangle.h"

#include <optional>
#include <vector>

namespace nib {

/// Moves the lines of the selection by one tab stop, to the right or to the left.
class OpIndentBlock final : public ISourceOp {
public:
    OpIndentBlock(bool indent, SourceView& view) : indent_(indent), view_(view) {}
    void DoOp(SourceDocument& document) override;
    void UndoOp(SourceDocument& document) override;

private:
    struct ShortLine {
        int32_t line;
        int32_t blanks;
    };

    bool indent_;
    SourceView& view_;
    std::optional<BlockRectangle> block_; ///< as it was before
    int32_t amount_ = 0;
    std::vector<ShortLine> shortLines_; ///< those that lost fewer blanks than the amount
};

} // namespace nib
