#pragma once
#include "hosts/ItemBrowser.h"

#include <string>
#include <vector>

namespace nib {

/// What a folder holds.
struct FolderEntry {
    std::string name;
    bool isFolder = false;
    bool readOnly = false;
    int64_t size = -1;     ///< -1: not asked
    int64_t modified = -1; ///< seconds since the epoch, -1: not asked

    BrowseEntry Shown(Text shownName, Text path) const;
};

/// The folders and plain files of a folder, in no order; links count as what they lead to. Throws Error when it cannot
/// be read, kPermissionDenied when it may not be. In a large folder no file is looked at beyond its folder entry, so
/// that it opens at once.
std::vector<FolderEntry> ListFolder(const std::string& folder);

/// Case ignored, numbers by value: "item2" comes before "ITEM10".
bool ComesBefore(TextView a, TextView b);
/// By name, one entry a name; folders first.
void SortEntries(std::vector<BrowseEntry>& entries);

} // namespace nib
