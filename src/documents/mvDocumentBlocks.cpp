// Edits of the program on a document's lines; each is one step of undo.

#include "diagnostics/Guarded.h"
#include "documents/mvDocument.h"
#include "editing/operations/BlockOps.h"
#include "editing/operations/OpFormat.h"

namespace nib {

namespace {

/// Without highlighting the lexer leaves no flags, and a program would be laid out flat.
class Highlighted {
public:
    explicit Highlighted(mvDocument& document) : document_(document), before_(document.Highlight())
    {
        document_.SetHighlight(true);
    }
    ~Highlighted()
    {
        IgnoringErrors([this] { document_.SetHighlight(before_); });
    }
    Highlighted(const Highlighted&) = delete;
    Highlighted& operator=(const Highlighted&) = delete;

private:
    mvDocument& document_;
    bool before_;
};

} // namespace

void mvDocument::Format()
{
    SourceView& source = EnsureView().txtText();
    Highlighted highlighted(*this);
    auto showWait = [&shell = services_.shell](bool wait) { shell.SetWaitCursor(wait); };
    source.Document().ExecuteOp(std::make_unique<OpFormat>(source, services_.settings, showWait));
}

void mvDocument::IndentBlock(bool indent)
{
    SourceView& source = EnsureView().txtText();
    source.Document().ExecuteOp(std::make_unique<OpIndentBlock>(indent, source));
}

void mvDocument::CommentBlock(bool comment)
{
    SourceView& source = EnsureView().txtText();
    source.Document().ExecuteOp(std::make_unique<OpCommentBlock>(comment, source, services_.settings));
}

void mvDocument::ToggleCase()
{
    SourceView& source = EnsureView().txtText();
    // No step of undo that does nothing, and no document that counts as changed by it.
    if (!source.HasSelection()) return;
    source.Document().ExecuteOp(std::make_unique<OpToggleCase>(source));
}

} // namespace nib
