#pragma once
// How the small files of the settings meet the disk, and single values of ini files. A reader needs no lock, because a
// file is replaced as a whole; a writer reads the file again right before it writes, while it holds the file, so that
// no copy of the program undoes what another one wrote.

#include "persistence/store/ProfileFile.h"
#include "platform/posix/FileLocks.h"
#include "platform/posix/FileSaver.h"

namespace nib {

struct ProfileDisk {
    FileSaver saver;
    std::chrono::milliseconds patience{500}; ///< with another copy that has the file

    FileHold Hold(TextView path) const;
};

/// An empty file where there is none. No answer for what cannot be read or is too large to be a settings file: it must
/// not be written either.
std::optional<ProfileFile> ReadProfile(TextView path,
                                       ProfileFile::Encoding unmarked = ProfileFile::Encoding::SingleByte);
/// False when it could not be brought to disk; the old file is then still whole.
bool WriteProfile(const ProfileDisk& disk, TextView path, const ProfileFile& profile);

// A key with an empty value counts as absent. An alternate file is asked for what the file lacks; empty means that
// there is none.

/// At most 4095 characters.
Text ProfileGetString(TextView section, TextView key, TextView fallback, TextView file, TextView alternateFile = {});
/// The leading number of the value.
int32_t ProfileGetInt(TextView section, TextView key, int32_t fallback, TextView file, TextView alternateFile = {});
/// Keeps only what departs from the alternate file, or without one from the fallback; else the key goes. Failures are
/// forgotten.
void ProfileWriteString(const ProfileDisk& disk, TextView section, TextView key, TextView value, TextView fallback,
                        TextView file, TextView alternateFile = {});

} // namespace nib
