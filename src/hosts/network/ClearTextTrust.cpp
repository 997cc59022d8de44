#include "hosts/network/ClearTextTrust.h"

#include "hosts/Consent.h"

namespace nib {

namespace {

constexpr TextView kAllowed = u"AllowedClearText";

} // namespace

bool ClearTextTrust::MayGo(const HostSettings& host)
{
    const Text question = u"The password of " + host.user + u" and all items would go to " + host.address +
                          u" as plain text, which others on the way can read. A tunnel keeps them to yourselves.\n\n"
                          u"Connect all the same?";
    return Consents(store_, boxes_, kAllowed, {host.user, host.address, host.port}, question);
}

} // namespace nib
