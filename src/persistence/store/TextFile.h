#pragma once
// Whole text files, for settings and recovery copies. With `quiet` a failure is an empty answer or false, else it is
// thrown as an Error with the system's text.

#include "base/Text.h"
#include "platform/posix/FileSaver.h"

#include <functional>

namespace nib {

/// Encodings as the program numbers them. Any other number stands for a byte a character.
namespace file_encoding {
inline constexpr int32_t kBinary = -1; ///< the units of the text as they are, without a mark
inline constexpr int32_t kDetect = 0;  ///< reading: found out and answered; writing: the narrowest that holds the text
inline constexpr int32_t kSingleByte = 1;
inline constexpr int32_t kUtf8 = 2;
inline constexpr int32_t kUtf16 = 3; ///< little endian, begins with FF FE: what all settings files use
inline constexpr int32_t kUtf8Alternate = 4;
inline constexpr int32_t kUtf16Alternate = 5;
} // namespace file_encoding

inline constexpr std::string_view kUtf16Mark{"\xFF\xFE"};
inline constexpr std::string_view kUtf8Mark{"\xEF\xBB\xBF"};

/// The encoding that the first bytes, or failing that all of them, tell.
int32_t DetectEncoding(std::string_view bytes);
/// Without a byte order mark; line ends stay as they are.
Text DecodeText(std::string_view bytes, int32_t encoding);
/// UTF-16 gets its byte order mark. In single-byte text a character above U+00FF becomes "?".
std::string EncodeText(TextView text, int32_t encoding);

Text ReadTextFile(TextView path, int32_t& encoding, bool quiet);
/// False when it could not be brought to disk; the old file is then still whole.
bool WriteFile(const FileSaver& saver, TextView path, const std::function<std::string()>& bytes, bool quiet);
bool WriteTextFile(const FileSaver& saver, TextView path, TextView text, int32_t encoding, bool quiet);
/// True when a character lies above U+00FF; with `ignoreMarks` the attribute, value and subvalue marks do not count.
bool HasWideChars(TextView text, bool ignoreMarks);
/// Makes `path` a UTF-16 file, with the text that it has, when `text` is about to be written to it and holds wide
/// characters. Answers whether it does.
bool CheckUnicodeFile(const FileSaver& saver, TextView path, TextView text);

bool KillFile(TextView path, bool quiet);

} // namespace nib
