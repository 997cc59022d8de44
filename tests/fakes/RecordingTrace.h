#pragma once
#include "platform/Trace.h"

#include <utility>
#include <vector>

namespace nib::test {

/// Keeps the lines of the masks that it wants.
struct RecordingTrace final : TraceChannel {
    int32_t wanted = 1 | 4;
    std::vector<std::pair<int32_t, Text>> lines;

    bool Wants(int32_t mask) const override { return wanted & mask; }
    void Write(TextView line, int32_t mask) override { lines.emplace_back(mask, line); }
    std::vector<std::pair<int32_t, Text>> Take() { return std::exchange(lines, {}); }
};

using TraceLines = std::vector<std::pair<int32_t, Text>>;

} // namespace nib::test
