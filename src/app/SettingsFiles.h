#pragma once
#include "persistence/store/QtSettingsHive.h"
#include "persistence/store/modPersistSettings.h"
#include "platform/posix/PosixFileGuard.h"
#include "platform/posix/PosixFileStates.h"
#include "platform/posix/PosixFileTransfer.h"

#include <string>

namespace nib {

/// All that keeps settings between runs; brings the last changes to disk when it goes.
class SettingsFiles {
public:
    SettingsFiles(const std::string& backupFolder, Text programFolder);

    SettingsStore& Store() { return settings_; }

private:
    PosixFileTransfer files_;
    PosixFileGuard guard_;
    PosixFileStates states_;
    ProfileDisk disk_{files_, guard_, states_};
    QtSettingsHive hive_{disk_};
    modPersistSettings settings_;
};

} // namespace nib
