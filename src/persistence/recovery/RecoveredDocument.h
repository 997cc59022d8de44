#pragma once
#include "documents/mvDocument.h"
#include "persistence/recovery/JournalFile.h"

#include <memory>

namespace nib {

/// Opens a text that was recovered: in its place, as one step of undo on what is stored there, when nobody has changed,
/// locked or removed that since; else as a new document whose first line, a comment, says what it is and why it is not
/// in its place. Null when no document can be made; errors are thrown, and leave none behind.
std::shared_ptr<mvDocument> OpenRecovered(DocumentServices& services, const JournalText& recovered);

} // namespace nib
