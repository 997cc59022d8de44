#pragma once
#include "base/Text.h"

#include <vector>

namespace nib {

/// The names of a list with their case folded once, so that a keystroke in a filter is one pass over a flat text.
class NameFilter {
public:
    void Clear();
    void Add(TextView name);

    /// A pattern made ready for many names.
    struct Pattern {
        Text literal;
        Text wild; ///< empty without wildcards
    };
    static Pattern Prepare(TextView pattern);
    /// Name `number` (in the order of Add) holds the pattern, or matches it with "*" and "?" read as wildcards:
    /// anywhere, unless a "*" at one end of the pattern ties the other end down. An empty pattern matches everything.
    bool Matches(int32_t number, const Pattern& pattern) const;

private:
    Text names_;
    std::vector<size_t> ends_{0};
};

} // namespace nib
