#pragma once
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace nib {

/// Length of the ASCII run at the start, looked at eight bytes at a time.
inline size_t AsciiRun(std::string_view bytes)
{
    size_t i = 0;
    for (; i + 8 <= bytes.size(); i += 8) {
        uint64_t word = 0;
        std::memcpy(&word, bytes.data() + i, 8);
        if (word & 0x8080808080808080ULL) break;
    }
    while (i < bytes.size() && static_cast<unsigned char>(bytes[i]) < 0x80) ++i;
    return i;
}

} // namespace nib
