#pragma once
#include <compare>
#include <cstdint>

namespace nib {

/// A place in a text, 0-based; `col` counts UTF-16 units. What a user sees is 1-based.
struct Position {
    int32_t col = 0;
    int32_t line = 0;

    friend bool operator==(const Position&, const Position&) = default;
    friend std::strong_ordering operator<=>(const Position& a, const Position& b)
    {
        if (auto byLine = a.line <=> b.line; byLine != 0) return byLine;
        return a.col <=> b.col;
    }
};

} // namespace nib
