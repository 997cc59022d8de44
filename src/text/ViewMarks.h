#pragma once
#include <cstdint>

namespace nib {

/// What a view shows beside its text.
struct ViewMarks {
    bool currentLine = false;
    bool matches = false; ///< what belongs to the caret's place: brackets, words of a block, the same name
    bool changeBars = false;
    bool indentGuides = false;
    bool visibleBlanks = false;
    bool smoothScrolling = false;
    int32_t firstGuide = 0; ///< its column; the others follow a tab stop apart

    friend bool operator==(const ViewMarks&, const ViewMarks&) = default;
};

} // namespace nib
