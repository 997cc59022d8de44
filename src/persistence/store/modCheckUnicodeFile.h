#pragma once
#include "platform/FileTransfer.h"

namespace nib {

/// Makes `path` a UTF-16 file, with the text that it has, when `text` is about to be written to it and holds wide
/// characters. Answers whether it does.
bool CheckUnicodeFile(FileTransfer& files, TextView path, TextView text);

} // namespace nib
