#pragma once
#include "hosts/ItemReader.h"
#include "language/account/IndexStore.h"
#include "platform/posix/FolderWatch.h"

#include <chrono>
#include <deque>
#include <functional>
#include <map>
#include <set>
#include <unordered_map>

namespace nib {

class Dialect;

using Deadline = std::chrono::steady_clock::time_point;

/// Which items an account has, and which of them are to be read: at the beginning, and when somebody has changed them.
///
/// A folder of this machine tells by itself of changes. What lies on another machine's disk is listed again from time
/// to time, and so are the ids of a server; there an item that stays is read again, a few in a while.
class AccountLists {
public:
    struct Item {
        Text stamp;
        bool isProgram = false;
        bool wasRead = false;
        // Moments of this run, in their order.
        uint64_t noticed = 0; ///< that it is there, or another one
        uint64_t read = 0;
    };

    /// What earlier runs found out about files that hold no programs, which may be large.
    struct Rules {
        std::function<bool(const Text& file)> isLeftAlone;
        std::function<void(const Text& file)> leaveAlone;
    };

    /// Both outlive it.
    AccountLists(ItemReader& reader, const Dialect& dialect, Rules rules)
        : reader_(reader), dialect_(dialect), rules_(std::move(rules))
    {
    }

    /// What an earlier run knew. Before the first Work.
    void Know(const StoredItem& stored);
    /// Lists for a while; false when all is listed for now. Throws Error when the host is lost.
    bool Work(Deadline until);
    /// The next item that is to be read.
    std::optional<ItemName> TakeUnread();
    std::optional<ItemName> TakeGone();
    bool HasGone() const { return !gone_.empty(); }
    void WasRead(const ItemName& name, Text stamp, bool isProgram);
    uint64_t Now() { return ++moment_; }
    /// It is to be read, though it may be as it was. First: before all others.
    void Want(const ItemName& name, bool first = false);
    /// Somebody may have changed it.
    void Look(const ItemName& name);

    /// Everything has been listed and read once.
    bool IsComplete() const { return begun_ && unread_.empty() && toList_.empty() && !listing_; }
    int32_t CountItems() const { return itemCount_; }
    int32_t CountUnread() const { return static_cast<int32_t>(wanted_.size()); }
    /// The same, and nothing was kept from view.
    bool IsCertain() const;
    /// All of the account, as they are shown.
    const std::vector<Text>& Files() const { return allFiles_; }
    /// There are programs in the file, whatever its first items look like.
    void WantFile(TextView file);
    bool HoldsNone(TextView file) const;
    /// Null when there is no such item. The name's case does not count where nothing else fits.
    const Item* Find(ItemName& name);
    /// Items of files with programs that are called so, in whatever case.
    std::vector<ItemName> Named(TextView item) const;
    std::vector<Text> ItemsOf(TextView file) const;

private:
    struct File {
        enum class Kind : uint8_t { Unknown, Programs, Others };
        Kind kind = Kind::Unknown;
        int32_t number = 0;
        bool isListed = false;
        bool isCertain = true; ///< its list is that of all items
        bool isWatched = false;
        std::map<Text, Item> items;
    };
    struct Listing {
        Text file;
        std::vector<Text> ids;
        size_t next = 0;
    };

    void ListFiles();
    void TakeChanges();
    void LookAgain();
    void BeginListing(const Text& file);
    void Compare(const Text& id);
    void EndListing();
    void Remove(const Text& file, std::map<Text, Item>::iterator item);
    void Judge(const Text& name, File& file, const std::vector<Text>& ids);
    void Unwatch(File& file);
    void ToList(const Text& file);
    bool HoldsPrograms(const Text& file, const std::vector<Text>& ids);
    template <typename Body>
    bool Attempt(Body&& body);

    ItemReader& reader_;
    const Dialect& dialect_;
    Rules rules_;
    FolderWatch watch_;
    std::vector<Text> allFiles_;
    std::map<Text, File> files_;                             ///< that may hold programs
    std::map<int32_t, Text> numbers_;                        ///< of watched files
    std::unordered_map<Text, std::vector<ItemName>> byName_; ///< by the id in capitals
    std::deque<Text> toList_;
    std::optional<Listing> listing_;
    std::deque<ItemName> unread_;
    std::set<ItemName> wanted_; ///< the same
    std::deque<ItemName> gone_;
    int32_t itemCount_ = 0;
    int32_t lastNumber_ = 0;
    uint64_t moment_ = 0;
    bool begun_ = false;
    bool hasFiles_ = false;
    bool filesAreWatched_ = false;
    std::chrono::steady_clock::time_point looked_;
    ItemName swept_; ///< that was read again last
};

} // namespace nib
