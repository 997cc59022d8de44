#pragma once
// Whole text files, for settings and recovery copies. With `quiet` a failure is an empty answer or false, else it is
// thrown as an Error with the system's text.

#include "platform/FileTransfer.h"

namespace nib {

/// Encodings as the program numbers them.
namespace file_encoding {
inline constexpr int32_t kBinary = -1;
inline constexpr int32_t kDetect = 0; ///< reading: found out and answered; writing: the narrowest that holds the text
inline constexpr int32_t kSingleByte = 1;
inline constexpr int32_t kUtf8 = 2;
inline constexpr int32_t kUtf16 = 3; ///< what all settings files use
} // namespace file_encoding

Text ReadTextFile(FileTransfer& files, TextView path, int32_t& encoding, bool quiet);
bool WriteTextFile(FileTransfer& files, TextView path, TextView text, int32_t encoding, bool quiet);
/// True when a character lies above U+00FF; with `ignoreMarks` the attribute, value and subvalue marks do not count.
bool HasWideChars(TextView text, bool ignoreMarks);
bool KillFile(FileTransfer& files, TextView path, bool quiet);
bool MakeFolder(FileTransfer& files, TextView path, bool quiet);

} // namespace nib
