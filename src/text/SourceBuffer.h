#pragma once
// The text component's document: lines with their data words, undo, scanning, folding, search. Knows no screen.

#include "text/SourceView.h"

#include <memory>
#include <vector>

namespace nib {

/// One change of the text, as positions before and after it.
struct TextChange {
    Position start;
    Position oldEnd; ///< end of what was removed, in the text before
    Position newEnd; ///< end of what was inserted, in the text after
    /// Where `p` of the text before stands in the text after; what was removed collapses to its start, and a position
    /// at an insertion moves behind it when `sticky` is false.
    Position Map(Position p, bool sticky = false) const;
};

/// Called after the buffer is consistent again. A listener must not edit from within a call.
class BufferListener {
public:
    virtual ~BufferListener() = default;
    virtual void TextChanged(const TextChange&) {}
    /// The whole text was replaced.
    virtual void TextReset() {}
    /// Looks only: colours, marks.
    virtual void LinesRepaint(int32_t /*first*/, int32_t /*last*/) {}
    virtual void CaretRequested(Position) {}
    virtual void ModifiedChanged(bool) {}
    /// Which lines are hidden has changed.
    virtual void FoldingChanged() {}
};

class SourceBuffer final : public SourceDocument {
public:
    SourceBuffer();
    ~SourceBuffer() override;
    SourceBuffer(const SourceBuffer&) = delete;
    SourceBuffer& operator=(const SourceBuffer&) = delete;

    // SourceDocument
    int32_t LineCount() const override;
    Text GetLine(int32_t line) const override;
    /// A view of the line where it is stored wide, else widened into `scratch`.
    TextView LineText(int32_t line, Text& scratch) const override;
    int32_t LineLength(int32_t line) const override;
    uint32_t GetLineData(int32_t line, LineWord which) const override;
    void SetLineData(int32_t line, LineWord which, uint32_t value) override;
    Position InsertText(Position at, TextView text) override;
    void DeleteRange(Position start, Position end) override;
    int32_t UpdateLines(int32_t first, int32_t last) override;
    void NotifyChange(int32_t kind, int32_t first, int32_t last, Position caret) override;
    bool Modified() const override;
    void SetModified(bool modified) override;
    bool CanUndo() const override;
    bool CanRedo() const override;
    void Undo() override;
    void Redo() override;
    void ClearUndo() override;
    bool Find(TextView text, Position from, FindOptions options, FindHit& hit) const override;
    void ToggleBookmark(int32_t line) override;
    void ClearBookmarks() override;
    int32_t BookmarkCount() const override;
    int32_t FindBookmark(int32_t line, bool backward) const override;
    void SetLexer(ISourceLex4* lexer) override;
    void ExecuteOp(std::unique_ptr<ISourceOp> operation) override;
    void CollapseBlock(int32_t line) override;
    void ExpandBlock(int32_t line) override;
    void CollapseAll() override;
    void ExpandAll() override;
    bool IsHidden(int32_t line) const override;

    // For views and loaders
    void SetText(TextView text);
    Text GetText() const;
    /// CR LF between lines.
    Text GetRange(Position start, Position end) const;
    Position End() const;
    Position Clamp(Position p) const;
    /// Tokens of a line as the lexer gives them (one of type 8 for plain text, none for an empty line); scans what must
    /// be scanned before it.
    void ScanLine(int32_t line, std::vector<Token>& tokens);
    /// Scans unscanned lines for at most about `microseconds`; false when nothing is left.
    bool ScanSlice(int64_t microseconds);
    void EnsureScanned();

    /// Edits between Begin and End are one undo step; nests.
    void BeginGroup();
    void EndGroup();
    /// Ends the run of typing, so that the next edit starts an undo step of its own.
    void BreakTyping();

    // Lines that no collapsed block hides, numbered from 0.
    int32_t VisibleCount() const;
    int32_t VisibleIndex(int32_t line) const; ///< of a hidden line: the one of its collapsed head
    int32_t VisibleLine(int32_t index) const;
    /// Expands whatever hides the line.
    void Reveal(int32_t line);
    /// Last line of the block that `line` heads, -1 when it heads none.
    int32_t BlockEnd(int32_t line);

    /// Not owned.
    void AddListener(BufferListener* listener);
    void RemoveListener(BufferListener* listener);

    /// Bytes held for text, lines and undo; for measurements.
    size_t MemoryUse() const;

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace nib
