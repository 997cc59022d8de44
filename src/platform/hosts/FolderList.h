#pragma once
#include "platform/ItemBrowser.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace nib {

/// Calls visit(name, isFolder) for each folder and plain file, in no order; links count as what they lead to. Throws
/// SystemFailure when the folder cannot be read. No file is looked at beyond its folder entry where that tells its
/// kind.
void ListFolder(const std::string& folder, const std::function<void(std::string_view, bool)>& visit);

/// Case ignored, numbers by value: "item2" comes before "ITEM10".
bool ComesBefore(TextView a, TextView b);
/// By name, one entry a name; folders first.
void SortEntries(std::vector<BrowseEntry>& entries);

} // namespace nib
