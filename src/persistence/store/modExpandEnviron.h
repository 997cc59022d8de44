#pragma once
#include "base/Text.h"

#include <functional>
#include <optional>

namespace nib {

/// Answers the value of an environment variable, nothing when it is not set.
using Environment = std::function<std::optional<Text>(TextView)>;

/// "%NAME%" becomes the variable's value, or nothing when it is not set.
Text ExpandEnviron(TextView text, const Environment& environment);
/// The same, except that a reference to a variable that is not set stays as it is.
Text ExpandKnownEnviron(TextView text, const Environment& environment);

} // namespace nib
