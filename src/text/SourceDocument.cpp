#include "text/SourceDocument.h"

namespace nib {

Position TextChange::Map(Position p, bool sticky) const
{
    if (within) return within->Map(p, sticky, !takenBack);
    if (ranges) return ranges->Map(p, sticky, !takenBack);
    if (p < start || (sticky && p == start)) return p;
    if (p < oldEnd) return start;
    if (p.line > oldEnd.line) return {p.col, p.line + newEnd.line - oldEnd.line};
    return {newEnd.col + p.col - oldEnd.col, newEnd.line};
}

std::optional<int32_t> TextChange::LineAfter(int32_t line) const
{
    const bool whole = start <= Position{0, line} && Position{0, line + 1} <= oldEnd;
    if (whole && !IsScattered()) return std::nullopt;
    return Map({0, line}).line;
}

Text SourceDocument::GetLine(int32_t line) const
{
    Text text;
    lines_.At(ClampLine(line)).Units().AppendTo(text);
    return text;
}

void SourceDocument::SetText(TextView text)
{
    ReplaceAll([&] { lines_.Load(text); });
}

std::vector<TabPlace> SourceDocument::SetText(ByteText text, int32_t tabWidth)
{
    std::vector<TabPlace> tabs;
    ReplaceAll([&] { tabs = lines_.Load(std::move(text), tabWidth); });
    return tabs;
}

bool SourceDocument::IndentAt(int32_t line, TextView text, LineIndent& indent) const
{
    const uint32_t above = line > 0 ? GetLineData(line - 1, LineWord::Lexer) : 0;
    return scanner_.IndentOf(text, above, indent);
}

uint32_t SourceDocument::GetLineData(int32_t line, LineWord which) const
{
    line = ClampLine(line);
    // Whoever asks for the lexer's flags needs them of this text, painted or not.
    if (which == LineWord::Lexer && !scanner_.Busy()) scanner_.EnsureScanned(line);
    uint32_t word = lines_.Word(line, static_cast<size_t>(which));
    if (which != LineWord::Control) return word;
    return (word & line_bits::kBookmark) | (scanner_.HasLexer() ? folder_.BlockBits(line) : 0);
}

void SourceDocument::SetLineData(int32_t line, LineWord which, uint32_t value)
{
    line = ClampLine(line);
    if (which != LineWord::Control) {
        lines_.SetWord(line, static_cast<size_t>(which), value);
        return;
    }
    if (HasBookmark(line) != static_cast<bool>(value & line_bits::kBookmark)) ToggleBookmark(line);
}

int32_t SourceDocument::UpdateLines(int32_t first, int32_t last)
{
    first = ClampLine(first);
    last = ClampLine(last);
    if (sweepCaret_) { // with all others, at its end
        edited_.Add(first, last, last, LineCount());
        return last;
    }
    if (!TakePendingWithin(first, last)) FlushPending();
    int32_t changed = scanner_.Rescan(first, last);
    scanner_.EnsureScanned(last);
    RefreshFolding(false, first, std::max(last, changed));
    TellRepaint(first, std::max(last, changed));
    return std::max(last, changed);
}

void SourceDocument::SetModified(bool modified)
{
    undo_.SetModified(modified);
    modified ? changes_.Unsaved() : changes_.Saved();
    TellModified();
}

std::shared_ptr<const TextSnapshot> SourceDocument::BeginSaving()
{
    undo_.BeginSaving();
    changes_.BeginSaving();
    return Snapshot();
}

void SourceDocument::EndSaving(bool saved)
{
    undo_.EndSaving(saved);
    changes_.EndSaving(saved);
    TellModified();
    if (saved && Modified()) TellRepaint(0, LineCount() - 1); // other lines differ now
}

void SourceDocument::SetStoredText(TextView text)
{
    LineStore stored;
    stored.Load(text);
    changes_.SetStored(stored.Snapshot());
    SetModified(true);
}

const TextSearch& SourceDocument::Prepared(TextView text, FindOptions options) const
{
    if (!search_ || searchText_ != text || searchOptions_ != options) {
        search_.emplace(text, options);
        searchText_ = text;
        searchOptions_ = options;
    }
    return *search_;
}

bool SourceDocument::Find(TextView text, Position from, FindOptions options, FindHit& hit) const
{
    const TextSearch& search = Prepared(text, options);
    if (!search.CanMatch()) return false;
    from = Clamp(from);
    return options.backward ? search.Backward(lines_, from, hit) : search.Forward(lines_, from, hit);
}

bool SourceDocument::Find(const TextPattern& pattern, Position from, bool backward, FindHit& hit) const
{
    if (!pattern.CanMatch()) return false;
    from = Clamp(from);
    return backward ? pattern.Backward(lines_, from, hit) : pattern.Forward(lines_, from, hit);
}

void SourceDocument::ToggleBookmark(int32_t line)
{
    line = ClampLine(line);
    uint32_t word = lines_.Word(line, 0) ^ line_bits::kBookmark;
    lines_.SetWord(line, 0, word);
    bookmarks_ += word & line_bits::kBookmark ? 1 : -1;
    TellRepaint(line, line);
}

void SourceDocument::ClearBookmarks()
{
    for (int32_t line = 0; bookmarks_ > 0 && line < LineCount(); ++line)
        if (HasBookmark(line)) ToggleBookmark(line);
}

std::vector<int32_t> SourceDocument::LinesWith(uint32_t controlBit, bool any) const
{
    std::vector<int32_t> lines;
    for (int32_t line = 0; any && line < LineCount(); ++line)
        if (lines_.Word(line, 0) & controlBit) lines.push_back(line);
    return lines;
}

int32_t SourceDocument::FindBookmark(int32_t line, bool backward) const
{
    if (bookmarks_ == 0) return -1;
    int32_t count = LineCount();
    line = ClampLine(line);
    for (int32_t step = 1; step <= count; ++step) {
        int32_t at = (line + (backward ? count - step : step)) % count;
        if (HasBookmark(at)) return at;
    }
    return -1;
}

void SourceDocument::SetLexer(ISourceLex4* lexer)
{
    scanner_.SetLexer(lexer);
    RefreshFolding(true, 0, LineCount() - 1);
    TellRepaint(0, LineCount() - 1);
}

BlockPart SourceDocument::BlockAt(int32_t line) const
{
    using Kind = BlockPart::Kind;
    uint32_t bits = GetLineData(line, LineWord::Control);
    bool inside = bits & line_bits::kBlockInside;
    switch (bits & line_bits::kBlockStateMask) {
    case line_bits::kBlockHead: return {Kind::Head, inside};
    case line_bits::kBlockCollapsed: return {Kind::CollapsedHead, inside};
    case line_bits::kBlockEnd: return {Kind::End, inside};
    default: return {Kind::None, inside};
    }
}

int32_t SourceDocument::BlockEnd(int32_t line)
{
    EnsureScanned();
    return folder_.BlockEnd(ClampLine(line));
}

void SourceDocument::CollapseBlock(int32_t line)
{
    EnsureScanned();
    TellFolding(folder_.Collapse(ClampLine(line)));
}

void SourceDocument::ExpandBlock(int32_t line)
{
    TellFolding(folder_.Expand(ClampLine(line)));
}

void SourceDocument::CollapseAll()
{
    EnsureScanned();
    TellFolding(folder_.CollapseAll());
}

void SourceDocument::ExpandAll()
{
    TellFolding(folder_.ExpandAll());
}

Text SourceDocument::GetRange(Position start, Position end) const
{
    start = Clamp(start);
    end = Clamp(end);
    Text text;
    if (end <= start) return text;
    if (start == Position{} && end == End()) text.reserve(lines_.UnitCount() + 2 * static_cast<size_t>(LineCount()));
    for (int32_t line = start.line; line <= end.line; ++line) {
        UnitSpan units = lines_.At(line).Units();
        auto from = static_cast<size_t>(line == start.line ? start.col : 0);
        size_t to = line == end.line ? static_cast<size_t>(end.col) : units.length;
        units.AppendTo(text, from, to - from);
        if (line < end.line) text += u"\r\n";
    }
    return text;
}

Position SourceDocument::Clamp(Position p) const
{
    if (p.line < 0) return {0, 0};
    if (p.line >= LineCount()) return End();
    return {std::clamp(p.col, 0, LineLength(p.line)), p.line};
}

void SourceDocument::ScanLine(int32_t line, std::vector<Token>& tokens)
{
    FlushPending();
    scanner_.Tokens(ClampLine(line), tokens);
}

bool SourceDocument::ScanSlice(int64_t microseconds)
{
    FlushPending();
    int32_t first = scanner_.ScannedTo();
    bool more = scanner_.Slice(microseconds);
    int32_t last = scanner_.ScannedTo() - 1;
    if (last >= first) TellRepaint(first, last);
    return more;
}

void SourceDocument::EnsureScanned()
{
    FlushPending();
    scanner_.EnsureScanned(LineCount() - 1);
}

void SourceDocument::BeginGroup()
{
    undo_.BeginGroup();
    ++depth_;
}

void SourceDocument::EndGroup()
{
    if (!undo_.InGroup()) return;
    undo_.EndGroup();
    Leave();
}

int32_t SourceDocument::VisibleIndex(int32_t line) const
{
    line = ClampLine(line);
    return std::max(0, lines_.VisibleBefore(line) - (folder_.IsHidden(line) ? 1 : 0));
}

int32_t SourceDocument::VisibleLine(int32_t index) const
{
    // Between an edit and the look at the folds that follows it, even the only visible line can be gone.
    return lines_.VisibleLine(std::clamp(index, 0, std::max(0, VisibleCount() - 1)));
}

void SourceDocument::Reveal(int32_t line)
{
    TellFolding(folder_.Reveal(ClampLine(line)));
}

// What listeners are told

void SourceDocument::TellModified()
{
    bool modified = undo_.Modified();
    if (modified == knownModified_) return;
    knownModified_ = modified;
    if (!modified) changes_.BackAtSaved();
    Tell([&](BufferListener& l) { l.ModifiedChanged(modified); });
}

void SourceDocument::TellFolding(bool changed)
{
    if (changed) Tell([](BufferListener& l) { l.FoldingChanged(); });
}

void SourceDocument::TellRepaint(int32_t first, int32_t last)
{
    Tell([&](BufferListener& l) { l.LinesRepaint(first, last); });
}

void SourceDocument::TellCaret(std::optional<Position> caret)
{
    if (caret) Tell([&](BufferListener& l) { l.CaretRequested(*caret); });
}

} // namespace nib
