#include "editing/operations/OpReplace.h"

namespace nib {

namespace {
constexpr int32_t kLinesChanged = 70;
}

Text GatherText(const SourceDocument& document, Position start, Position end)
{
    auto from = static_cast<size_t>(start.col);
    auto to = static_cast<size_t>(end.col);
    Text first = document.GetLine(start.line);
    if (start.line == end.line) return first.substr(from, to - from);
    Text text = first.substr(from);
    for (int32_t line = start.line + 1; line < end.line; ++line) text.append(u"\r\n").append(document.GetLine(line));
    return text.append(u"\r\n").append(document.GetLine(end.line), 0, to);
}

void OpReplace::DoOp(SourceDocument& document)
{
    oldText_ = GatherText(document, start_, end_);
    document.DeleteRange(start_, end_);
    newEnd_ = document.InsertText(start_, replaceWith_);
    document.NotifyChange(kLinesChanged, start_.line, newEnd_.line, newEnd_);
    document.UpdateLines(start_.line, newEnd_.line);
}

void OpReplace::UndoOp(SourceDocument& document)
{
    document.DeleteRange(start_, newEnd_);
    Position end = document.InsertText(start_, oldText_);
    document.NotifyChange(kLinesChanged, start_.line, end.line, end);
    document.UpdateLines(start_.line, end.line);
}

} // namespace nib
