#include "compare/history/VersionText.h"

#include <algorithm>

namespace nib {

namespace {

constexpr bool IsSurrogate(char16_t c)
{
    return (c & 0xF800) == 0xD800;
}

constexpr bool IsPair(TextView text, size_t at)
{
    return (text[at] & 0xFC00) == 0xD800 && at + 1 < text.size() && (text[at + 1] & 0xFC00) == 0xDC00;
}

void AppendLine(TextView line, std::string& out)
{
    size_t from = 0;
    for (size_t at = 0; at < line.size(); ++at) {
        if (!IsSurrogate(line[at])) continue;
        if (IsPair(line, at)) {
            ++at;
            continue;
        }
        out += ToUtf8(line.substr(from, at - from));
        out += {static_cast<char>(0xE0 | line[at] >> 12), static_cast<char>(0x80 | (line[at] >> 6 & 0x3F)),
                static_cast<char>(0x80 | (line[at] & 0x3F))};
        from = at + 1;
    }
    out += ToUtf8(line.substr(from));
}

/// The half of a pair that these bytes stand for; 0 where they do not.
char16_t HalfAt(std::string_view bytes)
{
    const auto at = [&](size_t i) { return static_cast<unsigned char>(bytes[i]); };
    if (bytes.size() < 3 || at(0) != 0xED || at(1) < 0xA0 || (at(1) & 0xC0) != 0x80 || (at(2) & 0xC0) != 0x80) return 0;
    return static_cast<char16_t>(0xD000 | (at(1) & 0x3F) << 6 | (at(2) & 0x3F));
}

} // namespace

std::string VersionBytes(const LinewiseText& text)
{
    std::string out;
    out.reserve(text.units + static_cast<size_t>(text.count) + 16);
    Text units;
    text.walk([&](const UnitSpan& line) {
        const std::string_view narrow(static_cast<const char*>(line.data), line.wide ? 0 : line.length);
        if (!line.wide && AsciiRun(narrow) == narrow.size()) {
            out += narrow;
        } else {
            units.clear();
            line.AppendTo(units);
            AppendLine(units, out);
        }
        out += '\n';
    });
    return out;
}

Text VersionText(std::string_view bytes)
{
    if (bytes.ends_with('\n')) bytes.remove_suffix(1);
    std::string ends;
    ends.reserve(bytes.size() + bytes.size() / 16);
    for (char c : bytes) {
        if (c == '\n') ends += '\r';
        ends += c;
    }
    if (IsValidUtf8(ends)) return FromUtf8(ends);
    Text text;
    std::string_view rest(ends);
    while (!rest.empty()) {
        const size_t at = std::min(rest.find('\xED'), rest.size());
        text += FromUtf8(rest.substr(0, at));
        rest.remove_prefix(at);
        if (const char16_t half = HalfAt(rest)) {
            text += half;
            rest.remove_prefix(3);
        } else if (!rest.empty()) {
            const size_t next = std::min(rest.find('\xED', 1), rest.size());
            text += FromUtf8(rest.substr(0, next));
            rest.remove_prefix(next);
        }
    }
    return text;
}

} // namespace nib
