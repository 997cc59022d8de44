#include "text/SourceBufferImpl.h"

#include "base/Error.h"

#include <algorithm>

namespace nib {

Position TextChange::Map(Position p, bool sticky) const
{
    if (p < start || (sticky && p == start)) return p;
    if (p < oldEnd) return start;
    if (p.line > oldEnd.line) return {p.col, p.line + newEnd.line - oldEnd.line};
    return {newEnd.col + p.col - oldEnd.col, newEnd.line};
}

SourceBuffer::SourceBuffer() : impl_(std::make_unique<Impl>(*this)) {}

SourceBuffer::~SourceBuffer() = default;

int32_t SourceBuffer::LineCount() const
{
    return impl_->lines.Count();
}

Text SourceBuffer::GetLine(int32_t line) const
{
    Text text;
    impl_->lines.At(impl_->ClampLine(line)).Units().AppendTo(text);
    return text;
}

int32_t SourceBuffer::LineLength(int32_t line) const
{
    return static_cast<int32_t>(impl_->lines.Length(impl_->ClampLine(line)));
}

uint32_t SourceBuffer::GetLineData(int32_t line, LineWord which) const
{
    line = impl_->ClampLine(line);
    // Whoever asks for the lexer's flags needs them of this text, painted or not.
    if (which == LineWord::Lexer && !impl_->scanner.Busy()) impl_->scanner.EnsureScanned(line);
    uint32_t word = impl_->lines.Word(line, static_cast<size_t>(which));
    if (which != LineWord::Control) return word;
    return (word & line_bits::kBookmark) | (impl_->scanner.HasLexer() ? impl_->folder.BlockBits(line) : 0);
}

void SourceBuffer::SetLineData(int32_t line, LineWord which, uint32_t value)
{
    line = impl_->ClampLine(line);
    if (which != LineWord::Control) {
        impl_->lines.SetWord(line, static_cast<size_t>(which), value);
        return;
    }
    bool bookmarked = impl_->lines.Word(line, 0) & line_bits::kBookmark;
    if (bookmarked != static_cast<bool>(value & line_bits::kBookmark)) ToggleBookmark(line);
}

Position SourceBuffer::InsertText(Position at, TextView text)
{
    return impl_->Insert(at, text);
}

void SourceBuffer::DeleteRange(Position start, Position end)
{
    impl_->Erase(start, end);
}

int32_t SourceBuffer::UpdateLines(int32_t first, int32_t last)
{
    first = impl_->ClampLine(first);
    last = impl_->ClampLine(last);
    if (!impl_->TakePendingWithin(first, last)) impl_->FlushPending();
    int32_t changed = impl_->scanner.Rescan(first, last);
    impl_->scanner.EnsureScanned(last);
    impl_->RefreshFolding(false, first, std::max(last, changed));
    impl_->Tell([&](BufferListener& l) { l.LinesRepaint(first, std::max(last, changed)); });
    return std::max(last, changed);
}

void SourceBuffer::NotifyChange(int32_t, int32_t first, int32_t last, Position caret)
{
    impl_->NotifyChange(first, last, caret);
}

bool SourceBuffer::Modified() const
{
    return impl_->undo.Modified();
}

void SourceBuffer::SetModified(bool modified)
{
    impl_->undo.SetModified(modified);
    impl_->TellModified();
}

bool SourceBuffer::CanUndo() const
{
    return impl_->undo.CanUndo();
}

bool SourceBuffer::CanRedo() const
{
    return impl_->undo.CanRedo();
}

void SourceBuffer::Undo()
{
    impl_->Undo();
}

void SourceBuffer::Redo()
{
    impl_->Redo();
}

void SourceBuffer::ClearUndo()
{
    impl_->ClearUndo();
}

bool SourceBuffer::Find(TextView text, Position from, FindOptions options, FindHit& hit) const
{
    const TextSearch& search = impl_->Prepared(text, options);
    if (!search.CanMatch()) return false;
    from = Clamp(from);
    return options.backward ? search.Backward(impl_->lines, from, hit) : search.Forward(impl_->lines, from, hit);
}

void SourceBuffer::ToggleBookmark(int32_t line)
{
    line = impl_->ClampLine(line);
    uint32_t word = impl_->lines.Word(line, 0) ^ line_bits::kBookmark;
    impl_->lines.SetWord(line, 0, word);
    impl_->bookmarks += word & line_bits::kBookmark ? 1 : -1;
    impl_->Tell([&](BufferListener& l) { l.LinesRepaint(line, line); });
}

void SourceBuffer::ClearBookmarks()
{
    for (int32_t line = 0; impl_->bookmarks > 0 && line < LineCount(); ++line)
        if (impl_->lines.Word(line, 0) & line_bits::kBookmark) ToggleBookmark(line);
}

int32_t SourceBuffer::BookmarkCount() const
{
    return impl_->bookmarks;
}

int32_t SourceBuffer::FindBookmark(int32_t line, bool backward) const
{
    if (impl_->bookmarks == 0) return -1;
    int32_t count = LineCount();
    line = impl_->ClampLine(line);
    for (int32_t step = 1; step <= count; ++step) {
        int32_t at = (line + (backward ? count - step : step)) % count;
        if (impl_->lines.Word(at, 0) & line_bits::kBookmark) return at;
    }
    return -1;
}

void SourceBuffer::SetLexer(ISourceLex4* lexer)
{
    impl_->scanner.SetLexer(lexer);
    impl_->RefreshFolding(true, 0, LineCount() - 1);
    impl_->Tell([&](BufferListener& l) { l.LinesRepaint(0, LineCount() - 1); });
}

void SourceBuffer::ExecuteOp(std::unique_ptr<ISourceOp> operation)
{
    impl_->Execute(std::move(operation));
}

void SourceBuffer::CollapseBlock(int32_t line)
{
    EnsureScanned();
    if (impl_->folder.Collapse(impl_->ClampLine(line))) impl_->TellFolding();
}

void SourceBuffer::ExpandBlock(int32_t line)
{
    if (impl_->folder.Expand(impl_->ClampLine(line))) impl_->TellFolding();
}

void SourceBuffer::CollapseAll()
{
    EnsureScanned();
    if (impl_->folder.CollapseAll()) impl_->TellFolding();
}

void SourceBuffer::ExpandAll()
{
    if (impl_->folder.ExpandAll()) impl_->TellFolding();
}

bool SourceBuffer::IsHidden(int32_t line) const
{
    return impl_->folder.IsHidden(impl_->ClampLine(line));
}

void SourceBuffer::SetText(TextView text)
{
    impl_->Load(text);
}

Text SourceBuffer::GetText() const
{
    return GetRange({0, 0}, End());
}

Text SourceBuffer::GetRange(Position start, Position end) const
{
    start = Clamp(start);
    end = Clamp(end);
    Text text;
    if (end <= start) return text;
    if (start == Position{} && end == End())
        text.reserve(impl_->lines.UnitCount() + 2 * static_cast<size_t>(LineCount()));
    for (int32_t line = start.line; line <= end.line; ++line) {
        UnitSpan units = impl_->lines.At(line).Units();
        auto from = static_cast<size_t>(line == start.line ? start.col : 0);
        size_t to = line == end.line ? static_cast<size_t>(end.col) : units.length;
        units.AppendTo(text, from, to - from);
        if (line < end.line) text += u"\r\n";
    }
    return text;
}

Position SourceBuffer::End() const
{
    return {LineLength(LineCount() - 1), LineCount() - 1};
}

Position SourceBuffer::Clamp(Position p) const
{
    if (p.line < 0) return {0, 0};
    if (p.line >= LineCount()) return End();
    return {std::clamp(p.col, 0, LineLength(p.line)), p.line};
}

TextView SourceBuffer::LineText(int32_t line, Text& scratch) const
{
    UnitSpan units = impl_->lines.At(impl_->ClampLine(line)).Units();
    if (units.wide) return {units.Wide(), units.length};
    scratch.clear();
    units.AppendTo(scratch);
    return scratch;
}

void SourceBuffer::ScanLine(int32_t line, std::vector<Token>& tokens)
{
    impl_->FlushPending();
    impl_->scanner.Tokens(impl_->ClampLine(line), tokens);
}

bool SourceBuffer::ScanSlice(int64_t microseconds)
{
    impl_->FlushPending();
    int32_t first = impl_->scanner.ScannedTo();
    bool more = impl_->scanner.Slice(microseconds);
    int32_t last = impl_->scanner.ScannedTo() - 1;
    if (last >= first) impl_->Tell([&](BufferListener& l) { l.LinesRepaint(first, last); });
    return more;
}

void SourceBuffer::EnsureScanned()
{
    impl_->FlushPending();
    impl_->scanner.EnsureScanned(LineCount() - 1);
}

void SourceBuffer::BeginGroup()
{
    impl_->undo.BeginGroup();
    ++impl_->depth;
}

void SourceBuffer::EndGroup()
{
    if (!impl_->undo.InGroup()) return;
    impl_->undo.EndGroup();
    impl_->Leave();
}

void SourceBuffer::BreakTyping()
{
    impl_->undo.BreakTyping();
}

int32_t SourceBuffer::VisibleCount() const
{
    return impl_->lines.VisibleCount();
}

int32_t SourceBuffer::VisibleIndex(int32_t line) const
{
    line = impl_->ClampLine(line);
    return std::max(0, impl_->lines.VisibleBefore(line) - (impl_->folder.IsHidden(line) ? 1 : 0));
}

int32_t SourceBuffer::VisibleLine(int32_t index) const
{
    // Between an edit and the look at the folds that follows it, even the only visible line can be gone.
    return impl_->lines.VisibleLine(std::clamp(index, 0, std::max(0, VisibleCount() - 1)));
}

void SourceBuffer::Reveal(int32_t line)
{
    if (impl_->folder.Reveal(impl_->ClampLine(line))) impl_->TellFolding();
}

int32_t SourceBuffer::BlockEnd(int32_t line)
{
    EnsureScanned();
    return impl_->folder.BlockEnd(impl_->ClampLine(line));
}

void SourceBuffer::AddListener(BufferListener* listener)
{
    impl_->listeners.push_back(listener);
}

void SourceBuffer::RemoveListener(BufferListener* listener)
{
    std::erase(impl_->listeners, listener);
}

size_t SourceBuffer::MemoryUse() const
{
    return impl_->lines.MemoryUse() + impl_->undo.MemoryUse();
}

} // namespace nib
