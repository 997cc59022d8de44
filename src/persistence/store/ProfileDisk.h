#pragma once
// How the small files of the settings meet the disk. A reader needs no lock, because a file is replaced as a whole; a
// writer reads the file again right before it writes, while it holds the file, so that no copy of the program undoes
// what another one wrote.

#include "persistence/store/ProfileFile.h"
#include "platform/FileGuard.h"
#include "platform/FileStates.h"
#include "platform/FileTransfer.h"

namespace nib {

struct ProfileDisk {
    FileTransfer& files;
    FileGuard& guard;
    FileStates& states;
};

/// An empty file where there is none. No answer for what cannot be read or is too large to be a settings file: it must
/// not be written either.
std::optional<ProfileFile> ReadProfile(const ProfileDisk& disk, TextView path,
                                       ProfileFile::Encoding unmarked = ProfileFile::Encoding::SingleByte);
/// False when it could not be brought to disk; the old file is then still whole.
bool WriteProfile(const ProfileDisk& disk, TextView path, const ProfileFile& profile);

} // namespace nib
