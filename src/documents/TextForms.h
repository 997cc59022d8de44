#pragma once
// The two forms of a document's text: the edit form in a view (no TABs) and the item form in storage (CR LF line ends).

#include "base/Text.h"

namespace nib {

/// Edit form: every TAB becomes `width` blanks, one when `width` is below 1.
Text ExpandTabs(TextView text, int32_t width);
/// Item form: unchanged when it holds as many CR as LF, else every line end becomes CR LF.
Text NormalizeLineEnds(TextView text);

} // namespace nib
