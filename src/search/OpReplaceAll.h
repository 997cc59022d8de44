#pragma once
#include "editing/SourceView.h"

#include <memory>
#include <vector>

namespace nib {

/// The hits of one sweep through a text and what takes their place. Keeps a position a hit; what stood there only where
/// it may differ from hit to hit.
class ReplacePass {
public:
    /// `hits` ascend and do not overlap; each is `found` in the text, if need be in another case.
    ReplacePass(std::vector<Position> hits, Text found, bool sameCase, TextView replacement);

    void Do(SourceDocument& document);
    void Undo(SourceDocument& document);
    bool Done() const { return done_; }
    /// Behind the last replacement, in the text that holds them.
    Position LastEnd() const;
    /// Behind the first hit, in the text before.
    Position FirstEnd() const;
    /// Where a position of the text before, at a hit's edge or outside all hits, stands afterwards.
    Position Map(Position before) const;
    /// Units that each replacement adds to the text.
    int32_t Growth() const { return static_cast<int32_t>(replacement_.size()) - static_cast<int32_t>(found_.size()); }

private:
    /// Hits of one line, by index.
    struct Group {
        size_t first;
        size_t end;
    };

    Group GroupBefore(size_t end) const;
    Position EndOf(size_t hit) const;
    void Replace(SourceDocument& document, Group group);
    void Restore(SourceDocument& document, Group group);

    std::vector<Position> hits_;
    Text found_;
    bool sameCase_;
    Text replacement_; ///< lines joined with CR LF
    int32_t breaks_ = 0;
    int32_t lastPiece_ = 0; ///< length of its last line
    Text old_;              ///< what stood at the hits, one behind the other, last line first
    bool done_ = false;
};

/// Replaces all hits as one step of undo. A search that goes round the end of the text makes two passes.
class OpReplaceAll final : public ISourceOp {
public:
    explicit OpReplaceAll(std::vector<std::shared_ptr<ReplacePass>> passes) : passes_(std::move(passes)) {}
    void DoOp(SourceDocument& document) override;
    void UndoOp(SourceDocument& document) override;

private:
    std::vector<std::shared_ptr<ReplacePass>> passes_;
};

} // namespace nib
