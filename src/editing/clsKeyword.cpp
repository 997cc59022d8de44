#include "editing/clsKeyword.h"

#include "editing/BlockStyles.h"

namespace nib {

int16_t clsKeyword::BlockStyle() const
{
    const BlockStyleRow* row = FindBlockStyle(Block);
    return row ? row->style : block_style::kNone;
}

TextView clsKeyword::Suffix() const
{
    const BlockStyleRow* row = FindBlockStyle(Block);
    return row ? TextView(&row->suffix, 1) : TextView();
}

} // namespace nib
