#include "editing/SettingText.h"

#include "persistence/store/SettingsStore.h"

namespace nib {

namespace {

constexpr TextView kTrue = u"True";
constexpr TextView kFalse = u"False";

} // namespace

std::optional<bool> WordToBoolean(TextView text)
{
    text = Trim(text);
    if (EqualsNoCase(text, kTrue)) return true;
    if (EqualsNoCase(text, kFalse) || text.starts_with(u'0')) return LeadingNumber(text) != 0;
    return LeadingNumber(text) != 0 ? std::optional(true) : std::nullopt;
}

TextView BooleanWord(bool state)
{
    return state ? kTrue : kFalse;
}

} // namespace nib
