#pragma once
#include "platform/hosts/AccountStore.h"
#include "platform/hosts/HostLink.h"

namespace nib {

/// The built-in host: accounts that are folders.
class AccountLink : public HostLink {
public:
    AccountLink(const HostSettings& settings, const FileSaver& saver, Text programFolder);

    Text HostName() const override { return store_.HostName(); }
    std::shared_ptr<mvItem> Open(const ItemPlace& place, bool readOnly, bool lock) override;
    std::vector<BrowseEntry> Children(const ItemPlace& place) override;
    bool FileExists(TextView account, TextView file) override;
    bool ItemExists(const ItemPlace& place) override;
    Text LockHolder(const ItemPlace& place) override;

private:
    AccountStore store_;
    Text programFolder_;
};

} // namespace nib
