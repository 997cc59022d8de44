#include "hosts/accounts/AccountItem.h"

#include "base/Error.h"
#include "hosts/PathString.h"
#include "hosts/accounts/ItemName.h"

namespace nib {

AccountItem::AccountItem(const AccountStore& store, ItemPlace place, const Text& sessionAccount,
                         const VerbPrograms& programs)
    : store_(store), place_(std::move(place)), anyAccount_(place_.database == kAnyAccount)
{
    if (!place_.folder.empty() && (place_.database.empty() || anyAccount_)) place_.database = sessionAccount;
    if (place_.folder.empty() && anyAccount_) place_.database.clear();
    if (!sessionAccount.empty()) session_.emplace(store_, sessionAccount, programs);
    if (place_.database.empty()) return;
    store_.AccountFolder(place_.database);
    if (place_.folder.empty()) return;
    store_.FileFolder(place_.database, place_.folder);
    if (place_.itemId.empty()) return;
    stored_.emplace(store_.ItemFile(place_.database, place_.folder, place_.itemId), DisplayPath(), store_.Coding(),
                    store_.Saver());
}

Text AccountItem::Path() const
{
    return ComposeHostPath(place_);
}

Text AccountItem::ItemName() const
{
    if (place_.itemId.empty()) return place_.folder;
    return place_.folder + u" " + place_.itemId;
}

Text AccountItem::DisplayPath() const
{
    Text path;
    const Text account = anyAccount_ ? Text() : place_.database;
    for (const Text* level : {&account, &place_.folder, &place_.itemId}) {
        if (!path.empty() && !level->empty()) path.push_back(u' ');
        path += *level;
    }
    return path;
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
    lock_.emplace(store_.AccountFolder(place_.database), LockName(place_.folder, place_.itemId), DisplayPath());
}

} // namespace nib
