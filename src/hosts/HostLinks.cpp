#include "hosts/HostLinks.h"

#include "base/Error.h"
#include "persistence/store/Profile.h"
#include "platform/posix/FileContent.h"
#include "platform/posix/FileName.h"

#include <climits>

#include <unistd.h>

namespace nib {

namespace {

constexpr TextView kDefaultHost{u"*"};

struct KeyRow {
    TextView key;
    Text HostSettings::*member;
};

constexpr KeyRow kKeys[] = {
    {u"kind", &HostSettings::kind},       {u"charset", &HostSettings::charset}, {u"name", &HostSettings::name},
    {u"account", &HostSettings::account}, {u"address", &HostSettings::address}, {u"port", &HostSettings::port},
    {u"user", &HostSettings::user},
};

Text MachineName()
{
    char name[HOST_NAME_MAX + 1] = {};
    return gethostname(name, sizeof name - 1) == 0 ? FromUtf8(name) : Text(u"localhost");
}

std::string WithHome(const std::string& path)
{
    return path == "~" || path.starts_with("~/") ? HomeFolder() + path.substr(1) : path;
}

void SetKey(HostSettings& host, TextView key, TextView value)
{
    if (EqualsNoCase(key, u"root")) host.root = WithHome(ToFileName(value));
    for (const KeyRow& row : kKeys)
        if (EqualsNoCase(key, row.key)) host.*row.member = value;
}

HostSettings& Section(HostConfig& config, TextView name, const HostSettings& fresh)
{
    for (HostSettings& host : config.hosts)
        if (EqualsNoCase(host.serverName, name)) return host;
    config.hosts.push_back(fresh);
    config.hosts.back().serverName = name;
    return config.hosts.back();
}

} // namespace

HostConfig HostConfig::Parse(TextView text, const std::string& dataFolder)
{
    HostConfig config;
    config.backupFolder = dataFolder + "/Orlin/Nib/SaveCopies";
    HostSettings fresh;
    fresh.root = dataFolder + "/Orlin/Nib/Accounts";
    fresh.name = MachineName();
    config.hosts.push_back(fresh);
    HostSettings* host = nullptr;
    for (const Text& whole : Split(text, u'\n')) {
        const IniLine line(whole, u"#;", true);
        if (line.kind == IniLine::Kind::Section) host = &Section(config, line.name, fresh);
        if (line.kind == IniLine::Kind::Key && host) SetKey(*host, line.name, line.value);
    }
    return config;
}

HostConfig HostConfig::FromEnvironment()
{
    const std::string file = UserFolder("XDG_CONFIG_HOME", "/.config") + "/Orlin/hosts.conf";
    const bool there = StampOf(file).Exists();
    return Parse(there ? FromUtf8(ReadWholeFile(file).Bytes()) : Text(), LocalDataFolder());
}

const HostSettings& HostConfig::Find(TextView serverName) const
{
    if (serverName.empty()) serverName = kDefaultHost;
    for (const HostSettings& host : hosts)
        if (EqualsNoCase(host.serverName, serverName)) return host;
    throw Error(error_number::kPathNotFound,
                u"The host connection \"" + Text(serverName) + u"\" is not set up in hosts.conf.");
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
    if (EqualsNoCase(settings.kind, u"network"))
        throw Error(error_number::kStorage, which + u" is a network connection, which is not available.");
    throw Error(error_number::kStorage, which + u" is of the unknown kind \"" + settings.kind + u"\".");
}

} // namespace nib
