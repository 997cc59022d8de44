#include "hosts/HostConnection.h"

#include "base/Error.h"
#include "diagnostics/Guarded.h"
#include "hosts/ItemBrowser.h"
#include "hosts/StoredText.h"
#include "hosts/mvConnect.h"
#include "platform/posix/FileContent.h"
#include "platform/posix/FileName.h"

#include <algorithm>

namespace nib {

namespace {

constexpr TextView kTitle{u"Nib"};

BrowseEntry Place(TextView name, Text path)
{
    BrowseEntry entry;
    entry.name = name;
    entry.path = std::move(path);
    return entry;
}

/// Cuts the first word off.
TextView TakeWord(TextView& text)
{
    const size_t blank = text.find(u' ');
    const TextView word = text.substr(0, blank);
    text = blank == TextView::npos ? TextView() : Trim(text.substr(blank));
    return word;
}

std::vector<BrowseEntry> LocalChildren(const Text& folder)
{
    std::vector<BrowseEntry> entries;
    const Text below = folder.ends_with(u'/') ? folder : folder + u"/";
    for (const FolderEntry& found : ListFolder(ToFileName(folder))) {
        const Text name = FromFileName(found.name);
        entries.push_back(ShownAs(found, name, ComposeFilePath(below + name)));
    }
    SortEntries(entries);
    return entries;
}

Text ResolveLocal(const Text& place, TextView typed)
{
    std::string folder = ToFileName(place);
    std::string name = ToFileName(typed);
    if (name == "~" || name.starts_with("~/")) {
        folder = HomeFolder();
        name.erase(0, 2);
    } else if (!IsFolder(folder)) {
        folder = FolderOf(folder);
    }
    return ComposeFilePath(FromFileName(AbsolutePath(folder + "/" + name)));
}

} // namespace

std::vector<BrowseEntry> HostBrowser::Places()
{
    std::vector<BrowseEntry> entries;
    for (const HostSettings& host : links_.Config().hosts) {
        entries.push_back(Place(host.name, ComposeHostPath({Text(kHostProvider), host.serverName, {}, {}, {}})));
    }
    const Text home = FromFileName(HomeFolder());
    entries.push_back(Place(home, ComposeFilePath(home)));
    if (home != u"/") entries.push_back(Place(u"/", ComposeFilePath(u"/")));
    return entries;
}

std::vector<BrowseEntry> HostBrowser::Children(TextView path)
{
    const ItemPlace place = ParsePath(path);
    if (place.provider == kFileProvider) return LocalChildren(place.itemId);
    return links_.Find(place.serverName).Children(place);
}

Text HostBrowser::LockHolder(TextView path)
{
    const ItemPlace place = ParsePath(path);
    return place.provider == kFileProvider ? Text() : links_.Find(place.serverName).LockHolder(place);
}

Text HostBrowser::Parent(TextView path)
{
    if (path.empty()) return {};
    ItemPlace place = ParsePath(path);
    if (place.provider == kFileProvider) {
        const std::string name = AbsolutePath(ToFileName(place.itemId));
        return name == "/" ? Text() : ComposeFilePath(FromFileName(FolderOf(name)));
    }
    for (Text ItemPlace::*level : {&ItemPlace::itemId, &ItemPlace::folder, &ItemPlace::database}) {
        if ((place.*level).empty()) continue;
        (place.*level).clear();
        return ComposeHostPath(place);
    }
    return {};
}

Text HostBrowser::Resolve(TextView place, TextView typed)
{
    typed = Trim(typed);
    if (typed.empty()) throw Error(error_number::kBadFileName, u"No name was given.");
    if (typed.starts_with(u"mvdb:") || typed.starts_with(u"file:") || typed.starts_with(u'/')) {
        const ItemPlace named = ParsePath(typed);
        return named.provider == kFileProvider ? ResolveLocal(u"/", named.itemId) : ComposeHostPath(named);
    }
    if (place.empty() && typed.starts_with(u"~/")) return ResolveLocal(u"/", typed);
    if (place.empty()) {
        throw Error(error_number::kBadFileName, u"Choose a connection or a folder first, or type a whole path.");
    }
    ItemPlace at = ParsePath(place);
    return at.provider == kFileProvider ? ResolveLocal(at.itemId, typed) : ResolveHost(std::move(at), typed);
}

Text HostBrowser::ResolveHost(ItemPlace place, TextView typed)
{
    HostLink& link = links_.Find(place.serverName);
    TextView rest = typed;
    if (!place.folder.empty()) {
        place.itemId = typed;
        const TextView file = TakeWord(rest);
        if (!rest.empty() && !link.ItemExists(place) && link.FileExists(place.database, file)) {
            place.folder = file;
            place.itemId = rest;
        }
        return ComposeHostPath(place);
    }
    place.itemId.clear();
    if (place.database.empty()) place.database = TakeWord(rest);
    if (!rest.empty()) place.folder = TakeWord(rest);
    place.itemId = rest;
    if (!place.folder.empty() && !link.FileExists(place.database, place.folder)) {
        throw Error(error_number::kPathNotFound, u"File " + place.folder + u" does not exist in account " +
                                                     place.database + u". Type the file and the item, as in BP MAIN.");
    }
    return ComposeHostPath(place);
}

HostConnection::HostConnection(HostConfig config, PickerDialog& picker, MessageBoxes& boxes, HostLinkKinds kinds)
    : links_(std::move(config), std::move(kinds)), browser_(links_), picker_(picker), boxes_(boxes)
{
}

std::vector<KnownHost> HostConnection::Hosts()
{
    std::vector<KnownHost> hosts;
    for (const HostSettings& settings : links_.Config().hosts) {
        const ItemPlace place{Text(kHostProvider), settings.serverName, {}, {}, {}};
        KnownHost& host = hosts.emplace_back(KnownHost{settings.name, ComposeHostPath(place), {}});
        if (settings.serverName != kDefaultHost || settings.kind != kAccountsKind) continue;
        IgnoringErrors([&] {
            for (const BrowseEntry& account : links_.Find(settings.serverName).Children(place))
                host.accounts.push_back(account.name);
        });
    }
    return hosts;
}

SelectedItem HostConnection::SelectItem(const SelectRequest& request, mvItem* start)
{
    const PickerAnswer answer = RunPicker(request, start);
    if (answer.paths.empty()) return {};
    return OpenPicked(answer, answer.paths.front());
}

/// What cannot be opened is told of and left out, so that the other picks are not lost.
std::vector<SelectedItem> HostConnection::SelectItems(const SelectRequest& request, mvItem* start)
{
    const PickerAnswer answer = RunPicker(request, start);
    std::vector<SelectedItem> items;
    for (const Text& path : answer.paths) {
        SelectedItem picked = Guarded(
            DebugLog(), u"HostConnection.SelectItems", [&] { return OpenPicked(answer, path); },
            [&](const Error& error) {
                boxes_.Show(error.description, message_box::kOk | message_box::kWarning, kTitle);
                return SelectedItem{};
            });
        if (picked.item) items.push_back(std::move(picked));
    }
    return items;
}

PickerAnswer HostConnection::RunPicker(const SelectRequest& request, mvItem* start)
{
    const HostSettings& host = links_.Config().Find(u"*");
    const Text startPath =
        start ? start->Path() : ComposeHostPath({Text(kHostProvider), host.serverName, host.account, {}, {}});
    return picker_.Run(request, startPath, browser_).value_or(PickerAnswer{});
}

/// Without its lock, which whoever opens it takes: one that is open here already needs none.
SelectedItem HostConnection::OpenPicked(const PickerAnswer& answer, TextView path)
{
    return {OpenServerForPath(path, answer.readOnly, false), answer.readOnly};
}

std::shared_ptr<mvItem> HostConnection::OpenServerForPath(TextView path, bool readOnly, bool lock)
{
    ItemPlace place = ParsePath(path);
    if (place.provider == kFileProvider) return std::make_shared<FileItem>(place.itemId, readOnly, links_.Saver());
    if (place.serverName.empty()) place.serverName = u"*";
    return links_.Find(place.serverName).Open(place, readOnly, lock);
}

std::unique_ptr<ItemReader> HostConnection::Reader(const ItemPlace& account)
{
    return links_.Find(account.serverName).Reader(account);
}

} // namespace nib
