#pragma once
#include "base/Text.h"

namespace nib {

struct Label {
    Text name; ///< empty when the line holds none
    int32_t line = 0;
    int32_t column = 0;

    friend bool operator==(const Label&, const Label&) = default;
};

/// The statement label at the front of a line that the lexer marked as a label line.
Label ScanLabel(TextView text, int32_t line);

} // namespace nib
