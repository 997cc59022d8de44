#pragma once
// The host connection: how the editor reaches items of MultiValue files and local files.
//
// A place is named by five strings: provider ("mvdb" for a host, "file" for a local file), server name ("*" is the
// default connection), database (account), folder (MultiValue file) and item id. One text for it: "mvdb:" and up to
// four levels with "/" between them, each percent-encoded, or "file:" and the absolute name of a local file as it is.
//
// Every operation throws Error; the description is what the user is shown.

#include "base/ByteText.h"
#include "base/Error.h"
#include "base/LinewiseText.h"
#include "base/Text.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
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

inline constexpr TextView kHostProvider{u"mvdb"};
inline constexpr TextView kFileProvider{u"file"};

/// A place of provider "file" gives the path of its itemId.
Text ComposeHostPath(const ItemPlace& place);
/// A relative name is taken from the current folder.
Text ComposeFilePath(TextView fileName);
/// Also takes a bare absolute file name. Throws kBadFileName for anything else.
ItemPlace ParsePath(TextView path);

/// Names of one connection: case does not count, and an empty one is the default.
bool IsSameHost(TextView a, TextView b);
/// Paths of one local file, be it by links.
bool IsSameFile(TextView pathA, TextView pathB);
/// True for a path of the local file system.
bool IsLocalPath(TextView path);
/// True for the path of a host item, which stands on the fourth level.
bool IsHostItemPath(TextView path);
/// The name that the last level of a path gives a place: what a list calls it is better where it is known.
Text PlaceName(TextView path);

/// Somebody else holds the item.
inline bool IsLocked(const Error& error)
{
    return error.number == error_number::kLocked || error.number == error_number::kLockedElsewhere;
}
/// Who holds an item, below a text about it. Nothing when that is not known.
inline Text HeldBy(TextView holder)
{
    return holder.empty() ? Text() : u"\nIt is held by " + Text(holder) + u".";
}
/// What the user is asked about an item that somebody else holds.
inline Text LockedQuestion(TextView displayPath, TextView holder)
{
    return Text(displayPath) + u" is locked by another user or process. Open in \"read only\" mode instead?" +
           HeldBy(holder);
}

/// Feature codes of mvItem::Supports.
inline constexpr int32_t kSupportsExecute = 12;
inline constexpr int32_t kSupportsConfiguration = 15;

/// Takes whole lines that a command has printed, with CR LF between them.
using PrintedLines = std::function<void(TextView lines)>;

/// The live connection of a host item.
class mvSession {
public:
    virtual ~mvSession() = default;
    /// The account that the server put this session in.
    virtual Text AccountName() = 0;
    /// Runs a command on the host and answers its whole output, lines separated by CR LF.
    virtual Text Execute(TextView command, TextView input, int32_t flags) = 0;
    /// The same without input, telling of its output as it comes where the host does; `printed` may be empty.
    virtual Text ExecuteTelling(TextView command, const PrintedLines& /*printed*/) { return Execute(command, u"", 0); }
    /// Attribute `attribute` (1-based) of the configuration record `key`; empty when absent.
    virtual Text GetConfiguration(TextView key, int32_t attribute) = 0;
};

/// What an item is called, known as soon as there is one.
struct ItemNames {
    ItemPlace place; ///< for a local file: its folder, and its name there
    Text path;
    Text itemName;    ///< for messages
    Text hostName;    ///< display name of the host, for titles; empty for a local file
    Text displayPath; ///< for the user to read
};

class StoredForm;

/// Does `work` to its end, maybe on another thread while this one goes on with other things; throws what that throws.
using Elsewhere = std::function<void(const std::function<void()>& work)>;
inline const Elsewhere kHere = [](const std::function<void()>& work) { work(); };

/// What has become of an item's storage since the item was read or written.
enum class StoredState : uint8_t { Same, Changed, Gone, Unknown };

/// One item: its place, its text, its lock. Destroying it closes it and frees its lock.
class mvItem {
public:
    virtual ~mvItem() = default;
    mvItem(const mvItem&) = delete;
    mvItem& operator=(const mvItem&) = delete;

    const Text& Path() const { return names_.path; }
    const Text& Provider() const { return names_.place.provider; }
    const Text& ServerName() const { return names_.place.serverName; }
    const Text& Database() const { return names_.place.database; }
    const Text& Folder() const { return names_.place.folder; }
    /// The item id; for a local file the file's name without its folder.
    const Text& ItemID() const { return names_.place.itemId; }
    const Text& ItemName() const { return names_.itemName; }
    const Text& HostName() const { return names_.hostName; }
    const Text& Account() const { return Database(); }
    /// The file-level name: the MultiValue file, or the folder of a local file.
    const Text& FileName() const { return Folder(); }
    const Text& DisplayPath() const { return names_.displayPath; }

    // None of these throws, nor do those above.
    virtual bool Exists() = 0;
    /// False when the path names a folder or a file definition.
    virtual bool IsItem() = 0;
    virtual bool ReadOnly() const = 0;
    virtual void SetReadOnly(bool readOnly) = 0;
    virtual bool Supports(int32_t /*code*/) { return false; }
    /// Asked as often as one likes: as long as nothing changes it costs no more than a look at the file's times.
    virtual StoredState State() { return StoredState::Same; }
    /// The same with certainty, right before a save: a host may be asked. Throws Error.
    virtual StoredState StateToSave() { return State(); }
    /// The user knows of what has become of it: that is no change any more, and what a write replaces.
    virtual void AcceptState() {}
    /// The same if that is what is stored now; else false, and nothing is accepted. Throws Error.
    virtual bool AcceptVersion(TextView /*version*/)
    {
        AcceptState();
        return true;
    }
    /// Tells the stored text, as it was last read or written, from others, also in another run of the program; empty
    /// when nothing can.
    virtual Text Version() { return {}; }
    /// How its text stands in storage. Owned by the item.
    virtual StoredForm* Form() { return nullptr; }
    /// Bytes, as it was last read or written; none when that is not known.
    virtual std::optional<int64_t> StoredSize() { return std::nullopt; }
    /// The file on this machine that it is; empty when it is none.
    virtual std::string StoredFile() const { return {}; }
    /// Null for a local file. Owned by the item.
    virtual mvSession* Session() { return nullptr; }

    /// The text with lines separated by CR LF and the delimiters as mark characters. The three numbers are attribute,
    /// value and sub-value; 0, 0, 0 means the whole item and is the only form in use.
    virtual Text ReadItem(int32_t attribute, int32_t value, int32_t subValue) = 0;
    /// The whole item in the same way, or in the bytes that it was stored in, which spares copies of a large one.
    virtual ReadText ReadWhole() { return ReadItem(0, 0, 0); }
    /// Replaces the whole item; the old one stays whole when this throws.
    virtual void WriteItem(int32_t attribute, int32_t value, int32_t subValue, TextView text) = 0;
    /// The same line by line, which spares copies of a large one. Meanwhile all other calls are answered as before.
    virtual void WriteWhole(const LinewiseText& text, const Elsewhere& /*elsewhere*/)
    {
        WriteItem(0, 0, 0, text.Whole());
    }
    /// Ends a write.
    virtual void Commit() {}
    /// True takes the update lock, throwing error_number::kLocked when another holds it; false frees it.
    virtual void LockItem(bool /*lock*/) {}
    virtual bool HoldsLock() const { return false; }
    /// Who holds the update lock, empty when nobody does.
    virtual Text LockHolder() { return {}; }
    /// Ends the binding to storage; frees nothing else.
    virtual void Close() {}

protected:
    explicit mvItem(ItemNames names) : names_(std::move(names)) {}

private:
    ItemNames names_;
};

/// Two objects that stand for one stored item.
bool IsSameItem(const mvItem& a, const mvItem& b);

/// The whole item; nothing when there is none. Throws Error when it cannot be read.
std::optional<ReadText> ReadIfThere(mvItem& item);

class ItemReader;
/// Where accounts cannot be searched: throws.
std::unique_ptr<ItemReader> RefuseReader(const ItemPlace& account);

/// What a call of the picker offers.
struct SelectRequest {
    Text mode;      ///< "Open", "Save", "Export" or "Import": the title, and whether an existing item is asked for
    Text extension; ///< default extension of local files, "" or "txt"
    bool offerReadOnly = false;
    bool mustExist = false;
    bool startNamed = false; ///< the start item names an item already, not just a place
    bool several = false;
};

struct SelectedItem {
    std::shared_ptr<mvItem> item;
    bool readOnly = false;
};

/// A connection that is set up, with what is known of it without asking a server.
struct KnownHost {
    Text name; ///< for the user to read
    Text path;
    std::vector<Text> accounts;
};

class mvConnection {
public:
    virtual ~mvConnection() = default;
    /// The default connection first. Accounts of it alone are listed, and not where they stand on a server.
    virtual std::vector<KnownHost> Hosts() { return {}; }
    /// The modal picker; `start` is where it begins and may be null. A null item means cancelled.
    virtual SelectedItem SelectItem(const SelectRequest& request, mvItem* start) = 0;
    virtual std::vector<SelectedItem> SelectItems(const SelectRequest& request, mvItem* start) = 0;
    /// Throws kLocked, kLockedElsewhere or kNoUpdate when `lock` is set, `readOnly` is not, and the lock cannot be had.
    virtual std::shared_ptr<mvItem> OpenServerForPath(TextView path, bool readOnly, bool lock) = 0;
    /// For a search in all items of the account of the place. Throws Error when it cannot be searched.
    virtual std::unique_ptr<ItemReader> Reader(const ItemPlace& account);
    /// That a connection names for its programs; empty when it names none.
    virtual Text DialectOf(TextView /*serverName*/) { return {}; }
    /// By its name or as #RRGGBB, what documents of the account of the place are told from others by; empty for none.
    virtual Text ColorOf(const ItemPlace& /*account*/) const { return {}; }
    /// What is saved in the account of the place leaves a version.
    virtual bool KeepsHistory(const ItemPlace& /*account*/) const { return true; }

    // The text of a place is the same for all connections.
    Text ComposeHostPath(const ItemPlace& place) const { return nib::ComposeHostPath(place); }
    Text ComposeFilePath(TextView fileName) const { return nib::ComposeFilePath(fileName); }
    ItemPlace ParsePath(TextView path) const { return nib::ParsePath(path); }
};

} // namespace nib
