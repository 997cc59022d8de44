#pragma once
// What requests are answered with, one function a request.

#include "language/server/Workspace.h"

namespace nib::handlers {

using Handler = Json (*)(Workspace& workspace, const Json& params);

// Words and places
Json Complete(Workspace& workspace, const Json& params);
Json ResolveCompletion(Workspace& workspace, const Json& params);
Json Hover(Workspace& workspace, const Json& params);
Json SignatureHelp(Workspace& workspace, const Json& params);

Json Definition(Workspace& workspace, const Json& params);
Json References(Workspace& workspace, const Json& params);
Json Highlight(Workspace& workspace, const Json& params);
Json DocumentSymbols(Workspace& workspace, const Json& params);
Json WorkspaceSymbols(Workspace& workspace, const Json& params);
Json FoldingRanges(Workspace& workspace, const Json& params);

// Edits
Json Format(Workspace& workspace, const Json& params);
Json FormatRange(Workspace& workspace, const Json& params);
Json PrepareRename(Workspace& workspace, const Json& params);
Json Rename(Workspace& workspace, const Json& params);
Json CodeActions(Workspace& workspace, const Json& params);

// Colours
Json Tokens(Workspace& workspace, const Json& params);
Json TokenChanges(Workspace& workspace, const Json& params);
Json TokensInRange(Workspace& workspace, const Json& params);
Json TokenLegend();

} // namespace nib::handlers
