#pragma once
#include "editing/MvEdit.h"

namespace nib {

/// Brings what another version of the program stored to this one's form. True when it has loaded all settings and
/// written them.
bool MigrateSettings(MvEdit& settings, const SettingsContext& context, float storedVersion);

} // namespace nib
