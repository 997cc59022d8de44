#pragma once
// What stood at the caret before an edit, so that readers can be told what went: the buffer tells only where.

#include "text/SourceViewModel.h"

namespace nib {

class TextMemory {
public:
    /// After each move and edit, while somebody listens.
    void Remember(SourceViewModel& model);
    /// The text that a change removed, with "\n" between lines; of the right kind but unknown content when it was not
    /// near the caret.
    Text Removed(const TextChange& change) const;

private:
    Text line_;
    int32_t lineNumber_ = -1;
    Text selected_;
    Position selectedStart_;
    Position selectedEnd_;
};

} // namespace nib
