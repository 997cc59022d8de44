#pragma once
#include "base/Text.h"

namespace nib {

class Dialect;

/// Whether the text of an item reads like a program, or a part of one: a record of data, a page of help or a script of
/// commands does not.
///
/// Of its first lines with code at least half are assignments, labels, lines for the compiler or begin with a statement
/// of the dialect, and one of them at least can be nothing else.
bool LooksLikeProgram(TextView text, const Dialect& dialect);

/// Files that hold no programs, whatever stands in them: object code, dictionaries, saved lists, what was printed.
bool MayHoldPrograms(TextView file);

} // namespace nib
