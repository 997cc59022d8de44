#include "hosts/accounts/AccountLink.h"

#include "base/Error.h"
#include "diagnostics/Guarded.h"
#include "hosts/ItemBrowser.h"
#include "hosts/accounts/AccountReader.h"
#include "hosts/accounts/AccountStore.h"
#include "hosts/accounts/ServerAccounts.h"
#include "hosts/mvConnect.h"
#include "platform/posix/FileContent.h"
#include "platform/posix/FileName.h"

namespace nib {

namespace {

ItemText CodingOf(const HostSettings& settings)
{
    return ItemText::ForItems(CharsetOf(settings), !settings.charset.empty());
}

} // namespace

AccountItem::AccountItem(const AccountStore& store, ItemPlace place, const Text& sessionAccount,
                         const VerbPrograms& programs)
    : mvItem(HostItemNames(std::move(place), sessionAccount, store.HostName())), store_(store)
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
    Stored().Write(LinesIn(text));
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

AccountLink::AccountLink(const HostSettings& settings, const FileSaver& saver, VerbPrograms programs,
                         AccountOpened opened)
    : store_(settings.name, settings.root, CodingOf(settings), saver.LikeFolders(), IdRuleNamed(settings.ids)),
      configuredAccount_(settings.account), programRules_(ProgramRulesOf(settings)), programs_(std::move(programs)),
      opened_(std::move(opened))
{
    programs_.own = settings.verbs;
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
    if (opened_ && !readOnly && item->Form()) opened_(account, store_.AccountFolder(item->Database()));
    return item;
}

bool AccountLink::AccountExists(TextView account) const
{
    const std::optional<std::string> name = NameIfAny(store_.Root(), account);
    return !account.empty() && name && IsFolder(store_.Root() + "/" + *name);
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
    const bool files = !items && !place.database.empty();
    const IdRule rule = items ? store_.RuleOf(FolderOf(folder)) : IdRule::Plain;
    std::vector<BrowseEntry> entries;
    ItemPlace child = place;
    for (const FolderEntry& found : ListFolder(folder)) {
        const std::optional<Text> id = found.isFolder == items ? std::nullopt : DecodeName(found.name, rule);
        if (!id) continue;
        child.*level = *id;
        entries.push_back(ShownAs(found, *id, ComposeHostPath(child)));
        entries.back().isHashed = files && IsHashedFile(folder + "/" + found.name);
    }
    SortEntries(entries);
    return entries;
}

bool AccountLink::FileExists(TextView account, TextView file)
{
    if (account.empty() || file.empty()) return false;
    const std::string folder = store_.AccountFolder(account);
    const std::optional<std::string> name = NameIfAny(folder, file);
    return name && IsFolder(folder + "/" + *name);
}

bool AccountLink::ItemExists(const ItemPlace& place)
{
    const std::string folder = store_.FileFolder(place.database, place.folder);
    const IdRule rule = store_.RuleOf(store_.AccountFolder(place.database));
    const std::optional<std::string> name = NameIfAny(folder, place.itemId, rule);
    return !place.itemId.empty() && name && IsPlainFile(folder + "/" + *name);
}

Text AccountLink::LockHolder(const ItemPlace& place)
{
    if (place.itemId.empty()) return {};
    return ItemLock::Holder(store_.AccountFolder(place.database), LockName(place.folder, place.itemId));
}

std::unique_ptr<ItemReader> AccountLink::Reader(const ItemPlace& account)
{
    return std::make_unique<AccountReader>(store_, account.database, programRules_);
}

Text AccountLink::Test()
{
    const size_t count = Children({Text(kHostProvider), {}, {}, {}, {}}).size();
    const Text read = u"The folder " + FromFileName(store_.Root()) + u" can be read. It holds " +
                      (count == 1 ? Text(u"one account") : Decimal(static_cast<int64_t>(count)) + u" accounts");
    if (configuredAccount_.empty() || AccountExists(configuredAccount_)) return read + u".";
    throw Error(error_number::kPathNotFound, read + u", and " + configuredAccount_ + u" is none of them.");
}

HostLinkKinds AccountLinks(VerbPrograms programs, AccountOpened opened)
{
    const auto make = [programs = std::move(programs), opened = std::move(opened)](const HostSettings& settings,
                                                                                   const FileSaver& saver) {
        return std::make_unique<AccountLink>(settings, saver, programs, opened);
    };
    return {{u"accounts", make}};
}

} // namespace nib
