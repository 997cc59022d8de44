#include "persistence/store/HiveFile.h"

#include "platform/posix/FileName.h"

#include <charconv>

#include <unicode/utf16.h>

namespace nib {

namespace {

constexpr TextView kEmptyName{u"@"};
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
    seen_ = ReadProfile(path_, ProfileFile::Encoding::Utf8).value_or(ProfileFile());
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
    std::optional<ProfileFile> file = ReadProfile(path_, ProfileFile::Encoding::Utf8);
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

} // namespace nib
