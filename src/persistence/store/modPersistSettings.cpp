#include "persistence/store/modPersistSettings.h"

#include "diagnostics/Guarded.h"
#include "persistence/store/TextFile.h"
#include "persistence/store/modDotToAbsPath.h"
#include "persistence/store/modRegFuncs.h"
#include "platform/posix/FileName.h"

#include <algorithm>
#include <limits>

namespace nib {

namespace {

constexpr TextView kSwitchFile{u"isolation.ini"};
constexpr TextView kSwitchSection{u"Isolation"};
constexpr TextView kStateFile{u"appstate.ini"};

Text WithSlash(Text folder)
{
    if (!folder.ends_with(u'/')) folder.push_back(u'/');
    return folder;
}

/// The first component, a root or a folder of the current one, is taken as it is.
bool MakeDataFolder(TextView path)
{
    const size_t slash = path.find(u'/');
    if (slash + 1 == path.size()) return true;
    return (slash == 0 || IsFolder(ToFileName(path.substr(0, slash)))) && MakeFolders(ToFileName(path)) == 0;
}

/// Narrow files are read a byte a character; a path of a system that names files in UTF-8 is meant as such.
Text PathOf(const Text& value)
{
    if (HasWideChars(value, false)) return value;
    std::string bytes(value.size(), '\0');
    std::transform(value.begin(), value.end(), bytes.begin(), [](char16_t c) { return static_cast<char>(c); });
    return IsValidUtf8(bytes) ? FromUtf8(bytes) : value;
}

} // namespace

modPersistSettings::modPersistSettings(SettingsHive& hive, const ProfileDisk& disk, Text programFolder,
                                       Environment environment)
    : hive_(hive), disk_(disk), programFolder_(std::move(programFolder)), environment_(std::move(environment))
{
}

Text modPersistSettings::Switch(TextView key, TextView fallback) const
{
    return ProfileGetString(kSwitchSection, key, fallback, WithSlash(programFolder_) + Text(kSwitchFile));
}

void modPersistSettings::InitPersistSettings()
{
    if (initialised_) return;
    initialised_ = true;
    const int32_t mode =
        ProfileGetInt(kSwitchSection, u"PersistSettings", kHive, WithSlash(programFolder_) + Text(kSwitchFile));
    persistMode_ = static_cast<int16_t>(
        std::clamp<int32_t>(mode, std::numeric_limits<int16_t>::min(), std::numeric_limits<int16_t>::max()));
    appDataDirectory_ = ResolveDataDirectory(PathOf(Switch(u"AppDataDirectory", u".")));
    userDataDirectory_ = ResolveDataDirectory(PathOf(Switch(u"UserDataDirectory", u".")));
    appStateFile_ = appDataDirectory_ + Text(kStateFile);
}

Text modPersistSettings::GetPersistSetting(TextView keyPath, TextView valueName, TextView fallback)
{
    const auto read = [&] {
        InitPersistSettings();
        if (persistMode_ == kHive) return RegGetString(hive_, keyPath, valueName, fallback, environment_);
        if (persistMode_ != kIniFile) return Text(fallback);
        return ProfileGetString(KeyPathToSection(keyPath), ValueNameToKey(valueName), fallback, appStateFile_);
    };
    return OrDefault(read, Text(fallback));
}

void modPersistSettings::SavePersistSetting(TextView keyPath, TextView valueName, TextView value, TextView fallback)
{
    IgnoringErrors([&] {
        InitPersistSettings();
        if (persistMode_ == kHive) {
            RegSetString(hive_, keyPath, valueName, value, fallback);
        } else if (persistMode_ == kIniFile) {
            CreateStateFile();
            ProfileWriteString(disk_, KeyPathToSection(keyPath), ValueNameToKey(valueName), value, fallback,
                               appStateFile_);
        }
    });
}

void modPersistSettings::CreateStateFile() const
{
    const std::string file = ToFileName(appStateFile_);
    if (StampOf(file).Exists()) return;
    const FileHold hold = disk_.Hold(appStateFile_);
    // Another copy may just have made it, and written to it.
    if (!StampOf(file).Exists()) WriteTextFile(disk_.saver, appStateFile_, {}, file_encoding::kUtf16, true);
}

Text modPersistSettings::KeyPathToSection(TextView keyPath)
{
    const std::vector<Text> components = Split(keyPath, u'\\');
    Text section;
    for (size_t i = 2; i < components.size(); ++i) {
        if (i > 2) section.push_back(u'_');
        section += components[i];
    }
    std::erase(section, u' ');
    return section.empty() ? Text(keyPath) : section;
}

Text modPersistSettings::ValueNameToKey(TextView name)
{
    return name.empty() ? Text(u"@") : Text(name);
}

Text modPersistSettings::ResolveDataDirectory(TextView path) const
{
    Text folder(path);
    std::replace(folder.begin(), folder.end(), u'\\', u'/');
    folder = DotToAbsPath(folder, programFolder_);
    if (folder.find(u'%') != Text::npos) folder = ExpandEnviron(folder, environment_);
    if (folder.empty()) folder = programFolder_;
    folder = WithSlash(std::move(folder));
    if (IsFolder(ToFileName(folder)) || MakeDataFolder(folder)) return folder;
    return WithSlash(programFolder_);
}

} // namespace nib
