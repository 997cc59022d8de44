#pragma once
// Line breaks of a text in any unit: bytes of a file or UTF-16.

#include <cstdint>
#include <string_view>

namespace nib {

enum class LineEnd : uint8_t { Lf, CrLf, Cr };

struct BreakCount {
    size_t lf = 0; ///< all LF, those of CR LF too
    size_t cr = 0; ///< all CR, those of CR LF too
    size_t crLf = 0;

    size_t Breaks() const { return lf + cr - crLf; }
    /// The one kind of break that the text uses, `mixed` for several and LF for none.
    LineEnd Style(LineEnd mixed) const
    {
        if (cr == 0) return LineEnd::Lf;
        if (lf == 0) return LineEnd::Cr;
        return lf == crLf && cr == crLf ? LineEnd::CrLf : mixed;
    }
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

} // namespace nib
