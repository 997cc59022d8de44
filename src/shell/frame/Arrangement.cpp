#include "shell/frame/Arrangement.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace nib {

namespace {

/// Cut number `index` of `parts` even cuts through `whole`.
int32_t Cut(int32_t whole, int32_t index, int32_t parts)
{
    return static_cast<int32_t>(int64_t(whole) * index / parts);
}

/// Bands across `along`, each cut into windows; the last bands take one window more where the count does not come out
/// even. With `turned` the bands run the other way.
std::vector<Cell> Tiles(int32_t count, int32_t width, int32_t height, bool turned)
{
    if (turned) std::swap(width, height);
    std::vector<Cell> cells;
    auto rows = std::max(static_cast<int32_t>(std::sqrt(double(count))), 1);
    int32_t columns = count / rows;
    int32_t larger = count - rows * columns;
    for (int32_t column = 0; column < columns; ++column) {
        int32_t left = Cut(width, column, columns);
        int32_t right = Cut(width, column + 1, columns);
        int32_t inThis = rows + (column >= columns - larger ? 1 : 0);
        for (int32_t row = 0; row < inThis; ++row) {
            int32_t top = Cut(height, row, inThis);
            Cell cell{left, top, right - left, Cut(height, row + 1, inThis) - top};
            if (turned) cell = {cell.top, cell.left, cell.height, cell.width};
            cells.push_back(cell);
        }
    }
    return cells;
}

std::vector<Cell> Steps(int32_t count, int32_t width, int32_t height, int32_t step)
{
    std::vector<Cell> cells;
    Cell cell{0, 0, width * 3 / 4, height * 3 / 4};
    int32_t fit = step > 0 ? std::min(width - cell.width, height - cell.height) / step + 1 : 1;
    for (int32_t i = 0; i < count; ++i) {
        cell.left = cell.top = i % std::max(fit, 1) * step;
        cells.push_back(cell);
    }
    return cells;
}

} // namespace

std::vector<Cell> ArrangedCells(Arrangement how, int32_t count, int32_t width, int32_t height, int32_t step)
{
    if (count < 1) return {};
    if (how == Arrangement::Cascade) return Steps(count, width, height, step);
    return Tiles(count, width, height, how == Arrangement::TileHorizontal);
}

} // namespace nib
