// The two primitives that every change of the text goes through, and what follows them; part of SourceDocument.

#include "text/SourceDocument.h"

#include "base/Error.h"

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

void SourceDocument::RefuseInCallback() const
{
    if (telling_ > 0 || scanner_.Busy())
        throw Error{error_number::kInvalidCall, u"The text cannot be changed from within a call-back."};
}

void SourceDocument::NotifyChange(int32_t /*kind*/, int32_t first, int32_t last, Position caret)
{
    first = ClampLine(first);
    last = ClampLine(last);
    caretTold_ = true;
    if (sweepCaret_) {
        *sweepCaret_ = Clamp(caret);
        return; // what changed is painted after the scan
    }
    TellRepaint(first, last);
    TellCaret(Clamp(caret));
}

void SourceDocument::ReplaceAll(const std::function<void()>& load)
{
    RefuseInCallback();
    if (journal_) throw Error{error_number::kInvalidCall, u"An operation cannot replace the whole text."};
    changes_.BeforeReset();
    load();
    undo_.Clear();
    scanner_.Reset();
    folder_.Reset();
    bookmarks_ = 0;
    edited_.Clear();
    changes_.Reset();
    if (undo_.Modified()) changes_.Unsaved();
    Tell([](BufferListener& l) { l.TextReset(); });
    TellModified();
}

Position SourceDocument::PutText(Position at, TextView text)
{
    int32_t breaks = CountBreaks(text);
    auto column = static_cast<size_t>(at.col);
    changes_.BeforeEdit(at.line, at.line);
    if (breaks == 0) {
        lines_.Replace(at.line, column, 0, text);
        return {at.col + static_cast<int32_t>(text.size()), at.line};
    }
    int32_t last = at.line + breaks;
    size_t length = lines_.Length(at.line);
    const auto isBreak = [](char16_t c) { return c == u'\r' || c == u'\n'; };
    if (at.col == 0 && (length > 0 || (isBreak(text.back()) && !isBreak(text.front())))) {
        // Text pushed down keeps its bookmark and identity, and so does an empty line.
        lines_.InsertLines(at.line, breaks);
        lines_.Replace(at.line, 0, 0, NextPiece(text));
    } else {
        lines_.InsertLines(at.line + 1, breaks);
        Text tail;
        lines_.At(at.line).Units().AppendTo(tail, column, length - column);
        lines_.Replace(at.line, column, length - column, NextPiece(text));
        lines_.Replace(last, 0, 0, tail);
    }
    for (int32_t line = at.line + 1; line < last; ++line) lines_.Replace(line, 0, 0, NextPiece(text));
    lines_.Replace(last, 0, 0, text);
    changes_.LinesReplaced(at.line, at.line, last);
    return {static_cast<int32_t>(text.size()), last};
}

/// What comes back with these lines when they do.
std::vector<KeptWords> SourceDocument::WordsOf(int32_t first, int32_t last) const
{
    std::vector<KeptWords> kept;
    kept.reserve(static_cast<size_t>(last - first) + 1);
    for (int32_t line = first; line <= last; ++line) {
        uint32_t control = lines_.Word(line, kControl);
        kept.push_back({(control & line_bits::kBookmark) != 0, lines_.Word(line, kIdentity)});
    }
    return kept;
}

TextEdit SourceDocument::TakeText(Position start, Position end)
{
    TextEdit edit{false, start, end, {}, {}};
    changes_.BeforeEdit(start.line, end.line);
    auto column = static_cast<size_t>(start.col);
    if (start.line == end.line) {
        auto count = static_cast<size_t>(end.col - start.col);
        lines_.At(start.line).Units().AppendTo(edit.text, column, count);
        lines_.Replace(start.line, column, count, {});
        return edit;
    }
    edit.words = WordsOf(start.line, end.line);
    for (int32_t line = start.line; line <= end.line; ++line) {
        UnitSpan units = lines_.At(line).Units();
        size_t from = line == start.line ? column : 0;
        size_t to = line == end.line ? static_cast<size_t>(end.col) : units.length;
        units.AppendTo(edit.text, from, to - from);
        if (line < end.line) edit.text += u"\r\n";
    }
    int32_t firstGone = start.line + 1;
    size_t lastLength = lines_.Length(end.line);
    if (start.col == 0 && (end.col == 0 || static_cast<size_t>(end.col) < lastLength)) {
        // Whole lines go, the last one stays itself.
        lines_.Replace(end.line, 0, static_cast<size_t>(end.col), {});
        firstGone = start.line;
    } else {
        Text tail;
        lines_.At(end.line).Units().AppendTo(tail, static_cast<size_t>(end.col), lastLength);
        lines_.Replace(start.line, column, lines_.Length(start.line) - column, tail);
    }
    int32_t gone = end.line - start.line;
    for (int32_t line = firstGone; line < firstGone + gone; ++line) {
        uint32_t control = lines_.Word(line, kControl);
        if (control & line_bits::kBookmark) --bookmarks_;
        if (folder_.LineRemoved(control)) foldsTouched_ = true;
    }
    lines_.RemoveLines(firstGone, gone);
    changes_.LinesReplaced(start.line, end.line, start.line);
    return edit;
}

void SourceDocument::RestoreWords(const TextEdit& edit)
{
    int32_t line = edit.start.line;
    for (const KeptWords& kept : edit.words) {
        if (line >= lines_.Count()) return; // an operation may bring back less than it took
        uint32_t control = lines_.Word(line, kControl);
        if (kept.bookmark != ((control & line_bits::kBookmark) != 0)) {
            lines_.SetWord(line, kControl, control ^ line_bits::kBookmark);
            bookmarks_ += kept.bookmark ? 1 : -1;
        }
        lines_.SetWord(line, kIdentity, kept.identity);
        ++line;
    }
}

void SourceDocument::Record(TextEdit edit)
{
    if (journal_)
        journal_->push_back(std::move(edit));
    else if (!replaying_)
        undo_.Push(std::move(edit));
}

Position SourceDocument::InsertText(Position at, TextView text)
{
    RefuseInCallback();
    at = Clamp(at);
    if (text.empty()) return at;
    // `text` may be a view of a line that is about to move.
    TextEdit edit{true, at, {}, Text(text), {}};
    const uint32_t identity = lines_.Word(at.line, kIdentity);
    Position end = edit.end = PutText(at, edit.text);
    if (end.line > at.line) edit.words = {{false, identity}};
    Record(std::move(edit));
    TextReplaced(at, at, end);
    return end;
}

void SourceDocument::DeleteRange(Position start, Position end)
{
    RefuseInCallback();
    start = Clamp(start);
    end = Clamp(end);
    if (end <= start) return;
    Record(TakeText(start, end));
    TextReplaced(start, end, start);
}

void SourceDocument::EditLines(LineEdits edits, bool typed)
{
    RefuseInCallback();
    if (edits.IsEmpty()) return;
    if (edits.FirstLine() < 0 || edits.LastLine() >= LineCount())
        throw Error{error_number::kInvalidCall, u"There is no such line."};
    TextEdit edit;
    edit.lines = std::make_unique<LineEdits>(std::move(edits));
    edit.typed = typed;
    LineEdits& made = *edit.lines;
    edit.start = edit.end = made.LastPlace(true);
    const int32_t oldLength = LineLength(made.LastLine());
    NoteEdit(made);
    made.Do(lines_);
    Record(std::move(edit));
    TellLines(made, oldLength, true);
}

int32_t SourceDocument::ShiftLine(LineEdits& edits, int32_t line, int32_t columns, EmptyLine whenEmpty) const
{
    if (columns < 0) {
        UnitSpan units = LineUnits(line);
        int32_t most = std::min(static_cast<int32_t>(units.length), -columns);
        int32_t gone = 0;
        while (gone < most && units[static_cast<size_t>(gone)] == u' ') ++gone;
        edits.Remove(line, 0, gone);
        return -gone;
    }
    if (whenEmpty == EmptyLine::Stays && LineLength(line) == 0) return 0;
    edits.Insert(line, 0, Text(static_cast<size_t>(columns), u' '));
    return columns;
}

void SourceDocument::LinesMoved(Position start, Position oldEnd, Position newEnd)
{
    scanner_.LinesReplaced(start.line, oldEnd.line, newEnd.line);
    // The line above too: an end line that stays in sight may have moved away from the last hidden one.
    if (oldEnd.line != newEnd.line && FoldsReach(start.line - 1, newEnd.line + 1)) foldsTouched_ = true;
}

/// Everything that follows a change of the text, in the order in which it may be relied on.
void SourceDocument::TextReplaced(Position start, Position oldEnd, Position newEnd)
{
    LinesMoved(start, oldEnd, newEnd);
    edited_.Add(start.line, oldEnd.line, newEnd.line, lines_.Count());
    TellText({start, oldEnd, newEnd});
}

/// The lines of these edits are about to change.
void SourceDocument::NoteEdit(const LineEdits& edits)
{
    int32_t first = edits.FirstLine();
    int32_t last = first;
    edits.ForEachLine([&](int32_t line) {
        if (line > last + 1) changes_.BeforeEdit(std::exchange(first, line), last);
        last = line;
    });
    changes_.BeforeEdit(first, last);
}

/// The same for edits that leave all lines where they are.
void SourceDocument::TellLines(const LineEdits& edits, int32_t oldLength, bool forward)
{
    edits.ForEachLine([&](int32_t line) { edited_.Add(line, line, line, lines_.Count()); });
    const int32_t last = edits.LastLine();
    TellText({{0, edits.FirstLine()}, {oldLength, last}, {LineLength(last), last}, &edits, nullptr, !forward});
}

void SourceDocument::TellText(const TextChange& change)
{
    Batch batch(*this);
    Tell([&](BufferListener& l) { l.TextChanged(change); });
}

bool SourceDocument::FoldsReach(int32_t first, int32_t last) const
{
    if (!folder_.AnyCollapsed() && lines_.HiddenCount() == 0) return false;
    for (int32_t line = ClampLine(first); line <= ClampLine(last); ++line)
        if (folder_.IsHidden(line) || folder_.IsCollapsed(line)) return true;
    return false;
}

void SourceDocument::Leave()
{
    if (--depth_ > 0) return;
    FlushPending();
    TellModified();
}

void SourceDocument::FlushPending()
{
    if (!edited_.Any()) return;
    const std::vector<EditedLines::Range> ranges = edited_.Take(lines_.Count());
    int32_t last = std::min(ranges.back().last, lines_.Count() - 1);
    // Each goes on until the state is as before, and so perhaps into the next.
    for (auto [from, to] : ranges) last = std::max(last, scanner_.Rescan(from, to));
    RefreshFolding(std::exchange(foldsTouched_, false), ranges.front().first, last);
    TellRepaint(ranges.front().first, last);
}

bool SourceDocument::TakePendingWithin(int32_t first, int32_t last)
{
    if (!edited_.AreWithin(first, last, lines_.Count())) return false;
    edited_.Clear();
    return true;
}

void SourceDocument::RefreshFolding(bool always, int32_t first, int32_t last)
{
    bool nestingChanged = scanner_.TakeNestingChanged();
    if (!folder_.AnyCollapsed() && lines_.HiddenCount() == 0) return;
    TellFolding((nestingChanged || always) && folder_.Refresh(first, last));
}

Position SourceDocument::Apply(TextEdit& edit, bool forward)
{
    if (edit.lines) {
        const int32_t oldLength = LineLength(edit.lines->LastLine());
        NoteEdit(*edit.lines);
        forward ? edit.lines->Do(lines_) : edit.lines->Undo(lines_);
        TellLines(*edit.lines, oldLength, forward);
        return edit.lines->LastPlace(forward);
    }
    if (edit.ranges) return ApplyRanges(*edit.ranges, forward);
    const bool puts = edit.insert == forward;
    const Position oldEnd = puts ? edit.start : edit.end;
    const Position end = MakePart(edit, forward);
    edited_.Add(edit.start.line, oldEnd.line, end.line, lines_.Count());
    TellText({edit.start, oldEnd, end});
    return end;
}

Position SourceDocument::MakePart(TextEdit& edit, bool forward)
{
    // An inserted text that is there keeps the identity of the line it was put into, in place of its own lines' words.
    if (edit.insert == forward) {
        const uint32_t identity = lines_.Word(edit.start.line, kIdentity);
        const Position end = PutText(edit.start, edit.text);
        RestoreWords(edit);
        if (edit.insert) edit.end = end;
        if (edit.insert && end.line > edit.start.line) edit.words = {{false, identity}};
        LinesMoved(edit.start, edit.start, end);
        return end;
    }
    const bool breaks = edit.insert && edit.end.line > edit.start.line;
    const uint32_t identity = breaks ? edit.words.front().identity : 0;
    edit.words = TakeText(edit.start, edit.end).words;
    if (breaks) {
        // An empty line that the text was put behind went with it, and what hung on it.
        const KeptWords kept{edit.words.front().bookmark || HasBookmark(edit.start.line), identity};
        RestoreWords({false, edit.start, {}, {}, {kept}});
    }
    LinesMoved(edit.start, edit.end, edit.start);
    return edit.start;
}

} // namespace nib
