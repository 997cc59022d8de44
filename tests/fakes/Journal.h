#pragma once
#include "base/Text.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace nib::test {

/// What several fakes did, in one order.
struct Journal {
    std::vector<Text> lines;

    void Add(Text line) { lines.push_back(std::move(line)); }
    std::vector<Text> Take() { return std::exchange(lines, {}); }
    bool Has(TextView line) const { return std::find(lines.begin(), lines.end(), line) != lines.end(); }
};

} // namespace nib::test
