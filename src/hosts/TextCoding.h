#pragma once
// Between bytes and UTF-16: line breaks of a text in either, the tight loops, and the character sets by name.

#include "base/Text.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace nib {

enum class LineEnd : uint8_t { Lf, CrLf, Cr };

struct BreakCount {
    size_t lf = 0; ///< all LF, those of CR LF too
    size_t cr = 0; ///< all CR, those of CR LF too
    size_t crLf = 0;

    /// The kind of break that most lines have; LF when there is none.
    LineEnd Usual() const
    {
        if (lf - crLf >= std::max(crLf, cr - crLf)) return LineEnd::Lf;
        return crLf >= cr - crLf ? LineEnd::CrLf : LineEnd::Cr;
    }
    bool Mixed() const { return (lf > crLf) + (cr > crLf) + (crLf > 0) > 1; }
};

template <typename Unit>
BreakCount CountBreaks(std::basic_string_view<Unit> text)
{
    BreakCount count;
    for (size_t at = text.find(Unit{'\n'}); at != text.npos; at = text.find(Unit{'\n'}, at + 1)) ++count.lf;
    for (size_t at = text.find(Unit{'\r'}); at != text.npos; at = text.find(Unit{'\r'}, at + 1)) {
        ++count.cr;
        if (at + 1 < text.size() && text[at + 1] == Unit{'\n'}) ++count.crLf;
    }
    return count;
}

template <typename Unit>
bool HasCr(std::basic_string_view<Unit> text)
{
    return text.find(Unit{'\r'}) != text.npos;
}

/// At least as many as the text has.
template <typename Unit>
size_t MostBreaks(std::basic_string_view<Unit> text)
{
    return static_cast<size_t>(std::count_if(text.begin(), text.end(), [](Unit c) { return c == '\n' || c == '\r'; }));
}

/// A line that ends otherwise than most.
struct OddEnd {
    int32_t line = 0; ///< from 0
    LineEnd end = LineEnd::Lf;

    friend bool operator==(const OddEnd&, const OddEnd&) = default;
};

template <typename Unit>
std::vector<OddEnd> FindOddEnds(std::basic_string_view<Unit> text, LineEnd usual)
{
    static constexpr Unit kBreaks[] = {'\r', '\n', 0};
    std::vector<OddEnd> odd;
    int32_t line = 0;
    for (size_t at = text.find_first_of(kBreaks); at != text.npos; at = text.find_first_of(kBreaks, at), ++line) {
        LineEnd end = text[at] == Unit{'\n'} ? LineEnd::Lf : LineEnd::Cr;
        if (end == LineEnd::Cr && at + 1 < text.size() && text[at + 1] == Unit{'\n'}) end = LineEnd::CrLf;
        at += end == LineEnd::CrLf ? 2 : 1;
        if (end != usual) odd.push_back({line, end});
    }
    return odd;
}

/// Calls line(piece, broken) for each line; `broken` tells that a break follows, be it LF, CR LF or CR.
template <typename Unit, typename Line>
void ForEachLine(std::basic_string_view<Unit> text, bool hasCr, Line&& line)
{
    for (;;) {
        const size_t lf = text.find(Unit{'\n'});
        std::basic_string_view<Unit> rest = text.substr(0, lf);
        if (hasCr) {
            if (lf != text.npos && rest.ends_with(Unit{'\r'})) rest.remove_suffix(1);
            for (size_t cr = rest.find(Unit{'\r'}); cr != rest.npos; cr = rest.find(Unit{'\r'})) {
                line(rest.substr(0, cr), true);
                rest.remove_prefix(cr + 1);
            }
        }
        line(rest, lf != text.npos);
        if (lf == text.npos) return;
        text.remove_prefix(lf + 1);
    }
}

/// Each byte as the unit of the same number. Fixed steps of 16, which compilers turn into vector code.
inline char16_t* Widen(std::string_view bytes, char16_t* __restrict out)
{
    const auto* __restrict in = reinterpret_cast<const unsigned char*>(bytes.data());
    size_t i = 0;
    for (; i + 16 <= bytes.size(); i += 16)
        for (size_t k = 0; k < 16; ++k) out[i + k] = in[i + k];
    for (; i < bytes.size(); ++i) out[i] = in[i];
    return out + bytes.size();
}

/// The same, with the bytes FB to FF as marks.
inline char16_t* WidenWithMarks(std::string_view bytes, char16_t* out)
{
    for (char byte : bytes) {
        const auto c = static_cast<unsigned char>(byte);
        *out++ = static_cast<char16_t>(c >= 0xFB ? 0xF800 | c : c);
    }
    return out;
}

/// Length of the run of units from 1 to 7F at the start.
inline size_t AsciiRun(TextView text)
{
    size_t i = 0;
    while (i < text.size() && static_cast<char16_t>(text[i] - 1) < 0x7F) ++i;
    return i;
}

inline void AppendNarrow(TextView ascii, std::string& out)
{
    const size_t at = out.size();
    out.resize(at + ascii.size());
    for (size_t i = 0; i < ascii.size(); ++i) out[at + i] = static_cast<char>(ascii[i]);
}

/// A character set by name: UTF-8, ISO-8859-1, or any of ICU's that keeps ASCII as it is and has no state.
class Charset {
public:
    enum class Kind : uint8_t { Utf8, Latin1, Named };

    /// Latin-1.
    Charset() = default;
    /// Throws Error for a name that is not known or not based on ASCII.
    explicit Charset(TextView name);

    Kind GetKind() const { return kind_; }
    Text Name() const { return name_; }
    /// Only for kind Named: no answer when the bytes do not come back as they were.
    std::optional<Text> Decode(std::string_view bytes) const;
    /// Only for kind Named: no answer when it cannot hold all of the text.
    std::optional<std::string> Encode(TextView text) const;

private:
    Kind kind_ = Kind::Latin1;
    Text name_ = u"ISO-8859-1";
};

} // namespace nib
