// Where things are: definitions, references, symbols, blocks.

#include "language/server/Handlers.h"

#include <array>

namespace nib::handlers {

namespace {

// SymbolKind of the protocol, by ours.
constexpr int kModule = 2;
constexpr int kMethod = 6;
constexpr int kField = 8;
constexpr int kFunction = 12;
constexpr int kVariable = 13;
constexpr int kConstant = 14;
constexpr int kArray = 18;
constexpr int kKey = 20;
constexpr int kObject = 19;
constexpr int kFile = 1;
constexpr std::array kKinds{kVariable, kArray,    kField,    kConstant, kKey,    kModule, kMethod,
                            kFunction, kVariable, kVariable, kMethod,   kObject, kFile};

// DocumentHighlightKind
constexpr int kRead = 2;
constexpr int kWrite = 3;

constexpr size_t kMostSymbols = 200;

int KindOf(SymbolKind kind)
{
    return kKinds[static_cast<size_t>(kind)];
}

Json Locations(Workspace& workspace, const std::vector<PathRange>& places)
{
    Json found = Json::array();
    for (const PathRange& place : places) found.push_back(workspace.Location(place));
    return found;
}

bool Writes(Use use)
{
    return use == Use::Declares || use == Use::Sets || use == Use::Both;
}

/// Entries from `at` on that lie deeper than `level`; moves `at` behind them.
Json Nested(const ClientText& text, const std::vector<OutlineEntry>& outline, size_t& at, int32_t level)
{
    Json symbols = Json::array();
    while (at < outline.size() && outline[at].level >= level) {
        const OutlineEntry& entry = outline[at];
        const Position end{text.LineLength(entry.last), entry.last};
        Json symbol{{"name", ToJson(entry.name)},
                    {"kind", KindOf(entry.kind)},
                    {"range", text.Write(TextRange{{0, entry.at.start.line}, std::max(end, entry.at.end)})},
                    {"selectionRange", text.Write(entry.at)}};
        ++at;
        symbol["children"] = Nested(text, outline, at, entry.level + 1);
        symbols.push_back(std::move(symbol));
    }
    return symbols;
}

} // namespace

Json Definition(Workspace& workspace, const Json& params)
{
    const Asked asked(workspace, params);
    return Locations(workspace, workspace.service->Definition(asked.open.path, asked.at));
}

Json References(Workspace& workspace, const Json& params)
{
    const Asked asked(workspace, params);
    const bool withDeclaration = IsTrue(Below(params, "/context/includeDeclaration"));
    return Locations(workspace, workspace.service->References(asked.open.path, asked.at, withDeclaration));
}

Json Highlight(Workspace& workspace, const Json& params)
{
    const Asked asked(workspace, params);
    Json found = Json::array();
    for (const Occurrence& one : workspace.service->Highlights(asked.open.path, asked.at))
        found.push_back({{"range", asked.open.text.Write(one.at)}, {"kind", Writes(one.use) ? kWrite : kRead}});
    return found;
}

Json DocumentSymbols(Workspace& workspace, const Json& params)
{
    const ClientDocument& open = workspace.Get(Below(params, "/textDocument/uri"));
    const ProgramFacts* program = workspace.service->Get(open.path);
    if (!program) return nullptr;
    size_t at = 0;
    if (workspace.client.nestedSymbols) return Nested(open.text, program->outline, at, 0);
    Json flat = Json::array();
    for (const OutlineEntry& entry : program->outline)
        flat.push_back({{"name", ToJson(entry.name)},
                        {"kind", KindOf(entry.kind)},
                        {"location", {{"uri", open.uri}, {"range", open.text.Write(entry.at)}}}});
    return flat;
}

Json WorkspaceSymbols(Workspace& workspace, const Json& params)
{
    Json found = Json::array();
    for (const FoundSymbol& one : workspace.service->Find(ToText(Member(params, "query")), kMostSymbols))
        found.push_back({{"name", ToJson(one.name)},
                         {"kind", KindOf(one.kind)},
                         {"location", workspace.Location(one.at)},
                         {"containerName", ToJson(PlaceName(one.at.path))}});
    return found;
}

Json FoldingRanges(Workspace& workspace, const Json& params)
{
    const ClientDocument& open = workspace.Get(Below(params, "/textDocument/uri"));
    const ProgramFacts* program = workspace.service->Get(open.path);
    Json folds = Json::array();
    if (!program) return folds;
    for (const TextRange& block : program->blocks)
        if (block.end.line > block.start.line)
            folds.push_back({{"startLine", block.start.line}, {"endLine", block.end.line}});
    return folds;
}

} // namespace nib::handlers
