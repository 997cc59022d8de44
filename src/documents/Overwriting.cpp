#include "documents/Overwriting.h"

#include "diagnostics/Guarded.h"
#include "hosts/mvConnect.h"
#include "platform/MessageBoxes.h"

namespace nib {

namespace {

bool Refuse(const ShowBox& show, TextView text)
{
    show(text, message_box::kOk | message_box::kWarning);
    return false;
}

} // namespace

bool MayOverwrite(mvItem& item, const ShowBox& show)
{
    if (!item.IsItem())
        return Refuse(show, u"'" + item.ItemID() + u"' appears to be a file or folder and cannot be overwritten!");
    if (!item.Exists()) return true;
    if (item.ReadOnly()) {
        return Refuse(show, u"Item '" + item.ItemID() +
                                u"' exists and cannot be overwritten. Please save using a different name.");
    }
    return show(u"Item '" + item.ItemID() + u"' exists. Overwrite?", message_box::kYesNo | message_box::kQuestion) ==
           message_box::kAnswerYes;
}

bool LockToWrite(mvItem& item, const ShowBox& show)
{
    const auto failure = FailureOf([&] { item.LockItem(true); });
    if (!failure) return true;
    if (failure->number == error_number::kDeviceUnavailable) return Refuse(show, failure->description);
    const Text holder = OrDefault([&] { return item.LockHolder(); }, Text());
    return Refuse(show, u"Item '" + item.ItemID() + u"' is currently locked and cannot be updated!" + HeldBy(holder));
}

} // namespace nib
