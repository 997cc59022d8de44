#pragma once
#include "editing/MvEdit.h"
#include "text/SourceView.h"

namespace nib {

class LexClass;

/// Puts the settings on a view: font, tab size, colours, margin, both token tables, and on the lexer of its document,
/// if it has one; what was scanned is scanned again. Runs when a document gets its window and after every change of the
/// settings, which outlive the view.
void ApplyViewSettings(SourceView& view, const MvEdit& settings, LexClass* lexer = nullptr);

/// Characters that the margin needs: digits of the line numbers, a blank, and the column of the blocks.
int32_t MarginWidthFor(SourceView& view);

} // namespace nib
