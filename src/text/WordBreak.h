#pragma once
// Graphemes and words within one line. A word is letters, digits, ".", "_", "$": the names of the edited programs.

#include "base/Text.h"

#include <optional>

namespace nib {

struct ColumnRange {
    int32_t first = 0;
    int32_t last = 0; ///< excluded
};

/// `col` if a grapheme begins there, else the start of the grapheme that it stands in.
int32_t GraphemeStart(TextView line, int32_t col);
int32_t NextGrapheme(TextView line, int32_t col);
int32_t PreviousGrapheme(TextView line, int32_t col);

/// Start of the next word, or of the next run of other characters; the line's length behind the last.
int32_t NextWord(TextView line, int32_t col);
int32_t PreviousWord(TextView line, int32_t col);
/// The word, run of blanks or run of other characters at a column; at the end of the line the last one.
ColumnRange WordAt(TextView line, int32_t col);

/// Columns of the leading blanks.
int32_t IndentOf(TextView line);

/// Every TAB becomes `width` blanks, one when that is below 1; for a text that will stand at a column, those up to the
/// next stop instead.
Text ExpandTabs(TextView text, int32_t width, std::optional<int32_t> column = std::nullopt);

} // namespace nib
