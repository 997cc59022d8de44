// The session from its beginning to its end, and the texts that are open in it.

#include "language/server/Handlers.h"
#include "language/server/Server.h"
#include "platform/posix/FileContent.h"
#include "platform/posix/FileName.h"

#include <algorithm>

namespace nib {

namespace {

constexpr int kIncremental = 2; // of textDocumentSync.change

bool Holds(const Json& list, const char* wanted)
{
    return list.is_array() && std::find(list.begin(), list.end(), Json(wanted)) != list.end();
}

/// The first that the client names; one that names none counts UTF-16 units.
Units UnitsOf(const Json& capabilities)
{
    for (const Json& offered : Below(capabilities, "/general/positionEncodings")) {
        if (offered == "utf-8") return Units::Utf8;
        if (offered == "utf-16") break;
    }
    return Units::Utf16;
}

/// A client that was started among the items of a file means the account.
std::string AccountRoot(const std::string& folder)
{
    const std::string above = FolderOf(folder);
    return !IsFolder(folder + "/VOC") && above != folder && IsFolder(above + "/VOC") ? above : folder;
}

std::vector<std::string> FoldersOf(const Json& params)
{
    std::vector<std::string> uris;
    const Json& folders = Member(params, "workspaceFolders");
    for (const Json& folder : folders.is_array() ? folders : Json::array())
        uris.push_back(Member(folder, "uri").get<std::string>());
    if (uris.empty() && Member(params, "rootUri").is_string()) uris.push_back(Member(params, "rootUri"));
    std::vector<std::string> names;
    for (const std::string& uri : uris)
        if (std::string name = ClientPlaces::FileOf(uri); !name.empty()) names.push_back(AccountRoot(name));
    return names;
}

Json Capabilities(Units units)
{
    const Json yes = true;
    return {
        {"positionEncoding", units == Units::Utf8 ? "utf-8" : "utf-16"},
        {"textDocumentSync", {{"openClose", true}, {"change", kIncremental}, {"save", true}}},
        {"completionProvider", {{"resolveProvider", true}, {"triggerCharacters", Json::array({"@"})}}},
        {"hoverProvider", yes},
        {"signatureHelpProvider", {{"triggerCharacters", {"(", ","}}}},
        {"declarationProvider", yes},
        {"definitionProvider", yes},
        {"referencesProvider", yes},
        {"documentHighlightProvider", yes},
        {"documentSymbolProvider", yes},
        {"workspaceSymbolProvider", yes},
        {"foldingRangeProvider", yes},
        {"documentFormattingProvider", yes},
        {"documentRangeFormattingProvider", yes},
        {"renameProvider", {{"prepareProvider", true}}},
        {"codeActionProvider", {{"codeActionKinds", Json::array({"quickfix"})}}},
        {"semanticTokensProvider", {{"legend", handlers::TokenLegend()}, {"full", {{"delta", true}}}, {"range", true}}},
        {"workspace", {{"workspaceFolders", {{"supported", true}, {"changeNotifications", true}}}}},
    };
}

} // namespace

void Server::ReadTraits(const Json& capabilities)
{
    ClientTraits& client = workspace_.client;
    client.units = UnitsOf(capabilities);
    client.markdown = Holds(Below(capabilities, "/textDocument/hover/contentFormat"), "markdown");
    client.labelOffsets = IsTrue(Below(
        capabilities, "/textDocument/signatureHelp/signatureInformation/parameterInformation/labelOffsetSupport"));
    client.versionedEdits = IsTrue(Below(capabilities, "/workspace/workspaceEdit/documentChanges"));
    client.nestedSymbols =
        IsTrue(Below(capabilities, "/textDocument/documentSymbol/hierarchicalDocumentSymbolSupport"));
    client.progress = IsTrue(Below(capabilities, "/window/workDoneProgress"));
}

Json Server::Initialize(const Json& params)
{
    ReadTraits(Member(params, "capabilities"));
    const Json& dialect = Below(params, "/initializationOptions/dialect");
    workspace_.StartService(dialect.is_string() ? ToText(dialect) : start_.dialect, start_.indexFolder);
    for (const std::string& folder : FoldersOf(params)) workspace_.AddAccount(folder);
    if (const Json& process = Member(params, "processId"); process.is_number_integer() && start_.clientIs)
        start_.clientIs(process.get<int64_t>());
    phase_ = Phase::Running;
    return {{"capabilities", Capabilities(workspace_.client.units)},
            {"serverInfo", {{"name", "nib-lsp"}, {"version", NIB_VERSION}}}};
}

Json Server::Shutdown(const Json&)
{
    phase_ = Phase::Ended;
    return nullptr;
}

Json Server::Ignore(const Json&)
{
    return nullptr;
}

Json Server::DidOpen(const Json& params)
{
    const Json& text = Member(params, "textDocument");
    workspace_.Open(Member(text, "uri").get<std::string>(), ToText(Member(text, "text")), Member(text, "version"));
    findings_.Changed(std::chrono::steady_clock::now());
    return nullptr;
}

Json Server::DidChange(const Json& params)
{
    ClientDocument& open = workspace_.Get(Below(params, "/textDocument/uri"));
    bool clamped = false;
    for (const Json& change : Member(params, "contentChanges")) {
        const LinesChanged lines = open.text.Change(change, clamped);
        workspace_.service->Change(open.path, lines.first, lines.removed, open.text.Lines(lines.first, lines.count));
    }
    open.text.SetVersion(Below(params, "/textDocument/version"));
    findings_.Changed(std::chrono::steady_clock::now());
    if (clamped) out_.Log(u"An edit of " + FromUtf8(open.uri) + u" lies outside the text. It was taken at its end.");
    return nullptr;
}

Json Server::DidClose(const Json& params)
{
    const std::string uri = Below(params, "/textDocument/uri").get<std::string>();
    workspace_.Close(uri);
    findings_.Closed(uri);
    return nullptr;
}

Json Server::DidChangeFolders(const Json& params)
{
    for (const std::string& folder : FoldersOf({{"workspaceFolders", Below(params, "/event/added")}}))
        workspace_.AddAccount(folder);
    return nullptr;
}

Json Server::DidChangeConfiguration(const Json& params)
{
    const Json& dialect = Below(params, "/settings/nib/dialect");
    if (!dialect.is_string() || ToText(dialect) == workspace_.dialect) return nullptr;
    workspace_.StartService(ToText(dialect), start_.indexFolder);
    findings_.Changed(std::chrono::steady_clock::now());
    return nullptr;
}

} // namespace nib
