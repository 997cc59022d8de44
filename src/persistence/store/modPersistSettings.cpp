#include "persistence/store/modPersistSettings.h"

#include "diagnostics/Guarded.h"
#include "persistence/store/TextFile.h"
#include "platform/posix/FileName.h"

#include <algorithm>

namespace nib {

namespace {

/// Values of PersistSettings. Every other one means that nothing is kept.
constexpr int32_t kHive = 1;
constexpr int32_t kIniFile = 2;
constexpr TextView kSwitchFile{u"isolation.ini"};
constexpr TextView kSwitchSection{u"Isolation"};
constexpr TextView kStateFile{u"appstate.ini"};
constexpr TextView kStateSection{u"MultiValueEditor_Settings"};
constexpr size_t kLongestHiveValue = 4096;

/// Every run of "/" becomes one.
Text CollapseSlashes(TextView path)
{
    Text out;
    out.reserve(path.size());
    for (char16_t c : path)
        if (c != u'/' || !out.ends_with(u'/')) out.push_back(c);
    return out;
}

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
    const std::string bytes = EncodeText(value, file_encoding::kSingleByte);
    return !HasWideChars(value, false) && IsValidUtf8(bytes) ? FromUtf8(bytes) : value;
}

/// An ini file has no empty names.
TextView KeyOf(TextView valueName)
{
    return valueName.empty() ? u"@" : valueName;
}

} // namespace

Text DotToAbsPath(TextView path, TextView baseFolder)
{
    Text absolute(path);
    if (absolute.starts_with(u"../") || absolute == u"..") absolute.insert(0, u"./");
    if (absolute.starts_with(u"./")) absolute.replace(0, 1, baseFolder);

    std::vector<Text> kept;
    for (Text& component : Split(CollapseSlashes(absolute), u'/')) {
        if (component != u"..") {
            kept.push_back(std::move(component));
        } else if (kept.size() >= 2) {
            kept.pop_back();
        }
    }
    Text joined;
    for (size_t i = 0; i < kept.size(); ++i) {
        if (i > 0) joined.push_back(u'/');
        joined += kept[i];
    }
    // The root alone is an empty component.
    return joined.empty() ? Text(u"/") : joined;
}

Text ExpandEnviron(TextView text, const Environment& environment)
{
    Text out;
    for (;;) {
        const size_t open = text.find(u'%');
        const size_t close = open == TextView::npos ? open : text.find(u'%', open + 1);
        if (close == TextView::npos) return out.append(text);
        out.append(text.substr(0, open));
        out.append(environment(text.substr(open + 1, close - open - 1)).value_or(Text()));
        text.remove_prefix(close + 1);
    }
}

Text modPersistSettings::Switch(TextView key, TextView fallback) const
{
    return ProfileGetString(kSwitchSection, key, fallback, WithSlash(programFolder_) + Text(kSwitchFile));
}

void modPersistSettings::InitPersistSettings()
{
    if (initialised_) return;
    initialised_ = true;
    persistMode_ =
        ProfileGetInt(kSwitchSection, u"PersistSettings", kHive, WithSlash(programFolder_) + Text(kSwitchFile));
    appDataDirectory_ = ResolveDataDirectory(PathOf(Switch(u"AppDataDirectory", u".")));
    userDataDirectory_ = ResolveDataDirectory(PathOf(Switch(u"UserDataDirectory", u".")));
    appStateFile_ = appDataDirectory_ + Text(kStateFile);
}

Text modPersistSettings::Get(TextView valueName, TextView fallback)
{
    const auto read = [&] {
        InitPersistSettings();
        if (persistMode_ == kIniFile) return ProfileGetString(kStateSection, KeyOf(valueName), fallback, appStateFile_);
        if (persistMode_ != kHive) return Text(fallback);
        const Text text = hive_.Get(kSettingsKey, valueName).value_or(Text()).substr(0, kLongestHiveValue);
        return text.empty() ? Text(fallback) : text;
    };
    return OrDefault(read, Text(fallback));
}

void modPersistSettings::Save(TextView valueName, TextView value, TextView fallback)
{
    IgnoringErrors([&] {
        InitPersistSettings();
        if (persistMode_ == kHive) {
            // The name stays, and reading gives the fallback.
            hive_.Set(kSettingsKey, valueName, !fallback.empty() && value == fallback ? TextView() : value);
        } else if (persistMode_ == kIniFile) {
            CreateStateFile();
            ProfileWriteString(disk_, kStateSection, KeyOf(valueName), value, fallback, appStateFile_);
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

/// The folder that a path of the switch file means, made when it is missing; the program's folder when it cannot be.
/// "\" is read as "/". A path that begins neither with "/" nor with "./" or "../" is one of the current folder.
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
