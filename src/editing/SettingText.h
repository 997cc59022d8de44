#pragma once
// Settings are stored as texts; these are the rules for what the texts mean.

#include "base/Text.h"

#include <optional>

namespace nib {

/// "True" and "False" in any case, or a number; nothing when it is another word.
std::optional<bool> WordToBoolean(TextView text);
TextView BooleanWord(bool state);

} // namespace nib
