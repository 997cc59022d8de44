#pragma once
#include "base/Text.h"

#include <utility>
#include <vector>

namespace nib {

/// The parameters in the outermost parentheses of "NAME(a, b [, c])", each with its start and end; brackets and dots
/// between them belong to none.
std::vector<std::pair<int32_t, int32_t>> ParametersOf(TextView form);

/// "NAME(a, b)"
Text FormOf(TextView name, const std::vector<Text>& parameters);

} // namespace nib
