#pragma once
// Where child windows go when they are put in order.

#include <cstdint>
#include <vector>

namespace nib {

enum class Arrangement { Cascade = 0, TileHorizontal = 1, TileVertical = 2 };

struct Cell {
    int32_t left = 0;
    int32_t top = 0;
    int32_t width = 0;
    int32_t height = 0;

    friend bool operator==(const Cell&, const Cell&) = default;
};

/// The places of `count` windows in an area: tiles fill it without gap or overlap; a cascade steps down and right by
/// `step`, and begins anew at the corner where a window would stick out. A cascade's front window comes last.
std::vector<Cell> ArrangedCells(Arrangement how, int32_t count, int32_t width, int32_t height, int32_t step);

} // namespace nib
