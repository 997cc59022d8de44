#pragma once
// What the words of a line do to the indent, read from the flags that the lexer left on it.

#include "text/SourceContract.h"

namespace nib {

/// Levels that a line steps out before it is placed, and in for the lines behind it.
struct BlockEffect {
    int32_t increment = 0;
    int32_t decrement = 0;
};

BlockEffect BlockEffectOf(uint32_t lineFlags);

/// Length of the label that `text`, of a line with these flags, begins with, its ":" with it.
int32_t LabelLength(TextView text, uint32_t lineFlags);

/// The part that a line plays among the blocks, with the flags that a scan of it gives.
LineIndent IndentOfLine(TextView line, uint32_t lineFlags);

} // namespace nib
