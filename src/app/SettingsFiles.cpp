#include "app/SettingsFiles.h"

#include "platform/posix/FileName.h"

#include <cstdlib>

namespace nib {

namespace {

std::optional<Text> EnvironmentValue(TextView name)
{
    const char* value = std::getenv(ToUtf8(name).c_str());
    return value ? std::optional(FromFileName(value)) : std::nullopt;
}

} // namespace

SettingsFiles::SettingsFiles(const std::string& backupFolder, Text programFolder)
    : disk_{FileSaver(backupFolder)}, settings_(hive_, disk_, std::move(programFolder), EnvironmentValue)
{
}

} // namespace nib
