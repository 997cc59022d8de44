#pragma once
#include "base/Text.h"

namespace nib {

/// Runs of blanks on loan; each is good until the next is asked for.
class Blanks {
public:
    TextView operator()(int32_t count)
    {
        auto length = static_cast<size_t>(count);
        if (text_.size() < length) text_.resize(length, u' ');
        return TextView(text_).substr(0, length);
    }

private:
    Text text_;
};

} // namespace nib
