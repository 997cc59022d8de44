#pragma once
#include "persistence/store/Profile.h"
#include "persistence/store/SettingsStore.h"

#include <functional>
#include <vector>

namespace nib {

/// The user's own settings, shared by all programs of the user: strings under a key path ("\" between its parts) and a
/// value name, both compared ignoring case. A string may be empty, and so may a name.
///
/// All in one UTF-8 ini file: a section a key path, a line a value. Changes are kept in memory until Flush(),
/// which lays them over what the file holds by then.
///
/// Why not a settings class of the toolkit: QSettings of Qt 6.4.2 left a hive of 0 bytes, with the status "no error",
/// when the disk ran full; lost all values behind one stray quote, and wrote the rest back without them; and did not
/// see a change by another process in one of ten cases where size and time stamp came out alike.
class HiveFile {
public:
    /// `changed` is told that there is something to flush.
    HiveFile(const ProfileDisk& disk, Text path, std::function<void()> changed = {})
        : disk_(disk), path_(std::move(path)), changed_(std::move(changed))
    {
    }

    /// No answer when there is no such value or the hive cannot be read.
    std::optional<Text> Get(TextView keyPath, TextView valueName);
    /// What cannot be brought to disk is kept for this run.
    void Set(TextView keyPath, TextView valueName, TextView text);
    void TellTrouble(const std::function<void(TextView why)>& trouble) { disk_.trouble = trouble; }
    /// True when nothing is left to be written. What could not be written is tried again with the next change.
    bool Flush();

private:
    struct Change {
        Text section;
        Text key;
        Text value;
    };

    const Text* FindChange(TextView section, TextView key) const;
    void Refresh();

    ProfileDisk disk_;
    Text path_;
    std::function<void()> changed_;
    std::vector<Change> changes_; ///< not written yet
    ProfileFile seen_;            ///< the file as it was in `seenState_`
    std::optional<FileStamp> seenState_;
};

/// A name or value as it stands in the file: what an ini file cannot hold becomes %uXXXX, a UTF-16 unit each.
Text EncodeHiveName(TextView name);
Text EncodeHiveValue(TextView value);
Text DecodeHiveValue(TextView line);

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

    void Flush() override;
    void TellTrouble(const std::function<void(TextView why)>& trouble) override;

    /// Why the switch file cannot be read, which then counts as missing; empty when there is no reason.
    Text SwitchFileFault() const;
    /// Reads the switch file and makes the folders, once. Get and Save do so themselves.
    void InitPersistSettings();
    /// Both end in "/".
    const Text& AppDataDirectory() const { return appDataDirectory_; }
    const Text& UserDataDirectory() const { return userDataDirectory_; }

private:
    Text SwitchFile() const;
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
