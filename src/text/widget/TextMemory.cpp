#include "text/widget/TextMemory.h"

#include <algorithm>

namespace nib {

namespace {

/// Nobody listens to more than that.
constexpr size_t kMostText = 100'000;

} // namespace

void TextMemory::Remember(SourceViewModel& model)
{
    Position anchor;
    Position caret;
    model.GetSelection(anchor, caret);
    lineNumber_ = caret.line;
    Text scratch;
    line_ = model.Buffer().LineText(caret.line, scratch).substr(0, kMostText);
    selectedStart_ = std::min(anchor, caret);
    selectedEnd_ = std::max(anchor, caret);
    bool small = selectedEnd_.line - selectedStart_.line < 1000;
    selected_ = small ? Replace(model.SelectedText(), u"\r\n", u"\n") : Text();
}

Text TextMemory::Removed(const TextChange& change) const
{
    if (change.start == selectedStart_ && change.oldEnd == selectedEnd_) return selected_;
    if (change.start.line != change.oldEnd.line) return u"\n";
    auto start = static_cast<size_t>(change.start.col);
    auto length = static_cast<size_t>(change.oldEnd.col) - start;
    if (change.start.line == lineNumber_ && start + length <= line_.size()) return line_.substr(start, length);
    return Text(length, u' ');
}

} // namespace nib
