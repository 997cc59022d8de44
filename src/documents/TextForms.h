#pragma once
// The form of a document's text in storage.

#include "base/Text.h"

namespace nib {

/// Unchanged when it holds as many CR as LF, else every line end becomes CR LF.
Text NormalizeLineEnds(TextView text);

} // namespace nib
