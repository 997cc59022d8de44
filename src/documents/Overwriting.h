#pragma once
// What comes before an item is written that was not opened to be written: Save As and the export of a list ask alike.

#include "base/Text.h"

#include <functional>

namespace nib {

class mvItem;

/// Shows a box and answers the button pressed.
using ShowBox = std::function<int32_t(TextView text, int32_t flags)>;

/// Asks where there is something to be written over, and tells where it cannot be.
bool MayOverwrite(mvItem& item, const ShowBox& show);
/// Takes the item's lock, or tells that it cannot be had.
bool LockToWrite(mvItem& item, const ShowBox& show);

} // namespace nib
