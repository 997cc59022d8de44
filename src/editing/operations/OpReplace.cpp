#include "editing/operations/OpReplace.h"

namespace nib {

void OpReplace::DoOp(SourceDocument& document)
{
    start_ = document.Clamp(start_); // the place must be the same one when the text is longer or shorter
    end_ = document.Clamp(end_);
    oldText_ = document.GetRange(start_, end_);
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
