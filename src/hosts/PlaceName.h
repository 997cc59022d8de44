#pragma once
#include "base/Text.h"

namespace nib {

/// True for a path of the local file system.
bool IsLocalPath(TextView path);
/// True for the path of a host item, which stands on the fourth level.
bool IsHostItemPath(TextView path);
/// The name that the last level of a path gives a place: what a list calls it is better where it is known.
Text PlaceName(TextView path);

} // namespace nib
