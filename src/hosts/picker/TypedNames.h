#pragma once
#include "base/Text.h"

#include <vector>

namespace nib {

/// The names in what was typed: with `several`, a text that begins with a quote is a list of names in quotes ("A" "B
/// C", words without quotes between them count too); any other text is one name, blanks and all. One pair of quotes
/// around a single name is taken off.
std::vector<Text> SplitTypedNames(TextView typed, bool several);

/// The reverse: one name as it is, several in quotes.
Text JoinTypedNames(const std::vector<Text>& names);

} // namespace nib
