#include "platform/hosts/HostLinks.h"

#include "base/Error.h"
#include "platform/hosts/AccountLink.h"

namespace nib {

HostLink& HostLinks::Find(TextView serverName)
{
    const HostSettings& settings = config_.Find(serverName);
    std::unique_ptr<HostLink>& link = links_[settings.serverName];
    if (!link) link = Make(settings);
    return *link;
}

std::unique_ptr<HostLink> HostLinks::Make(const HostSettings& settings) const
{
    if (EqualsNoCase(settings.kind, u"accounts")) {
        return std::make_unique<AccountLink>(settings, Saver(), programs_);
    }
    const Text which = u"The host connection \"" + settings.serverName + u"\"";
    if (!EqualsNoCase(settings.kind, u"network")) {
        throw Error(error_number::kStorage, which + u" is of the unknown kind \"" + settings.kind + u"\".");
    }
    if (!network_) throw Error(error_number::kStorage, which + u" is a network connection, which is not available.");
    return network_(settings);
}

} // namespace nib
