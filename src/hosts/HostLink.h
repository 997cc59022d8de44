#pragma once
#include "hosts/HostConfig.h"
#include "hosts/ItemBrowser.h"
#include "platform/posix/FileSaver.h"

#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace nib {

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
    virtual Text LockHolder(const ItemPlace& place) = 0;
};

/// Makes the link of a connection, which writes with the saver. Throws Error when it cannot.
using HostLinkFactory = std::function<std::unique_ptr<HostLink>(const HostSettings&, const FileSaver&)>;
/// By the kind that hosts.conf names, in lower case.
using HostLinkKinds = std::map<Text, HostLinkFactory>;

} // namespace nib
