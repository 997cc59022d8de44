#pragma once
#include "persistence/store/SettingsHive.h"
#include "persistence/store/modExpandEnviron.h"

namespace nib {

/// At most 4096 characters of the value; a missing or empty one gives the fallback.
Text RegGetString(SettingsHive& hive, TextView keyPath, TextView valueName, TextView fallback,
                  const Environment& environment);
/// A value that equals a non-empty fallback is stored empty: the name stays, and reading gives the fallback.
void RegSetString(SettingsHive& hive, TextView keyPath, TextView valueName, TextView value, TextView fallback);

} // namespace nib
