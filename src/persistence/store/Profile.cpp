#include "persistence/store/Profile.h"

#include "persistence/store/LeadingNumber.h"
#include "persistence/store/modCheckUnicodeFile.h"

namespace nib {

namespace {

constexpr size_t kLongestString = 4095;
constexpr size_t kLongestNumber = 1023;

Text ReadOne(const ProfileDisk& disk, TextView section, TextView key, TextView file, size_t limit)
{
    const std::optional<ProfileFile> profile = ReadProfile(disk, file);
    const std::optional<Text> value = profile ? profile->Find(section, key) : std::nullopt;
    return value ? value->substr(0, limit) : Text();
}

/// Empty when neither file has the key.
Text ReadEither(const ProfileDisk& disk, TextView section, TextView key, TextView file, TextView alternateFile,
                size_t limit)
{
    Text value = ReadOne(disk, section, key, file, limit);
    if (value.empty() && !alternateFile.empty()) value = ReadOne(disk, section, key, alternateFile, limit);
    return value;
}

} // namespace

Text ProfileGetString(const ProfileDisk& disk, TextView section, TextView key, TextView fallback, TextView file,
                      TextView alternateFile)
{
    Text value = ReadEither(disk, section, key, file, alternateFile, kLongestString);
    return value.empty() ? Text(fallback) : value;
}

int32_t ProfileGetInt(const ProfileDisk& disk, TextView section, TextView key, int32_t fallback, TextView file,
                      TextView alternateFile)
{
    const Text value = ReadEither(disk, section, key, file, alternateFile, kLongestNumber);
    return value.empty() ? fallback : LeadingInt(value);
}

void ProfileWriteString(const ProfileDisk& disk, TextView section, TextView key, TextView value, TextView fallback,
                        TextView file, TextView alternateFile)
{
    const auto hold = disk.guard.HoldFile(file);
    const Text comparison =
        alternateFile.empty() ? Text(fallback) : ProfileGetString(disk, section, key, {}, alternateFile);
    const bool kept = !value.empty() && value != comparison;

    std::optional<ProfileFile> profile = ReadProfile(disk, file);
    if (!profile) return;
    if (kept && profile->Kind() == ProfileFile::Encoding::SingleByte &&
        CheckUnicodeFile(disk.files, file, Text(section) + Text(key) + Text(value))) {
        profile = ReadProfile(disk, file);
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
