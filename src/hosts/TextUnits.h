#pragma once
// The tight loops between bytes and UTF-16 units.

#include "base/Text.h"

#include <string>
#include <string_view>

namespace nib {

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

} // namespace nib
