#pragma once
#include "base/UnitSpan.h"

#include <cstdint>
#include <functional>

namespace nib {

/// A text by its lines, for whoever writes it down and needs no copy of the whole. It may be walked more than once, and
/// on any thread.
struct LinewiseText {
    using Visit = std::function<void(const UnitSpan& line)>;

    /// Calls visit(line) for each, in order; there is at least one. A line of 8 bits a unit stays where it is until the
    /// walk has ended, any other until the next.
    std::function<void(const Visit& visit)> walk;
    int64_t count = 1;
    size_t units = 0; ///< about as many in all lines

    /// CR LF between lines.
    Text Whole() const
    {
        Text text;
        text.reserve(units + 2 * static_cast<size_t>(count));
        bool first = true;
        walk([&](const UnitSpan& line) {
            if (!first) text.append(u"\r\n");
            first = false;
            line.AppendTo(text);
        });
        return text;
    }
};

} // namespace nib
