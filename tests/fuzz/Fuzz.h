#pragma once
#include "base/Error.h"
#include "base/Text.h"

#include <algorithm>
#include <cstdlib>

namespace nib {

inline void Require(bool holds)
{
    if (!holds) std::abort();
}

/// What a fuzzer's input is taken from, from the front.
struct Input {
    Input(const uint8_t* data, size_t size) : rest(reinterpret_cast<const char*>(data), size) {}

    size_t Byte()
    {
        if (rest.empty()) return 0;
        const auto value = static_cast<unsigned char>(rest.front());
        rest.remove_prefix(1);
        return value;
    }
    /// Up to the next NUL.
    std::string_view Part()
    {
        const std::string_view part = rest.substr(0, rest.find('\0'));
        rest.remove_prefix(std::min(part.size() + 1, rest.size()));
        return part;
    }

    std::string_view rest;
};

} // namespace nib
