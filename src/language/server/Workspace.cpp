#include "language/server/Workspace.h"

#include "diagnostics/Guarded.h"
#include "editing/MvEdit.h"

namespace nib {

const Dialect* Workspace::DialectNamed(TextView dialectName)
{
    const size_t noted = dialects.Notes().size();
    const Dialect* found = dialects.Find(dialectName);
    for (const DialectNote& note : std::span(dialects.Notes()).subspan(noted))
        out.Log(note.dialect + u".dialect, line " + Decimal(note.line) + u": " + note.text);
    if (!found && !EqualsNoCase(dialectName, kNoDialect)) out.Log(u"There is no dialect " + Text(dialectName) + u".");
    return found ? found : dialects.Find(kCommonDialect);
}

Text Workspace::DialectOf(const Text& path) const
{
    const auto found = accountDialects_.find(path.substr(0, path.find(u'/', path.find(u'/') + 1)));
    return found == accountDialects_.end() ? dialect : found->second;
}

void Workspace::StartService(const Text& dialectName, const std::string& indexFolder)
{
    service.reset(); // two must not write to one index
    dialect = dialectName;
    service = std::make_unique<LanguageService>(ServiceOptions{DialectNamed(dialectName), indexFolder});
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
    if (Text named = places.DialectOf(path); !named.empty()) {
        access.dialect = DialectNamed(named);
        accountDialects_[path] = std::move(named);
    }
    service->AddAccount(path, std::move(access));
}

ClientDocument& Workspace::Open(const std::string& uri, TextView text, Json version)
{
    Close(uri);
    if (const std::string folder = places.AccountFolderOf(ClientPlaces::FileOf(uri)); !folder.empty())
        AddAccount(folder);
    ClientDocument opened{uri, places.PathOf(uri), ClientText(text, std::move(version), client.units)};
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

ClientDocument& Workspace::Get(const Json& uri)
{
    const auto found = texts.find(uri.get_ref<const std::string&>());
    if (found == texts.end()) throw Error{lsp_error::kInvalidParams, u"The text is not open."};
    return found->second;
}

ClientDocument* Workspace::Find(const Text& path)
{
    for (auto& [uri, open] : texts)
        if (open.path == path) return &open;
    return nullptr;
}

std::string Workspace::UriOf(const Text& path)
{
    const ClientDocument* open = Find(path);
    return open ? open->uri : places.UriOf(path);
}

Json Workspace::Range(const Text& path, const TextRange& range, TextView line)
{
    if (const ClientDocument* open = Find(path)) return open->text.Write(range);
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
