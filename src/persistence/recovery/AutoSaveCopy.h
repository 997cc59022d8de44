#pragma once
// What a recovery copy holds: the item id, a line end, and the text of the document.

#include "platform/posix/FileSaver.h"

namespace nib {

/// False when it could not be written; an earlier copy is then still whole.
bool WriteAutoSaveCopy(const FileSaver& saver, TextView path, TextView itemId, TextView text);
/// The whole of the file, exactly as it was written; nothing when it cannot be read.
std::optional<Text> ReadAutoSaveCopy(TextView path);

} // namespace nib
