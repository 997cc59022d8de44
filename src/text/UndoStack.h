#pragma once
// The steps that can be undone and redone, and where among them the saved text lies. Knows what a step is, not how to
// apply it.

#include "text/Carets.h"
#include "text/LineEdits.h"
#include "text/SourceContract.h"

#include <array>
#include <memory>
#include <vector>

namespace nib {

/// Data words of a line that come back with it: bookmark and identity.
struct KeptWords {
    bool bookmark = false;
    uint32_t identity = 0;
};

struct RangeBatch;

struct TextEdit {
    TextEdit();
    TextEdit(bool inserts, Position from, Position to, Text content, std::vector<KeptWords> lineWords);
    TextEdit(TextEdit&&) noexcept;
    TextEdit& operator=(TextEdit&&) noexcept;
    ~TextEdit();

    bool insert = false;
    Position start;
    Position end; ///< behind the text, in the text that holds it
    Text text;
    std::vector<KeptWords> words;       ///< of the lines of a range that spans several
    std::unique_ptr<LineEdits> lines;   ///< then there is neither text nor range
    std::unique_ptr<RangeBatch> ranges; ///< then that is all
    bool typed = false;                 ///< at several carets at once: more may follow
};

/// Where the carets of a view stood before a step and after it.
struct KeptCarets {
    Carets before;
    Carets after;
};

struct UndoStep {
    std::vector<TextEdit> edits;
    std::unique_ptr<ISourceOp> op;      ///< then there are no edits
    TextEdit taken;                     ///< the range that an operation erased first, without its text
    std::unique_ptr<KeptCarets> carets; ///< of an edit at several
    bool joined = false;                ///< part of the same group as the step before it: both or none
};

class UndoStack {
public:
    /// A typed edit joins the step before it when it goes on where that one ended.
    void Push(TextEdit edit);
    void Push(UndoStep step);
    /// Of the edit pushed last.
    void KeepCarets(Carets before, Carets after);
    void BreakTyping() { typing_ = false; }
    void BeginGroup();
    void EndGroup();
    bool InGroup() const { return groups_ > 0; }

    bool CanUndo() const { return at_ > 0; }
    bool CanRedo() const { return at_ < static_cast<int64_t>(steps_.size()); }
    /// The step to take back or to do again; the caller applies it, then says so.
    UndoStep& Top() { return steps_[static_cast<size_t>(at_ - 1)]; }
    UndoStep& Next() { return steps_[static_cast<size_t>(at_)]; }
    /// Sweep of the step that would be taken back next.
    const void* TopSweep() const;
    void Undone();
    void Redone();

    bool Modified() const { return at_ != saved_ || !open_.edits.empty(); }
    void SetModified(bool modified)
    {
        saved_ = modified ? kUnreachable : at_;
        if (modified) saving_ = kUnreachable;
        typing_ = false;
    }
    /// The text as it is now is being saved, and edits may follow meanwhile.
    void BeginSaving()
    {
        saving_ = open_.edits.empty() ? at_ : kUnreachable;
        typing_ = false;
    }
    void EndSaving(bool saved)
    {
        if (saved) saved_ = saving_;
        saving_ = kUnreachable;
    }
    /// Forgets all steps; whether the text counts as modified stays as it is.
    void Clear();
    size_t MemoryUse() const;

private:
    static constexpr int64_t kUnreachable = -1;

    bool Absorb(TextEdit& edit);
    void Cut();
    void Seal();

    std::vector<UndoStep> steps_;
    UndoStep open_; ///< of the group under way
    int64_t at_ = 0;
    int64_t saved_ = 0;
    int64_t saving_ = kUnreachable; ///< will be saved_
    int32_t groups_ = 0;
    bool groupHasStep_ = false; ///< the group under way is on the stack in part
    bool typing_ = false;
};

} // namespace nib
