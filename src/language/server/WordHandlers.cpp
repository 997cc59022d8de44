// What is offered and told at a word: completion, hover, the parameters of a call.

#include "language/server/Handlers.h"

#include <array>

namespace nib::handlers {

namespace {

// CompletionItemKind, by Completion::Kind.
constexpr int kKeyword = 14;
constexpr int kFunction = 3;
constexpr int kVariable = 6;
constexpr int kConstant = 21;
constexpr int kReference = 18;
constexpr int kMethod = 2;
constexpr int kFile = 17;
constexpr int kFolder = 19;
constexpr int kSnippet = 15;
constexpr std::array kKinds{kKeyword,   kFunction, kKeyword, kVariable, kConstant,
                            kReference, kMethod,   kFile,    kFolder,   kSnippet};

constexpr TextView kMarkdownSpecial = u"\\`*_{}[]()<>#+-.!|";

Text ToMarkdown(TextView plain)
{
    Text out;
    for (char16_t c : plain) {
        if (kMarkdownSpecial.find(c) != TextView::npos) out.push_back(u'\\');
        out += c == u'\n' ? TextView(u"  \n") : TextView(&c, 1);
    }
    return out;
}

Json Markup(const Workspace& workspace, TextView form, TextView help)
{
    if (!workspace.client.markdown) {
        const Text between = form.empty() || help.empty() ? u"" : u"\n\n";
        return {{"kind", "plaintext"}, {"value", ToUtf8(Text(form) + between + Text(help))}};
    }
    Text value;
    if (!form.empty()) value = u"```mvbasic\n" + Text(form) + u"\n```\n";
    return {{"kind", "markdown"}, {"value", ToUtf8(value + ToMarkdown(help))}};
}

/// Sorts as the list is ranked.
std::string Rank(size_t place)
{
    std::string digits = std::to_string(place);
    return std::string(4 - std::min<size_t>(digits.size(), 4), '0') + digits;
}

} // namespace

Json Complete(Workspace& workspace, const Json& params)
{
    const Asked asked(workspace, params);
    Completions found = workspace.service->Complete(asked.open.path, asked.at);
    const Json range = asked.open.text.Write(found.replaces);
    Json items = Json::array();
    ++workspace.offer;
    for (const Completion& one : found.best) {
        const size_t place = items.size();
        Json item{{"label", ToJson(one.label)},
                  {"kind", kKinds[static_cast<size_t>(one.kind)]},
                  {"sortText", Rank(place)},
                  {"filterText", ToJson(one.insert)},
                  {"textEdit", {{"range", range}, {"newText", ToJson(one.insert)}}},
                  {"data", {workspace.offer, place}}};
        if (!one.detail.empty()) item["detail"] = ToJson(one.detail);
        items.push_back(std::move(item));
    }
    workspace.offered = std::move(found.best);
    // A word that grows may rank others first.
    return {{"isIncomplete", found.more}, {"items", std::move(items)}};
}

Json ResolveCompletion(Workspace& workspace, const Json& params)
{
    Json item = params;
    const Json& data = Member(params, "data");
    if (!data.is_array() || data.size() != 2 || data[0] != workspace.offer || !data[1].is_number_unsigned())
        return item;
    const auto place = data[1].get<size_t>();
    if (place >= workspace.offered.size()) return item;
    const Completion& one = workspace.offered[place];
    if (!one.help.empty()) item["documentation"] = Markup(workspace, {}, one.help);
    return item;
}

Json Hover(Workspace& workspace, const Json& params)
{
    const Asked asked(workspace, params);
    const std::optional<HoverText> hover = workspace.service->Hover(asked.open.path, asked.at);
    if (!hover) return nullptr;
    return {{"contents", Markup(workspace, hover->form, hover->help)}, {"range", asked.open.text.Write(hover->at)}};
}

Json SignatureHelp(Workspace& workspace, const Json& params)
{
    const Asked asked(workspace, params);
    const std::optional<nib::SignatureHelp> help = workspace.service->Signature(asked.open.path, asked.at);
    if (!help) return nullptr;
    Json parameters = Json::array();
    for (const auto& [start, end] : help->parameters) {
        // Such places are UTF-16 units whatever was agreed on for texts.
        const auto part = TextView(help->form).substr(static_cast<size_t>(start), static_cast<size_t>(end - start));
        parameters.push_back({{"label", workspace.client.labelOffsets ? Json{start, end} : ToJson(part)}});
    }
    Json signature{{"label", ToJson(help->form)}, {"parameters", std::move(parameters)}};
    if (!help->help.empty()) signature["documentation"] = Markup(workspace, {}, help->help);
    return {
        {"signatures", Json::array({std::move(signature)})}, {"activeSignature", 0}, {"activeParameter", help->active}};
}

} // namespace nib::handlers
