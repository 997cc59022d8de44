#pragma once
#include "editing/operations/BlockRectangle.h"

#include <optional>
#include <vector>

namespace nib {

struct MvEdit;

/// Puts a comment marker on the lines of the selection, or takes it off.
class OpCommentBlock final : public ISourceOp {
public:
    OpCommentBlock(bool comment, SourceView& view, const MvEdit& settings);
    void DoOp(SourceDocument& document) override;
    void UndoOp(SourceDocument& document) override;

private:
    /// What a line won or lost. A negative count: a "!" marker went.
    struct LineChange {
        int32_t column = 0;
        int32_t count = 0;
    };

    LineChange Plan(TextView line) const;
    void Apply(SourceDocument& document, int32_t line, LineChange change, BlockRectangle& block) const;

    bool comment_;
    SourceView& view_;
    int32_t indentStar_;
    int32_t indentBang_;
    Text marker_;                         ///< as a comment puts it in, with its margin
    std::optional<BlockRectangle> block_; ///< as it was before
    std::vector<LineChange> changes_;     ///< one a line of the block
};

} // namespace nib
