#include "text/widget/CellMap.h"

#include "text/TextSearch.h"
#include "text/widget/CharacterKind.h"

#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include <algorithm>

namespace nib {

namespace {

/// Cells of the character that begins at `column`; the second half of a pair counts none.
int32_t CellsAt(TextView text, int32_t column)
{
    char16_t unit = text[static_cast<size_t>(column)];
    if (unit < 0x300 || IsSign(unit)) return 1;
    if (U16_IS_TRAIL(unit) && column > 0 && U16_IS_LEAD(text[static_cast<size_t>(column) - 1])) return 0;
    UChar32 c = 0;
    U16_GET(text.data(), 0, column, static_cast<int32_t>(text.size()), c);
    if (U_GET_GC_MASK(c) & (U_GC_MN_MASK | U_GC_ME_MASK | U_GC_CF_MASK)) return 0;
    int32_t width = u_getIntPropertyValue(c, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

} // namespace

void CellMap::BuildPlain(int32_t columns)
{
    text_.clear();
    checkpoints_.clear();
    columns_ = cells_ = columns;
}

void CellMap::Build(TextView text)
{
    text_ = text;
    checkpoints_.clear();
    columns_ = static_cast<int32_t>(text.size());
    cells_ = 0;
    checkpoints_.reserve(text.size() / kStep + 1);
    for (int32_t column = 0; column < columns_; ++column) {
        if (column % kStep == 0) checkpoints_.push_back(cells_);
        cells_ += CellsAt(text, column);
    }
    if (columns_ == 0) checkpoints_.push_back(0);
}

int32_t CellMap::CellOf(int32_t column) const
{
    column = std::clamp(column, 0, columns_);
    if (Plain()) return column;
    auto step = std::min(static_cast<size_t>(column / kStep), checkpoints_.size() - 1);
    int32_t cells = checkpoints_[step];
    for (int32_t at = static_cast<int32_t>(step) * kStep; at < column; ++at) cells += CellsAt(text_, at);
    return cells;
}

int32_t CellMap::ColumnOf(int32_t cell) const
{
    cell = std::clamp(cell, 0, cells_);
    if (Plain()) return cell;
    auto above = std::upper_bound(checkpoints_.begin(), checkpoints_.end(), cell);
    auto step = static_cast<int32_t>(std::distance(checkpoints_.begin(), above)) - 1;
    int32_t cells = checkpoints_[static_cast<size_t>(step)];
    int32_t column = step * kStep;
    while (column < columns_) {
        cells += CellsAt(text_, column);
        if (cells > cell) break;
        ++column;
    }
    return GraphemeStart(text_, column);
}

} // namespace nib
