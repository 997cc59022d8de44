#include "text/AutoIndent.h"

namespace nib {

namespace {

/// Lines above that are asked; farther off, what stands there says little of a line that is typed here.
constexpr int32_t kLookBack = 200;

int32_t Stepped(const LineIndent& above, int32_t stepsOut, int32_t tabSize)
{
    return std::max(above.column + (above.steps.opens - stepsOut) * tabSize, 0);
}

Nesting Joined(Nesting first, Nesting next)
{
    first.Follow(next);
    return first;
}

} // namespace

std::optional<int32_t> AutoIndent::Below(int32_t line, TextView head, TextView tail) const
{
    LineIndent above;
    if (!document_.IndentAt(line, head, above)) return std::nullopt;
    LineIndent below;
    if (!document_.IndentAt(line + 1, tail, below)) return std::nullopt;
    if (above.goesOn) return above.continued ? std::nullopt : std::optional(above.column + tabSize_);
    const int32_t stepsOut = below.code ? below.steps.closes : 0;
    if (above.continued) return Of(line + 1, tail);
    if (above.code) return Stepped(above, stepsOut, tabSize_);
    return above.labelled ? Of(line + 1, {}) : std::nullopt;
}

std::optional<int32_t> AutoIndent::Of(int32_t line, TextView text) const
{
    LineIndent own;
    if (!document_.IndentAt(line, text, own) || own.labelled || own.continued) return std::nullopt;
    Text scratch;
    Nesting behind; // of the lines that go on with the statement
    for (int32_t above = line - 1; above >= 0 && above >= line - kLookBack; --above) {
        LineIndent indent;
        if (!document_.IndentAt(above, document_.LineText(above, scratch), indent)) return std::nullopt;
        if (indent.continued) behind = Joined(indent.steps, behind);
        if (indent.continued || !indent.code) continue;
        indent.steps = Joined({0, indent.steps.opens}, behind);
        return Stepped(indent, own.steps.closes + indent.steps.closes, tabSize_);
    }
    return std::nullopt;
}

} // namespace nib
