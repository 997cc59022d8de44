#include "persistence/store/ProfileDisk.h"

#include "persistence/store/modFileExist.h"

#include <array>

namespace nib {

namespace {

constexpr int64_t kLargestProfile = 16 << 20;
constexpr int32_t kFileMissing = 2;
constexpr int32_t kPathMissing = 3;

} // namespace

std::optional<ProfileFile> ReadProfile(const ProfileDisk& disk, TextView path, ProfileFile::Encoding unmarked)
{
    if (disk.states.StateOf(path).size > kLargestProfile) return std::nullopt;
    const FileTransfer::Handle file = disk.files.OpenFile(path, FileTransfer::Access::Read);
    if (file == 0) {
        const int32_t error = disk.files.LastError();
        const bool missing = error == kFileMissing || error == kPathMissing;
        return missing && !PathExists(disk.states, path) ? std::optional(ProfileFile({}, unmarked)) : std::nullopt;
    }
    disk.files.SetFileBinary(file, true);
    std::string bytes;
    std::array<char, 8192> block{};
    for (;;) {
        const int32_t n = disk.files.ReadFile(file, block.data(), static_cast<int32_t>(block.size()));
        if (n <= 0) break;
        bytes.append(block.data(), static_cast<size_t>(n));
    }
    const bool whole = disk.files.LastError() == 0;
    disk.files.CloseFile(file);
    return whole ? std::optional(ProfileFile(bytes, unmarked)) : std::nullopt;
}

bool WriteProfile(const ProfileDisk& disk, TextView path, const ProfileFile& profile)
{
    const std::optional<std::string> bytes = profile.Bytes();
    if (!bytes) return false;
    const FileTransfer::Handle file = disk.files.OpenFile(path, FileTransfer::Access::Replace);
    if (file == 0) return false;
    disk.files.SetFileBinary(file, true);
    const auto size = static_cast<int32_t>(bytes->size());
    disk.files.WriteFile(file, bytes->data(), size);
    return disk.files.CloseFile(file);
}

} // namespace nib
