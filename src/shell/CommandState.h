#pragma once
#include "shell/Commands.h"

namespace nib {

/// Enabled and checked states of all tools of menus and tool bar, afresh.
void UpdateToolBar(const CommandContext& context);

} // namespace nib
