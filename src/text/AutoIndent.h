#pragma once
// Where a line that is being typed belongs, by the blocks of the lines above it.

#include "text/SourceDocument.h"

namespace nib {

class AutoIndent {
public:
    /// `tabSize` is a level, in columns.
    AutoIndent(const SourceDocument& document, int32_t tabSize) : document_(document), tabSize_(tabSize) {}

    /// Columns for what follows a break of `line` between `head` and `tail`. Nothing where `head` holds no code to go
    /// by: then the line below stands as this one does.
    std::optional<int32_t> Below(int32_t line, TextView head, TextView tail) const;
    /// Where `line` belongs if it reads `text`. Nothing where no line above says so, or where blanks in front do not
    /// move its code.
    std::optional<int32_t> Of(int32_t line, TextView text) const;

private:
    const SourceDocument& document_;
    int32_t tabSize_;
};

} // namespace nib
