#include "hosts/NameRules.h"

#include "base/Error.h"
#include "platform/posix/FileContent.h"
#include "platform/posix/FileName.h"

#include <algorithm>
#include <climits>

#include <sys/stat.h>

namespace nib {

namespace {

struct Escape {
    char character;
    char letter;
};
constexpr Escape kFirstOnly[] = {{'.', 'd'}, {'~', 't'}};
constexpr Escape kAnywhere[] = {{'/', 'S'}, {'\\', 'B'}, {'%', 'P'}, {'*', 'A'}, {'?', 'Z'}, {':', 'X'}, {';', 'Y'},
                                {'"', 'Q'}, {',', 'C'},  {'=', 'E'}, {'+', 'V'}, {'<', 'L'}, {'>', 'G'}};

/// An item of this name would pass for the first part of a hashed file, and its folder for such a file.
constexpr std::string_view kHashedPart = "~0";

bool IsKept(unsigned char c, size_t at)
{
    return c >= 0x20 && c != 0x7F && c != '/' && c != '%' && (c != '.' || at > 0);
}

bool IsHeldByServers(unsigned char c)
{
    return c >= 0x20 && c < 0x7F;
}

template <size_t N>
const Escape* FindIn(const Escape (&rows)[N], char Escape::*member, char wanted)
{
    const auto found =
        std::find_if(std::begin(rows), std::end(rows), [&](const Escape& row) { return row.*member == wanted; });
    return found == std::end(rows) ? nullptr : found;
}

std::string Escaped(std::string_view id)
{
    std::string name;
    for (size_t i = 0; i < id.size(); ++i) {
        const Escape* row = i == 0 ? FindIn(kFirstOnly, &Escape::character, id[i]) : nullptr;
        if (!row) row = FindIn(kAnywhere, &Escape::character, id[i]);
        if (row)
            name += {'%', row->letter};
        else
            name.push_back(id[i]);
    }
    return name;
}

std::optional<std::string> Unescaped(std::string_view name)
{
    std::string id;
    for (size_t i = 0; i < name.size(); ++i) {
        if (name[i] != '%') {
            id.push_back(name[i]);
            continue;
        }
        const char letter = i + 1 < name.size() ? name[i + 1] : '\0';
        const Escape* row = i == 0 ? FindIn(kFirstOnly, &Escape::letter, letter) : nullptr;
        if (!row) row = FindIn(kAnywhere, &Escape::letter, letter);
        if (!row) return std::nullopt;
        id.push_back(row->character);
        ++i;
    }
    return id;
}

bool Exists(const std::string& path)
{
    struct stat status {};
    return lstat(path.c_str(), &status) == 0;
}

bool IsPlainName(std::string_view name)
{
    return !name.empty() && name.front() != '.' && name.find('/') == std::string_view::npos &&
           name.find('\0') == std::string_view::npos;
}

/// Why the id can have no such name; empty when it can.
Text FaultOf(TextView id, const std::string& name, IdRule rule)
{
    if (name.size() > NAME_MAX) {
        return u"The name \"" + Text(id.substr(0, 40)) + u"...\" is too long: " +
               Decimal(static_cast<int64_t>(name.size())) + u" of " + Decimal(NAME_MAX) + u" bytes.";
    }
    if (rule == IdRule::Plain || std::all_of(name.begin(), name.end(), IsHeldByServers)) return {};
    return u"\"" + Text(id.substr(0, 40)) +
           u"\" cannot be the id of an item of this file: its server takes only the characters of ASCII, and none of "
           u"them that control a terminal.";
}

} // namespace

std::optional<IdRule> IdRuleNamed(TextView word)
{
    if (word.empty()) return std::nullopt;
    if (EqualsNoCase(word, u"plain")) return IdRule::Plain;
    if (EqualsNoCase(word, u"escaped")) return IdRule::Escaped;
    throw Error(error_number::kStorage, u"ids=" + Text(word) + u" in hosts.conf is neither ids=plain nor ids=escaped.");
}

std::string EncodeName(TextView id, IdRule rule)
{
    const std::string bytes = ToFileName(id);
    if (rule == IdRule::Escaped) return Escaped(bytes);
    return bytes == kHashedPart ? "%7E0" : PercentEncode(bytes, IsKept);
}

std::string LockName(TextView file, TextView item)
{
    return EncodeName(file) + "%%" + EncodeName(item);
}

std::optional<Text> DecodeName(std::string_view name, IdRule rule)
{
    if (!IsPlainName(name)) return std::nullopt;
    const std::optional<std::string> bytes = rule == IdRule::Escaped ? Unescaped(name) : PercentDecode(name);
    if (!bytes) return FromFileName(name);
    Text id = FromFileName(*bytes);
    return EncodeName(id, rule) == name ? id : FromFileName(name);
}

std::optional<std::string> NameIfAny(const std::string& folder, TextView id, IdRule rule)
{
    std::string name = EncodeName(id, rule);
    const bool possible = FaultOf(id, name, rule).empty();
    std::string plain = ToFileName(id);
    const bool onlyPlain = plain != name && IsPlainName(plain) && !(possible && Exists(folder + "/" + name)) &&
                           Exists(folder + "/" + plain);
    if (onlyPlain) return plain;
    return possible ? std::optional(std::move(name)) : std::nullopt;
}

std::string FindName(const std::string& folder, TextView id, IdRule rule)
{
    if (std::optional<std::string> name = NameIfAny(folder, id, rule)) return *std::move(name);
    throw Error(error_number::kBadFileName, FaultOf(id, EncodeName(id, rule), rule));
}

} // namespace nib
