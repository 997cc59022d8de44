#pragma once
#include "base/Text.h"
#include "hosts/ItemBrowser.h"
#include "hosts/ItemReader.h"
#include "hosts/TextCoding.h"
#include "platform/posix/FileSaver.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace nib {

/// The default connection.
inline constexpr TextView kDefaultHost{u"*"};
inline constexpr TextView kAccountsKind{u"accounts"};
inline constexpr TextView kNetworkKind{u"network"};

/// One host connection.
struct HostSettings {
    Text serverName = u"*"; ///< its section; "*" is the default connection
    Text kind{kAccountsKind};
    std::string root; ///< folder of the accounts
    Text charset;     ///< empty: Latin-1 for reading, UTF-8 for new items
    Text name;        ///< for the user to read; the machine, or the address of a server, where none is given
    Text account;     ///< where pickers begin when nothing else is known
    Text address;     ///< network: host and port, user
    Text port;
    Text user;                  ///< the login name where none is given
    Text tunnel;                ///< network: a command whose input and output lead to the server; empty: none
    Text ids;                   ///< how ids stand in names of files: "plain", "escaped", or empty, as the root tells
    Text dialect;               ///< of the programs; empty: the user's choice
    Text include;               ///< files that included items are looked for in, between commas
    Text ignore;                ///< codes of findings that are not told, the same
    std::map<Text, Text> verbs; ///< command lines by the verb in capitals, before those of VOC
    Text color;                 ///< of its documents; by its name or as #RRGGBB, empty: none
    std::map<Text, Text> accountColors;  ///< of accounts that have one of their own, by the account in capitals
    Text history;                        ///< "no": what is saved leaves no version
    std::map<Text, Text> accountHistory; ///< the same of single accounts, by the account in capitals

    friend bool operator==(const HostSettings&, const HostSettings&) = default;
};

/// The host connections, from sections of hosts.conf:
///
///     [*]
///     root=/srv/accounts
///     charset=windows-1252
///     account=DEMO
///
/// Keys and section names ignore case; a line that begins with "#" or ";" is a comment. The default connection is
/// there even without a section.
struct HostConfig {
    std::vector<HostSettings> hosts; ///< the default connection first
    std::string defaultRoot;         ///< of connections that name none
    std::string backupFolder;        ///< for old contents while a file is written in place
    Text fault;                      ///< why the file could not be read, for the user; then all is as without one

    /// A relative root is taken from the folder of the file, `configFolder`.
    static HostConfig Parse(TextView text, const std::string& dataFolder, const std::string& configFolder = "/");
    /// From $XDG_CONFIG_HOME/Orlin/hosts.conf and $XDG_DATA_HOME. Whatever that file is, it does not throw.
    static HostConfig FromEnvironment();
    /// Throws kPathNotFound for a connection that is not configured. An empty name is the default one.
    const HostSettings& Find(TextView serverName) const;
    /// What tells documents of the account from others; empty where there is none.
    Text ColorOf(TextView serverName, TextView account) const;
    /// What is saved there leaves a version.
    bool KeepsHistory(TextView serverName, TextView account) const;
    /// Those with a login at a server that no connection of `later` has.
    std::vector<HostSettings> LoginsGone(const HostConfig& later) const;
};

/// The account of a path that serves every session.
inline constexpr TextView kAnyAccount{u"*"};
/// What an item of an account is called, or a place above it. A path that leaves the account to the session is in
/// `sessionAccount`, which is empty when there is none.
ItemNames HostItemNames(ItemPlace place, const Text& sessionAccount, const Text& hostName);
/// What the connection says of programs, as ItemReader tells it.
inline Text ProgramRulesOf(const HostSettings& settings)
{
    return u"include=" + settings.include + u"\nignore=" + settings.ignore;
}
/// The connection's rules for bytes and characters. Throws Error for a character set that is not known.
Charset CharsetOf(const HostSettings& settings);

/// The way to one host: what HostConnection and HostBrowser want of a kind of link. Places given to it are its own.
class HostLink {
public:
    virtual ~HostLink() = default;
    virtual Text HostName() const = 0;
    virtual std::shared_ptr<mvItem> Open(const ItemPlace& place, bool readOnly, bool lock) = 0;
    /// The places one level below, sorted.
    virtual std::vector<BrowseEntry> Children(const ItemPlace& place) = 0;
    virtual bool FileExists(TextView account, TextView file) = 0;
    virtual bool ItemExists(const ItemPlace& place) = 0;
    /// Who holds the item's lock, empty when nobody does.
    virtual Text LockHolder(const ItemPlace& /*place*/) { return {}; }
    /// From time to time: to notice a connection that was lost, and to take locks again once there is another.
    virtual void Look() {}
    /// Tries it, for the user who sets the connection up. Says in words how far it can be used; throws Error, in
    /// words, where that is not all the way.
    virtual Text Test() { return {}; }
    /// For a search in all items of an account.
    virtual std::unique_ptr<ItemReader> Reader(const ItemPlace& account) { return RefuseReader(account); }
};

/// Makes the link of a connection, which writes with the saver. Throws Error when it cannot.
using HostLinkFactory = std::function<std::unique_ptr<HostLink>(const HostSettings&, const FileSaver&)>;
/// By the kind that hosts.conf names, in lower case.
using HostLinkKinds = std::map<Text, HostLinkFactory>;

/// The links of all configured connections, each made when it is first used.
class HostLinks {
public:
    HostLinks(HostConfig config, HostLinkKinds kinds) : config_(std::move(config)), kinds_(std::move(kinds)) {}

    const HostConfig& Config() const { return config_; }
    FileSaver Saver() const { return FileSaver(config_.backupFolder); }
    HostLink& Find(TextView serverName);
    /// In place of the present configuration. Connections whose settings stay are kept; items of the others keep what
    /// they were opened with.
    void Take(HostConfig config);
    /// Throws Error for settings that no link can be made of.
    void Check(const HostSettings& settings) const { Make(settings); }
    /// Tries a link of its own, as HostLink::Test.
    Text Test(const HostSettings& settings) const { return Make(settings)->Test(); }
    /// At those that are in use.
    void Look()
    {
        for (auto& [name, link] : links_)
            if (link) link->Look();
    }

private:
    std::unique_ptr<HostLink> Make(const HostSettings& settings) const;

    HostConfig config_;
    HostLinkKinds kinds_;
    std::map<Text, std::unique_ptr<HostLink>> links_;
};

} // namespace nib
