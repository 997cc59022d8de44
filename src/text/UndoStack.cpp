#include "text/UndoStack.h"

#include "text/RangeEdits.h"

#include <utility>

namespace nib {

namespace {
bool OnOneLine(const TextEdit& edit)
{
    return !edit.lines && !edit.ranges && edit.start.line == edit.end.line;
}
} // namespace

TextEdit::TextEdit() = default;
TextEdit::TextEdit(bool inserts, Position from, Position to, Text content, std::vector<KeptWords> lineWords)
    : insert(inserts), start(from), end(to), text(std::move(content)), words(std::move(lineWords))
{
}
TextEdit::TextEdit(TextEdit&&) noexcept = default;
TextEdit& TextEdit::operator=(TextEdit&&) noexcept = default;
TextEdit::~TextEdit() = default;

/// A new step ends what could be redone, and perhaps the saved state with it.
void UndoStack::Cut()
{
    steps_.resize(static_cast<size_t>(at_));
    for (int64_t* mark : {&saved_, &saving_})
        if (*mark > at_) *mark = kUnreachable;
}

bool UndoStack::Absorb(TextEdit& edit)
{
    if (!typing_ || at_ == 0 || saved_ == at_ || saving_ == at_) return false;
    UndoStep& step = steps_.back();
    if (edit.typed && step.carets && step.edits.back().typed && edit.lines->GoesOnFrom(*step.edits.back().lines)) {
        step.edits.push_back(std::move(edit));
        return true;
    }
    if (!OnOneLine(edit) || step.op || step.edits.size() != 1) return false;
    TextEdit& last = step.edits.front();
    if (last.insert != edit.insert || !OnOneLine(last)) return false;
    if (edit.insert) {
        if (edit.start != last.end) return false;
        last.text += edit.text;
        last.end = edit.end;
        return true;
    }
    if (edit.start == last.start) { // the delete key
        last.text += edit.text;
        last.end.col += static_cast<int32_t>(edit.text.size());
        return true;
    }
    if (edit.end != last.start) return false; // backspace
    last.text.insert(0, edit.text);
    last.start = edit.start;
    return true;
}

void UndoStack::Push(TextEdit edit)
{
    if (groups_ > 0) {
        open_.edits.push_back(std::move(edit));
        return;
    }
    Cut();
    bool typed = edit.typed || OnOneLine(edit);
    if (!Absorb(edit)) {
        UndoStep step;
        step.edits.push_back(std::move(edit));
        steps_.push_back(std::move(step));
        ++at_;
    }
    typing_ = typed;
}

void UndoStack::Push(UndoStep step)
{
    Seal();
    Cut();
    step.joined = groups_ > 0 && std::exchange(groupHasStep_, true);
    steps_.push_back(std::move(step));
    ++at_;
    typing_ = false;
}

void UndoStack::KeepCarets(Carets before, Carets after)
{
    if (groups_ > 0 || at_ == 0) return;
    std::unique_ptr<KeptCarets>& kept = steps_[static_cast<size_t>(at_ - 1)].carets;
    if (kept)
        kept->after = std::move(after);
    else
        kept = std::make_unique<KeptCarets>(KeptCarets{std::move(before), std::move(after)});
}

void UndoStack::BeginGroup()
{
    if (groups_++ == 0) groupHasStep_ = false;
}

/// Puts the edits of the group so far on the stack, since an operation follows them.
void UndoStack::Seal()
{
    if (open_.edits.empty()) return;
    Push(std::exchange(open_, {}));
}

void UndoStack::EndGroup()
{
    if (groups_ == 0) return;
    if (groups_ > 1 || groupHasStep_ || open_.edits.size() != 1) {
        if (groups_ == 1) Seal();
        --groups_;
        return;
    }
    // A group of one edit is that edit: typing over a selection starts a run like any typing.
    --groups_;
    Push(std::move(std::exchange(open_, {}).edits.front()));
}

const void* UndoStack::TopSweep() const
{
    if (!CanUndo()) return nullptr;
    const UndoStep& top = steps_[static_cast<size_t>(at_ - 1)];
    return top.op ? top.op->Sweep() : nullptr;
}

void UndoStack::Undone()
{
    --at_;
    typing_ = false;
}

void UndoStack::Redone()
{
    ++at_;
    typing_ = false;
}

void UndoStack::Clear()
{
    saved_ = Modified() ? kUnreachable : 0;
    saving_ = kUnreachable; // the text may be another one
    steps_.clear();
    open_ = {};
    at_ = 0;
    typing_ = false;
    groupHasStep_ = false;
}

size_t UndoStack::MemoryUse() const
{
    size_t bytes = steps_.capacity() * sizeof(UndoStep);
    for (const UndoStep& step : steps_) {
        bytes += step.edits.capacity() * sizeof(TextEdit);
        for (const TextEdit& edit : step.edits)
            bytes += edit.text.capacity() * 2 + edit.words.capacity() * sizeof(KeptWords) +
                     (edit.lines ? edit.lines->MemoryUse() : 0) + (edit.ranges ? edit.ranges->MemoryUse() : 0);
        if (step.carets) bytes += step.carets->before.MemoryUse() + step.carets->after.MemoryUse();
    }
    return bytes;
}

} // namespace nib
