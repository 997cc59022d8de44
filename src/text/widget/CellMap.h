#pragma once
// Columns of a line against the cells of a fixed grid.

#include "base/Text.h"

#include <vector>

namespace nib {

class CellMap {
public:
    /// A line whose every unit takes one cell.
    void BuildPlain(int32_t columns);
    /// Any other line; keeps its text. Wide characters take two cells, combining ones none.
    void Build(TextView text);

    bool Plain() const { return checkpoints_.empty(); }
    int32_t Columns() const { return columns_; }
    int32_t Cells() const { return cells_; }
    /// Cells in front of a column.
    int32_t CellOf(int32_t column) const;
    /// The column of the grapheme that covers the cell.
    int32_t ColumnOf(int32_t cell) const;

private:
    static constexpr int32_t kStep = 256;

    Text text_;
    std::vector<int32_t> checkpoints_; ///< cells in front of every kStep-th column
    int32_t columns_ = 0;
    int32_t cells_ = 0;
};

} // namespace nib
