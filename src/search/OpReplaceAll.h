#pragma once
#include "text/SourceDocument.h"

#include <memory>
#include <vector>

namespace nib {

/// The hits of one sweep through a text and what takes their place. Keeps a position a hit; what stood there only where
/// it may differ from hit to hit.
class ReplacePass {
public:
    /// `hits` ascend and do not overlap; each is `found` in the text, if need be in another case. Passes of one `sweep`
    /// can be undone together.
    ReplacePass(std::vector<Position> hits, Text found, bool sameCase, TextView replacement,
                std::shared_ptr<const void> sweep);

    const void* Sweep() const { return sweep_.get(); }
    size_t Count() const { return hits_.size(); }
    /// All of them, each line in one go.
    void Do(SourceDocument& document);
    /// One of them, where those before it are done and those behind it are not; answers where the caret belongs.
    Position DoOne(SourceDocument& document, size_t hit) const;
    Position UndoOne(SourceDocument& document, size_t hit) const;
    /// Behind the last replacement, in the text that holds them.
    Position LastEnd() const { return Map(EndOf(hits_.size() - 1)); }
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
    /// In the text before.
    Position EndOf(size_t hit) const;
    /// In the text in which all before it are done.
    Position StartOf(size_t hit) const;
    TextView OldText(size_t hit) const;
    void DoWithinLines(SourceDocument& document) const;
    Text Replaced(const SourceDocument& document, Group group) const;
    Position Put(SourceDocument& document, Position start, Position end, TextView text) const;

    std::vector<Position> hits_;
    std::shared_ptr<const void> sweep_;
    Text found_;
    bool sameCase_;
    Text replacement_; ///< lines joined with CR LF
    int32_t breaks_ = 0;
    int32_t lastPiece_ = 0; ///< length of its last line
    Text old_;              ///< what stood at the hits, one behind the other
};

/// One replacement of a sweep, a step of undo of its own. The first one that is put on the stack makes all of them at
/// once, so that a sweep costs no more than its text; the others are on the stack to be taken back.
class OpReplaceHit final : public ISourceOp {
public:
    OpReplaceHit(std::shared_ptr<ReplacePass> pass, size_t hit) : pass_(std::move(pass)), hit_(hit) {}
    void DoOp(SourceDocument& document) override;
    void UndoOp(SourceDocument& document) override;
    const void* Sweep() const override { return pass_->Sweep(); }

private:
    std::shared_ptr<ReplacePass> pass_;
    size_t hit_;
    bool undone_ = false;
};

} // namespace nib
