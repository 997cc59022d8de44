#pragma once
// The questions that decide whether commands are enabled, shared by the tables of commands.

#include "documents/mvDocument.h"
#include "shell/Commands.h"
#include "shell/Program.h"
#include "shell/menus/MenuModel.h"

namespace nib::rules {

using Context = const CommandContext;

inline bool Always(Context&)
{
    return true;
}
inline bool HasDocument(Context& c)
{
    return c.document != nullptr;
}
inline bool HasView(Context& c)
{
    return c.document && c.document->View();
}
inline bool HasDocuments(Context& c)
{
    return c.program.OpenDocuments().Count() > 0;
}
inline bool Writable(Context& c)
{
    return c.document && !c.document->ReadOnly();
}
inline bool FoldsBlocks(Context& c)
{
    return HasView(c) && c.program.EditorSettings().CollapseBlocks;
}
inline bool CanEditBlocks(Context& c)
{
    return c.document && c.ports.edits;
}
inline bool CanSearch(Context& c)
{
    return c.document && c.ports.search;
}
inline bool HasDialogs(Context& c)
{
    return c.ports.dialogs != nullptr;
}

inline SourceView& View(Context& c)
{
    return c.document->View()->txtText();
}

/// The check mark that a command is to set.
inline bool NewMark(Context& c, bool present)
{
    return c.checked.value_or(!present);
}

} // namespace nib::rules
