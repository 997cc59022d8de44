#include "hosts/accounts/AccountItem.h"

#include "base/Error.h"
#include "hosts/accounts/ItemName.h"
#include "hosts/mvConnect.h"

namespace nib {

namespace {

/// The names of what there are names for, with blanks between them.
Text JoinNames(std::initializer_list<TextView> names)
{
    Text joined;
    for (TextView name : names) {
        if (!joined.empty() && !name.empty()) joined.push_back(u' ');
        joined += name;
    }
    return joined;
}

ItemNames NamesOf(ItemPlace place, const Text& sessionAccount, const Text& hostName)
{
    // The path leaves the account to the session.
    const bool any = place.database == kAnyAccount;
    if (any || (!place.folder.empty() && place.database.empty())) {
        place.database = place.folder.empty() ? Text() : sessionAccount;
    }
    ItemNames names{place, ComposeHostPath(place), place.folder, hostName, {}};
    if (!place.itemId.empty()) names.itemName += u" " + place.itemId;
    names.displayPath = JoinNames({any ? TextView() : place.database, place.folder, place.itemId});
    return names;
}

} // namespace

AccountItem::AccountItem(const AccountStore& store, ItemPlace place, const Text& sessionAccount,
                         const VerbPrograms& programs)
    : mvItem(NamesOf(std::move(place), sessionAccount, store.HostName())), store_(store)
{
    if (!sessionAccount.empty()) session_.emplace(store_, sessionAccount, programs);
    if (Database().empty()) return;
    store_.AccountFolder(Database());
    if (Folder().empty()) return;
    store_.FileFolder(Database(), Folder());
    if (ItemID().empty()) return;
    stored_.emplace(store_.ItemFile(Database(), Folder(), ItemID()), DisplayPath(), store_.Coding(), store_.Saver());
}

bool AccountItem::Supports(int32_t code)
{
    if (!session_) return false;
    if (code == kSupportsExecute) return session_->HasVerbs();
    return code == kSupportsConfiguration && session_->HasConfiguration();
}

StoredText& AccountItem::Stored()
{
    if (!stored_) throw Error(error_number::kStorage, u"\"" + DisplayPath() + u"\" is not an item.");
    return *stored_;
}

Text AccountItem::ReadItem(int32_t, int32_t, int32_t)
{
    return Stored().Read();
}

void AccountItem::WriteItem(int32_t, int32_t, int32_t, TextView text)
{
    Stored().Write(text);
}

void AccountItem::LockItem(bool lock)
{
    if (!lock) {
        lock_.reset();
        return;
    }
    Stored();
    if (lock_) return;
    lock_.emplace(store_.AccountFolder(Database()), LockName(Folder(), ItemID()), DisplayPath());
}

} // namespace nib
