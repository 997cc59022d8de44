#pragma once
// Runs the lexer over lines when their data is needed, and again over what an edit may have changed: from an edited
// line on until the state that passes from line to line comes out as before. The nesting that this leaves on the lines
// makes the blocks.

#include "text/LineStore.h"
#include "text/SourceContract.h"

#include <utility>
#include <vector>

namespace nib {

class LineScanner {
public:
    LineScanner(SourceDocument& document, LineStore& lines) : document_(document), lines_(lines) {}

    void SetLexer(ISourceLex4* lexer);
    bool HasLexer() const { return lexer_ != nullptr; }
    /// All lines count as unscanned.
    void Reset() { scannedTo_ = 0; }
    /// Lines `first` to `oldLast` became `first` to `newLast`; nothing is scanned yet.
    void LinesReplaced(int32_t first, int32_t oldLast, int32_t newLast);
    /// Scans the lines that were scanned before, and on while the state changes; answers the last line whose data
    /// changed, -1 when none did.
    int32_t Rescan(int32_t first, int32_t last);
    void EnsureScanned(int32_t last);
    bool AllScanned() const { return !lexer_ || scannedTo_ >= lines_.Count(); }
    int32_t ScannedTo() const { return scannedTo_; }
    /// For at most about this long; false when nothing is left.
    bool Slice(int64_t microseconds);
    void Tokens(int32_t line, std::vector<Token>& tokens);
    bool IndentOf(TextView text, uint32_t above, LineIndent& indent);
    void Look(TextView text, std::vector<Token>& tokens) const
    {
        if (lexer_) lexer_->Look(text, tokens);
    }
    /// Whether the nesting of any line came out differently since this was last asked.
    bool TakeNestingChanged() { return std::exchange(nestingChanged_, false); }
    bool Busy() const { return busy_; }

private:
    /// True when a data word of the line changed.
    bool Scan(int32_t line, std::vector<Token>* tokens = nullptr);
    int32_t ReadTokens(int32_t length, std::vector<Token>* tokens, Nesting& nesting);
    void RunLexer(int32_t line, std::vector<Token>* tokens, Nesting& nesting);
    bool ScanWhole(int32_t line, Nesting& nesting);
    UnitSpan LexedUnits(int32_t line) const;

    SourceDocument& document_;
    LineStore& lines_;
    ISourceLex4* lexer_ = nullptr;
    int32_t scannedTo_ = 0; ///< all lines before this one are scanned
    bool nestingChanged_ = false;
    bool busy_ = false;
    Text scratch_;
};

/// Blocks of lines, matched by the nesting that the scan left on them; which are collapsed, and what that hides.
class BlockFolder {
public:
    explicit BlockFolder(LineStore& lines) : lines_(lines) {}

    /// Last line of the block that `line` heads, -1 when it heads none: blocks that never close are none.
    int32_t BlockEnd(int32_t line) const;
    bool IsCollapsed(int32_t line) const;
    bool IsHidden(int32_t line) const;
    /// The block field of a line's control word.
    uint32_t BlockBits(int32_t line) const;
    /// Each answers whether anything changed.
    bool Collapse(int32_t line);
    bool Expand(int32_t line);
    bool CollapseAll();
    bool ExpandAll();
    bool Reveal(int32_t line);
    /// After edits of these lines: no line stays hidden without a collapsed head above it, and every collapsed head
    /// hides its block. Looks no further than the folds around them.
    bool Refresh(int32_t first, int32_t last);
    bool AnyCollapsed() const { return collapsed_ > 0; }
    void Reset() { collapsed_ = 0; }
    /// A line with these control bits goes; answers whether that concerns any fold.
    bool LineRemoved(uint32_t control);

private:
    int32_t LastHidden(int32_t head) const;
    int32_t LastHidden(int32_t head, int32_t end) const;
    /// Calls closed(head, end) for every block, inner ones first, in one walk over all lines.
    template <typename Closed>
    void MatchBlocks(Closed&& closed) const;
    void SetBit(int32_t line, uint32_t bit, bool on);
    void ShowRange(int32_t first, int32_t last);
    bool HideCollapsed();

    LineStore& lines_;
    int32_t collapsed_ = 0;
};

} // namespace nib
