#pragma once
#include "editing/operations/BlockRectangle.h"

namespace nib {

/// Turns the letter case of the selected text.
class OpToggleCase final : public ISourceOp {
public:
    explicit OpToggleCase(SourceView& view) : view_(view) {}
    void DoOp(SourceDocument& document) override;
    void UndoOp(SourceDocument& document) override;

private:
    SourceView& view_;
    bool taken_ = false;
    BlockRectangle block_; ///< as it was before
    Position newEnd_;      ///< some letters have another length in another case
    Text oldText_;         ///< empty when nothing was changed
};

} // namespace nib
