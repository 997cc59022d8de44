#pragma once
#include "persistence/store/HiveFile.h"
#include "persistence/store/SettingsStore.h"

#include <functional>

namespace nib {

/// Anchors a path that begins with "./" or "../" at `baseFolder` and resolves ".." in it; what stands before the first
/// "/" is never removed, so that ".." ends at the root. A path of any other form stays relative.
Text DotToAbsPath(TextView path, TextView baseFolder);

/// Answers the value of an environment variable, nothing when it is not set.
using Environment = std::function<std::optional<Text>(TextView)>;

/// "%NAME%" becomes the variable's value, or nothing when it is not set.
Text ExpandEnviron(TextView text, const Environment& environment);

/// Where settings live: the user's hive, a private ini file or nowhere, as the switch file "isolation.ini" beside the
/// program says.
class modPersistSettings : public SettingsStore {
public:
    modPersistSettings(HiveFile& hive, const ProfileDisk& disk, Text programFolder, Environment environment)
        : hive_(hive), disk_(disk), programFolder_(std::move(programFolder)), environment_(std::move(environment))
    {
    }

    Text Get(TextView valueName, TextView fallback) override;
    void Save(TextView valueName, TextView value, TextView fallback = {}) override;

    /// Reads the switch file and makes the folders, once. Get and Save do so themselves.
    void InitPersistSettings();
    /// Both end in "/".
    const Text& AppDataDirectory() const { return appDataDirectory_; }
    const Text& UserDataDirectory() const { return userDataDirectory_; }

private:
    Text Switch(TextView key, TextView fallback) const;
    Text ResolveDataDirectory(TextView path) const;
    void CreateStateFile() const;

    HiveFile& hive_;
    ProfileDisk disk_;
    Text programFolder_;
    Environment environment_;
    bool initialised_ = false;
    int32_t persistMode_ = 0;
    Text appDataDirectory_;
    Text userDataDirectory_;
    Text appStateFile_;
};

} // namespace nib
