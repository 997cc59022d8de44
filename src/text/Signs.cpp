#include "text/Signs.h"

#include <algorithm>
#include <string_view>

#include <unicode/utf16.h>

namespace nib {

namespace {

struct NameRow {
    char16_t unit;
    std::string_view name;
};

constexpr NameRow kNames[] = {
    {0x00AD, "SHY"}, {0x034F, "CGJ"}, {0x061C, "ALM"}, {0x180E, "MVS"}, {0x200B, "ZWSP"}, {0x200C, "ZWNJ"},
    {0x200D, "ZWJ"}, {0x200E, "LRM"}, {0x200F, "RLM"}, {0x2028, "LS"},  {0x2029, "PS"},   {0x202A, "LRE"},
    {0x202B, "RLE"}, {0x202C, "PDF"}, {0x202D, "LRO"}, {0x202E, "RLO"}, {0x2060, "WJ"},   {0x2066, "LRI"},
    {0x2067, "RLI"}, {0x2068, "FSI"}, {0x2069, "PDI"}, {0xFEFF, "BOM"},
};

constexpr int32_t kMostCells = 4;

Sign Named(std::string_view name, int32_t units)
{
    Sign sign{units, std::min(static_cast<int32_t>(name.size()), kMostCells)};
    std::copy(name.begin(), name.end(), sign.name.begin());
    return sign;
}

Sign Hexadecimal(uint32_t code, int32_t units)
{
    return Named(ToUtf8(Hex(static_cast<int32_t>(code))), units);
}

constexpr bool IsSelector(char16_t c)
{
    return c >= 0xFE00 && c <= 0xFE0F;
}

/// Of tags and of the selectors beyond sixteen.
constexpr bool IsHiddenLead(char16_t c)
{
    return c >= 0xDB40 && c <= 0xDB43;
}

/// A character that a selector behind it may be meant for.
bool IsChosenFrom(TextView text, size_t at)
{
    const char16_t before = at > 0 ? text[at - 1] : u' ';
    if (before <= 0xA0 || before == 0x3000 || IsSign(before) || IsSelector(before)) return false;
    return !U16_IS_TRAIL(before) || at < 2 || !IsHiddenLead(text[at - 2]);
}

Sign Selector(uint32_t number, int32_t units)
{
    return Named("VS" + ToUtf8(Decimal(static_cast<int32_t>(number))), units);
}

} // namespace

std::optional<Sign> SignAt(TextView text, size_t at)
{
    const char16_t c = text[at];
    if (IsSmallSign(c)) return Sign{};
    if (c < 0x7F) return std::nullopt;
    if (IsShownControl(c)) {
        const auto row = std::find_if(std::begin(kNames), std::end(kNames), [c](auto& r) { return r.unit == c; });
        return row != std::end(kNames) ? Named(row->name, 1) : Hexadecimal(c, 1);
    }
    if (IsSelector(c)) return IsChosenFrom(text, at) ? std::nullopt : std::optional(Selector(c - 0xFE00U + 1, 1));
    if (!IsHiddenLead(c) || at + 1 >= text.size() || !U16_IS_TRAIL(text[at + 1])) return std::nullopt;
    const auto code = static_cast<uint32_t>(U16_GET_SUPPLEMENTARY(c, text[at + 1]));
    if (code >= 0xE0100 && code <= 0xE01EF)
        return IsChosenFrom(text, at) ? std::nullopt : std::optional(Selector(code - 0xE0100 + 17, 2));
    // A tag stands for a letter, and many of them for a hidden text.
    if (code > 0xE0020 && code < 0xE007F) return Named(std::string{'t', static_cast<char>(code & 0x7F)}, 2);
    return Hexadecimal(code, 2);
}

} // namespace nib
