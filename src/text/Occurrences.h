#pragma once
// The other places of the name that the caret stands in.

#include "text/SourceDocument.h"

#include <span>

namespace nib {

/// The name at a place, or right in front of it; empty where there is none: on a keyword, in a comment or in a text. In
/// a text without a lexer any word is one.
Text NameAt(SourceDocument& document, Position at);

/// Finds a name as a whole word, in any case, and not in comments or texts.
class Occurrences {
public:
    explicit Occurrences(TextView name) : search_(name, {false, false, true}) {}

    /// Calls `found` with the range of columns; `tokens` are the line's.
    template <typename Found>
    void InLine(TextView text, std::span<const Token> tokens, Found&& found) const
    {
        for (size_t at = search_.In(text, 0); at != TextView::npos; at = search_.In(text, at + search_.Length())) {
            const ColumnRange range{static_cast<int32_t>(at), static_cast<int32_t>(at + search_.Length())};
            if (IsName(text, tokens, range)) found(range);
        }
    }
    /// Whether a line holds the text at all, wherever that may be.
    bool MayBeIn(TextView text) const { return search_.In(text, 0) != TextView::npos; }

private:
    static bool IsName(TextView text, std::span<const Token> tokens, ColumnRange range);

    TextSearch search_;
};

} // namespace nib
