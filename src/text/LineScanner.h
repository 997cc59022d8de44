#pragma once
// Runs the lexer over lines when their data is needed, and again over what an edit may have changed: from an edited
// line on until the state that passes from line to line comes out as before.

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
    /// Whether the nesting of any line came out differently since this was last asked.
    bool TakeNestingChanged() { return std::exchange(nestingChanged_, false); }
    bool Busy() const { return busy_; }

private:
    /// True when a data word of the line changed.
    bool Scan(int32_t line, std::vector<Token>* tokens = nullptr);
    int32_t ReadTokens(int32_t length, std::vector<Token>* tokens, Nesting& nesting);
    void RunLexer(int32_t line, std::vector<Token>* tokens, Nesting& nesting);

    SourceDocument& document_;
    LineStore& lines_;
    ISourceLex4* lexer_ = nullptr;
    int32_t scannedTo_ = 0; ///< all lines before this one are scanned
    bool nestingChanged_ = false;
    bool busy_ = false;
    Text scratch_;
};

} // namespace nib
