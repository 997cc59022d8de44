// What changes texts: the formatter, renaming, mends of findings. The client makes the edits.

#include "language/server/FindingsTold.h"
#include "language/server/Handlers.h"

namespace nib::handlers {

namespace {

Json EditOf(Json range, TextView text)
{
    return {{"range", std::move(range)}, {"newText", ToJson(text)}};
}

/// A WorkspaceEdit of some texts.
class Changes {
public:
    explicit Changes(Workspace& workspace) : workspace_(workspace) {}

    void Add(const Text& path, Json edits)
    {
        const std::string uri = workspace_.UriOf(path);
        if (uri.empty()) throw Error{lsp_error::kRequestFailed, path + u" is no file."};
        if (!workspace_.client.versionedEdits) {
            changes_[uri] = std::move(edits);
            return;
        }
        const ClientDocument* open = workspace_.Find(path);
        changes_.push_back({{"textDocument", {{"uri", uri}, {"version", open ? open->text.Version() : Json()}}},
                            {"edits", std::move(edits)}});
    }
    Json Take() { return {{workspace_.client.versionedEdits ? "documentChanges" : "changes", std::move(changes_)}}; }

private:
    Workspace& workspace_;
    Json changes_ = workspace_.client.versionedEdits ? Json::array() : Json::object();
};

Json ActionOf(Workspace& workspace, const ClientDocument& open, const ProgramFinding& finding, TextView title,
              Json edits)
{
    Changes changes(workspace);
    changes.Add(open.path, std::move(edits));
    return {{"title", ToJson(title)},
            {"kind", "quickfix"},
            {"diagnostics", Json::array({DiagnosticOf(open.text, finding)})},
            {"edit", changes.Take()}};
}

/// A comment in a line of its own, above, so that nothing of the program changes.
Json SilencingEdit(const ClientDocument& open, const ProgramFinding& finding)
{
    const int32_t line = finding.at.start.line;
    const Text text = open.text.Line(line);
    const size_t indent = std::min(text.find_first_not_of(u" \t"), text.size());
    const Text comment = text.substr(0, indent) + u"* nib: ignore " + finding.code + u"\n";
    return EditOf(open.text.Write(TextRange{{0, line}, {0, line}}), comment);
}

bool Touches(const TextRange& a, const TextRange& b)
{
    return a.start <= b.end && b.start <= a.end;
}

bool WantsMends(const Json& kinds)
{
    const auto isMend = [](const Json& kind) {
        if (!kind.is_string()) return false;
        const auto& name = kind.get_ref<const std::string&>();
        return name.empty() || name == "quickfix";
    };
    return !kinds.is_array() || std::any_of(kinds.begin(), kinds.end(), isMend);
}

} // namespace

Json PrepareRename(Workspace& workspace, const Json& params)
{
    const Asked asked(workspace, params);
    Text refusal;
    const std::optional<TextRange> range = workspace.service->PrepareRename(asked.open.path, asked.at, refusal);
    if (!range && !refusal.empty()) throw Error{lsp_error::kRequestFailed, refusal};
    if (!range) return nullptr;
    const Text line = asked.open.text.Line(range->start.line);
    const auto start = static_cast<size_t>(range->start.col);
    const Text name = line.substr(start, static_cast<size_t>(range->end.col) - start);
    return {{"range", asked.open.text.Write(*range)}, {"placeholder", ToJson(name)}};
}

Json Rename(Workspace& workspace, const Json& params)
{
    const Asked asked(workspace, params);
    const Text name = ToText(Member(params, "newName"));
    const RenamePlan plan = workspace.service->Rename(asked.open.path, asked.at, name);
    if (!plan.refusal.empty()) throw Error{lsp_error::kRequestFailed, plan.refusal};
    Changes changes(workspace);
    for (const PathEdit& text : plan.edits) {
        Json edits = Json::array();
        for (size_t i = 0; i < text.edits.size(); ++i) {
            const TextView line = i < text.lines.size() ? TextView(text.lines[i]) : TextView();
            edits.push_back(EditOf(workspace.Range(text.path, text.edits[i].range, line), text.edits[i].text));
        }
        changes.Add(text.path, std::move(edits));
    }
    return changes.Take();
}

Json CodeActions(Workspace& workspace, const Json& params)
{
    const ClientDocument& open = workspace.Get(Below(params, "/textDocument/uri"));
    const TextRange range = open.text.ReadRange(Member(params, "range"));
    Json actions = Json::array();
    if (!WantsMends(Below(params, "/context/only"))) return actions;
    for (const ProgramFinding& finding : workspace.service->Findings(open.path)) {
        if (!Touches(finding.at, range)) continue;
        for (const QuickMend& mend : finding.mends) {
            Json edits = Json::array();
            for (const QuickMend::Edit& edit : mend.edits)
                edits.push_back(EditOf(open.text.Write(edit.range), edit.text));
            actions.push_back(ActionOf(workspace, open, finding, English(mend.caption), std::move(edits)));
        }
        const Text title = English({Wording::SilenceHere, {finding.code}});
        actions.push_back(ActionOf(workspace, open, finding, title, Json::array({SilencingEdit(open, finding)})));
    }
    return actions;
}

} // namespace nib::handlers
