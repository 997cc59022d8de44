#include "hosts/network/NetworkLink.h"

#include "diagnostics/Guarded.h"
#include "hosts/CommandWords.h"
#include "hosts/network/ServerReader.h"
#include "platform/posix/FileName.h"

#include <algorithm>

#include <string.h>

namespace nib {

namespace {

constexpr std::chrono::milliseconds kConnectLimit{10'000};
constexpr TextView kUsualPort{u"4243"};
constexpr int32_t kMostPort = 65535;
const std::string kVoc = "VOC";
constexpr TextView kDictionary{u"DICT "};
constexpr TextView kOwnAddresses[] = {u"localhost", u"::1", u"ip6-localhost"};
constexpr TextView kOwnNetwork{u"127."};

bool IsThisMachine(const Text& address)
{
    return address.starts_with(kOwnNetwork) || std::any_of(std::begin(kOwnAddresses), std::end(kOwnAddresses),
                                                           [&](TextView own) { return EqualsNoCase(own, address); });
}

Text PortOf(const HostSettings& settings)
{
    return settings.port.empty() ? Text(kUsualPort) : settings.port;
}

/// %h and %p in the words of a tunnel are address and port.
std::vector<Text> TunnelWords(const HostSettings& settings)
{
    std::vector<Text> words = SplitProgramLine(settings.tunnel);
    for (Text& word : words) {
        for (const auto& [sign, value] : {std::pair(u"%h", settings.address), std::pair(u"%p", PortOf(settings))})
            for (size_t at = word.find(sign); at != Text::npos; at = word.find(sign, at + value.size()))
                word.replace(at, 2, value);
    }
    return words;
}

std::shared_ptr<std::string> Secret(std::string text)
{
    return {new std::string(std::move(text)), [](std::string* secret) {
                explicit_bzero(secret->data(), secret->size());
                delete secret;
            }};
}

BrowseEntry Entry(const Text& name, const ItemPlace& place, bool isItem)
{
    BrowseEntry entry;
    entry.name = name;
    entry.path = ComposeHostPath(place);
    entry.isItem = isItem;
    return entry;
}

} // namespace

NetworkLink::NetworkLink(HostSettings settings, NetworkParts parts)
    : settings_(std::move(settings)), parts_(std::move(parts))
{
    if (settings_.address.empty())
        throw Error(error_number::kStorage, u"The host connection \"" + settings_.serverName + u"\" names no address.");
    const int32_t port = ToInt(PortOf(settings_));
    if (port < 1 || port > kMostPort || Decimal(port) != PortOf(settings_))
        throw Error(error_number::kStorage, u"\"" + settings_.port + u"\" is no port: a number from 1 to 65535.");
    CharsetOf(settings_);
}

/// Sessions may outlive the link, which goes first at the end: then nobody is asked or told any more.
ServerDoor NetworkLink::Door()
{
    ServerDoor door;
    door.hostName = settings_.name;
    door.user = ToFileName(settings_.user);
    const HostSettings settings = settings_;
    const NetworkParts parts = parts_;
    door.open = [settings, parts](const WaitStep& step) -> std::unique_ptr<ByteStream> {
        if (parts.open) return parts.open();
        if (!settings.tunnel.empty()) return ConnectCommand(TunnelWords(settings));
        return ConnectTcp(settings.address, PortOf(settings), kConnectLimit, step);
    };
    if (!password_) password_ = Secret({});
    door.password = [settings, parts, known = password_](bool refused) -> std::optional<std::string> {
        if (!refused && !known->empty()) return *known;
        const bool inTheClear = settings.tunnel.empty() && !IsThisMachine(settings.address);
        if (inTheClear && parts.mayGoInTheClear && !parts.mayGoInTheClear(settings)) return std::nullopt;
        if (!parts.passwords) return std::nullopt;
        std::optional<std::string> answer = parts.passwords->Ask(settings, refused);
        if (answer) {
            explicit_bzero(known->data(), known->size()); // which a longer one leaves behind
            *known = *answer;
        }
        return answer;
    };
    door.accepted = [settings, parts] {
        if (parts.passwords) parts.passwords->Accepted(settings);
    };
    door.tell = parts.tell;
    return door;
}

Text NetworkLink::AccountOf(const ItemPlace& place) const
{
    if (!place.database.empty() && place.database != kAnyAccount) return place.database;
    return settings_.account.empty() ? lastAccount_ : settings_.account;
}

std::shared_ptr<ServerAccount> NetworkLink::Enter(const Text& account)
{
    if (account.empty()) throw Error(error_number::kPathNotFound, u"No account of " + settings_.name + u" is named.");
    std::shared_ptr<ServerAccount>& entered = accounts_[ToUpper(account)];
    if (!entered) {
        const ItemText coding = ItemText::ForServer(CharsetOf(settings_), !settings_.charset.empty());
        ServerDoor commands = Door();
        commands.tell = nullptr; // no lock goes with it, and the next command makes another one
        entered.reset(new ServerAccount{
            {Door(), account, parts_.notice}, {std::move(commands), account, parts_.notice}, coding, {}});
    }
    lastAccount_ = account;
    return entered;
}

std::shared_ptr<ServerItem> NetworkLink::Item(const ItemPlace& place)
{
    const Text account = AccountOf(place);
    const bool above = account.empty() && place.itemId.empty();
    return std::make_shared<ServerItem>(above ? nullptr : Enter(account),
                                        HostItemNames(place, account, settings_.name));
}

std::shared_ptr<mvItem> NetworkLink::Open(const ItemPlace& place, bool readOnly, bool lock)
{
    auto item = Item(place);
    if (lock && !readOnly && item->IsItem()) item->LockItem(true);
    item->SetReadOnly(readOnly);
    return item;
}

std::vector<BrowseEntry> NetworkLink::Children(const ItemPlace& place)
{
    std::vector<BrowseEntry> entries;
    ItemPlace child = place;
    if (place.database.empty()) {
        // A server has no list of its accounts for everybody.
        std::vector<Text> names{settings_.account};
        for (const auto& [name, account] : accounts_) names.push_back(account->items.Account());
        for (const Text& name : names) {
            child.database = name;
            if (!name.empty()) entries.push_back(Entry(name, child, false));
        }
        SortEntries(entries);
        const auto same = [](auto& a, auto& b) { return EqualsNoCase(a.name, b.name); };
        entries.erase(std::unique(entries.begin(), entries.end(), same), entries.end());
        return entries;
    }
    ServerSession& session = Enter(place.database)->items;
    const ServerWait::Scope scope(session.Wait(), u"Listing " + place.database + u" " + place.folder);
    if (!place.folder.empty()) {
        for (const std::string& id : session.ItemIds(ToFileName(place.folder))) {
            child.itemId = FromFileName(id);
            entries.push_back(Entry(child.itemId, child, true));
        }
        SortEntries(entries);
        return entries;
    }
    const std::vector<std::string> files = session.Files();
    for (const TextView before : {TextView(), kDictionary}) {
        for (const std::string& file : files) {
            child.folder = Text(before) + FromFileName(file);
            entries.push_back(Entry(child.folder, child, false));
        }
    }
    return entries;
}

bool NetworkLink::FileExists(TextView account, TextView file)
{
    if (account.empty() || file.empty()) return false;
    ServerSession& session = Enter(Text(account))->items;
    const ServerWait::Scope scope(session.Wait(), u"Looking for " + Text(file));
    return session.HasFile(ToFileName(file));
}

bool NetworkLink::ItemExists(const ItemPlace& place)
{
    return !place.itemId.empty() && Item(place)->Exists();
}

Text NetworkLink::LockHolder(const ItemPlace& place)
{
    return place.itemId.empty() ? Text() : Item(place)->LockHolder();
}

void NetworkLink::Look()
{
    for (auto& [name, account] : accounts_) {
        for (ServerSession* session : {&account->items, &account->commands}) session->Look();
        const auto held = account->holders; // which changes meanwhile
        for (const auto& [key, item] : held)
            if (const auto now = account->holders.find(key); now != account->holders.end() && now->second == item)
                item->LockAgain();
    }
}

std::unique_ptr<ItemReader> NetworkLink::Reader(const ItemPlace& account)
{
    const std::shared_ptr<ServerAccount> entered = Enter(AccountOf(account));
    {
        // On its own thread it can ask nobody for the password.
        const ServerWait::Scope scope(entered->items.Wait(), u"Entering " + entered->items.Account());
        entered->items.HasFile(kVoc);
    }
    ServerDoor door = Door();
    door.password = [known = Secret(*password_)](bool refused) {
        return refused ? std::nullopt : std::optional(*known);
    };
    door.accepted = nullptr;
    door.tell = nullptr;
    return std::make_unique<ServerReader>(std::move(door), entered->items.Account(), entered->coding,
                                          ProgramRulesOf(settings_));
}

Text NetworkLink::Test()
{
    ServerSession& session = Enter(AccountOf({}))->items;
    const ServerWait::Scope scope(session.Wait(), u"Testing the connection");
    const Text refusal = WriteRefusal(session);
    const Text in =
        u"The server " + settings_.name + u" lets user " + settings_.user + u" into account " + session.Account();
    if (refusal.empty()) return in + u".";
    throw Error(error_number::kPermissionDenied, in + u", but to read alone: " + refusal + u".");
}

/// Why the user may not write, which shows by what nothing comes of: an item that is not there is locked, so that
/// nobody makes it meanwhile, and deleted.
Text NetworkLink::WriteRefusal(ServerSession& session)
{
    const std::string id = "NIB." + RandomSuffix() + RandomSuffix();
    const ServerReply found = session.OnItem(kVoc, ServerAction::ReadLocked, id);
    if (found.result != ServerResult::NotFound) return ServerRefusal(found);
    const ServerReply reply = session.OnItem(kVoc, ServerAction::Delete, id);
    session.Release(kVoc, id, session.Login());
    return reply.result == ServerResult::Done ? Text() : ServerRefusal(reply);
}

HostLinkKinds NetworkLinks(NetworkParts parts)
{
    return {{u"network", [parts = std::move(parts)](const HostSettings& settings, const FileSaver&) {
                 return std::make_unique<NetworkLink>(settings, parts);
             }}};
}

} // namespace nib
