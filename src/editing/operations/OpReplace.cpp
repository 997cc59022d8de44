#include "editing/operations/OpReplace.h"

#include <algorithm>

namespace nib {

namespace {
Position Clamp(const SourceDocument& document, Position p)
{
    if (p.line < 0) return {0, 0};
    int32_t last = document.LineCount() - 1;
    if (p.line > last) return {document.LineLength(last), last};
    return {std::clamp(p.col, 0, document.LineLength(p.line)), p.line};
}
} // namespace

Text GatherText(const SourceDocument& document, Position start, Position end)
{
    start = Clamp(document, start);
    end = Clamp(document, end);
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
    start_ = Clamp(document, start_); // the place must be the same one when the text is longer or shorter
    end_ = Clamp(document, end_);
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
