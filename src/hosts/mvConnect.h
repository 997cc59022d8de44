#pragma once
// The host connection: how the editor reaches items of MultiValue files and local files.
//
// A place is named by five strings: provider ("mvdb" for a host, "file" for a local file), server name ("*" is the
// default connection), database (account), folder (MultiValue file) and item id; they are joined to one path.
// Every operation throws Error; the description is what the user is shown.

#include "base/Text.h"

#include <memory>
#include <vector>

namespace nib {

struct ItemPlace {
    Text provider;
    Text serverName;
    Text database;
    Text folder;
    Text itemId; ///< for "file": the absolute name of the file, as is

    friend bool operator==(const ItemPlace&, const ItemPlace&) = default;
};

/// Feature codes of mvItem::Supports.
inline constexpr int32_t kSupportsExecute = 12;
inline constexpr int32_t kSupportsConfiguration = 15;

/// The live connection of a host item.
class mvSession {
public:
    virtual ~mvSession() = default;
    /// The account that the server put this session in.
    virtual Text AccountName() = 0;
    /// Runs a command on the host and answers its whole output, lines separated by CR LF.
    virtual Text Execute(TextView command, TextView input, int32_t flags) = 0;
    /// Attribute `attribute` (1-based) of the configuration record `key`; empty when absent.
    virtual Text GetConfiguration(TextView key, int32_t attribute) = 0;
};

/// One item: its place, its text, its lock. Destroying it closes it and frees its lock.
class mvItem {
public:
    virtual ~mvItem() = default;
    virtual Text Path() const = 0;
    virtual Text Provider() const = 0;
    virtual Text ServerName() const = 0;
    virtual Text Database() const = 0;
    virtual Text Folder() const = 0;
    /// The item id; for a local file the file's name without its folder.
    virtual Text ItemID() const = 0;
    /// Name for messages.
    virtual Text ItemName() const = 0;
    /// Display name of the host, for titles; empty for a local file.
    virtual Text HostName() const = 0;
    virtual Text Account() const = 0;
    /// The file-level name: the MultiValue file, or the folder of a local file.
    virtual Text FileName() const = 0;
    virtual Text DisplayPath() const = 0;

    virtual bool Exists() = 0;
    /// False when the path names a folder or a file definition.
    virtual bool IsItem() = 0;
    virtual bool ReadOnly() const = 0;
    virtual void SetReadOnly(bool readOnly) = 0;
    virtual bool Supports(int32_t code) = 0;

    /// The text with lines separated by CR LF and the delimiters as mark characters. The three numbers are attribute,
    /// value and sub-value; 0, 0, 0 means the whole item and is the only form in use.
    virtual Text ReadItem(int32_t attribute, int32_t value, int32_t subValue) = 0;
    /// Replaces the whole item; the old one stays whole when this throws.
    virtual void WriteItem(int32_t attribute, int32_t value, int32_t subValue, TextView text) = 0;
    /// Ends a write.
    virtual void Commit() = 0;
    /// True takes the update lock, throwing error_number::kLocked when another holds it; false frees it.
    virtual void LockItem(bool lock) = 0;
    /// Ends the binding to storage; frees nothing else.
    virtual void Close() = 0;
    /// Null for a local file. Owned by the item.
    virtual mvSession* Session() = 0;
};

/// What a call of the picker offers.
struct SelectRequest {
    Text mode;      ///< "Open", "Save", "Export" or "Import": the title, and whether an existing item is asked for
    Text extension; ///< default extension of local files, "" or "txt"
    bool offerReadOnly = false;
    bool mustExist = false;
    bool lock = false;       ///< items are locked as they are opened
    bool startNamed = false; ///< the start item names an item already, not just a place
    bool several = false;
};

struct SelectedItem {
    std::shared_ptr<mvItem> item;
    bool readOnly = false;
};

class mvConnection {
public:
    virtual ~mvConnection() = default;
    /// The modal picker; `start` is where it begins and may be null. A null item means cancelled.
    virtual SelectedItem SelectItem(const SelectRequest& request, mvItem* start) = 0;
    virtual std::vector<SelectedItem> SelectItems(const SelectRequest& request, mvItem* start) = 0;
    /// Throws kLocked, kLockedElsewhere or kNoUpdate when `lock` is set, `readOnly` is not, and the lock cannot be had.
    virtual std::shared_ptr<mvItem> OpenServerForPath(TextView path, bool readOnly, bool lock) = 0;

    virtual Text ComposeHostPath(const ItemPlace& place) const = 0;
    virtual Text ComposeFilePath(TextView fileName) const = 0;
    /// The reverse of both; throws kBadFileName for a text that is no path.
    virtual ItemPlace ParsePath(TextView path) const = 0;
};

} // namespace nib
