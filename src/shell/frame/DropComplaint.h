#pragma once
#include "base/Text.h"

namespace nib {

/// What to tell the user of dropped things that no document can show; empty when there are none.
Text DropComplaint(const std::vector<Text>& folders, const std::vector<Text>& elsewhere);

} // namespace nib
