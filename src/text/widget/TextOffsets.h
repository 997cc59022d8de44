#pragma once
// Positions as offsets into the whole text, a line break counting one: what readers of a screen ask for.

#include "text/SourceBuffer.h"

#include <vector>

namespace nib {

class TextOffsets {
public:
    explicit TextOffsets(const SourceBuffer& buffer) : buffer_(buffer) {}

    int32_t Of(Position p);
    Position At(int32_t offset);
    int32_t Count();
    /// With "\n" between lines.
    Text Range(int32_t start, int32_t end);
    /// Lines from `line` on have moved.
    void Forget(int32_t line);

private:
    void KnowUpTo(int32_t line);

    const SourceBuffer& buffer_;
    std::vector<int32_t> starts_; ///< offsets of the first lines, as far as anyone asked
};

} // namespace nib
