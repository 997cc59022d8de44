#include "hosts/HostsFile.h"

#include "base/Error.h"
#include "hosts/HostLinks.h"
#include "persistence/store/Profile.h"
#include "platform/posix/FileContent.h"
#include "platform/posix/FileLocks.h"
#include "platform/posix/FileName.h"

#include <algorithm>

namespace nib {

namespace {

constexpr size_t kLargestConfig = 4 << 20;
constexpr std::chrono::milliseconds kPatience{500}; ///< with another copy of the program
constexpr TextView kNoLine{u"\r\n\0", 3};

IniLine Parsed(TextView line)
{
    if (line.ends_with(u'\n')) line.remove_suffix(1);
    return IniLine(line, u"#;", true);
}

bool IsHeaderOf(const IniLine& line, TextView name)
{
    return line.kind == IniLine::Kind::Section && EqualsNoCase(line.name, name);
}

bool IsBlank(TextView line)
{
    return line.find_first_not_of(u" \t\r\n") == TextView::npos;
}

bool IsComment(TextView line)
{
    const size_t first = line.find_first_not_of(u" \t");
    return first != TextView::npos && (line[first] == u'#' || line[first] == u';');
}

/// Puts `text` in place of a part of the line.
void Replace(Text& line, TextView part, TextView text)
{
    line.replace(static_cast<size_t>(part.data() - line.data()), part.size(), text);
}

void CheckFits(TextView text, TextView what)
{
    if (text.find_first_of(kNoLine) != TextView::npos || FromUtf8(ToUtf8(text)) != text)
        throw Error(error_number::kStorage, Text(what) + u" cannot hold line breaks and characters that are no text.");
}

} // namespace

std::string HostsFile::UsualPath()
{
    return UserFolder("XDG_CONFIG_HOME", "/.config") + "/Orlin/hosts.conf";
}

std::string HostsFile::BytesAt(const std::string& path)
{
    FileStamp stamp;
    if (ReadStamp(path, stamp) == 0 && !stamp.Exists()) return {};
    return std::string(ReadWholeFile(path, kLargestConfig).Bytes());
}

HostsFile HostsFile::Read(std::string path)
{
    std::string bytes = BytesAt(path);
    const Text text = FromUtf8(bytes);
    if (ToUtf8(text) != bytes) {
        throw Error(error_number::kStorage,
                    FromFileName(path) + u" is no UTF-8 text. It has to be put right before it can be changed here.");
    }
    HostsFile file(text);
    file.path_ = std::move(path);
    file.read_ = std::move(bytes);
    return file;
}

HostsFile::HostsFile(TextView text)
{
    for (size_t at = 0; at < text.size();) {
        const size_t end = std::min(text.find(u'\n', at), text.size() - 1) + 1;
        lines_.emplace_back(text.substr(at, end - at));
        at = end;
    }
}

Text HostsFile::Content() const
{
    Text content;
    for (const Text& line : lines_) content += line;
    return content;
}

std::vector<Text> HostsFile::Names() const
{
    std::vector<Text> names{Text(kDefaultHost)};
    for (const Text& line : lines_) {
        const IniLine parsed = Parsed(line);
        const auto same = [&](const Text& name) { return EqualsNoCase(name, parsed.name); };
        if (parsed.kind == IniLine::Kind::Section && std::none_of(names.begin(), names.end(), same))
            names.emplace_back(parsed.name);
    }
    return names;
}

bool HostsFile::Has(TextView name) const
{
    return name == kDefaultHost ||
           std::any_of(lines_.begin(), lines_.end(), [&](const Text& line) { return IsHeaderOf(Parsed(line), name); });
}

Text HostsFile::Value(TextView name, TextView key) const
{
    Text value; // the last one counts
    bool inside = false;
    for (const Text& line : lines_) {
        const IniLine parsed = Parsed(line);
        if (parsed.kind == IniLine::Kind::Section) inside = EqualsNoCase(parsed.name, name);
        if (inside && parsed.kind == IniLine::Kind::Key && EqualsNoCase(parsed.name, key)) value = parsed.value;
    }
    return value;
}

void HostsFile::Set(TextView name, TextView key, TextView value)
{
    value = Trim(value);
    CheckFits(value, key);
    std::vector<size_t> places;
    std::optional<size_t> insert; // behind the last key of the first section of the name
    bool inside = false;
    bool first = false;
    for (size_t i = 0; i < lines_.size(); ++i) {
        const IniLine parsed = Parsed(lines_[i]);
        if (parsed.kind == IniLine::Kind::Section) {
            inside = EqualsNoCase(parsed.name, name);
            first = inside && !insert;
        }
        if (first && parsed.kind != IniLine::Kind::Other) insert = i + 1;
        if (inside && parsed.kind == IniLine::Kind::Key && EqualsNoCase(parsed.name, key)) places.push_back(i);
    }
    if (value.empty()) {
        for (; !places.empty(); places.pop_back()) lines_.erase(lines_.begin() + static_cast<ptrdiff_t>(places.back()));
    } else if (!places.empty()) {
        Text& line = lines_[places.back()];
        Replace(line, Parsed(line).value, value);
    } else {
        if (!insert) AppendSection(name);
        Insert(insert.value_or(lines_.size()), Text(key) + u"=" + Text(value));
    }
}

Text HostsFile::Add(TextView name)
{
    Text taken = CheckedName(name);
    AppendSection(taken);
    return taken;
}

Text HostsFile::Rename(TextView name, TextView newName)
{
    const TextView wanted = Trim(newName);
    if (wanted == name) return Text(name);
    if (name == kDefaultHost) throw Error(error_number::kStorage, u"The default connection keeps its name.");
    Text taken = EqualsNoCase(wanted, name) ? Text(wanted) : CheckedName(wanted);
    const Text before(name);
    for (Text& line : lines_)
        if (const IniLine parsed = Parsed(line); IsHeaderOf(parsed, before)) Replace(line, parsed.name, taken);
    return taken;
}

void HostsFile::Remove(TextView name)
{
    if (name == kDefaultHost) throw Error(error_number::kStorage, u"The default connection cannot be removed.");
    std::vector<Text> kept;
    for (size_t i = 0; i < lines_.size();) {
        if (!IsHeaderOf(Parsed(lines_[i]), name)) {
            kept.push_back(lines_[i++]);
            continue;
        }
        size_t end = ++i;
        for (; i < lines_.size() && Parsed(lines_[i]).kind != IniLine::Kind::Section; ++i)
            if (!IsBlank(lines_[i]) && !IsComment(lines_[i])) end = i + 1;
        for (i = end; i < lines_.size() && IsBlank(lines_[i]);) ++i;
    }
    lines_ = std::move(kept);
}

void HostsFile::Save(const FileSaver& saver)
{
    const std::string bytes = ToUtf8(Content());
    if (bytes == read_) return;
    if (const int error = MakeFolders(FolderOf(path_)))
        throw SystemFailure(u"The folder of " + FromFileName(path_) + u" cannot be made", error);
    const FileHold hold(path_, kPatience);
    saver.Save(path_, bytes, [&] {
        const std::string now = BytesAt(path_);
        if (now == read_ || now == bytes) return;
        throw Error(error_number::kStorage, FromFileName(path_) + u" was changed by another program. It is not "
                                                                  u"overwritten: cancel, and begin anew with its "
                                                                  u"present state.");
    });
    read_ = bytes;
}

void HostsFile::Insert(size_t at, TextView line)
{
    const TextView lineEnd = !lines_.empty() && lines_.front().ends_with(u"\r\n") ? u"\r\n" : u"\n";
    if (at > 0 && !lines_[at - 1].ends_with(u'\n')) lines_[at - 1] += lineEnd;
    lines_.insert(lines_.begin() + static_cast<ptrdiff_t>(at), Text(line).append(lineEnd));
}

/// At the end, with an empty line before it.
void HostsFile::AppendSection(TextView name)
{
    if (!lines_.empty() && !IsBlank(lines_.back())) Insert(lines_.size(), {});
    Insert(lines_.size(), u"[" + Text(name) + u"]");
}

Text HostsFile::CheckedName(TextView name) const
{
    name = Trim(name);
    if (name.empty()) throw Error(error_number::kStorage, u"A connection needs a name.");
    CheckFits(name, u"A name");
    if (name.find(u']') != TextView::npos)
        throw Error(error_number::kStorage, u"The name of a connection cannot hold the character \"]\".");
    if (Has(name)) throw Error(error_number::kStorage, u"There is a connection named \"" + Text(name) + u"\" already.");
    return Text(name);
}

} // namespace nib
