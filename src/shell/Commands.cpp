#include "shell/Commands.h"

#include "diagnostics/Guarded.h"
#include "documents/mvDocument.h"
#include "documents/mvDocuments.h"
#include "shell/FileCommands.h"
#include "shell/Program.h"

#include <algorithm>
#include <iterator>

namespace nib {

namespace {

using Context = const CommandContext;
using Run = void (*)(CommandContext&);
using Test = bool (*)(Context&);

struct CommandRow {
    const char16_t* key;
    Run run;
    Test enabled;
    Test checked = nullptr; ///< null: shows no check mark
};

bool Always(Context&) { return true; }
bool HasDocument(Context& c) { return c.document != nullptr; }
bool HasView(Context& c) { return c.document && c.document->View(); }
bool HasDocuments(Context& c) { return c.program.OpenDocuments().Count() > 0; }
bool CanSave(Context& c) { return c.document && !c.document->ReadOnly() && c.document->IsDirty(); }
bool CanSaveAll(Context& c)
{
    return c.document && (!c.document->ReadOnly() || c.program.OpenDocuments().Count() > 1);
}
bool CanUndo(Context& c) { return c.document && c.document->CanUndo(); }
bool CanRedo(Context& c) { return c.document && c.document->CanRedo(); }
bool HasSelection(Context& c) { return c.document && c.document->HasSelection(); }
bool CanPaste(Context& c) { return c.document && c.program.ClipboardHasText(); }
bool HasBookmarks(Context& c) { return HasView(c) && c.document->View()->txtText().Document().BookmarkCount() > 0; }
bool Wraps(Context& c) { return HasView(c) && c.document->View()->txtText().LineWrap(); }
bool CanWrap(Context& c) { return HasView(c) && !c.program.EditorSettings().CollapseBlocks; }
bool IsMaximized(Context& c) { return c.windows.ActiveMaximized(); }

void GoToBookmark(CommandContext& c, bool backward)
{
    SourceView& view = c.document->View()->txtText();
    int32_t line = view.Document().FindBookmark(view.CaretLine(), backward);
    if (line >= 0) view.SetCaret({0, line});
}

void ToggleBookmark(CommandContext& c)
{
    SourceView& view = c.document->View()->txtText();
    view.Document().ToggleBookmark(view.CaretLine());
}

constexpr CommandRow kCommands[] = {
    {u"New", [](CommandContext& c) { c.program.Files().FileNew(); }, Always},
    {u"Open", [](CommandContext& c) { c.program.Files().FileOpen(); }, Always},
    {u"Close", [](CommandContext& c) { c.document->FileClose(true); }, HasDocument},
    {u"Save", [](CommandContext& c) { c.program.Files().FileSave(*c.document); }, CanSave},
    {u"SaveAs", [](CommandContext& c) { c.program.Files().FileSaveAs(*c.document); }, HasDocument},
    {u"SaveAll", [](CommandContext& c) { c.program.Files().FileSaveAll(); }, CanSaveAll},
    {u"Exit", [](CommandContext& c) { c.program.Files().FileExit(); }, Always},
    {u"Undo", [](CommandContext& c) { c.document->Undo(); }, CanUndo},
    {u"Redo", [](CommandContext& c) { c.document->Redo(); }, CanRedo},
    {u"Cut", [](CommandContext& c) { c.document->Cut(); }, HasSelection},
    {u"Copy", [](CommandContext& c) { c.document->Copy(); }, HasSelection},
    {u"Paste", [](CommandContext& c) { c.document->Paste(); }, CanPaste},
    {u"Clear", [](CommandContext& c) { c.document->Delete(); }, HasSelection},
    {u"DeleteLine", [](CommandContext& c) { c.document->DeleteLine(); }, HasDocument},
    {u"SelectAll", [](CommandContext& c) { c.document->SelectAll(); }, HasDocument},
    {u"ToggleBookmark", ToggleBookmark, HasView},
    {u"NextBookmark", [](CommandContext& c) { GoToBookmark(c, false); }, HasBookmarks},
    {u"PrevBookmark", [](CommandContext& c) { GoToBookmark(c, true); }, HasBookmarks},
    {u"ClearBookmarks", [](CommandContext& c) { c.document->View()->txtText().Document().ClearBookmarks(); },
     HasBookmarks},
    {u"ValueMark", [](CommandContext& c) { c.document->InsValue(); }, HasDocument},
    {u"SubValueMark", [](CommandContext& c) { c.document->InsSubValue(); }, HasDocument},
    {u"LineWrap", [](CommandContext& c) { c.document->View()->txtText().SetLineWrap(!Wraps(c)); }, CanWrap, Wraps},
    {u"Tile", [](CommandContext& c) { c.windows.Arrange(1); }, HasDocuments},
    {u"Cascade", [](CommandContext& c) { c.windows.Arrange(0); }, HasDocuments},
    {u"Maximize", [](CommandContext& c) { c.windows.ToggleMaximized(); }, HasDocuments, IsMaximized},
};

const CommandRow* FindCommand(TextView key)
{
    auto row = std::find_if(std::begin(kCommands), std::end(kCommands), [&](auto& r) { return key == r.key; });
    return row == std::end(kCommands) ? nullptr : row;
}

} // namespace

bool RunCommand(TextView key, CommandContext& context)
{
    const CommandRow* row = FindCommand(key);
    if (!row || !row->enabled(context)) return false;
    return Guarded(
        context.program.Log(), u"frmMain.qkMenuBar_ToolClick",
        [&] {
            row->run(context);
            context.program.UpdateToolBar();
            return true;
        },
        [&](const Error& error) {
            context.program.ReportError(error.description);
            return false;
        });
}

CommandState StateOfCommand(TextView key, const CommandContext& context)
{
    const CommandRow* row = FindCommand(key);
    if (!row) return {};
    return {row->enabled(context), row->checked && row->checked(context)};
}

bool IsCommand(TextView key) { return FindCommand(key) != nullptr; }

bool IsCheckable(TextView key)
{
    const CommandRow* row = FindCommand(key);
    return row && row->checked;
}

} // namespace nib
