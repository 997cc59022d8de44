#pragma once
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace nib {

// Places and sizes of windows are stored in twips, 1440 to the logical inch, so that they mean the same on every
// screen.

inline constexpr double kTwipsPerInch = 1440;

/// Rounded, and kept within 32 bits.
inline int32_t Saturated(double value)
{
    constexpr double kLeast = std::numeric_limits<int32_t>::min();
    constexpr double kMost = std::numeric_limits<int32_t>::max();
    return static_cast<int32_t>(std::lround(std::clamp(value, kLeast, kMost)));
}

inline int32_t PixelsToTwips(int32_t pixels, double dotsPerInch)
{
    return dotsPerInch > 0 ? Saturated(pixels * kTwipsPerInch / dotsPerInch) : 0;
}

inline int32_t TwipsToPixels(int32_t twips, double dotsPerInch)
{
    return Saturated(twips * dotsPerInch / kTwipsPerInch);
}

} // namespace nib
