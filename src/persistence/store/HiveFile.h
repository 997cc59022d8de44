#pragma once
#include "persistence/store/Profile.h"

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

} // namespace nib
