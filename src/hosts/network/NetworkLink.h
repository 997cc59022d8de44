#pragma once
#include "hosts/HostLinks.h"
#include "hosts/network/ServerItem.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace nib {

/// Where passwords come from: the desktop's store of secrets, or the user.
class Passwords {
public:
    virtual ~Passwords() = default;
    /// Nothing when the user gives none. `refused`: the one given last was wrong.
    virtual std::optional<std::string> Ask(const HostSettings& host, bool refused) = 0;
    /// The one given last was right, and may be kept if the user wished so.
    virtual void Accepted(const HostSettings& /*host*/) {}
};

/// What links to servers need of the program; all of it outlives them.
struct NetworkParts {
    WaitNotice* notice = nullptr;
    Passwords* passwords = nullptr;
    /// Asked before a password goes unencrypted to another machine; without it, it may.
    std::function<bool(const HostSettings&)> mayGoInTheClear;
    /// News of a connection; no `why`: all is well again.
    std::function<void(const Text& what, const Text& why)> tell;
    /// In place of a socket or tunnel, for tests.
    std::function<std::unique_ptr<ByteStream>()> open;
};

/// A multi-user MultiValue server that is reached over the network: one session for each account, and one more when a
/// command is run there.
class NetworkLink : public HostLink {
public:
    NetworkLink(HostSettings settings, NetworkParts parts);

    Text HostName() const override { return settings_.name; }
    std::shared_ptr<mvItem> Open(const ItemPlace& place, bool readOnly, bool lock) override;
    std::vector<BrowseEntry> Children(const ItemPlace& place) override;
    bool FileExists(TextView account, TextView file) override;
    bool ItemExists(const ItemPlace& place) override;
    Text LockHolder(const ItemPlace& place) override;
    void Look() override;
    std::unique_ptr<ItemReader> Reader(const ItemPlace& account) override;
    Text Test() override;

private:
    ServerDoor Door();
    /// The account of a place, the one that is configured where it names none.
    Text AccountOf(const ItemPlace& place) const;
    std::shared_ptr<ServerAccount> Enter(const Text& account);
    std::shared_ptr<ServerItem> Item(const ItemPlace& place);
    static Text WriteRefusal(ServerSession& session);

    HostSettings settings_;
    NetworkParts parts_;
    std::shared_ptr<std::string> password_; ///< once it was right; wiped when nobody uses it any more
    Text lastAccount_;
    std::map<Text, std::shared_ptr<ServerAccount>> accounts_; ///< by name in capitals
};

/// The kind "network".
HostLinkKinds NetworkLinks(NetworkParts parts);

} // namespace nib
