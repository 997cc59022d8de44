#pragma once
#include <cstdint>

namespace nib {

/// In points of the screen.
struct ScreenArea {
    int32_t left = 0;
    int32_t top = 0;
    int32_t width = 0;
    int32_t height = 0;

    int32_t Right() const { return left + width; }
    int32_t Bottom() const { return top + height; }
    bool Meets(const ScreenArea& other) const
    {
        return left < other.Right() && other.left < Right() && top < other.Bottom() && other.top < Bottom();
    }
    friend bool operator==(const ScreenArea&, const ScreenArea&) = default;
};

/// Where a window goes that is not to cover a match: inside the screen, and else as near as can be to where it is. One
/// that does not fit beside the match goes to the corner that lies farthest from it.
ScreenArea BesideMatch(ScreenArea window, const ScreenArea& match, const ScreenArea& screen);

} // namespace nib
