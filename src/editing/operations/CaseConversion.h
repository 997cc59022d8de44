#pragma once
#include "base/Text.h"

#include <optional>

namespace nib {

/// The text in its next letter case, quoted parts left alone: from mixed to upper, lower, capitals and back to upper.
/// Nothing when that changes nothing.
std::optional<Text> WithToggledCase(TextView text);

} // namespace nib
