#include "hosts/Consent.h"

#include <algorithm>

namespace nib {

namespace {

constexpr char16_t kRecord = u'\x1E';
constexpr char16_t kUnit = u'\x1F';

bool HoldsControl(TextView text)
{
    return std::any_of(text.begin(), text.end(), [](char16_t c) { return c < u' '; });
}

} // namespace

bool Consents(SettingsStore& store, MessageBoxes& boxes, TextView setting, std::initializer_list<TextView> parts,
              const Text& question)
{
    Text entry;
    for (const TextView part : parts) (entry += entry.empty() ? kRecord : kUnit) += part;
    entry += kRecord;
    // What holds a separator could bring entries of its own along, and is asked for each time.
    const bool kept = std::none_of(parts.begin(), parts.end(), HoldsControl);
    const Text allowed = store.Get(setting, u"");
    if (kept && allowed.find(entry) != Text::npos) return true;
    const int32_t answer =
        boxes.Show(question, message_box::kYesNo | message_box::kWarning | message_box::kSecondDefault, u"Nib");
    if (answer != message_box::kAnswerYes) return false;
    if (kept) store.Save(setting, allowed + entry);
    return true;
}

} // namespace nib
