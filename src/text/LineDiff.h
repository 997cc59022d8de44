#pragma once
// What differs between two texts, line by line, and a text that becomes another by changing just that.

#include "base/Text.h"

#include <cstdint>
#include <vector>

namespace nib {

class SourceDocument;

/// Lines that were taken out and lines that stand in their place; one of the counts may be 0. All 0-based.
struct LineHunk {
    int32_t oldLine = 0;
    int32_t oldCount = 0;
    int32_t newLine = 0;
    int32_t newCount = 0;

    friend bool operator==(const LineHunk&, const LineHunk&) = default;
};

/// In the order of the lines; none when the texts are the same. As few lines as can be, unless the texts have so little
/// in common that finding out would take too long.
std::vector<LineHunk> DiffLines(const std::vector<TextView>& before, const std::vector<TextView>& after);

/// Where each line of one text stands in the other, -1 where it does not.
std::vector<int32_t> LinePlaces(TextView before, TextView after);

/// The lines between CR LF, CR and LF; at least one. They are views of `text`.
std::vector<TextView> LinesOf(TextView text);

/// Lines of the document become others, in one step of undo; `newLine` counts in `lines`. What they have in common with
/// those in their place stays as it is.
void ReplaceLines(SourceDocument& document, LineHunk hunk, std::vector<TextView> lines);

/// The document's text becomes `text` in one step of undo: lines that are in both stay the lines that they were, with
/// bookmark, identity and folds. False, and no step of undo, when nothing differs.
bool ReplaceByLines(SourceDocument& document, TextView text);

} // namespace nib
