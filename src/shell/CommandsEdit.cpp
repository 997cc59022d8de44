#include "shell/ClickTarget.h"
#include "shell/CommandRules.h"

namespace nib {

namespace {

using namespace rules;

bool CanUndo(Context& c)
{
    return c.document && c.document->CanUndo();
}
bool CanRedo(Context& c)
{
    return c.document && c.document->CanRedo();
}
bool HasSelection(Context& c)
{
    return c.document && c.document->HasSelection();
}
bool CanPaste(Context& c)
{
    return c.document && c.program.ClipboardHasText();
}

/// A command that is one call on the document.
template <void (mvDocument::*Member)()>
void Do(CommandContext& c)
{
    (c.document.get()->*Member)();
}

template <bool Indent>
void IndentBlock(CommandContext& c)
{
    c.document->IndentBlock(Indent);
}
template <bool Comment>
void CommentBlock(CommandContext& c)
{
    c.document->CommentBlock(Comment);
}
template <bool Collapse, bool All>
void Fold(CommandContext& c)
{
    HandleBlockCollapse(c.document.get(), Collapse, All);
}

constexpr CommandRow kRows[] = {
    {u"Undo", Do<&mvDocument::Undo>, CanUndo},
    {u"Redo", Do<&mvDocument::Redo>, CanRedo},
    {u"Cut", Do<&mvDocument::Cut>, HasSelection},
    {u"Copy", Do<&mvDocument::Copy>, HasSelection},
    {u"Paste", Do<&mvDocument::Paste>, CanPaste},
    {u"Clear", Do<&mvDocument::Delete>, HasSelection},
    {u"DeleteLine", Do<&mvDocument::DeleteLine>, HasDocument},
    {u"SelectAll", Do<&mvDocument::SelectAll>, HasDocument},
    {u"IndentBlock", IndentBlock<true>, HasDocument},
    {u"OutdentBlock", IndentBlock<false>, HasDocument},
    {u"CommentBlock", CommentBlock<true>, HasDocument},
    {u"UncommentBlock", CommentBlock<false>, HasDocument},
    {u"CollapseBlock", Fold<true, false>, FoldsBlocks},
    {u"ExpandBlock", Fold<false, false>, FoldsBlocks},
    {u"CollapseAll", Fold<true, true>, FoldsBlocks},
    {u"ExpandAll", Fold<false, true>, FoldsBlocks},
    {u"ValueMark", Do<&mvDocument::InsValue>, HasDocument},
    {u"SubValueMark", Do<&mvDocument::InsSubValue>, HasDocument},
    {u"ToggleCase", Do<&mvDocument::ToggleCase>, HasDocument},
};

} // namespace

std::span<const CommandRow> EditCommandRows()
{
    return kRows;
}

} // namespace nib
