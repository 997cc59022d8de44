#pragma once
#include "persistence/store/Profile.h"
#include "persistence/store/SettingsHive.h"
#include "persistence/store/SettingsStore.h"
#include "persistence/store/modExpandEnviron.h"

namespace nib {

/// Where settings live: the user's hive, a private ini file or nowhere, as the switch file "isolation.ini" beside the
/// program says. Callers speak of key paths and value names in every mode.
class modPersistSettings : public SettingsStore {
public:
    static constexpr int16_t kHive = 1;
    static constexpr int16_t kIniFile = 2;

    modPersistSettings(SettingsHive& hive, const ProfileDisk& disk, Text programFolder, Environment environment);

    Text Get(TextView valueName, TextView fallback) override
    {
        return GetPersistSetting(kSettingsKey, valueName, fallback);
    }
    void Save(TextView valueName, TextView value, TextView fallback = {}) override
    {
        SavePersistSetting(kSettingsKey, valueName, value, fallback);
    }

    Text GetPersistSetting(TextView keyPath, TextView valueName, TextView fallback);
    void SavePersistSetting(TextView keyPath, TextView valueName, TextView value, TextView fallback = {});

    /// Reads the switch file and makes the folders, once. Get and Save do so themselves.
    void InitPersistSettings();
    /// Every value but kHive and kIniFile means that nothing is kept.
    int16_t PersistMode() const { return persistMode_; }
    /// Both end in "/".
    const Text& AppDataDirectory() const { return appDataDirectory_; }
    const Text& UserDataDirectory() const { return userDataDirectory_; }
    const Text& AppStateFile() const { return appStateFile_; }

    static Text KeyPathToSection(TextView keyPath);
    static Text ValueNameToKey(TextView name);
    /// The folder that a path of the switch file means, made when it is missing; the program's folder when it cannot
    /// be.
    /// "\" is read as "/". A path that begins neither with "/" nor with "./" or "../" is one of the current folder.
    Text ResolveDataDirectory(TextView path) const;

private:
    Text Switch(TextView key, TextView fallback) const;
    void CreateStateFile() const;

    SettingsHive& hive_;
    ProfileDisk disk_;
    Text programFolder_;
    Environment environment_;
    bool initialised_ = false;
    int16_t persistMode_ = 0;
    Text appDataDirectory_;
    Text userDataDirectory_;
    Text appStateFile_;
};

} // namespace nib
