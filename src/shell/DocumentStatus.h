#pragma once
#include "documents/mvDocument.h"

namespace nib {

class MenuModel;

/// Whether others may write an item meanwhile; empty where there are no locks.
Text LockText(const mvDocument& document);
/// What the text is written in; empty where that is not known.
Text CodingText(const mvDocument& document);
Text EndsText(const mvDocument& document);

/// Shows in the panels where the document is, how it is stored and what dialect programs are read in; nothing for null.
void ShowDocumentStatus(MenuModel& menus, const mvDocument* document, TextView dialect);

} // namespace nib
