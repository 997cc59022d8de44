// Colours of words, as the protocol wants them: five numbers a token, counted from the token before.

#include "language/server/Handlers.h"

#include <algorithm>
#include <array>
#include <limits>

namespace nib::handlers {

namespace {

constexpr std::array<const char*, 9> kTypes{"keyword",  "function", "number", "variable", "parameter",
                                            "property", "label",    "method", "modifier"};
enum Type : int { Keyword, Function, Number, Variable, Parameter, Property, Label, Method, Modifier };

constexpr std::array<const char*, 2> kModifiers{"declaration", "readonly"};
constexpr int kDeclaration = 1;
constexpr int kReadonly = 2;

/// By WordLook.
constexpr struct {
    Type type;
    int modifiers;
} kLooks[] = {{Keyword, 0},   {Function, 0}, {Modifier, 0},         {Number, 0}, {Variable, 0},
              {Parameter, 0}, {Property, 0}, {Variable, kReadonly}, {Label, 0},  {Method, 0}};

std::vector<int32_t> Encoded(const ClientDocument& open, const std::vector<LookedWord>& words, const TextRange& within)
{
    std::vector<int32_t> numbers;
    numbers.reserve(words.size() * 5);
    int32_t line = 0;
    int32_t character = 0;
    for (const LookedWord& word : words) {
        if (word.at.end <= within.start || word.at.start >= within.end) continue;
        const Json start = open.text.Write(word.at.start);
        const auto from = start["character"].get<int32_t>();
        const auto to = open.text.Write(word.at.end)["character"].get<int32_t>();
        const auto look = kLooks[static_cast<size_t>(word.look)];
        if (word.at.start.line != line) character = 0;
        numbers.insert(numbers.end(), {word.at.start.line - line, from - character, to - from, look.type,
                                       look.modifiers | (word.declares ? kDeclaration : 0)});
        line = word.at.start.line;
        character = from;
    }
    return numbers;
}

std::vector<int32_t> AllTokens(Workspace& workspace, const ClientDocument& open)
{
    constexpr int32_t kEnd = std::numeric_limits<int32_t>::max();
    return Encoded(open, workspace.service->Words(open.path, 0, open.text.LineCount() - 1), {{}, {kEnd, kEnd}});
}

} // namespace

Json TokenLegend()
{
    return {{"tokenTypes", kTypes}, {"tokenModifiers", kModifiers}};
}

Json Tokens(Workspace& workspace, const Json& params)
{
    ClientDocument& open = workspace.Get(Below(params, "/textDocument/uri"));
    open.tokens = AllTokens(workspace, open);
    return {{"resultId", std::to_string(++open.tokensId)}, {"data", open.tokens}};
}

Json TokenChanges(Workspace& workspace, const Json& params)
{
    ClientDocument& open = workspace.Get(Below(params, "/textDocument/uri"));
    if (Member(params, "previousResultId") != std::to_string(open.tokensId)) return Tokens(workspace, params);
    const std::vector<int32_t> before = std::exchange(open.tokens, AllTokens(workspace, open));
    const std::vector<int32_t>& now = open.tokens;
    const auto [old, changed] = std::mismatch(before.begin(), before.end(), now.begin(), now.end());
    // What is the same at both ends; a token more or less moves what lies behind it by whole tokens.
    const auto most = std::min(before.end() - old, now.end() - changed);
    const auto same = std::mismatch(before.rbegin(), before.rbegin() + most, now.rbegin()).first - before.rbegin();
    Json edits = Json::array();
    if (old != before.end() || changed != now.end())
        edits.push_back({{"start", old - before.begin()},
                         {"deleteCount", before.end() - same - old},
                         {"data", std::vector<int32_t>(changed, now.end() - same)}});
    return {{"resultId", std::to_string(++open.tokensId)}, {"edits", std::move(edits)}};
}

Json TokensInRange(Workspace& workspace, const Json& params)
{
    const ClientDocument& open = workspace.Get(Below(params, "/textDocument/uri"));
    const TextRange range = open.text.ReadRange(Member(params, "range"));
    return {{"data", Encoded(open, workspace.service->Words(open.path, range.start.line, range.end.line), range)}};
}

} // namespace nib::handlers
