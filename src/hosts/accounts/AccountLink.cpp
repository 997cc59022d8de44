#include "hosts/accounts/AccountLink.h"

#include "hosts/ItemBrowser.h"
#include "hosts/accounts/AccountItem.h"
#include "hosts/accounts/ItemName.h"
#include "hosts/mvConnect.h"
#include "platform/posix/FileContent.h"

namespace nib {

namespace {

ItemText CodingOf(const HostSettings& settings)
{
    const bool configured = !settings.charset.empty();
    return ItemText::ForItems(configured ? Charset(settings.charset) : Charset(), configured);
}

} // namespace

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

HostLinkKinds AccountLinks(VerbPrograms programs)
{
    return {{u"accounts", [programs = std::move(programs)](const HostSettings& settings, const FileSaver& saver) {
                 return std::make_unique<AccountLink>(settings, saver, programs);
             }}};
}

} // namespace nib
