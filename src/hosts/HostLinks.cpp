#include "hosts/HostLinks.h"

#include "base/Error.h"
#include "diagnostics/Guarded.h"
#include "hosts/HostsFile.h"
#include "persistence/store/Profile.h"
#include "platform/posix/FileContent.h"
#include "platform/posix/FileName.h"
#include "platform/posix/Process.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <unordered_map>

namespace nib {

namespace {

struct KeyRow {
    TextView key;
    Text HostSettings::*member;
};

constexpr KeyRow kKeys[] = {
    {u"kind", &HostSettings::kind},       {u"charset", &HostSettings::charset}, {u"name", &HostSettings::name},
    {u"account", &HostSettings::account}, {u"address", &HostSettings::address}, {u"port", &HostSettings::port},
    {u"user", &HostSettings::user},       {u"tunnel", &HostSettings::tunnel},   {u"ids", &HostSettings::ids},
    {u"dialect", &HostSettings::dialect}, {u"include", &HostSettings::include}, {u"ignore", &HostSettings::ignore},
    {u"color", &HostSettings::color},     {u"history", &HostSettings::history},
};

/// Keys that end in a name, which is kept in capitals.
struct NamedKeyRow {
    TextView beginning;
    std::map<Text, Text> HostSettings::*member;
};

constexpr NamedKeyRow kNamedKeys[] = {{u"verb.", &HostSettings::verbs},
                                      {u"color.", &HostSettings::accountColors},
                                      {u"history.", &HostSettings::accountHistory}};

/// Never in the folder that the program happens to work in.
std::string RootOf(TextView value, const std::string& configFolder)
{
    const std::string path = ToFileName(value);
    if (path == "~" || path.starts_with("~/")) return HomeFolder() + path.substr(1);
    return AbsolutePath(path.starts_with('/') ? path : configFolder + "/" + path);
}

void SetKey(HostSettings& host, TextView key, TextView value, const std::string& configFolder)
{
    if (EqualsNoCase(key, u"root") && !value.empty()) host.root = RootOf(value, configFolder);
    for (const KeyRow& row : kKeys)
        if (EqualsNoCase(key, row.key)) host.*row.member = value;
    for (const NamedKeyRow& row : kNamedKeys)
        if (key.size() > row.beginning.size() && StartsWithNoCase(key, row.beginning))
            (host.*row.member)[ToUpper(key.substr(row.beginning.size()))] = value;
}

/// What depends on other keys.
void FillIn(HostSettings& host)
{
    const bool elsewhere = EqualsNoCase(host.kind, kNetworkKind);
    if (host.name.empty()) host.name = elsewhere && !host.address.empty() ? host.address : FromUtf8(MachineName());
    const char* login = std::getenv("USER");
    if (elsewhere && host.user.empty() && login) host.user = FromFileName(login);
}

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

} // namespace

ItemNames HostItemNames(ItemPlace place, const Text& sessionAccount, const Text& hostName)
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

Charset CharsetOf(const HostSettings& settings)
{
    return settings.charset.empty() ? Charset() : Charset(settings.charset);
}

HostConfig HostConfig::Parse(TextView text, const std::string& dataFolder, const std::string& configFolder)
{
    HostConfig config;
    config.backupFolder = dataFolder + "/Orlin/Nib/SaveCopies";
    config.defaultRoot = dataFolder + "/Orlin/Nib/Accounts";
    HostSettings fresh;
    fresh.root = config.defaultRoot;
    config.hosts.push_back(fresh);
    // By name in lower case: there may be many.
    std::unordered_map<Text, size_t> sections{{Text(kDefaultHost), 0}};
    std::optional<size_t> host;
    for (const Text& whole : Split(text, u'\n')) {
        const IniLine line(whole, u"#;", true);
        if (line.kind == IniLine::Kind::Section) {
            host = sections.try_emplace(ToLower(line.name), config.hosts.size()).first->second;
            if (*host == config.hosts.size()) config.hosts.emplace_back(fresh).serverName = line.name;
        }
        if (line.kind == IniLine::Kind::Key && host) SetKey(config.hosts[*host], line.name, line.value, configFolder);
    }
    for (HostSettings& made : config.hosts) FillIn(made);
    return config;
}

HostConfig HostConfig::FromEnvironment()
{
    const std::string file = HostsFile::UsualPath();
    Text text;
    const std::optional<Error> failure = FailureOf([&] { text = FromUtf8(HostsFile::BytesAt(file)); });
    HostConfig config = Parse(text, LocalDataFolder(), FolderOf(file));
    if (failure) config.fault = failure->description + u"\nOnly the default connection can be used.";
    return config;
}

const HostSettings& HostConfig::Find(TextView serverName) const
{
    if (serverName.empty()) serverName = kDefaultHost;
    for (const HostSettings& host : hosts)
        if (EqualsNoCase(host.serverName, serverName)) return host;
    throw Error(error_number::kPathNotFound,
                u"The host connection \"" + Text(serverName) + u"\" is not set up in hosts.conf.");
}

Text HostConfig::ColorOf(TextView serverName, TextView account) const
{
    return OrDefault(
        [&] {
            const HostSettings& host = Find(serverName);
            const auto own = host.accountColors.find(ToUpper(account));
            return own == host.accountColors.end() ? host.color : own->second;
        },
        Text());
}

bool HostConfig::KeepsHistory(TextView serverName, TextView account) const
{
    return OrDefault(
        [&] {
            const HostSettings& host = Find(serverName);
            const auto own = host.accountHistory.find(ToUpper(account));
            return !EqualsNoCase(own == host.accountHistory.end() ? host.history : own->second, u"no");
        },
        true);
}

std::vector<HostSettings> HostConfig::LoginsGone(const HostConfig& later) const
{
    std::vector<HostSettings> gone;
    for (const HostSettings& host : hosts) {
        const auto same = [&](const HostSettings& other) {
            return other.address == host.address && other.port == host.port && other.user == host.user;
        };
        if (!host.address.empty() && std::none_of(later.hosts.begin(), later.hosts.end(), same)) gone.push_back(host);
    }
    return gone;
}

void HostLinks::Take(HostConfig config)
{
    const auto find = [](const HostConfig& in, const Text& name) {
        const auto found = std::find_if(in.hosts.begin(), in.hosts.end(),
                                        [&](const HostSettings& host) { return host.serverName == name; });
        return found == in.hosts.end() ? std::nullopt : std::optional(*found);
    };
    const auto works = [&](const HostConfig& in, const Text& name) {
        auto settings = find(in, name);
        if (!settings) return settings;
        settings->color.clear(); // no link looks at colours
        settings->accountColors.clear();
        settings->history.clear(); // or at versions
        settings->accountHistory.clear();
        return settings;
    };
    std::erase_if(links_, [&](const auto& link) { return works(config, link.first) != works(config_, link.first); });
    config_ = std::move(config);
}

HostLink& HostLinks::Find(TextView serverName)
{
    const HostSettings& settings = config_.Find(serverName);
    std::unique_ptr<HostLink>& link = links_[settings.serverName];
    if (!link) link = Make(settings);
    return *link;
}

std::unique_ptr<HostLink> HostLinks::Make(const HostSettings& settings) const
{
    auto found = kinds_.find(ToLower(settings.kind));
    if (found != kinds_.end()) return found->second(settings, Saver());
    const Text which = u"The host connection \"" + settings.serverName + u"\"";
    throw Error(error_number::kStorage, which + u" is of the unknown kind \"" + settings.kind + u"\".");
}

} // namespace nib
