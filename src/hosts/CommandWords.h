#pragma once
#include "base/Text.h"

#include <vector>

namespace nib {

/// A host command cut at blanks; "..." and '...' keep what they hold together. A quote inside a word, as in O'BRIEN,
/// is a letter, and so is one that is never closed.
std::vector<Text> SplitCommand(TextView command);
/// A program's command line cut as a shell does it: both quotes anywhere in a word, and a backslash before a character
/// to take as it is. Nothing is expanded.
std::vector<Text> SplitProgramLine(TextView line);

} // namespace nib
