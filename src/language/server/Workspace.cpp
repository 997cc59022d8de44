#include "language/server/Workspace.h"

namespace nib {

void Workspace::StartService(ServiceOptions options)
{
    service.reset(); // two must not write to one index
    service = std::make_unique<LanguageService>(std::move(options));
    for (const Text& account : places.Accounts()) TellAccount(account);
    for (const auto& [uri, open] : texts) service->Open(open.path, open.text.Lines(0, open.text.LineCount()));
}

void Workspace::AddAccount(const std::string& folder)
{
    if (const Text path = places.AddAccount(folder); !path.empty()) TellAccount(path);
}

void Workspace::TellAccount(const Text& path)
{
    AccountAccess access;
    access.reader = places.Reader(path);
    service->AddAccount(path, std::move(access));
}

OpenText& Workspace::Open(const std::string& uri, TextView text, Json version)
{
    Close(uri);
    if (const std::string folder = places.AccountFolderOf(ClientPlaces::FileOf(uri)); !folder.empty())
        AddAccount(folder);
    OpenText opened{uri, places.PathOf(uri), ClientText(text, std::move(version), client.units)};
    service->Open(opened.path, opened.text.Lines(0, opened.text.LineCount()));
    return texts.emplace(uri, std::move(opened)).first->second;
}

void Workspace::Close(const std::string& uri)
{
    const auto found = texts.find(uri);
    if (found == texts.end()) return;
    service->Close(found->second.path);
    texts.erase(found);
}

OpenText& Workspace::Get(const Json& uri)
{
    const auto found = texts.find(uri.get_ref<const std::string&>());
    if (found == texts.end()) throw Error{lsp_error::kInvalidParams, u"The text is not open."};
    return found->second;
}

OpenText* Workspace::Find(const Text& path)
{
    for (auto& [uri, open] : texts)
        if (open.path == path) return &open;
    return nullptr;
}

std::string Workspace::UriOf(const Text& path)
{
    const OpenText* open = Find(path);
    return open ? open->uri : places.UriOf(path);
}

Json Workspace::Range(const Text& path, const TextRange& range, TextView line)
{
    if (const OpenText* open = Find(path)) return open->text.Write(range);
    const auto place = [&](Position at) {
        return Json{{"line", at.line}, {"character", ToClient(line, at.col, client.units)}};
    };
    return {{"start", place(range.start)}, {"end", place(range.end)}};
}

Json Workspace::Location(const PathRange& place)
{
    return {{"uri", UriOf(place.path)}, {"range", Range(place.path, place.range, place.line)}};
}

Asked::Asked(Workspace& workspace, const Json& params)
    : open(workspace.Get(Below(params, "/textDocument/uri"))), at(open.text.Read(Member(params, "position")))
{
}

} // namespace nib
