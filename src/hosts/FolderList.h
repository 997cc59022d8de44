#pragma once
#include "hosts/ItemBrowser.h"
#include "platform/posix/FileContent.h"

#include <string>
#include <vector>

namespace nib {

/// What a place list shows of it.
BrowseEntry ShownAs(const FolderEntry& found, Text name, Text path);

/// Throws Error when the folder cannot be read: kPermissionDenied when it may not be, whose files may still be opened
/// by name.
std::vector<FolderEntry> ListFolder(const std::string& folder);

/// Case ignored, numbers by value: "item2" comes before "ITEM10".
bool ComesBefore(TextView a, TextView b);
/// By name, one entry a name; folders first.
void SortEntries(std::vector<BrowseEntry>& entries);

} // namespace nib
