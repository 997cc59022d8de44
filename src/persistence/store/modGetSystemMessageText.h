#pragma once
#include "platform/FileTransfer.h"

namespace nib {

/// The system's text for a system error code. Of a text that ends in CR LF only the LF is cut.
Text GetSystemMessageText(const FileTransfer& files, int32_t code);

} // namespace nib
