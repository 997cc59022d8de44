#pragma once
#include "editing/MvEdit.h"
#include "editing/SourceView.h"

namespace nib {

/// Puts the settings on a view: font, tab size, colours, margin, both token tables. Runs when a document gets its
/// window and after every change of the settings.
void ApplyViewSettings(SourceView& view, const MvEdit& settings);

} // namespace nib
