#pragma once
// Names of accounts, files and items as names of folders and files: whatever a file system cannot hold or would take
// for something else is percent-encoded, so that no id leads out of its folder.

#include "base/Text.h"

#include <optional>
#include <string>
#include <string_view>

namespace nib {

/// "/" and "%", a leading "." and control characters become %XX.
std::string EncodeName(TextView id);
/// Both names in one, never the same for two items: in an encoded name digits follow each "%".
std::string LockName(TextView file, TextView item);
/// The id behind a name as EncodeName makes it; any other visible name stands for itself ("50%", made by another
/// program). No answer for names that belong to no item, those with a leading dot.
std::optional<Text> DecodeName(std::string_view name);
/// The name that `id` goes by in `folder`: the encoded one, unless only the plain one is there. Throws Error when it is
/// too long for a file name.
std::string FindName(const std::string& folder, TextView id);

} // namespace nib
