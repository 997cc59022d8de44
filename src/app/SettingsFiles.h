#pragma once
#include "persistence/store/QtSettingsHive.h"
#include "persistence/store/modPersistSettings.h"

#include <string>

namespace nib {

/// All that keeps settings between runs; brings the last changes to disk when it goes.
class SettingsFiles {
public:
    SettingsFiles(const std::string& backupFolder, Text programFolder);

    SettingsStore& Store() { return settings_; }

private:
    ProfileDisk disk_;
    QtSettingsHive hive_{disk_};
    modPersistSettings settings_;
};

} // namespace nib
