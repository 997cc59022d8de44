#pragma once
#include "text/SourceDocument.h"

namespace nib {

/// Replaces one range by a text, as one step of undo.
class OpReplace final : public ISourceOp {
public:
    OpReplace(Position start, Position end, Text replaceWith)
        : start_(start), end_(end), replaceWith_(std::move(replaceWith))
    {
    }
    void DoOp(SourceDocument& document) override;
    void UndoOp(SourceDocument& document) override;

private:
    Position start_;
    Position end_;
    Text replaceWith_;
    Position newEnd_;
    Text oldText_;
};

} // namespace nib
