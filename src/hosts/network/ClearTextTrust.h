#pragma once
#include "hosts/HostLinks.h"
#include "persistence/store/SettingsStore.h"
#include "platform/MessageBoxes.h"

namespace nib {

/// Warns before a password goes unencrypted to another machine, once for each server and user. What was agreed to is
/// kept with the settings.
class ClearTextTrust {
public:
    /// Both outlive it.
    ClearTextTrust(SettingsStore& store, MessageBoxes& boxes) : store_(store), boxes_(boxes) {}

    bool MayGo(const HostSettings& host);

private:
    SettingsStore& store_;
    MessageBoxes& boxes_;
};

} // namespace nib
