#pragma once
#include "base/Text.h"

namespace nib {

/// Anchors a path that begins with "./" or "../" at `baseFolder` and resolves ".." in it; what stands before the first
/// "/" is never removed, so that ".." ends at the root. A path of any other form stays relative.
Text DotToAbsPath(TextView path, TextView baseFolder);

} // namespace nib
