#pragma once
#include "text/SourceDocument.h"

#include <memory>
#include <vector>

namespace nib {

/// A text for each of many hits, at little cost where they are alike.
class HitTexts {
public:
    HitTexts() = default; ///< each its own
    /// One for all, or one of the same length for each, behind each other.
    HitTexts(Text text, size_t each) : text_(std::move(text)), each_(each), alike_(true) {}

    void Add(TextView text);
    TextView Of(size_t hit) const;
    size_t Length(size_t hit) const { return alike_ ? each_ : ends_[hit] - Start(hit); }
    /// Of all from `first` to before `end`.
    size_t Length(size_t first, size_t end) const { return alike_ ? each_ * (end - first) : Start(end) - Start(first); }

private:
    size_t Start(size_t hit) const { return hit == 0 ? 0 : ends_[hit - 1]; }

    Text text_;
    size_t each_ = 0;
    bool alike_ = false;
    std::vector<size_t> ends_;
};

/// The hits of one sweep through a text and what takes their place. Keeps a position a hit; what stood there, and what
/// comes there, only where it may differ from hit to hit.
class ReplacePass {
public:
    /// `hits` ascend and do not overlap; each is `found` in the text, if need be in another case. Passes of one `sweep`
    /// can be undone together.
    ReplacePass(std::vector<Position> hits, Text found, bool sameCase, TextView replacement,
                std::shared_ptr<const void> sweep);
    /// With texts of their own for each; all replacements have the same number of line breaks.
    ReplacePass(std::vector<Position> hits, HitTexts found, HitTexts replacements, std::shared_ptr<const void> sweep);

    const void* Sweep() const { return sweep_.get(); }
    size_t Count() const { return hits_.size(); }
    /// All of them, each line in one go.
    void Do(SourceDocument& document);
    /// One of them, where those before it are done and those behind it are not; answers where the caret belongs.
    Position DoOne(SourceDocument& document, size_t hit) const;
    Position UndoOne(SourceDocument& document, size_t hit) const;
    /// Behind the last replacement, in the text that holds them.
    Position LastEnd() const { return EndAfter(hits_.size() - 1); }
    /// Where a position of the text before, at a hit's edge or outside all hits, stands afterwards.
    Position Map(Position before) const;
    /// Units that the replacements in a line add to it.
    int32_t GrowthOf(int32_t line) const;

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
    /// In that in which it is done, too.
    Position EndAfter(size_t hit) const;
    Position MapBehind(Position before, size_t count) const;
    int32_t Growth(size_t first, size_t end) const;
    void DoWithinLines(SourceDocument& document) const;
    Text Replaced(const SourceDocument& document, Group group) const;
    Position Put(SourceDocument& document, Position start, Position end, TextView text) const;

    std::vector<Position> hits_;
    std::shared_ptr<const void> sweep_;
    HitTexts found_;
    bool knowsFound_;    ///< not only its length
    HitTexts put_;       ///< lines joined with CR LF
    int32_t breaks_ = 0; ///< in each
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
