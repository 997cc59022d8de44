#pragma once
// Hits in the text of one item as it is read from storage or stands in a window: CR LF between lines.

#include "text/TextPattern.h"

#include <vector>

namespace nib {

/// A line with a hit, the first one of the line.
struct FoundLine {
    int32_t line = 0;   ///< from 0
    int32_t column = 0; ///< in `text`
    int32_t length = 0;
    Text text; ///< of a very long line the part round the hit

    friend bool operator==(const FoundLine&, const FoundLine&) = default;
};

struct TextHits {
    int64_t hits = 0;
    std::vector<FoundLine> lines;
    bool cut = false; ///< more lines than were wanted have hits
};

/// TABs count as the blanks that they are edited as.
TextHits FindInText(const TextPattern& pattern, TextView text, int32_t tabSize, size_t mostLines);

struct ReplacedText {
    int64_t hits = 0;
    Text text;
};

/// As if each hit were looked for once the one before is replaced, or, of an expression, all in the text before; lines
/// without a hit keep their TABs.
ReplacedText ReplaceInText(const TextPattern& pattern, TextView text, TextView replacement, int32_t tabSize);

/// "*" stands for any text and "?" for one character; case is ignored. An empty pattern takes every id.
bool FitsPattern(TextView id, TextView pattern);

} // namespace nib
