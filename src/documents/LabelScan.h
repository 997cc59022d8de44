#pragma once
#include "base/Text.h"

namespace nib {

struct LabelAt {
    TextView name; ///< empty when the line holds none
    int32_t column = 0;
};

/// The statement label at the front of a line that the lexer marked as a label line.
LabelAt ScanLabel(TextView line);

} // namespace nib
