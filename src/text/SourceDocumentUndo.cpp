// Operations of the program, and the steps back and forth; part of SourceDocument.

#include "base/Error.h"
#include "text/SourceDocument.h"

namespace nib {

/// The steps fit the text only between two of them.
void SourceDocument::RefuseInStep() const
{
    RefuseInCallback();
    if (journal_ || undo_.InGroup())
        throw Error{error_number::kInvalidCall, u"The undo stack cannot move while an operation runs."};
}

void SourceDocument::ClearUndo()
{
    if (journal_ || replaying_)
        throw Error{error_number::kInvalidCall, u"The undo stack cannot be cleared while an operation runs."};
    undo_.Clear();
}

/// An operation that fails leaves the text as it was.
template <typename Body>
std::optional<Position> SourceDocument::RunOp(Body&& body, TextEdit& taken)
{
    taken = {};
    std::vector<TextEdit> journal;
    journal_ = &journal;
    caretTold_ = false;
    try {
        body();
        journal_ = nullptr;
    } catch (...) {
        journal_ = nullptr;
        replaying_ = true;
        for (auto edit = journal.rbegin(); edit != journal.rend(); ++edit) Apply(*edit, false);
        replaying_ = false;
        throw;
    }
    if (journal.empty()) return std::nullopt;
    // Later ranges are places in a text that is between two states.
    if (TextEdit& first = journal.front(); !first.insert) taken = {false, first.start, {}, {}, std::move(first.words)};
    if (caretTold_) return std::nullopt;
    return journal.back().insert ? journal.back().end : journal.back().start;
}

void SourceDocument::ExecuteOp(std::unique_ptr<ISourceOp> operation)
{
    RefuseInCallback();
    if (journal_) throw Error{error_number::kInvalidCall, u"An operation cannot run within another."};
    Batch batch(*this);
    UndoStep step;
    RunOp([&] { operation->DoOp(*this); }, step.taken);
    step.op = std::move(operation);
    undo_.Push(std::move(step));
}

/// Takes a step back or does it again.
std::optional<Position> SourceDocument::Replay(UndoStep& step, bool forward)
{
    std::optional<Position> caret;
    if (step.op) {
        const TextEdit taken = std::exchange(step.taken, {});
        caret = RunOp([&] { forward ? step.op->DoOp(*this) : step.op->UndoOp(*this); }, step.taken);
        if (!forward) RestoreWords(taken);
        return caret;
    }
    replaying_ = true;
    if (forward) {
        for (TextEdit& edit : step.edits) caret = Apply(edit, true);
    } else {
        for (auto edit = step.edits.rbegin(); edit != step.edits.rend(); ++edit) caret = Apply(*edit, false);
    }
    replaying_ = false;
    return caret;
}

/// With those that belong to the same group.
std::optional<Position> SourceDocument::UndoStepOnTop()
{
    std::optional<Position> caret;
    for (bool more = undo_.CanUndo(); more;) {
        UndoStep& step = undo_.Top();
        caret = Replay(step, false);
        more = step.joined;
        undo_.Undone();
    }
    return caret;
}

void SourceDocument::TellCarets(const UndoStep& step, bool forward, std::optional<Position> caret)
{
    if (!step.carets) return TellCaret(caret);
    Tell([&](BufferListener& l) { l.CaretsRequested(forward ? step.carets->after : step.carets->before); });
}

void SourceDocument::Undo()
{
    RefuseInStep();
    if (!CanUndo()) return;
    std::optional<Position> caret;
    {
        Batch batch(*this);
        caret = UndoStepOnTop();
    }
    TellCarets(undo_.Next(), false, caret);
}

void SourceDocument::UndoSweep()
{
    RefuseInStep();
    const void* sweep = undo_.TopSweep();
    if (!sweep) return;
    std::optional<Position> caret;
    {
        Batch batch(*this);
        sweepCaret_ = &caret;
        try {
            while (undo_.TopSweep() == sweep) UndoStepOnTop();
        } catch (...) {
            sweepCaret_ = nullptr;
            throw;
        }
        sweepCaret_ = nullptr;
    }
    TellCaret(caret);
}

void SourceDocument::Redo()
{
    RefuseInStep();
    if (!CanRedo()) return;
    std::optional<Position> caret;
    {
        Batch batch(*this);
        for (bool more = undo_.CanRedo(); more; more = undo_.CanRedo() && undo_.Next().joined) {
            caret = Replay(undo_.Next(), true);
            undo_.Redone();
        }
    }
    TellCarets(undo_.Top(), true, caret);
}

} // namespace nib
