#pragma once
#include "persistence/store/SettingsStore.h"
#include "platform/MessageBoxes.h"

#include <string>
#include <vector>

namespace nib {

/// Somebody else than this user and the administrator may change one of these, files or folders.
bool OthersMayChange(const std::vector<std::string>& paths);

/// Asks before a command line is run that somebody else may have put there, once for each account and command line.
/// What was agreed to is kept with the settings.
class VerbTrust {
public:
    /// Both outlive it.
    VerbTrust(SettingsStore& store, MessageBoxes& boxes) : store_(store), boxes_(boxes) {}

    /// `account` is the folder of the account.
    bool MayRun(TextView account, TextView commandLine);

private:
    SettingsStore& store_;
    MessageBoxes& boxes_;
};

} // namespace nib
