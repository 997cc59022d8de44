#include "language/server/ClientPlaces.h"

#include "diagnostics/Guarded.h"
#include "hosts/accounts/ServerAccounts.h"
#include "platform/posix/FileContent.h"
#include "platform/posix/FileName.h"

#include <algorithm>

namespace nib {

namespace {

constexpr int32_t kDialectAttribute = 7; ///< of the record of an account
constexpr std::string_view kScheme = "file://";
constexpr std::string_view kKeptInUris = "-._~/!$&'()*+,;=@";

bool IsKept(unsigned char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
           kKeptInUris.find(static_cast<char>(c)) != std::string_view::npos;
}

bool HasVoc(const std::string& folder)
{
    return IsFolder(folder + "/VOC") || IsServerAccount(folder);
}

} // namespace

std::string ClientPlaces::FileOf(std::string_view uri)
{
    if (!uri.starts_with(kScheme)) return {};
    uri.remove_prefix(kScheme.size());
    uri = uri.substr(0, uri.find_first_of("?#"));
    const size_t root = uri.find('/'); // behind the name of this machine, if there is one
    if (root == std::string_view::npos) return {};
    uri.remove_prefix(root);
    const std::string name = PercentDecode(uri).value_or(std::string(uri));
    return name.find('\0') == std::string::npos ? AbsolutePath(name) : std::string();
}

Text ClientPlaces::AddAccount(const std::string& folder)
{
    const auto isKnown = [&](const Account& account) { return account.folder == folder; };
    if (folder == "/" || !IsFolder(folder) || std::any_of(accounts_.begin(), accounts_.end(), isKnown)) return {};
    const std::string root = FolderOf(folder);
    // Accounts of one name in several places are told apart by the folder above, in whose place a host's name stands.
    const std::optional<Text> name = DecodeName(LastPart(folder));
    if (!name) return {};
    ItemPlace place{Text(kHostProvider), FromFileName(root), *name, {}, {}};
    AccountStore store(place.serverName, root, ItemText::ForItems(Charset(), false), FileSaver({}), std::nullopt);
    accounts_.push_back({folder, place, std::move(store)});
    return ComposeHostPath(place);
}

std::vector<Text> ClientPlaces::Accounts() const
{
    std::vector<Text> paths;
    for (const Account& account : accounts_) paths.push_back(ComposeHostPath(account.place));
    return paths;
}

std::string ClientPlaces::AccountFolderOf(const std::string& file) const
{
    const std::string folder = FolderOf(FolderOf(file));
    const auto isKnown = [&](const Account& account) { return account.folder == folder; };
    const bool known = std::any_of(accounts_.begin(), accounts_.end(), isKnown);
    return known || HasVoc(folder) ? folder : std::string();
}

const ClientPlaces::Account* ClientPlaces::Find(const ItemPlace& place) const
{
    const auto found = std::find_if(accounts_.begin(), accounts_.end(), [&](const Account& account) {
        return account.place.serverName == place.serverName && account.place.database == place.database;
    });
    return found == accounts_.end() ? nullptr : &*found;
}

std::unique_ptr<ItemReader> ClientPlaces::Reader(const Text& accountPath) const
{
    const Account* account = Find(ParsePath(accountPath));
    if (!account) throw Error(error_number::kPathNotFound, u"There is no account " + accountPath + u".");
    return std::make_unique<AccountReader>(account->store, account->place.database);
}

Text ClientPlaces::DialectOf(const Text& accountPath) const
{
    const Account* account = Find(ParsePath(accountPath));
    if (!account) return {};
    const auto read = [&] { return account->store.ReadRecord(account->place.database, u"VOC", u"NIB"); };
    return Text(Trim(Attribute(OrDefault(read, Text()), kDialectAttribute)));
}

Text ClientPlaces::PathOf(const std::string& uri) const
{
    const std::string file = FileOf(uri);
    // Texts that are no files go by their URI.
    if (file.empty()) return u"file:/" + FromUtf8(uri);
    const std::string folder = FolderOf(FolderOf(file));
    for (const Account& account : accounts_) {
        if (account.folder != folder) continue;
        const std::optional<Text> fileName = DecodeName(LastPart(FolderOf(file)));
        const std::optional<Text> id = DecodeName(LastPart(file), account.store.RuleOf(folder));
        if (!fileName || !id) break;
        ItemPlace place = account.place;
        place.folder = *fileName;
        place.itemId = *id;
        return ComposeHostPath(place);
    }
    return ComposeFilePath(FromFileName(file));
}

std::string ClientPlaces::UriOf(const Text& path) const
{
    ItemPlace place = ParsePath(path);
    std::string file;
    if (place.provider == kFileProvider) {
        file = ToFileName(place.itemId);
    } else if (const Account* account = Find(place)) {
        file = account->store.ItemFile(place.database, place.folder, place.itemId);
    }
    if (file.empty()) return {};
    return std::string(kScheme) + PercentEncode(file, [](unsigned char c, size_t) { return IsKept(c); });
}

} // namespace nib
