#pragma once
#include "base/Text.h"

#include <string>
#include <vector>

namespace nib {

/// "*" stands for any run of characters, "?" for one, and "*.*" for every name; letters must match in case.
bool MatchesWildcard(TextView name, TextView pattern);

/// The names of one folder that match, sorted, as they were when the scan began.
class FolderScan {
public:
    /// Answers 0 or the system's error.
    int Open(TextView pattern);
    bool Next(Text& name);
    /// file_attribute bits of the present entry, -1 when it cannot be asked.
    int32_t Attributes() const;

private:
    std::string folder_;
    std::vector<std::string> names_;
    size_t next_ = 0;
};

} // namespace nib
