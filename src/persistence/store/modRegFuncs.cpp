#include "persistence/store/modRegFuncs.h"

namespace nib {

namespace {

constexpr size_t kLongestValue = 4096;
constexpr size_t kLongestExpansion = 8192;

} // namespace

Text RegGetString(SettingsHive& hive, TextView keyPath, TextView valueName, TextView fallback,
                  const Environment& environment)
{
    const std::optional<SettingsHive::String> stored = hive.Get(keyPath, valueName);
    Text text = stored ? stored->text.substr(0, kLongestValue) : Text();
    if (stored && stored->expandable) {
        Text expanded = ExpandKnownEnviron(text, environment).substr(0, kLongestExpansion);
        if (!expanded.empty()) text = std::move(expanded);
    }
    return text.empty() ? Text(fallback) : text;
}

void RegSetString(SettingsHive& hive, TextView keyPath, TextView valueName, TextView value, TextView fallback)
{
    const bool isDefault = !fallback.empty() && value == fallback;
    hive.Set(keyPath, valueName, isDefault ? TextView() : value);
}

} // namespace nib
