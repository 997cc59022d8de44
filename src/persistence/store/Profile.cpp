#include "persistence/store/Profile.h"

#include "diagnostics/Guarded.h"
#include "persistence/store/SettingsStore.h"
#include "persistence/store/TextFile.h"
#include "platform/posix/FileContent.h"
#include "platform/posix/FileName.h"

#include <algorithm>

namespace nib {

namespace {

constexpr size_t kLargestProfile = 16 << 20;
constexpr TextView kBlanks{u" \t\r"};
constexpr TextView kLineEnds{u"\r\n"};
constexpr TextView kQuotes{u"\"'"};

TextView TrimBlanks(TextView text)
{
    const size_t first = text.find_first_not_of(kBlanks);
    if (first == TextView::npos) return text.substr(text.size());
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

TextView Unquote(TextView value)
{
    const bool quoted =
        value.size() >= 2 && value.front() == value.back() && kQuotes.find(value.front()) != TextView::npos;
    return quoted ? value.substr(1, value.size() - 2) : value;
}

/// Blanks at an end would be trimmed, and quotes taken for ours.
bool NeedsQuotes(TextView value)
{
    const auto isEdge = [](char16_t c) {
        return kBlanks.find(c) != TextView::npos || kQuotes.find(c) != TextView::npos;
    };
    return !value.empty() && (isEdge(value.front()) || isEdge(value.back()));
}

Text Quoted(TextView value)
{
    return NeedsQuotes(value) ? u"\"" + Text(value) + u"\"" : Text(value);
}

char16_t LowerAscii(char16_t c)
{
    return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + (u'a' - u'A')) : c;
}

/// Every line of a file is asked this: plain letters are compared without the tables of Unicode.
bool SameName(TextView a, TextView b)
{
    size_t i = 0;
    for (; i < a.size() && i < b.size() && a[i] < 0x80 && b[i] < 0x80; ++i)
        if (LowerAscii(a[i]) != LowerAscii(b[i])) return false;
    return i == a.size() || i == b.size() ? a.size() == b.size() : EqualsNoCase(a.substr(i), b.substr(i));
}

bool FitsOneLine(TextView name)
{
    return name.find_first_of(kLineEnds) == TextView::npos && name.find(u'\0') == TextView::npos;
}

bool IsSectionName(TextView name)
{
    return !name.empty() && FitsOneLine(name) && name.find(u']') == TextView::npos;
}

bool IsKeyName(TextView name)
{
    return !name.empty() && FitsOneLine(name) && name.find(u'=') == TextView::npos && name.front() != u'[' &&
           name.front() != u';';
}

Text ReadOne(TextView section, TextView key, TextView file)
{
    const std::optional<ProfileFile> profile = ReadProfile(file);
    return profile ? profile->Find(section, key).value_or(Text()) : Text();
}

/// Empty when neither file has the key.
Text ReadEither(TextView section, TextView key, TextView file, TextView alternateFile)
{
    Text value = ReadOne(section, key, file);
    if (value.empty() && !alternateFile.empty()) value = ReadOne(section, key, alternateFile);
    return value;
}

} // namespace

IniLine::IniLine(TextView line, TextView comments, bool closesLine)
{
    const TextView trimmed = TrimBlanks(line);
    if (trimmed.empty() || comments.find(trimmed.front()) != TextView::npos) return;
    if (trimmed.front() == u'[') {
        const size_t close = closesLine ? trimmed.rfind(u']') : trimmed.find(u']');
        if (close == TextView::npos || (closesLine && close + 1 != trimmed.size())) return;
        kind = Kind::Section;
        name = TrimBlanks(trimmed.substr(1, close - 1));
    } else if (const size_t equals = line.find(u'='); equals != TextView::npos) {
        kind = Kind::Key;
        name = TrimBlanks(line.substr(0, equals));
        value = TrimBlanks(line.substr(equals + 1));
    }
}

/// A line and its place in the text.
struct ProfileFile::Line : IniLine {
    Line(TextView text, size_t start, size_t stop)
        : IniLine(text.substr(start, stop - start), u";"), begin(start),
          valueAt(kind == Kind::Key ? static_cast<size_t>(value.data() - text.data()) : 0)
    {
    }

    size_t begin;
    size_t valueAt;
};

/// Walks the lines of a text; CR, LF and CR LF end one.
class ProfileFile::Lines {
public:
    explicit Lines(TextView text) : text_(text) {}

    bool AtEnd() const { return next_ >= text_.size(); }
    Line Next()
    {
        const size_t begin = next_;
        const size_t end = std::min(text_.find_first_of(kLineEnds, begin), text_.size());
        next_ = end + (text_.substr(end).starts_with(u"\r\n") ? 2 : 1);
        return Line(text_, begin, end);
    }
    /// Behind the break of the line that was answered last.
    size_t Position() const { return std::min(next_, text_.size()); }

private:
    TextView text_;
    size_t next_ = 0;
};

ProfileFile::ProfileFile(std::string_view bytes, Encoding unmarked) : encoding_(unmarked)
{
    const bool wide = bytes.starts_with(kUtf16Mark);
    marked_ = wide || bytes.starts_with(kUtf8Mark);
    if (marked_) encoding_ = wide ? Encoding::Utf16 : Encoding::Utf8;
    text_ = DecodeText(bytes, static_cast<int32_t>(encoding_));
}

std::optional<std::string> ProfileFile::Bytes() const
{
    if (encoding_ == Encoding::SingleByte && HasWideChars(text_, false)) return std::nullopt;
    const bool mark = encoding_ == Encoding::Utf8 && marked_;
    return (mark ? std::string(kUtf8Mark) : std::string()) + EncodeText(text_, static_cast<int32_t>(encoding_));
}

ProfileFile::Place ProfileFile::Locate(TextView section, TextView key) const
{
    section = TrimBlanks(section);
    key = TrimBlanks(key);
    Place place;
    bool inside = false;
    bool first = false; // New keys go to the first of several sections of one name.
    for (Lines lines(text_); !lines.AtEnd();) {
        const Line line = lines.Next();
        if (line.kind == Line::Kind::Section) {
            inside = SameName(line.name, section);
            first = inside && place.insert == TextView::npos;
        }
        // Behind the last key, so that a comment above the next section stays with it.
        if (first && line.kind != Line::Kind::Other) place.insert = lines.Position();
        if (!inside || line.kind != Line::Kind::Key || !SameName(line.name, key)) continue;
        place.value = line.valueAt;
        place.end = line.valueAt + line.value.size();
        return place;
    }
    return place;
}

std::optional<Text> ProfileFile::Find(TextView section, TextView key) const
{
    const Place place = Locate(section, key);
    if (place.value == TextView::npos) return std::nullopt;
    return Text(Unquote(TextView(text_).substr(place.value, place.end - place.value)));
}

bool ProfileFile::Set(TextView section, TextView key, TextView value)
{
    section = TrimBlanks(section);
    key = TrimBlanks(key);
    if (!IsSectionName(section) || !IsKeyName(key)) return false;
    value = value.substr(0, value.find_first_of(TextView(u"\r\n\0", 3)));

    const Place place = Locate(section, key);
    const Text content = Quoted(value);
    if (place.value != TextView::npos) {
        text_.replace(place.value, place.end - place.value, content);
        return true;
    }
    size_t insert = place.insert;
    if (insert == TextView::npos) {
        InsertLine(text_.size(), u"[" + Text(section) + u"]");
        insert = text_.size();
    }
    InsertLine(insert, Text(key) + u"=" + content);
    return true;
}

void ProfileFile::InsertLine(size_t at, TextView line)
{
    const Text lineBreak(LineBreak());
    Text inserted = Text(line) + lineBreak;
    const bool atLineStart = at == 0 || kLineEnds.find(text_[at - 1]) != TextView::npos;
    if (!atLineStart) inserted.insert(0, lineBreak);
    text_.insert(at, inserted);
}

TextView ProfileFile::LineBreak() const
{
    const size_t at = text_.find_first_of(kLineEnds);
    if (at == Text::npos) return encoding_ == Encoding::Utf8 ? u"\n" : u"\r\n";
    return TextView(text_).substr(at, TextView(text_).substr(at).starts_with(u"\r\n") ? 2 : 1);
}

void ProfileFile::Remove(TextView section, TextView key)
{
    section = TrimBlanks(section);
    key = TrimBlanks(key);
    Text kept;
    size_t copied = 0;
    bool inside = false;
    for (Lines lines(text_); !lines.AtEnd();) {
        const Line line = lines.Next();
        if (line.kind == Line::Kind::Section) inside = SameName(line.name, section);
        if (!inside || line.kind != Line::Kind::Key || !SameName(line.name, key)) continue;
        kept.append(text_, copied, line.begin - copied);
        copied = lines.Position();
    }
    if (copied > 0) text_ = kept.append(text_, copied);
}

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

std::optional<ProfileFile> ReadOrTell(const ProfileDisk& disk, TextView path, ProfileFile::Encoding unmarked)
{
    std::optional<ProfileFile> profile = ReadProfile(path, unmarked);
    if (!profile && disk.trouble) disk.trouble(Text(path) + u" cannot be read");
    return profile;
}

bool WriteProfile(const ProfileDisk& disk, TextView path, const ProfileFile& profile)
{
    const std::optional<std::string> bytes = profile.Bytes();
    const std::optional<Error> failure = FailureOf([&] {
        if (bytes) disk.saver.Save(ToFileName(path), *bytes);
    });
    if (disk.trouble) disk.trouble(failure ? failure->description : Text());
    return bytes && !failure;
}

Text ProfileGetString(TextView section, TextView key, TextView fallback, TextView file, TextView alternateFile)
{
    Text value = ReadEither(section, key, file, alternateFile);
    return value.empty() ? Text(fallback) : value;
}

int32_t ProfileGetInt(TextView section, TextView key, int32_t fallback, TextView file, TextView alternateFile)
{
    const Text value = ReadEither(section, key, file, alternateFile);
    return value.empty() ? fallback : LeadingInt(value);
}

void ProfileWriteString(const ProfileDisk& disk, TextView section, TextView key, TextView value, TextView fallback,
                        TextView file, TextView alternateFile)
{
    const FileHold hold = disk.Hold(file);
    const Text comparison = alternateFile.empty() ? Text(fallback) : ProfileGetString(section, key, {}, alternateFile);
    const bool kept = !value.empty() && value != comparison;

    std::optional<ProfileFile> profile = ReadOrTell(disk, file);
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
