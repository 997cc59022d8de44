#pragma once
// The text component's document: lines with their data words, undo, scanning, folding, search. Knows no screen.
//
// Positions are 0-based, column before line; a line holds no line end. Ranges exclude their end position. A line number
// or column outside the text is clamped to it, unless a member says otherwise. All calls belong to the main thread.

#include "diagnostics/Guarded.h"
#include "text/ChangeMarks.h"
#include "text/EditedLines.h"
#include "text/LineScanner.h"
#include "text/RangeEdits.h"
#include "text/SourceContract.h"
#include "text/TextPattern.h"
#include "text/UndoStack.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace nib {

/// One change of the text, as positions before and after it.
struct TextChange {
    Position start;
    Position oldEnd; ///< end of what was removed, in the text before
    Position newEnd; ///< end of what was inserted, in the text after
    /// What has changed within these lines, if they stayed the lines that they were.
    const LineEdits* within = nullptr;
    /// The ranges that have changed in between, if lines came or went at several places at once.
    const RangeMoves* ranges = nullptr;
    bool takenBack = false; ///< those were
    /// True when not all between start and end has changed.
    bool IsScattered() const { return within || ranges; }
    /// Where `p` of the text before stands in the text after; what was removed collapses to its start, and a position
    /// at an insertion moves behind it when `sticky` is false.
    Position Map(Position p, bool sticky = false) const;
    /// Where the beginning of a line of the text before is in the text after; none when the line is gone as a whole.
    std::optional<int32_t> LineAfter(int32_t line) const;
};

/// Called after the document is consistent again. A listener must not edit from within a call.
class BufferListener {
public:
    virtual ~BufferListener() = default;
    virtual void TextChanged(const TextChange&) {}
    /// The whole text was replaced.
    virtual void TextReset() {}
    /// Looks only: colours, marks.
    virtual void LinesRepaint(int32_t /*first*/, int32_t /*last*/) {}
    virtual void CaretRequested(Position) {}
    /// The same for several, as they stood at a step that was taken back or done again.
    virtual void CaretsRequested(const Carets&) {}
    virtual void ModifiedChanged(bool) {}
    /// Which lines are hidden has changed.
    virtual void FoldingChanged() {}
};

/// What the user is looking for, for views to light.
struct LitText {
    std::shared_ptr<const TextPattern> pattern; ///< null: nothing
    std::optional<TextRange> range;             ///< in which; of all of the text where there is none
    std::vector<int32_t> lines;                 ///< with hits, ascending, as far as they are known

    bool Holds(int32_t line, ColumnRange hit) const
    {
        return !range || (Position{hit.first, line} >= range->start && Position{hit.last, line} <= range->end);
    }
};

/// The one kind of change notice.
inline constexpr int32_t kLinesChanged = 70;

class SourceDocument {
public:
    SourceDocument() : scanner_(*this, lines_), folder_(lines_) {}
    SourceDocument(const SourceDocument&) = delete;
    SourceDocument& operator=(const SourceDocument&) = delete;

    int32_t LineCount() const { return lines_.Count(); }    ///< at least 1
    size_t UnitCount() const { return lines_.UnitCount(); } ///< without line ends
    int32_t LineLength(int32_t line) const { return static_cast<int32_t>(lines_.Length(ClampLine(line))); }
    Text GetLine(int32_t line) const;
    /// The same without a text of its own for each line: where it is stored, if that is 16 bits a unit, else in
    /// `scratch`; good until the next edit.
    TextView LineText(int32_t line, Text& scratch) const
    {
        UnitSpan units = lines_.At(ClampLine(line)).Units();
        if (units.wide) return {units.Wide(), units.length};
        scratch.clear();
        // A very long line must not lie there twice meanwhile.
        if (units.length > scratch.capacity()) scratch = {};
        units.AppendTo(scratch);
        return scratch;
    }
    /// As it is stored; good until the next edit.
    UnitSpan LineUnits(int32_t line) const { return lines_.At(ClampLine(line)).Units(); }
    uint32_t GetLineData(int32_t line, LineWord which) const;
    void SetLineData(int32_t line, LineWord which, uint32_t value);

    /// Replaces the whole text, which then counts as before: modified or not. Bookmarks and undo go.
    void SetText(TextView text);
    /// The same for a text in the bytes that it was read in, each TAB as so many blanks; answers where those stood.
    std::vector<TabPlace> SetText(ByteText text, int32_t tabWidth);
    Text GetText() const { return GetRange({}, End()); }
    std::shared_ptr<const TextSnapshot> Snapshot() const { return lines_.Snapshot(); }
    /// CR LF between lines.
    Text GetRange(Position start, Position end) const;
    Position End() const { return {LineLength(LineCount() - 1), LineCount() - 1}; }
    Position Clamp(Position p) const;

    /// CR LF, CR and LF in `text` are line breaks. Answers the position behind the inserted text.
    Position InsertText(Position at, TextView text);
    void DeleteRange(Position start, Position end);
    /// Edits lines that are there, with one notice for all of them.
    void EditLines(LineEdits edits) { EditLines(std::move(edits), false); }
    /// Replaces ranges that ascend and lie apart, with one notice and as one edit. Answers the places behind the texts.
    std::vector<Position> ReplaceRanges(std::vector<RangeEdit> edits);
    /// Where carets stood before the edit that was just made, and stand now: undo and redo bring them back.
    void KeepCarets(Carets before, Carets after) { undo_.KeepCarets(std::move(before), std::move(after)); }
    /// Adds to `edits` what moves a line to the right by so many blanks, or, below 0, to the left by as many of them as
    /// it begins with. Answers how far that moves it.
    enum class EmptyLine : uint8_t { Stays, IsPadded };
    int32_t ShiftLine(LineEdits& edits, int32_t line, int32_t columns, EmptyLine whenEmpty) const;
    /// Puts the operation on the undo stack and calls its DoOp; one step of undo.
    void ExecuteOp(std::unique_ptr<ISourceOp> operation);
    /// Scans these lines, and on below them while the state passed from line to line changes; answers the last line
    /// whose data changed. Repaints them.
    int32_t UpdateLines(int32_t first, int32_t last);
    /// Tells all views that these lines changed and where the caret goes. `kind` is kLinesChanged.
    void NotifyChange(int32_t kind, int32_t first, int32_t last, Position caret);

    bool Modified() const { return undo_.Modified(); }
    void SetModified(bool modified);
    /// The text as it is now is being saved: if that ends well, it is the one that counts as not modified. What is
    /// edited meanwhile is not in it.
    std::shared_ptr<const TextSnapshot> BeginSaving();
    void EndSaving(bool saved);
    /// What was read or saved last, null where that is not known any more.
    std::shared_ptr<const TextSnapshot> StoredText() const { return changes_.Stored(); }
    /// Another program has stored this meanwhile: the text counts as edited from it, and as modified.
    void SetStoredText(TextView text);
    /// How a line differs from what was saved or opened.
    LineMarks ChangesAt(int32_t line) const { return changes_.Of(ClampLine(line)); }
    /// The next line so marked, from this one on; -1 when there is none.
    int32_t NextChange(int32_t line, LineChange change) const { return changes_.Next(line, change); }
    bool CanUndo() const { return undo_.CanUndo(); }
    bool CanRedo() const { return undo_.CanRedo(); }
    void Undo();
    void Redo();
    /// Takes back all steps on top that were done in one go, and shows the outcome once.
    void UndoSweep();
    bool CanUndoSweep() const { return undo_.TopSweep() != nullptr; }
    void ClearUndo();
    /// Edits between Begin and End are one undo step; nests.
    void BeginGroup();
    void EndGroup();
    /// Ends the run of typing, so that the next edit starts an undo step of its own.
    void BreakTyping() { undo_.BreakTyping(); }

    /// Answers false when there is no further match; the text may not hold line breaks.
    bool Find(TextView text, Position from, FindOptions options, FindHit& hit) const;
    bool Find(const TextPattern& pattern, Position from, bool backward, FindHit& hit) const;

    bool HasBookmark(int32_t line) const { return lines_.Word(ClampLine(line), 0) & line_bits::kBookmark; }
    void ToggleBookmark(int32_t line);
    void ClearBookmarks();
    std::vector<int32_t> BookmarkedLines() const { return LinesWith(line_bits::kBookmark, bookmarks_ > 0); }
    int32_t BookmarkCount() const { return bookmarks_; }
    /// The next bookmarked line after `line` in the direction, round the ends; -1 when there is none.
    int32_t FindBookmark(int32_t line, bool backward) const;

    /// Not owned; null means plain text. All lines count as unscanned afterwards.
    void SetLexer(ISourceLex4* lexer);
    /// Tokens of a line as the lexer gives them (one of type kPlainToken for plain text, none for an empty line); scans
    /// what must be scanned before it.
    void ScanLine(int32_t line, std::vector<Token>& tokens);
    /// What was scanned of a line becomes what is painted of it.
    void Look(TextView lineText, std::vector<Token>& tokens) const { scanner_.Look(lineText, tokens); }
    /// What `text` would be if it stood at `line`, as the lexer sees it; false where it says nothing.
    bool IndentAt(int32_t line, TextView text, LineIndent& indent) const;
    /// Scans unscanned lines for at most about `microseconds`; false when nothing is left.
    bool ScanSlice(int64_t microseconds);
    void EnsureScanned();

    BlockPart BlockAt(int32_t line) const;
    /// Last line of the block that `line` heads, -1 when it heads none.
    int32_t BlockEnd(int32_t line);
    // Blocks open at the beginning of a line, and where one of them ends or began, counted from the innermost; -1 when
    // it does not. They know of what is scanned.
    int32_t OpenBlocks(int32_t line) const { return lines_.NestingBefore(ClampLine(line)).opens; }
    int32_t FindClose(int32_t line, int32_t depth) const { return lines_.FindClose(line, depth); }
    int32_t FindOpen(int32_t line, int32_t depth) const { return lines_.FindOpen(ClampLine(line), depth); }
    int32_t ScannedTo() const { return scanner_.HasLexer() ? scanner_.ScannedTo() : 0; } ///< excluded
    /// First lines of collapsed blocks.
    std::vector<int32_t> CollapsedLines() const { return LinesWith(own_bits::kCollapsed, folder_.AnyCollapsed()); }
    /// `line` is a head; does nothing when it is none. Collapsing needs all lines scanned and sees to it.
    void CollapseBlock(int32_t line);
    void ExpandBlock(int32_t line);
    void CollapseAll();
    void ExpandAll();
    /// Expands whatever hides the line.
    void Reveal(int32_t line);
    /// True when a collapsed block hides the line.
    bool IsHidden(int32_t line) const { return folder_.IsHidden(ClampLine(line)); }
    // Lines that no collapsed block hides, numbered from 0.
    int32_t VisibleCount() const { return lines_.VisibleCount(); }
    int32_t VisibleIndex(int32_t line) const; ///< of a hidden line: the one of its collapsed head
    int32_t VisibleLine(int32_t index) const;

    void Light(LitText lit)
    {
        lit_ = std::move(lit);
        TellRepaint(0, LineCount() - 1);
    }
    const LitText& Lit() const { return lit_; }

    /// Not owned.
    void AddListener(BufferListener* listener) { listeners_.push_back(listener); }
    void RemoveListener(BufferListener* listener) { std::erase(listeners_, listener); }

    /// Bytes held for text, lines and undo; for measurements.
    size_t MemoryUse() const { return lines_.MemoryUse() + undo_.MemoryUse(); }

private:
    /// Holds scans and notices back until the outermost one ends.
    class Batch {
    public:
        explicit Batch(SourceDocument& document) : document_(document) { ++document_.depth_; }
        ~Batch() { document_.Leave(); }
        Batch(const Batch&) = delete;
        Batch& operator=(const Batch&) = delete;

    private:
        SourceDocument& document_;
    };

    int32_t ClampLine(int32_t line) const { return std::clamp(line, 0, lines_.Count() - 1); }
    /// Whoever walks from hit to hit asks for the same text each time.
    const TextSearch& Prepared(TextView text, FindOptions options) const;

    std::vector<int32_t> LinesWith(uint32_t controlBit, bool any) const;
    void RefuseInCallback() const;
    void RefuseInStep() const;
    void ReplaceAll(const std::function<void()>& load);
    Position PutText(Position at, TextView text);
    TextEdit TakeText(Position start, Position end);
    std::vector<KeptWords> WordsOf(int32_t first, int32_t last) const;
    void RestoreWords(const TextEdit& edit);
    void Record(TextEdit edit);
    void TextReplaced(Position start, Position oldEnd, Position newEnd);
    void LinesMoved(Position start, Position oldEnd, Position newEnd);
    void NoteEdit(const LineEdits& edits);
    void TellLines(const LineEdits& edits, int32_t oldLength, bool forward);
    void TellRanges(const RangeMoves& moves, bool forward);
    void TellText(const TextChange& change);
    /// Applies an edit, or its inverse; answers where the caret belongs then.
    Position Apply(TextEdit& edit, bool forward);
    /// The same without a word of it; answers where the text now ends that came or went.
    Position MakePart(TextEdit& edit, bool forward);
    Position ApplyRanges(RangeBatch& batch, bool forward);
    void EditLines(LineEdits edits, bool typed);
    void BreakLines(std::vector<RangeEdit>& edits, RangeMoves moves);
    /// Answers where the caret belongs, unless the operation said so itself or changed nothing. `taken` gets the range
    /// that it erased first.
    template <typename Body>
    std::optional<Position> RunOp(Body&& body, TextEdit& taken);
    std::optional<Position> Replay(UndoStep& step, bool forward);
    std::optional<Position> UndoStepOnTop();
    /// Brings the views' carets to where a step leaves them.
    void TellCarets(const UndoStep& step, bool forward, std::optional<Position> caret);

    void Leave();
    void FlushPending();
    /// True when all that waits for a scan lies within these lines; the caller then scans them.
    bool TakePendingWithin(int32_t first, int32_t last);
    bool FoldsReach(int32_t first, int32_t last) const;
    /// Puts the folds right after these lines changed, if need be.
    void RefreshFolding(bool always, int32_t first, int32_t last);
    void TellModified();
    void TellFolding(bool changed);
    void TellRepaint(int32_t first, int32_t last);
    void TellCaret(std::optional<Position> caret);
    /// A listener that fails neither stops the others nor the change that is being told.
    template <typename Call>
    void Tell(Call&& call)
    {
        ++telling_;
        for (size_t i = 0; i < listeners_.size(); ++i) IgnoringErrors([&] { call(*listeners_[i]); });
        --telling_;
    }

    LineStore lines_;
    UndoStack undo_;
    ChangeMarks changes_{lines_};
    mutable LineScanner scanner_; ///< lines are scanned when they are asked about
    BlockFolder folder_;
    std::vector<BufferListener*> listeners_;
    int32_t bookmarks_ = 0;
    /// Above 0 inside a group, an operation or an undo: what was changed is scanned once at the end.
    int32_t depth_ = 0;
    mutable std::optional<TextSearch> search_;
    mutable Text searchText_;
    mutable FindOptions searchOptions_;
    LitText lit_;
    std::vector<TextEdit>* journal_ = nullptr; ///< of the operation under way
    bool replaying_ = false;
    int32_t telling_ = 0;
    bool knownModified_ = false;
    bool foldsTouched_ = false; ///< hidden lines or heads came, went or moved apart
    bool caretTold_ = false;    ///< by the operation under way
    /// While a sweep is taken back: where its operations want the caret, the last one at the end.
    std::optional<Position>* sweepCaret_ = nullptr;
    EditedLines edited_;
};

} // namespace nib
