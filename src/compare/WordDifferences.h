#pragma once
// What differs within lines: which lines of a change belong beside each other, and which of their characters are
// others.

#include "compare/TextDifferences.h"
#include "text/TextSearch.h"

namespace nib {

/// Columns that differ, ascending and apart.
struct WordDifferences {
    std::vector<ColumnRange> left;
    std::vector<ColumnRange> right;
};

/// By words, and by characters where one word became another. Lines with little in common differ as wholes, and so does
/// what lies between the ends of very long ones.
WordDifferences CompareWords(TextView left, TextView right, const CompareOptions& options = {});

/// Lines of a changed block beside each other, counted from its beginning; -1 for none.
struct LinePair {
    int32_t left = -1;
    int32_t right = -1;

    friend bool operator==(const LinePair&, const LinePair&) = default;
};

/// All lines of both in order, like ones side by side as far as a block is small enough to look.
std::vector<LinePair> PairLines(const std::vector<TextView>& left, const std::vector<TextView>& right);

} // namespace nib
