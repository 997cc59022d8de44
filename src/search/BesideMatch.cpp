#include "search/BesideMatch.h"

#include <algorithm>
#include <cstdlib>

namespace nib {

namespace {

/// Between the window and the match, for the lines beside it to be read.
constexpr int32_t kGap = 40;

ScreenArea Inside(ScreenArea window, const ScreenArea& screen)
{
    window.left = std::max(std::min(window.left, screen.Right() - window.width), screen.left);
    window.top = std::max(std::min(window.top, screen.Bottom() - window.height), screen.top);
    return window;
}

int32_t Way(const ScreenArea& a, const ScreenArea& b)
{
    return std::abs(a.left - b.left) + std::abs(a.top - b.top);
}

} // namespace

ScreenArea BesideMatch(ScreenArea window, const ScreenArea& match, const ScreenArea& screen)
{
    window = Inside(window, screen);
    if (!window.Meets(match)) return window;
    const ScreenArea moves[] = {{window.left, match.Bottom() + kGap, window.width, window.height},
                                {window.left, match.top - kGap - window.height, window.width, window.height},
                                {match.Right() + kGap, window.top, window.width, window.height},
                                {match.left - kGap - window.width, window.top, window.width, window.height}};
    const ScreenArea* best = nullptr;
    for (const ScreenArea& move : moves)
        if (Inside(move, screen) == move && (!best || Way(window, move) < Way(window, *best))) best = &move;
    if (best) return *best;
    const bool onLeft = match.left + match.width / 2 < screen.left + screen.width / 2;
    const bool onTop = match.top + match.height / 2 < screen.top + screen.height / 2;
    return Inside(
        {onLeft ? screen.Right() : screen.left, onTop ? screen.Bottom() : screen.top, window.width, window.height},
        screen);
}

} // namespace nib
