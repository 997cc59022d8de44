#pragma once
#include "base/Text.h"

#include <vector>

namespace nib {

/// The names of a list with their case folded once, so that a keystroke in a filter is one pass over a flat text.
class NameFilter {
public:
    void Clear();
    void Add(TextView name);

    /// A pattern in the form that Matches() takes.
    static Text Fold(TextView pattern);
    /// Name `number` (in the order of Add) holds the folded pattern, or is matched by it as a whole when "*" and "?"
    /// are read as wildcards. An empty pattern matches everything.
    bool Matches(int32_t number, TextView folded) const;

private:
    Text names_;
    std::vector<size_t> ends_{0};
};

} // namespace nib
