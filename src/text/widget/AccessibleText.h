#pragma once
// What assistive tools hear of a text: its positions as offsets, a line break counting one, and its changes.

#include "text/SourceView.h"

#include <QAccessible>

#include <vector>

namespace nib {

class AccessibleText {
public:
    /// Both outlive this; `widget` is the one that the tools know.
    AccessibleText(SourceView& view, QObject& widget) : view_(view), document_(view.Document()), widget_(widget) {}

    int32_t Of(Position p);
    Position At(int32_t offset);
    int32_t Count() const { return static_cast<int32_t>(document_.UnitCount()) + document_.LineCount() - 1; }
    /// With "\n" between lines.
    Text Range(int32_t start, int32_t end);
    /// Lines from `line` on have moved.
    void Forget(int32_t line);

    // These tell whoever listens.
    void CaretMoved();
    void TextChanged(const TextChange& change);
    void TextReset();

private:
    void KnowUpTo(int32_t line);
    void Remember();
    /// Sees to it that what is left to be told is told when the present edits are through.
    void TellSoon();
    void TellRest();
    bool TellsChange(const TextChange& change);
    Text Removed(const TextChange& change) const;

    SourceView& view_;
    const SourceDocument& document_;
    QObject& widget_;
    std::vector<int32_t> starts_; ///< offsets of the first lines, as far as anyone asked
    // What stood at the caret before an edit: the document tells only where it was.
    Text line_;
    int32_t lineNumber_ = -1;
    Text selected_;
    TextRange selection_;
    int32_t changes_ = 0; ///< told since the last rest
    bool restWaits_ = false;
    bool hadSelection_ = false; ///< when that was told
};

} // namespace nib
