#include "language/service/WordHelp.h"

#include "language/Dialect.h"

#include <algorithm>

namespace nib {

namespace {

constexpr int32_t kMostComment = 24; // lines

/// The parameters in the outermost parentheses of "NAME(a, b [, c])", each with its start and end; brackets and dots
/// between them belong to none.
std::vector<std::pair<int32_t, int32_t>> ParametersOf(TextView form)
{
    constexpr TextView kBetween{u" [],"};
    std::vector<std::pair<int32_t, int32_t>> parameters;
    const size_t open = form.find(u'(');
    if (open == TextView::npos) return parameters;
    size_t start = TextView::npos;
    size_t last = open;
    const auto finish = [&] {
        if (start != TextView::npos) parameters.emplace_back(start, last + 1);
        start = TextView::npos;
    };
    int32_t depth = 0;
    for (size_t at = open; at < form.size(); ++at) {
        const char16_t c = form[at];
        if (c == u'(' && depth++ == 0) continue;
        if (c == u')' && --depth == 0) break;
        if (depth == 1 && c == u',') {
            finish();
        } else if (kBetween.find(c) == TextView::npos) {
            if (start == TextView::npos) start = at;
            last = at;
        }
    }
    finish();
    return parameters;
}

/// "NAME(a, b)"
Text FormOf(TextView name, const std::vector<Text>& parameters)
{
    Text form(name);
    form += u"(";
    for (size_t i = 0; i < parameters.size(); ++i) form += (i > 0 ? u", " : u"") + parameters[i];
    return form + u")";
}

/// What a line that is nothing but a comment says; none for another one.
std::optional<TextView> CommentIn(TextView line)
{
    line = Trim(line);
    if (line.empty() || (line.front() != u'*' && line.front() != u'!')) return std::nullopt;
    while (!line.empty() && (line.front() == u'*' || line.front() == u'!')) line.remove_prefix(1);
    while (!line.empty() && (line.back() == u'*' || line.back() == u'-' || line.back() == u'=')) line.remove_suffix(1);
    return Trim(line);
}

void Append(Text& text, TextView line)
{
    if (!text.empty()) text += u"\n";
    text += line;
}

} // namespace

Text WordHelp::HeadOf(const ProgramFacts& facts, const Routine& routine)
{
    std::vector<Text> parameters;
    for (int32_t parameter : routine.parameters)
        parameters.push_back(facts.symbols[static_cast<size_t>(parameter)].name);
    switch (routine.kind) {
    case SymbolKind::Subroutine:
        return u"SUBROUTINE " + (parameters.empty() ? routine.name : FormOf(routine.name, parameters));
    case SymbolKind::Function: return u"FUNCTION " + FormOf(routine.name, parameters);
    default: return u"PROGRAM " + routine.name;
    }
}

std::optional<HoverText> WordHelp::Hover(const Text& path, Position at)
{
    if (std::optional<HoverText> name = OfName(path, at)) return name;
    OpenText* text = sources_.Find(path);
    return text ? OfWord(*text, at) : std::nullopt;
}

std::optional<HoverText> WordHelp::OfName(const Text& path, Position at)
{
    const std::optional<NamedPlace> name = reach_.At(path, at);
    const std::optional<SourceUnit> item = name ? std::nullopt : reach_.IncludedAt(path, at);
    if (item) return HoverText{{at, at}, item->name.file + u" " + item->name.item, CommentBelow(*item, -1)};
    if (!name) return std::nullopt;
    const std::vector<FoundPlace> declarations = reach_.Declarations(*name);
    if (declarations.empty()) return std::nullopt;
    return OfDeclaration(*name, declarations.front());
}

HoverText WordHelp::OfDeclaration(const NamedPlace& name, const FoundPlace& declaration)
{
    const SourceUnit& unit = declaration.unit;
    const int32_t line = declaration.at.at.start.line;
    HoverText hover{name.at.at, {}, {}};
    if (NameReach::IsCalled(name)) {
        const auto facts = sources_.Facts(unit);
        hover.form = HeadOf(*facts, facts->routines.front());
        hover.help = CommentBelow(unit, line);
        if (const Text above = CommentAbove(unit, line); !above.empty()) hover.help = above;
    } else {
        hover.form = Text(Trim(sources_.LineOf(unit, line)));
        hover.help = CommentAbove(unit, line);
    }
    if (unit.path != name.unit.path) Append(hover.help, unit.name.file + u" " + unit.name.item);
    return hover;
}

Text WordHelp::CommentAbove(const SourceUnit& unit, int32_t line)
{
    std::vector<Text> lines;
    while (--line >= 0 && static_cast<int32_t>(lines.size()) < kMostComment) {
        const Text above = sources_.LineOf(unit, line);
        const std::optional<TextView> comment = CommentIn(above);
        if (!comment) break;
        lines.emplace_back(*comment);
    }
    Text text;
    for (auto at = lines.rbegin(); at != lines.rend(); ++at)
        if (!text.empty() || !at->empty()) Append(text, *at);
    while (text.ends_with(u'\n')) text.pop_back();
    return text;
}

Text WordHelp::CommentBelow(const SourceUnit& unit, int32_t line)
{
    Text text;
    for (int32_t i = 0; i < kMostComment; ++i) {
        const Text below = sources_.LineOf(unit, ++line);
        const std::optional<TextView> comment = CommentIn(below);
        if (!comment) break;
        if (!text.empty() || !comment->empty()) Append(text, *comment);
    }
    while (text.ends_with(u'\n')) text.pop_back();
    return text;
}

std::optional<HoverText> WordHelp::OfWord(OpenText& text, Position at)
{
    const ProgramText& lines = *text.analyser.Lines();
    if (at.line < 0 || at.line >= lines.LineCount()) return std::nullopt;
    const BasicLine& line = lines.At(at.line).tokens;
    for (const BasicToken& token : line.Tokens()) {
        if (token.start > at.col || token.end < at.col) continue;
        HoverText hover{{{token.start, at.line}, {token.end, at.line}}, {}, {}};
        for (const DialectWord& word : text.dialect->Find(Trim(line.Of(token)))) {
            Append(hover.form, word.form);
            Append(hover.help, word.help);
        }
        if (!hover.form.empty()) return hover;
    }
    return std::nullopt;
}

std::optional<SignatureHelp> WordHelp::Signature(const Text& path, Position at)
{
    OpenText* text = sources_.Find(path);
    if (!text || at.line < 0 || at.line >= text->analyser.Lines()->LineCount()) return std::nullopt;
    const BasicLine& line = text->analyser.Lines()->At(at.line).tokens;
    const std::vector<BasicToken>& tokens = line.Tokens();
    // Backwards from the caret to the parenthesis that is open there.
    int32_t depth = 0;
    int32_t active = 0;
    for (size_t i = tokens.size(); i-- > 0;) {
        const BasicToken& token = tokens[i];
        if (token.end > at.col) continue;
        if (line.IsSign(token, u')')) ++depth;
        if (line.IsSign(token, u',') && depth == 0) ++active;
        if (!line.IsSign(token, u'(') || depth-- > 0) continue;
        if (i == 0 || tokens[i - 1].kind != BasicToken::Kind::Word) return std::nullopt;
        const bool call = i > 1 && IsWord(line.Of(tokens[i - 2]), u"CALL");
        std::optional<SignatureHelp> help = OfCallee(*text, line.Of(tokens[i - 1]), call);
        if (help) help->active = std::min(active, std::max(static_cast<int32_t>(help->parameters.size()) - 1, 0));
        return help;
    }
    return std::nullopt;
}

std::optional<SignatureHelp> WordHelp::OfCallee(OpenText& text, TextView name, bool call)
{
    SignatureHelp help;
    const ProgramFacts& facts = sources_.Get(text);
    const SourceUnit unit = sources_.UnitOf(text.path);
    const auto take = [&](const SourceUnit& from, const ProgramFacts& of, const Routine& routine) {
        help.form = HeadOf(of, routine);
        help.form.erase(0, help.form.find(u' ') + 1);
        help.help = CommentAbove(from, routine.nameAt.start.line);
        if (help.help.empty()) help.help = CommentBelow(from, routine.nameAt.start.line);
    };
    const auto isFunction = [&](const CallSite& site) { return site.function && SameName(site.name, name); };
    if (!call && !std::any_of(facts.calls.begin(), facts.calls.end(), isFunction)) {
        if (const DialectWord* word = text.dialect->Find(name, WordKind::Function)) {
            help.form = word->form;
            help.help = word->help;
        }
    }
    for (const Routine& routine : facts.routines)
        if (help.form.empty() && routine.local && SameName(routine.name, name)) take(unit, facts, routine);
    if (help.form.empty()) {
        for (const SourceUnit& callee : reach_.Callees(unit, name)) {
            const auto of = sources_.Facts(callee);
            if (of && !of->routines.empty() && help.form.empty()) take(callee, *of, of->routines.front());
        }
    }
    if (help.form.empty()) return std::nullopt;
    help.parameters = ParametersOf(help.form);
    return help;
}

} // namespace nib
