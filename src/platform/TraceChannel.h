#pragma once
#include "base/Text.h"

namespace nib {

/// Where the debug log's lines go. `mask` is a category: 1 errors, 2 object life, 4 command line, 16 lexer tokens.
class TraceChannel {
public:
    virtual ~TraceChannel() = default;
    /// Asked before a line is built, so that a line that nobody wants costs nothing.
    virtual bool Wants(int32_t mask) const = 0;
    virtual void Write(TextView line, int32_t mask) = 0;
};

} // namespace nib
