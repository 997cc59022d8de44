#pragma once
// What the item picker shows, one level at a time, and the dialog behind mvConnection::SelectItem as a port.

#include "base/Text.h"
#include "hosts/mvConnect.h"
#include "platform/posix/FileContent.h"

#include <optional>
#include <string>
#include <vector>

namespace nib {

struct BrowseEntry {
    Text name; ///< as shown: connection, account, file or item
    Text path; ///< path of this place
    bool isItem = false;
    bool readOnly = false;
    bool isHashed = false; ///< a file that is there, but only its server can list
    Text lockedBy;         ///< empty when free; else who holds the lock, for the user to read
    int64_t size = -1;     ///< bytes, -1 when unknown
    int64_t modified = -1; ///< seconds since the epoch, -1 when unknown
};

/// Levels: connections, accounts of a connection, files of an account, items of a file; or folders of the local file
/// system under the place "Local files".
class ItemBrowser {
public:
    virtual ~ItemBrowser() = default;
    /// The top level: each host connection, then the local file system's home and root folders.
    virtual std::vector<BrowseEntry> Places() = 0;
    /// What stands below `path`, sorted by name (case ignored, numbers by value). Throws Error when it cannot be read.
    /// Locks are not filled in here, so that a file of ten thousand items opens at once.
    virtual std::vector<BrowseEntry> Children(TextView path) = 0;
    /// Who holds the lock of the item at `path`; empty when nobody does.
    virtual Text LockHolder(TextView /*path*/) { return {}; }
    /// The place one level up; empty at the top.
    virtual Text Parent(TextView path) = 0;
    /// The path of the item that a typed name means when the picker stands at `place`: an item id, "FILE ITEM", an
    /// absolute file name or a whole path. Throws Error when it can name nothing there.
    virtual Text Resolve(TextView place, TextView typed) = 0;
};

struct PickerAnswer {
    std::vector<Text> paths;
    bool readOnly = false;
};

class PickerDialog {
public:
    virtual ~PickerDialog() = default;
    /// `startPath` is the place (and item, when request.startNamed) it opens at. No answer means cancelled.
    virtual std::optional<PickerAnswer> Run(const SelectRequest& request, TextView startPath, ItemBrowser& browser) = 0;
};

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
