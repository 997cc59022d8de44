#pragma once
#include "base/Text.h"

namespace nib {

/// The name of a numbered shortcut, 1 to 79 ("Ctrl+A" ...); empty for any other number.
Text ShortcutName(int32_t number);

} // namespace nib
