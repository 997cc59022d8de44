#include "text/SourceBufferImpl.h"

#include "base/Error.h"

#include <algorithm>

namespace nib {

namespace {

constexpr auto kControl = static_cast<size_t>(LineWord::Control);
constexpr auto kIdentity = static_cast<size_t>(LineWord::Identity);

int32_t CountBreaks(TextView text)
{
    int32_t breaks = 0;
    for (size_t i = text.find_first_of(u"\r\n"); i != TextView::npos; i = text.find_first_of(u"\r\n", i + 1)) {
        if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') ++i;
        ++breaks;
    }
    return breaks;
}

/// Cuts the first line off `text`.
TextView NextPiece(TextView& text)
{
    size_t end = text.find_first_of(u"\r\n");
    TextView piece = text.substr(0, end);
    if (end == TextView::npos)
        text = {};
    else
        text.remove_prefix(end + (text.substr(end, 2) == u"\r\n" ? 2 : 1));
    return piece;
}

} // namespace

int32_t SourceBuffer::Impl::ClampLine(int32_t line) const
{
    return std::clamp(line, 0, lines.Count() - 1);
}

Position SourceBuffer::Impl::ClampPosition(Position p) const
{
    int32_t line = ClampLine(p.line);
    auto length = static_cast<int32_t>(lines.Length(line));
    if (p.line < 0) return {0, 0};
    return {p.line > line ? length : std::clamp(p.col, 0, length), line};
}

const TextSearch& SourceBuffer::Impl::Prepared(TextView text, FindOptions options)
{
    if (!search_ || searchText_ != text || searchOptions_ != options) {
        search_.emplace(text, options);
        searchText_ = text;
        searchOptions_ = options;
    }
    return *search_;
}

/// Holds scans and notices back until the outermost one ends.
class SourceBuffer::Impl::Batch {
public:
    explicit Batch(Impl& impl) : impl_(impl) { ++impl_.depth; }
    ~Batch() { impl_.Leave(); }
    Batch(const Batch&) = delete;
    Batch& operator=(const Batch&) = delete;

private:
    Impl& impl_;
};

void SourceBuffer::Impl::RefuseInCallback() const
{
    if (telling_ > 0 || scanner.Busy())
        throw Error{error_number::kInvalidCall, u"The text cannot be changed from within a call-back."};
}

/// The steps fit the text only between two of them.
void SourceBuffer::Impl::RefuseInStep() const
{
    RefuseInCallback();
    if (journal_ || undo.InGroup())
        throw Error{error_number::kInvalidCall, u"The undo stack cannot move while an operation runs."};
}

void SourceBuffer::Impl::ClearUndo()
{
    if (journal_ || replaying_)
        throw Error{error_number::kInvalidCall, u"The undo stack cannot be cleared while an operation runs."};
    undo.Clear();
}

void SourceBuffer::Impl::NotifyChange(int32_t first, int32_t last, Position caret)
{
    first = ClampLine(first);
    last = ClampLine(last);
    caret = ClampPosition(caret);
    caretTold_ = true;
    Tell([&](BufferListener& l) { l.LinesRepaint(first, last); });
    Tell([&](BufferListener& l) { l.CaretRequested(caret); });
}

void SourceBuffer::Impl::Load(TextView text)
{
    RefuseInCallback();
    if (journal_) throw Error{error_number::kInvalidCall, u"An operation cannot replace the whole text."};
    lines.Load(text);
    undo.Clear();
    scanner.Reset();
    folder.Reset();
    bookmarks = 0;
    pendingFirst_ = -1;
    Tell([](BufferListener& l) { l.TextReset(); });
    TellModified();
}

Position SourceBuffer::Impl::PutText(Position at, TextView text)
{
    int32_t breaks = CountBreaks(text);
    auto column = static_cast<size_t>(at.col);
    if (breaks == 0) {
        lines.Replace(at.line, column, 0, text);
        return {at.col + static_cast<int32_t>(text.size()), at.line};
    }
    int32_t last = at.line + breaks;
    size_t length = lines.Length(at.line);
    if (at.col == 0 && length > 0) {
        // Text pushed down keeps its bookmark and identity.
        lines.InsertLines(at.line, breaks);
        lines.Replace(at.line, 0, 0, NextPiece(text));
    } else {
        lines.InsertLines(at.line + 1, breaks);
        Text tail;
        lines.At(at.line).Units().AppendTo(tail, column, length - column);
        lines.Replace(at.line, column, length - column, NextPiece(text));
        lines.Replace(last, 0, 0, tail);
    }
    for (int32_t line = at.line + 1; line < last; ++line) lines.Replace(line, 0, 0, NextPiece(text));
    lines.Replace(last, 0, 0, text);
    return {static_cast<int32_t>(text.size()), last};
}

/// Keeps what comes back with these lines when they do, and takes them out of the counts.
std::vector<KeptWords> SourceBuffer::Impl::CountOut(int32_t first, int32_t last)
{
    std::vector<KeptWords> kept;
    kept.reserve(static_cast<size_t>(last - first + 1));
    for (int32_t line = first; line <= last; ++line) {
        uint32_t control = lines.Word(line, kControl);
        kept.push_back({(control & line_bits::kBookmark) != 0, lines.Word(line, kIdentity)});
    }
    return kept;
}

TextEdit SourceBuffer::Impl::TakeText(Position start, Position end)
{
    TextEdit edit{false, start, end, {}, {}};
    auto column = static_cast<size_t>(start.col);
    if (start.line == end.line) {
        auto count = static_cast<size_t>(end.col - start.col);
        lines.At(start.line).Units().AppendTo(edit.text, column, count);
        lines.Replace(start.line, column, count, {});
        return edit;
    }
    edit.words = CountOut(start.line, end.line);
    for (int32_t line = start.line; line <= end.line; ++line) {
        UnitSpan units = lines.At(line).Units();
        size_t from = line == start.line ? column : 0;
        size_t to = line == end.line ? static_cast<size_t>(end.col) : units.length;
        units.AppendTo(edit.text, from, to - from);
        if (line < end.line) edit.text += u"\r\n";
    }
    int32_t firstGone = start.line + 1;
    size_t lastLength = lines.Length(end.line);
    if (start.col == 0 && static_cast<size_t>(end.col) < lastLength) {
        // Whole lines go, the last one stays itself.
        lines.Replace(end.line, 0, static_cast<size_t>(end.col), {});
        firstGone = start.line;
    } else {
        Text tail;
        lines.At(end.line).Units().AppendTo(tail, static_cast<size_t>(end.col), lastLength);
        lines.Replace(start.line, column, lines.Length(start.line) - column, tail);
    }
    int32_t gone = end.line - start.line;
    for (int32_t line = firstGone; line < firstGone + gone; ++line) {
        uint32_t control = lines.Word(line, kControl);
        if (control & line_bits::kBookmark) --bookmarks;
        if (folder.LineRemoved(control)) foldsTouched_ = true;
    }
    lines.RemoveLines(firstGone, gone);
    return edit;
}

void SourceBuffer::Impl::RestoreWords(const TextEdit& edit)
{
    int32_t line = edit.start.line;
    for (const KeptWords& kept : edit.words) {
        uint32_t control = lines.Word(line, kControl);
        if (kept.bookmark != ((control & line_bits::kBookmark) != 0)) {
            lines.SetWord(line, kControl, control ^ line_bits::kBookmark);
            bookmarks += kept.bookmark ? 1 : -1;
        }
        lines.SetWord(line, kIdentity, kept.identity);
        ++line;
    }
}

void SourceBuffer::Impl::Record(TextEdit edit)
{
    if (journal_)
        journal_->push_back(std::move(edit));
    else if (!replaying_)
        undo.Push(std::move(edit));
}

Position SourceBuffer::Impl::Insert(Position at, TextView text)
{
    RefuseInCallback();
    at = ClampPosition(at);
    if (text.empty()) return at;
    // `text` may be a view of a line that is about to move.
    TextEdit edit{true, at, {}, Text(text), {}};
    Position end = edit.end = PutText(at, edit.text);
    Record(std::move(edit));
    TextReplaced(at, at, end);
    return end;
}

void SourceBuffer::Impl::Erase(Position start, Position end)
{
    RefuseInCallback();
    start = ClampPosition(start);
    end = ClampPosition(end);
    if (end <= start) return;
    Record(TakeText(start, end));
    TextReplaced(start, end, start);
}

/// Everything that follows a change of the text, in the order in which it may be relied on.
void SourceBuffer::Impl::TextReplaced(Position start, Position oldEnd, Position newEnd)
{
    scanner.LinesReplaced(start.line, oldEnd.line, newEnd.line);
    if (oldEnd.line != newEnd.line) {
        linesChanged_ = true;
        // The line above too: an end line that stays in sight may have moved away from the last hidden one.
        if (FoldsReach(start.line - 1, newEnd.line + 1)) foldsTouched_ = true;
    }
    int32_t tail = lines.Count() - 1 - newEnd.line;
    pendingTail_ = pendingFirst_ < 0 ? tail : std::min(pendingTail_, tail);
    pendingFirst_ = pendingFirst_ < 0 ? start.line : std::min(pendingFirst_, start.line);
    Batch batch(*this);
    TextChange change{start, oldEnd, newEnd};
    Tell([&](BufferListener& l) { l.TextChanged(change); });
}

bool SourceBuffer::Impl::FoldsReach(int32_t first, int32_t last) const
{
    if (!folder.AnyCollapsed() && lines.HiddenCount() == 0) return false;
    for (int32_t line = ClampLine(first); line <= ClampLine(last); ++line)
        if (folder.IsHidden(line) || folder.IsCollapsed(line)) return true;
    return false;
}

void SourceBuffer::Impl::Leave()
{
    if (--depth > 0) return;
    FlushPending();
    TellModified();
}

void SourceBuffer::Impl::FlushPending()
{
    if (pendingFirst_ < 0) return;
    int32_t first = std::exchange(pendingFirst_, -1);
    int32_t last = lines.Count() - 1 - pendingTail_;
    // Where lines came or went, the line below has a new one before it, whatever state that passes on.
    int32_t changed = scanner.Rescan(first, linesChanged_ ? last + 1 : last);
    linesChanged_ = false;
    RefreshFolding(std::exchange(foldsTouched_, false), first, std::max(last, changed));
    Tell([&](BufferListener& l) { l.LinesRepaint(first, std::max(last, changed)); });
}

bool SourceBuffer::Impl::TakePendingWithin(int32_t first, int32_t last)
{
    if (linesChanged_ || pendingFirst_ < first || lines.Count() - 1 - pendingTail_ > last) return false;
    pendingFirst_ = -1;
    return true;
}

void SourceBuffer::Impl::RefreshFolding(bool always, int32_t first, int32_t last)
{
    bool nestingChanged = scanner.TakeNestingChanged();
    if (!folder.AnyCollapsed() && lines.HiddenCount() == 0) return;
    if ((nestingChanged || always) && folder.Refresh(first, last)) TellFolding();
}

void SourceBuffer::Impl::TellModified()
{
    bool modified = undo.Modified();
    if (modified == knownModified_) return;
    knownModified_ = modified;
    Tell([&](BufferListener& l) { l.ModifiedChanged(modified); });
}

void SourceBuffer::Impl::TellFolding()
{
    Tell([](BufferListener& l) { l.FoldingChanged(); });
}

Position SourceBuffer::Impl::Apply(TextEdit& edit, bool forward)
{
    if (edit.insert == forward) {
        Position end = PutText(edit.start, edit.text);
        RestoreWords(edit);
        TextReplaced(edit.start, edit.start, end);
        return end;
    }
    edit.words = TakeText(edit.start, edit.end).words;
    TextReplaced(edit.start, edit.end, edit.start);
    return edit.start;
}

/// An operation that fails leaves the text as it was.
template <typename Body>
std::optional<Position> SourceBuffer::Impl::RunOp(Body&& body)
{
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
    if (caretTold_ || journal.empty()) return std::nullopt;
    return journal.back().insert ? journal.back().end : journal.back().start;
}

void SourceBuffer::Impl::Execute(std::unique_ptr<ISourceOp> operation)
{
    RefuseInCallback();
    if (journal_) throw Error{error_number::kInvalidCall, u"An operation cannot run within another."};
    Batch batch(*this);
    RunOp([&] { operation->DoOp(scanner.Document()); });
    UndoStep step;
    step.op = std::move(operation);
    undo.Push(std::move(step));
}

/// Takes a step back or does it again.
std::optional<Position> SourceBuffer::Impl::Replay(UndoStep& step, bool forward)
{
    if (step.op) {
        SourceDocument& document = scanner.Document();
        return RunOp([&] { forward ? step.op->DoOp(document) : step.op->UndoOp(document); });
    }
    std::optional<Position> caret;
    replaying_ = true;
    if (forward) {
        for (TextEdit& edit : step.edits) caret = Apply(edit, true);
    } else {
        for (auto edit = step.edits.rbegin(); edit != step.edits.rend(); ++edit) caret = Apply(*edit, false);
    }
    replaying_ = false;
    return caret;
}

void SourceBuffer::Impl::Undo()
{
    RefuseInStep();
    std::optional<Position> caret;
    {
        Batch batch(*this);
        for (bool more = undo.CanUndo(); more;) {
            UndoStep& step = undo.Top();
            caret = Replay(step, false);
            more = step.joined;
            undo.Undone();
        }
    }
    if (caret) Tell([&](BufferListener& l) { l.CaretRequested(*caret); });
}

void SourceBuffer::Impl::Redo()
{
    RefuseInStep();
    std::optional<Position> caret;
    {
        Batch batch(*this);
        for (bool more = undo.CanRedo(); more; more = undo.CanRedo() && undo.Next().joined) {
            caret = Replay(undo.Next(), true);
            undo.Redone();
        }
    }
    if (caret) Tell([&](BufferListener& l) { l.CaretRequested(*caret); });
}

} // namespace nib
