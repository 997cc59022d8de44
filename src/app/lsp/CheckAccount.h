#pragma once
#include "base/Text.h"

#include <string>
#include <vector>

namespace nib {

class Dialect;

struct CheckOptions {
    const Dialect* dialect = nullptr;
    std::string indexFolder;
    std::string account;     ///< its folder
    Text file;               ///< empty: all files of the account
    std::vector<Text> items; ///< none: all that read like programs
};

/// Prints a line for each finding, as compilers do; answers how many there are. Throws Error when the account or what
/// was named of it cannot be read.
int64_t CheckAccount(const CheckOptions& options);

} // namespace nib
