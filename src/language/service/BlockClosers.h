#pragma once
#include "language/ProgramAnalyser.h"

#include <optional>

namespace nib {

/// The words that end a block which a line of the program opens for the lines below, if any.
std::optional<Text> CloserOf(const BasicLine& line, const Dialect& dialect);

/// The words that end the block which the last line of code above `line` opens, unless a line that is indented like
/// that one ends it already.
std::optional<Text> MissingCloser(const ProgramAnalyser& program, const Dialect& dialect, int32_t line);

} // namespace nib
