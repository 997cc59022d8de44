#include "persistence/store/modPersistSettings.h"

#include "diagnostics/Guarded.h"
#include "persistence/store/TextFile.h"
#include "platform/posix/FileName.h"

#include <algorithm>
#include <charconv>

#include <unicode/utf16.h>

namespace nib {

namespace {

constexpr TextView kEmptyName{u"@"};
/// Values of PersistSettings. Every other one means that nothing is kept.
constexpr int32_t kHive = 1;
constexpr int32_t kIniFile = 2;
constexpr TextView kSwitchFile{u"isolation.ini"};
constexpr TextView kSwitchSection{u"Isolation"};
constexpr TextView kStateFile{u"appstate.ini"};
constexpr TextView kStateSection{u"MultiValueEditor_Settings"};

constexpr TextView kNotInNames{u"=[];@"};

bool IsEscape(TextView text)
{
    return text.size() >= 2 && text[0] == u'%' && (text[1] == u'u' || text[1] == u'U');
}

bool IsLoneSurrogate(TextView text, size_t i)
{
    if (U16_IS_LEAD(text[i])) return i + 1 == text.size() || !U16_IS_TRAIL(text[i + 1]);
    return U16_IS_TRAIL(text[i]) && (i == 0 || !U16_IS_LEAD(text[i - 1]));
}

void AppendEscape(Text& out, char16_t c)
{
    const Text digits = Hex(c);
    out.append(u"%u").append(4 - digits.size(), u'0').append(digits);
}

template <typename Refused>
Text Encode(TextView text, Refused&& refused)
{
    Text out;
    out.reserve(text.size());
    for (size_t i = 0; i < text.size(); ++i) {
        const char16_t c = text[i];
        if (c < u' ' || c == 0x7F || IsLoneSurrogate(text, i) || IsEscape(text.substr(i)) || refused(i)) {
            AppendEscape(out, c);
        } else {
            out.push_back(c);
        }
    }
    return out;
}

/// The unit that an escape at the start of `text` stands for.
std::optional<char16_t> Escaped(TextView text)
{
    constexpr size_t kLength = 6;
    if (text.size() < kLength || !text.starts_with(u"%u")) return std::nullopt;
    const std::string digits(text.begin() + 2, text.begin() + kLength);
    uint16_t unit = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), unit, 16);
    if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
    return static_cast<char16_t>(unit);
}

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

Text EncodeHiveName(TextView name)
{
    if (name.empty()) return Text(kEmptyName);
    return Encode(name, [name](size_t i) {
        const bool edge = i == 0 || i + 1 == name.size();
        return kNotInNames.find(name[i]) != TextView::npos || (edge && name[i] == u' ');
    });
}

Text EncodeHiveValue(TextView value)
{
    return Encode(value, [](size_t) { return false; });
}

Text DecodeHiveValue(TextView line)
{
    Text out;
    out.reserve(line.size());
    while (!line.empty()) {
        const std::optional<char16_t> unit = Escaped(line);
        out.push_back(unit.value_or(line.front()));
        line.remove_prefix(unit ? 6 : 1);
    }
    return out;
}

const Text* HiveFile::FindChange(TextView section, TextView key) const
{
    for (const Change& change : changes_)
        if (EqualsNoCase(change.key, key) && EqualsNoCase(change.section, section)) return &change.value;
    return nullptr;
}

void HiveFile::Refresh()
{
    const FileStamp state = StampOf(ToFileName(path_));
    if (seenState_ == state) return;
    seen_ = ReadOrTell(disk_, path_, ProfileFile::Encoding::Utf8).value_or(ProfileFile());
    seenState_ = state;
}

std::optional<Text> HiveFile::Get(TextView keyPath, TextView valueName)
{
    const Text section = EncodeHiveName(keyPath);
    const Text key = EncodeHiveName(valueName);
    if (const Text* changed = FindChange(section, key)) return DecodeHiveValue(*changed);
    Refresh();
    const std::optional<Text> value = seen_.Find(section, key);
    if (!value) return std::nullopt;
    return DecodeHiveValue(*value);
}

void HiveFile::Set(TextView keyPath, TextView valueName, TextView text)
{
    Change change{EncodeHiveName(keyPath), EncodeHiveName(valueName), EncodeHiveValue(text)};
    std::erase_if(changes_, [&](const Change& older) {
        return EqualsNoCase(older.key, change.key) && EqualsNoCase(older.section, change.section);
    });
    changes_.push_back(std::move(change));
    if (changed_) changed_();
}

bool HiveFile::Flush()
{
    if (changes_.empty()) return true;
    MakeFolders(FolderOf(ToFileName(path_)));
    const FileHold hold = disk_.Hold(path_);
    std::optional<ProfileFile> file = ReadOrTell(disk_, path_, ProfileFile::Encoding::Utf8);
    if (!file) return false;
    bool changed = false;
    for (const Change& change : changes_) {
        if (file->Find(change.section, change.key) == change.value) continue;
        changed = file->Set(change.section, change.key, change.value) || changed;
    }
    if (changed && !WriteProfile(disk_, path_, *file)) return false;
    changes_.clear();
    seen_ = std::move(*file);
    seenState_ = StampOf(ToFileName(path_));
    return true;
}

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

Text modPersistSettings::SwitchFile() const
{
    return WithSlash(programFolder_) + Text(kSwitchFile);
}

Text modPersistSettings::SwitchFileFault() const
{
    Text fault;
    ReadOrTell({disk_.saver, disk_.patience, [&fault](TextView why) { fault = why; }}, SwitchFile());
    return fault;
}

Text modPersistSettings::Switch(TextView key, TextView fallback) const
{
    return ProfileGetString(kSwitchSection, key, fallback, SwitchFile());
}

void modPersistSettings::InitPersistSettings()
{
    if (initialised_) return;
    initialised_ = true;
    persistMode_ = ProfileGetInt(kSwitchSection, u"PersistSettings", kHive, SwitchFile());
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
        const Text text = hive_.Get(kSettingsKey, valueName).value_or(Text());
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

void modPersistSettings::Flush()
{
    IgnoringErrors([this] { hive_.Flush(); });
}

void modPersistSettings::TellTrouble(const std::function<void(TextView why)>& trouble)
{
    hive_.TellTrouble(trouble);
    disk_.trouble = trouble;
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
