#pragma once
// Names of accounts, files and items as names of folders and files, so that no id leads out of its folder.

#include "base/Text.h"

#include <optional>
#include <string>
#include <string_view>

namespace nib {

/// How the id of an item is written as the name of its file.
enum class IdRule : uint8_t {
    Plain,   ///< "/" and "%", a leading "." and control characters become %XX, and "~0" does
    Escaped, ///< as MultiValue servers do it: "%" and a letter for each character that they escape
};

/// The word of a configuration; none for one that is empty. Throws Error for any other.
std::optional<IdRule> IdRuleNamed(TextView word);

std::string EncodeName(TextView id, IdRule rule = IdRule::Plain);
/// Both names in one, never the same for two items: in an encoded name digits follow each "%".
std::string LockName(TextView file, TextView item);
/// The id behind a name as EncodeName makes it; any other visible name stands for itself ("50%", made by another
/// program). No answer for names that belong to no item, those with a leading dot.
std::optional<Text> DecodeName(std::string_view name, IdRule rule = IdRule::Plain);
/// The name that `id` goes by in `folder`: the encoded one, unless only the plain one is there. Throws Error when it is
/// too long for a file name, or no id that the rule knows.
std::string FindName(const std::string& folder, TextView id, IdRule rule = IdRule::Plain);
/// FindName for a question: no answer where there can be no such name.
std::optional<std::string> NameIfAny(const std::string& folder, TextView id, IdRule rule = IdRule::Plain);

} // namespace nib
