#pragma once
// What belongs together: the words of a block, two brackets.

#include "text/SourceDocument.h"

#include <span>
#include <utility>
#include <vector>

namespace nib {

/// The words of a block and of those that it goes on in, as the END of a THEN does in an ELSE.
struct BlockMatch {
    /// A block: behind the word that begins it, up to the one that ends it.
    struct Part {
        TextRange begin;
        TextRange end;
        int32_t depth = 0; ///< blocks open within it
    };

    std::vector<Part> parts;      ///< in the order of the text
    std::vector<TextRange> words; ///< that begin, end and lead them, in the same order
};

/// The block of the word at a place; nothing for any other word, for one without a partner, and where the text is not
/// scanned far enough to tell.
std::optional<BlockMatch> MatchBlock(SourceDocument& document, Position at);
/// The words of this line that stand in the middle of such a block, as CASE does; `tokens` are the line's.
void AddMiddles(const SourceDocument& document, const BlockMatch& match, int32_t line, std::span<const Token> tokens,
                std::vector<TextRange>& words);
/// The bracket behind the place, or else that in front of it, and its partner.
std::optional<std::pair<TextRange, TextRange>> MatchBrackets(SourceDocument& document, Position at);
/// Where a jump from the bracket or word at this place leads: from what begins something to its end and back.
std::optional<TextRange> MatchingWord(SourceDocument& document, Position at);

} // namespace nib
