#include "persistence/store/Profile.h"

#include "persistence/store/LeadingNumber.h"
#include "persistence/store/TextFile.h"
#include "platform/posix/FileContent.h"
#include "platform/posix/FileName.h"

namespace nib {

namespace {

constexpr size_t kLargestProfile = 16 << 20;
constexpr size_t kLongestString = 4095;
constexpr size_t kLongestNumber = 1023;

Text ReadOne(TextView section, TextView key, TextView file, size_t limit)
{
    const std::optional<ProfileFile> profile = ReadProfile(file);
    const std::optional<Text> value = profile ? profile->Find(section, key) : std::nullopt;
    return value ? value->substr(0, limit) : Text();
}

/// Empty when neither file has the key.
Text ReadEither(TextView section, TextView key, TextView file, TextView alternateFile, size_t limit)
{
    Text value = ReadOne(section, key, file, limit);
    if (value.empty() && !alternateFile.empty()) value = ReadOne(section, key, alternateFile, limit);
    return value;
}

} // namespace

FileHold ProfileDisk::Hold(TextView path) const
{
    return {ToFileName(path), patience};
}

std::optional<ProfileFile> ReadProfile(TextView path, ProfileFile::Encoding unmarked)
{
    const std::string name = ToFileName(path);
    FileContent content;
    const int error = SystemErrorOf([&] { content = ReadWholeFile(name, kLargestProfile); });
    const bool missing = error == ENOENT || error == ENOTDIR || error == ELOOP;
    if (error != 0 && !(missing && !StampOf(name).Exists())) return std::nullopt;
    return ProfileFile(content.Bytes(), unmarked);
}

bool WriteProfile(const ProfileDisk& disk, TextView path, const ProfileFile& profile)
{
    const std::optional<std::string> bytes = profile.Bytes();
    return bytes && SystemErrorOf([&] { disk.saver.Save(ToFileName(path), *bytes); }) == 0;
}

Text ProfileGetString(TextView section, TextView key, TextView fallback, TextView file, TextView alternateFile)
{
    Text value = ReadEither(section, key, file, alternateFile, kLongestString);
    return value.empty() ? Text(fallback) : value;
}

int32_t ProfileGetInt(TextView section, TextView key, int32_t fallback, TextView file, TextView alternateFile)
{
    const Text value = ReadEither(section, key, file, alternateFile, kLongestNumber);
    return value.empty() ? fallback : LeadingInt(value);
}

void ProfileWriteString(const ProfileDisk& disk, TextView section, TextView key, TextView value, TextView fallback,
                        TextView file, TextView alternateFile)
{
    const FileHold hold = disk.Hold(file);
    const Text comparison = alternateFile.empty() ? Text(fallback) : ProfileGetString(section, key, {}, alternateFile);
    const bool kept = !value.empty() && value != comparison;

    std::optional<ProfileFile> profile = ReadProfile(file);
    if (!profile) return;
    if (kept && profile->Kind() == ProfileFile::Encoding::SingleByte &&
        CheckUnicodeFile(disk.saver, file, Text(section) + Text(key) + Text(value))) {
        profile = ReadProfile(file);
        if (!profile) return;
    }
    const std::optional<std::string> before = profile->Bytes();
    if (!kept) {
        profile->Remove(section, key);
    } else if (!profile->Set(section, key, value)) {
        return;
    }
    // Most saves change nothing.
    if (profile->Bytes() != before) WriteProfile(disk, file, *profile);
}

} // namespace nib
