#include "text/AutoIndent.h"

namespace nib {

namespace {

/// Lines above that are asked; farther off, what stands there says little of a line that is typed here.
constexpr int32_t kLookBack = 200;

int32_t Stepped(const LineIndent& above, int32_t stepsOut, int32_t tabSize)
{
    return std::max(above.column + (above.steps.opens - stepsOut) * tabSize, 0);
}

} // namespace

std::optional<int32_t> AutoIndent::Below(int32_t line, TextView head, TextView tail) const
{
    LineIndent above;
    if (!document_.IndentAt(line, head, above)) return std::nullopt;
    LineIndent below;
    if (!document_.IndentAt(line + 1, tail, below)) return std::nullopt;
    const int32_t stepsOut = below.code ? below.steps.closes : 0;
    if (above.code) return Stepped(above, stepsOut, tabSize_);
    return above.labelled ? Of(line + 1, {}) : std::nullopt;
}

std::optional<int32_t> AutoIndent::Of(int32_t line, TextView text) const
{
    LineIndent own;
    if (!document_.IndentAt(line, text, own) || own.labelled) return std::nullopt;
    Text scratch;
    for (int32_t above = line - 1; above >= 0 && above >= line - kLookBack; --above) {
        LineIndent indent;
        if (!document_.IndentAt(above, document_.LineText(above, scratch), indent)) return std::nullopt;
        if (indent.code) return Stepped(indent, own.steps.closes, tabSize_);
    }
    return std::nullopt;
}

} // namespace nib
