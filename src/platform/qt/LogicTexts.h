#pragma once
#include "base/Text.h"

#include <QString>

namespace nib {

/// A text that the logic has made, in the user's language where it is one that may be translated; all others as they
/// are.
QString Translated(TextView text);

} // namespace nib
