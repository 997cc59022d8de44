#pragma once
// File names between the system's bytes and text. A byte that is no UTF-8 becomes a lone surrogate U+DC80..U+DCFF, so
// that a file with any name at all can be shown, opened and saved.

#include "base/Text.h"

#include <string>
#include <string_view>

namespace nib {

Text FromFileName(std::string_view bytes);
std::string ToFileName(TextView text);

/// The folder of a path, "/" for what stands in the root and "." for a bare name.
std::string FolderOf(const std::string& path);
std::string LastPart(const std::string& path);
/// `path` from the root of the file system, without "." and ".." and doubled slashes; links are not followed.
std::string AbsolutePath(const std::string& path);
/// Makes the folder and those above it that are missing, for the user alone. Answers 0 or the system's error.
int MakeFolders(const std::string& path);
/// Never over something that is there, not even an empty folder. Answers 0 or the system's error.
int RenameNew(const std::string& from, const std::string& to);
/// Eight random letters for names of temporary files.
std::string RandomSuffix();

} // namespace nib
