#pragma once
#include <optional>
#include <string>
#include <string_view>

namespace nib {

/// Each byte that `keeps(byte, index)` refuses becomes %XX.
template <typename Keeps>
std::string PercentEncode(std::string_view bytes, Keeps&& keeps)
{
    static constexpr char kHexDigits[] = "0123456789ABCDEF";
    std::string out;
    for (size_t i = 0; i < bytes.size(); ++i) {
        const auto c = static_cast<unsigned char>(bytes[i]);
        if (keeps(c, i)) {
            out.push_back(bytes[i]);
        } else {
            out += {'%', kHexDigits[c >> 4], kHexDigits[c & 15]};
        }
    }
    return out;
}

/// No answer when a "%" is not followed by two hexadecimal digits.
inline std::optional<std::string> PercentDecode(std::string_view text)
{
    const auto value = [](char c) {
        constexpr std::string_view kDigits = "0123456789ABCDEFabcdef";
        const size_t at = kDigits.find(c);
        return at == std::string_view::npos ? -1 : static_cast<int>(at < 16 ? at : at - 6);
    };
    std::string out;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            out.push_back(text[i]);
            continue;
        }
        const int high = i + 2 < text.size() ? value(text[i + 1]) : -1;
        const int low = i + 2 < text.size() ? value(text[i + 2]) : -1;
        if (high < 0 || low < 0) return std::nullopt;
        out.push_back(static_cast<char>(high * 16 + low));
        i += 2;
    }
    return out;
}

} // namespace nib
