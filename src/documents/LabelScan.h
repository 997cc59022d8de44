#pragma once
#include "base/Text.h"

namespace nib {

/// The flag that the lexer leaves in a line's data word when the line begins with a label definition.
inline constexpr uint32_t kLabelLine = 0x20000;

struct LabelAt {
    TextView name; ///< empty when the line holds none
    int32_t column = 0;
};

/// The statement label at the front of a line that the lexer marked as a label line.
LabelAt ScanLabel(TextView line);

} // namespace nib
