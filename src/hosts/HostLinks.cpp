#include "hosts/HostLinks.h"

#include "base/Error.h"

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
    auto found = kinds_.find(ToLower(settings.kind));
    if (found != kinds_.end()) return found->second(settings, Saver());
    const Text which = u"The host connection \"" + settings.serverName + u"\"";
    if (EqualsNoCase(settings.kind, u"network"))
        throw Error(error_number::kStorage, which + u" is a network connection, which is not available.");
    throw Error(error_number::kStorage, which + u" is of the unknown kind \"" + settings.kind + u"\".");
}

} // namespace nib
