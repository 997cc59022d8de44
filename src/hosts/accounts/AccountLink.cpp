#include "hosts/accounts/AccountLink.h"

#include "base/Error.h"
#include "diagnostics/Guarded.h"
#include "hosts/ItemBrowser.h"
#include "hosts/accounts/AccountReader.h"
#include "hosts/accounts/AccountStore.h"
#include "hosts/mvConnect.h"
#include "platform/posix/FileContent.h"

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

ItemText CodingOf(const HostSettings& settings)
{
    const bool configured = !settings.charset.empty();
    return ItemText::ForItems(configured ? Charset(settings.charset) : Charset(), configured);
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
    // The account may have gone meanwhile.
    return OrDefault(
        [&] {
            if (!session_) return false;
            if (code == kSupportsExecute) return session_->HasVerbs();
            return code == kSupportsConfiguration && session_->HasConfiguration();
        },
        false);
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

Text AccountItem::LockHolder()
{
    return ItemLock::Holder(store_.AccountFolder(Database()), LockName(Folder(), ItemID()));
}

AccountLink::AccountLink(const HostSettings& settings, const FileSaver& saver, VerbPrograms programs)
    : store_(settings.name, settings.root, CodingOf(settings), saver), configuredAccount_(settings.account),
      programs_(std::move(programs))
{
}

std::shared_ptr<mvItem> AccountLink::Open(const ItemPlace& place, bool readOnly, bool lock)
{
    const bool named = !place.database.empty() && place.database != kAnyAccount;
    const Text account = named ? place.database : DefaultAccount();
    if (account.empty() && !place.itemId.empty()) store_.AccountFolder(account); // says that none is named
    auto item = std::make_shared<AccountItem>(store_, place, account, programs_);
    if (named) lastAccount_ = account;
    if (lock && !readOnly && item->IsItem()) item->LockItem(true);
    item->SetReadOnly(readOnly);
    return item;
}

bool AccountLink::AccountExists(TextView account) const
{
    if (account.empty() || EncodeName(account).size() > NAME_MAX) return false;
    return IsFolder(store_.Root() + "/" + FindName(store_.Root(), account));
}

Text AccountLink::DefaultAccount()
{
    for (const Text& account : {configuredAccount_, lastAccount_})
        if (AccountExists(account)) return account;
    if (!StampOf(store_.Root()).Exists()) return {};
    const std::vector<BrowseEntry> accounts = Children({Text(kHostProvider), {}, {}, {}, {}});
    return accounts.size() == 1 ? accounts.front().name : Text();
}

std::vector<BrowseEntry> AccountLink::Children(const ItemPlace& place)
{
    const bool items = !place.folder.empty();
    const std::string folder = items                    ? store_.FileFolder(place.database, place.folder)
                               : place.database.empty() ? store_.Root()
                                                        : store_.AccountFolder(place.database);
    Text ItemPlace::*level = items                    ? &ItemPlace::itemId
                             : place.database.empty() ? &ItemPlace::database
                                                      : &ItemPlace::folder;
    std::vector<BrowseEntry> entries;
    ItemPlace child = place;
    for (const FolderEntry& found : ListFolder(folder)) {
        const std::optional<Text> id = found.isFolder == items ? std::nullopt : DecodeName(found.name);
        if (!id) continue;
        child.*level = *id;
        entries.push_back(ShownAs(found, *id, ComposeHostPath(child)));
    }
    SortEntries(entries);
    return entries;
}

bool AccountLink::FileExists(TextView account, TextView file)
{
    if (account.empty() || file.empty() || EncodeName(file).size() > NAME_MAX) return false;
    const std::string folder = store_.AccountFolder(account);
    return IsFolder(folder + "/" + FindName(folder, file));
}

bool AccountLink::ItemExists(const ItemPlace& place)
{
    if (place.itemId.empty() || EncodeName(place.itemId).size() > NAME_MAX) return false;
    return IsPlainFile(store_.ItemFile(place.database, place.folder, place.itemId));
}

Text AccountLink::LockHolder(const ItemPlace& place)
{
    if (place.itemId.empty()) return {};
    return ItemLock::Holder(store_.AccountFolder(place.database), LockName(place.folder, place.itemId));
}

std::unique_ptr<ItemReader> AccountLink::Reader(const ItemPlace& account)
{
    return std::make_unique<AccountReader>(store_, account.database);
}

HostLinkKinds AccountLinks(VerbPrograms programs)
{
    return {{u"accounts", [programs = std::move(programs)](const HostSettings& settings, const FileSaver& saver) {
                 return std::make_unique<AccountLink>(settings, saver, programs);
             }}};
}

} // namespace nib
