#pragma once
// A formatted text on paper: between the margins of the sheet, with the number of the page below it.

#include "printing/QtPaper.h"

class QTextDocument;

namespace nib {

/// The paper's page ranges count. Lays the text out anew.
void DrawTextPages(QTextDocument& text, const Paper& paper);

} // namespace nib
