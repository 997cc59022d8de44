#pragma once
#include "base/Text.h"

#include <QIcon>

namespace nib {

/// Where the desktop names no icon theme, or one without the icons wanted, a theme that has them steps in, in the
/// brightness of the palette. Called at start and again when the palette changes.
void UseIconTheme();

/// By name: from the desktop's theme, or the program's own where the name begins with "nib-".
QIcon ToolIcon(TextView name);

} // namespace nib
