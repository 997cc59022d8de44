#pragma once
#include "hosts/HostLinks.h"
#include "hosts/accounts/AccountStore.h"
#include "hosts/accounts/VerbPrograms.h"

namespace nib {

/// The built-in host: accounts that are folders.
class AccountLink : public HostLink {
public:
    AccountLink(const HostSettings& settings, const FileSaver& saver, VerbPrograms programs);

    Text HostName() const override { return store_.HostName(); }
    std::shared_ptr<mvItem> Open(const ItemPlace& place, bool readOnly, bool lock) override;
    std::vector<BrowseEntry> Children(const ItemPlace& place) override;
    bool FileExists(TextView account, TextView file) override;
    bool ItemExists(const ItemPlace& place) override;
    Text LockHolder(const ItemPlace& place) override;

private:
    bool AccountExists(TextView account) const;
    /// The account that a place without one is in, as a server puts a session into one: what is configured, else the
    /// one used last, else the only one there is. Empty when none of them exists.
    Text DefaultAccount();

    AccountStore store_;
    Text configuredAccount_;
    Text lastAccount_;
    VerbPrograms programs_;
};

/// The kind "accounts"; verbs run with `programs`.
HostLinkKinds AccountLinks(VerbPrograms programs);

} // namespace nib
