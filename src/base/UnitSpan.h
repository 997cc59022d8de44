#pragma once
#include "base/Text.h"

#include <algorithm>

namespace nib {

/// A stored text, not owned: `wide` units of 16 bits, else 8.
struct UnitSpan {
    const void* data = nullptr;
    size_t length = 0;
    bool wide = false;

    const uint8_t* Narrow() const { return static_cast<const uint8_t*>(data); }
    const char16_t* Wide() const { return static_cast<const char16_t*>(data); }
    char16_t operator[](size_t i) const { return wide ? Wide()[i] : Narrow()[i]; }
    void AppendTo(Text& text) const { AppendTo(text, 0, length); }
    void AppendTo(Text& text, size_t from, size_t count) const
    {
        from = std::min(from, length);
        count = std::min(count, length - from);
        if (wide) {
            text.append(Wide() + from, count);
            return;
        }
        const size_t old = text.size();
        text.resize(old + count);
        std::copy_n(Narrow() + from, count, text.data() + old);
    }
};

} // namespace nib
