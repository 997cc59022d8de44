#include "documents/CompileCommand.h"

#include "documents/CompilerOutput.h"
#include "persistence/store/SettingsStore.h"

#include <algorithm>
#include <optional>

namespace nib {

namespace {

constexpr TextView kLineEnd{u"\r\n"};
constexpr TextView kBlanks{u" \t"};
constexpr TextView kQuotes{u"\"'"};
constexpr char16_t kEscape = 0x1B;
constexpr char16_t kBell = 0x07;
constexpr char16_t kDelete = 0x7F;
constexpr char16_t kControlSequence = 0x9B; ///< ESC [ in one character
constexpr char16_t kLastC1 = 0x9F;
constexpr char16_t kReplacement = 0xFFFD;

/// No window shows more with profit; the first errors and the summary at the end are kept.
constexpr size_t kMostAtFront = size_t{3} << 20;
constexpr size_t kMostAtEnd = size_t{1} << 20;
constexpr size_t kLongestLine = 20'000;
constexpr TextView kLineCut{u" ..."};

bool EqualIgnoringCase(char16_t a, char16_t b)
{
    return a == b || (a >= u'a' && a <= u'z' && a - 0x20 == b);
}

[[noreturn]] void Refuse(TextView name, TextView why)
{
    throw Error(error_number::kBadFileName, Text(name) + u" cannot be compiled: " + Text(why));
}

/// A word of a host's command holds blanks in the quotes that it begins with; behind these every quote is a letter.
Text AsWord(TextView name)
{
    const bool plain = name.find_first_of(kBlanks) == TextView::npos && kQuotes.find(name.front()) == TextView::npos;
    if (plain) return Text(name);
    for (const char16_t quote : kQuotes) {
        const size_t inside = std::min(name.find(quote), name.size());
        if (name.find_first_of(kBlanks, inside) != TextView::npos) continue;
        return Text(1, quote).append(name.substr(0, inside)).append(1, quote).append(name.substr(inside));
    }
    Refuse(name, u"with blanks and both kinds of quotes its name is no single word of a command.");
}

/// Replaces the first `placeholder` (capitals), or appends the name.
void Insert(Text& command, TextView placeholder, TextView name)
{
    if (name.starts_with(u'-') || name.starts_with(u'(')) Refuse(name, u"the host would take its name for an option.");
    const auto found =
        std::search(command.begin(), command.end(), placeholder.begin(), placeholder.end(), EqualIgnoringCase);
    const Text word = name.empty() ? Text() : AsWord(name);
    if (found == command.end()) {
        command.append(u" ").append(word);
        return;
    }
    const auto at = static_cast<size_t>(found - command.begin());
    const char16_t before = at > 0 ? command[at - 1] : u' ';
    const size_t behind = at + placeholder.size();
    const bool quoted = kQuotes.find(before) != TextView::npos && behind < command.size() && command[behind] == before;
    if (quoted && name.find(before) != TextView::npos)
        command.replace(at - 1, placeholder.size() + 2, word);
    else if (quoted || word == name || kBlanks.find(before) != TextView::npos)
        command.replace(at, placeholder.size(), quoted ? name : TextView(word));
    else
        Refuse(name, u"in the compile command its name is a part of a word, which holds no blanks.");
}

bool IsControl(char16_t c)
{
    return (c < u' ' && c != u'\t') || (c >= kDelete && c <= kLastC1);
}

bool IsSurrogate(char16_t c)
{
    return c >= 0xD800 && c <= 0xDFFF;
}

bool IsPair(TextView text, size_t at)
{
    return text[at] < 0xDC00 && at + 1 < text.size() && text[at + 1] >= 0xDC00 && text[at + 1] <= 0xDFFF;
}

/// The end of "ESC [ ... letter".
size_t BehindSequence(TextView line, size_t at)
{
    while (at < line.size() && line[at] >= 0x20 && line[at] <= 0x3F) ++at;
    return std::min(at + 1, line.size());
}

/// The end of an escape sequence; one that the line end cuts off goes so far.
size_t BehindEscape(TextView line, size_t at)
{
    constexpr TextView kStrings{u"]PX^_"}; // those that take a text: titles, device control
    if (line[at] == kControlSequence) return BehindSequence(line, at + 1);
    ++at;
    if (at >= line.size()) return at;
    if (line[at] == u'[') return BehindSequence(line, at + 1);
    if (kStrings.find(line[at]) != TextView::npos) {
        for (; at < line.size(); ++at) {
            if (line[at] == kBell) return at + 1;
            if (line[at] == kEscape) return std::min(at + 2, line.size());
        }
        return at;
    }
    while (at < line.size() && line[at] >= 0x20 && line[at] <= 0x2F) ++at;
    return std::min(at + 1, line.size());
}

/// Appends a line with nothing in it that is not text.
void AppendClean(TextView line, Text& out)
{
    for (size_t at = 0; at < line.size();) {
        const char16_t c = line[at];
        if (c == kEscape || c == kControlSequence) {
            at = BehindEscape(line, at);
            continue;
        }
        if (IsSurrogate(c) && IsPair(line, at)) {
            out.append(line.substr(at, 2));
            at += 2;
            continue;
        }
        out.push_back(IsControl(c) ? u' ' : IsSurrogate(c) ? kReplacement : c);
        ++at;
    }
}

bool NeedsCleaning(TextView line)
{
    return std::any_of(line.begin(), line.end(), [](char16_t c) { return IsControl(c) || IsSurrogate(c); });
}

bool IsNoise(TextView line)
{
    const TextView text = Trim(line);
    if (text.empty()) return true;
    const char16_t c = text.front();
    return text.size() >= 2 && text[1] == c && c < u'A' && !(c >= u'0' && c <= u'9');
}

void AppendLine(TextView line, bool isFirst, Text& out)
{
    if (!isFirst) out.append(kLineEnd);
    if (line.size() <= kLongestLine) {
        out.append(line);
        return;
    }
    const size_t most = kLongestLine - (IsSurrogate(line[kLongestLine]) ? 1 : 0);
    out.append(line.substr(0, most)).append(kLineCut);
}

/// Leaves out whole lines in the middle of what is too long.
Text WithoutMiddle(Text text)
{
    if (text.size() <= kMostAtFront + kMostAtEnd) return text;
    const size_t from = text.find(kLineEnd, kMostAtFront);
    const size_t to = text.rfind(kLineEnd, text.size() - kMostAtEnd);
    if (from == Text::npos || to == Text::npos || to <= from) return text;
    const auto left = std::count(text.begin() + static_cast<std::ptrdiff_t>(from),
                                 text.begin() + static_cast<std::ptrdiff_t>(to), u'\n');
    return text.replace(from, to - from, kLineEnd)
        .insert(from + 2, u"(" + Decimal(left) + u" lines are left out here)");
}

} // namespace

Text BuildCompileCommand(TextView command, TextView options, TextView fileName, TextView itemId)
{
    Text line(command);
    Insert(line, u"%FILENAME%", fileName);
    Insert(line, u"%ITEMID%", itemId);
    if (!options.empty()) line.append(u" ").append(options);
    return line;
}

Text FilterCompileOutput(TextView output)
{
    Text shown;
    Text clean;
    bool isFirst = true;
    for (bool more = true; more;) {
        const size_t end = output.find(kLineEnd);
        TextView line = output.substr(0, end);
        more = end != TextView::npos;
        if (more) output.remove_prefix(end + kLineEnd.size());
        if (NeedsCleaning(line)) {
            clean.clear();
            AppendClean(line, clean);
            line = clean;
        }
        if (IsNoise(line)) continue;
        AppendLine(line, isFirst, shown);
        isFirst = false;
    }
    return WithoutMiddle(std::move(shown));
}

namespace {

/// Nothing, or whether the line says that there was no error.
std::optional<bool> VerdictOf(TextView line)
{
    constexpr TextView kCount{u" error(s)"};
    if (line.ends_with(kCount) && LeadingInt(line) >= 0 && line.front() >= u'0' && line.front() <= u'9')
        return line == Text(u"0").append(kCount);
    if (line.starts_with(u"Compiled ") && line.find(u" with errors") != TextView::npos) return false;
    if (line.starts_with(u"Compiled ") && line.ends_with(u" with no errors")) return true;
    if (line.ends_with(u" checked, no error found.")) return true;
    return std::nullopt;
}

} // namespace

bool IsCleanCompile(TextView output)
{
    bool clean = false;
    for (bool more = true; more;) {
        const size_t end = output.find_first_of(kLineEnd);
        const std::optional<bool> verdict = VerdictOf(Trim(output.substr(0, end)));
        if (verdict == false) return false;
        clean = clean || verdict == true;
        more = end != TextView::npos;
        if (more) output.remove_prefix(end + 1);
    }
    return clean;
}

bool Complains(TextView output)
{
    constexpr TextView kWarning{u"WARNING"};
    const auto found = std::search(output.begin(), output.end(), kWarning.begin(), kWarning.end(), EqualIgnoringCase);
    return found != output.end() || !ErrorsIn(output).empty();
}

} // namespace nib
