#pragma once
#include "base/Text.h"

#include <string>
#include <string_view>

namespace nib {

/// The encoding (transfer_encoding) that the first bytes, or failing that all of them, tell.
int32_t DetectEncoding(std::string_view bytes);
/// Without a byte order mark; line ends stay as they are.
Text DecodeTransfer(std::string_view bytes, int32_t encoding);
/// UTF-16 gets its byte order mark. In single-byte text a character above U+00FF becomes "?".
std::string EncodeTransfer(TextView text, int32_t encoding);

} // namespace nib
