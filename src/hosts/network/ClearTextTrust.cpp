#include "hosts/network/ClearTextTrust.h"

namespace nib {

namespace {

constexpr TextView kAllowed = u"AllowedClearText";
constexpr char16_t kRecord = u'\x1E';

} // namespace

bool ClearTextTrust::MayGo(const HostSettings& host)
{
    const Text entry = kRecord + host.user + u"@" + host.address + u":" + host.port + kRecord;
    const Text allowed = store_.Get(kAllowed, u"");
    if (allowed.find(entry) != Text::npos) return true;
    const Text question = u"The password of " + host.user + u" and all items would go to " + host.address +
                          u" as plain text, which others on the way can read. A tunnel keeps them to yourselves.\n\n"
                          u"Connect all the same?";
    const int32_t answer =
        boxes_.Show(question, message_box::kYesNo | message_box::kWarning | message_box::kSecondDefault, u"Nib");
    if (answer != message_box::kAnswerYes) return false;
    store_.Save(kAllowed, allowed + entry);
    return true;
}

} // namespace nib
