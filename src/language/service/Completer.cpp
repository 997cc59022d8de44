#include "language/service/Completer.h"

#include "language/Dialect.h"
#include "language/service/BlockClosers.h"

#include <algorithm>
#include <unordered_map>

namespace nib {

namespace {

using Kind = Completion::Kind;

constexpr int32_t kSamePrefix = 4000; ///< in the case that was typed
constexpr int32_t kPrefix = 3000;
constexpr int32_t kRecent = 400; ///< used last, and less for each that was used since
constexpr int32_t kNear = 200;   ///< in the same line, and less for each line between

constexpr TextView kIncludeWords[] = {u"$INCLUDE", u"$INSERT", u"INCLUDE", u"INSERT", u"#INCLUDE"};

constexpr TextView kBranches[] = {u"GOTO", u"GOSUB", u"GO"};

Kind KindOf(SymbolKind kind)
{
    switch (kind) {
    case SymbolKind::Constant: return Kind::Constant;
    case SymbolKind::Label: return Kind::Label;
    case SymbolKind::Program:
    case SymbolKind::Subroutine:
    case SymbolKind::Function:
    case SymbolKind::External: return Kind::Subroutine;
    case SymbolKind::File: return Kind::File;
    case SymbolKind::Item: return Kind::Item;
    default: return Kind::Variable;
    }
}

Kind KindOf(WordKind kind)
{
    switch (kind) {
    case WordKind::Statement: return Kind::Statement;
    case WordKind::Function: return Kind::Function;
    case WordKind::Clause: return Kind::Clause;
    case WordKind::Variable: return Kind::Variable;
    }
    return Kind::Statement;
}

/// As the letters are that were typed.
Text InCaseOf(TextView typed, const Text& word)
{
    const auto isLower = [](char16_t c) { return c >= u'a' && c <= u'z'; };
    const auto isUpper = [](char16_t c) { return c >= u'A' && c <= u'Z'; };
    const bool lower = std::any_of(typed.begin(), typed.end(), isLower);
    const bool upper = std::any_of(typed.begin(), typed.end(), isUpper);
    return lower && !upper ? ToLower(word) : word;
}

bool BeginsAlike(TextView text, TextView prefix)
{
    return text.size() >= prefix.size() && SameName(text.substr(0, prefix.size()), prefix);
}

} // namespace

Completions Completer::At(OpenText& text, Position at)
{
    Completions answer;
    const ProgramText& lines = *text.analyser.Lines();
    if (at.line < 0 || at.line >= lines.LineCount()) return answer;
    const ProgramText::Line& line = lines.At(at.line);
    const TextView whole = line.tokens.Whole();
    at.col = std::clamp(at.col, 0, static_cast<int32_t>(whole.size()));
    Look look{text, line.tokens, at, at.col, {}, {}, {}};
    while (look.start > 0 && text.dialect->IsInName(whole[static_cast<size_t>(look.start) - 1])) --look.start;
    if (look.start > 0 && text.dialect->BeginsName(whole[static_cast<size_t>(look.start) - 1])) --look.start;
    look.prefix = whole.substr(static_cast<size_t>(look.start), static_cast<size_t>(at.col - look.start));
    answer.replaces = {{look.start, at.line}, at};
    const Wanted wanted = line.comment ? Wanted::Nothing : WantedAt(look);
    switch (wanted) {
    case Wanted::Nothing: return answer;
    case Wanted::Labels: Names(look, wanted); break;
    case Wanted::Callees: Callees(look); break;
    case Wanted::Files: Files(look); break;
    case Wanted::Includes: Includes(look); break;
    case Wanted::Statements: Closer(look); [[fallthrough]];
    case Wanted::Values:
        Names(look, wanted);
        Words(look, wanted);
        break;
    }
    std::vector<Candidate>& found = look.found;
    const size_t count = std::min(found.size(), LanguageService::kMostCompletions);
    const auto better = [](const Candidate& a, const Candidate& b) {
        return a.score != b.score ? a.score > b.score : a.what.label < b.what.label;
    };
    std::partial_sort(found.begin(), found.begin() + static_cast<ptrdiff_t>(count), found.end(), better);
    answer.more = found.size() > count;
    for (size_t i = 0; i < count; ++i) answer.best.push_back(std::move(found[i].what));
    return answer;
}

Completer::Wanted Completer::WantedAt(Look& look) const
{
    using TokenKind = BasicToken::Kind;
    const BasicLine& line = look.line;
    const auto& tokens = line.Tokens();
    if (const Wanted include = InDirective(look); include != Wanted::Nothing) return include;
    if (line.CommentStart() < static_cast<int32_t>(line.Whole().size()) && line.CommentStart() <= look.start)
        return Wanted::Nothing;
    size_t before = 0;
    while (before < tokens.size() && tokens[before].end <= look.start) ++before;
    const bool inString = before < tokens.size() && tokens[before].kind == TokenKind::String &&
                          tokens[before].start < look.at.col &&
                          (tokens[before].end > look.at.col || line.OpenQuote() != 0);
    const auto wordAt = [&](size_t at) { return at < tokens.size() ? Trim(line.Of(tokens[at])) : TextView(); };
    size_t first = before;
    while (first > 0 && tokens[first - 1].kind != TokenKind::Separator && !tokens[first - 1].Is(BasicKey::Then) &&
           !tokens[first - 1].Is(BasicKey::Else) && tokens[first - 1].kind != TokenKind::Label)
        --first;
    if (inString) {
        const bool opens = first < before && (IsWord(wordAt(first), u"OPEN") || IsWord(wordAt(first), u"OPENSEQ"));
        if (!opens) return Wanted::Nothing;
        look.start = tokens[before].start + 1;
        look.prefix =
            line.Whole().substr(static_cast<size_t>(look.start), static_cast<size_t>(look.at.col - look.start));
        return Wanted::Files;
    }
    if (before == first) return Wanted::Statements;
    const BasicToken& last = tokens[before - 1];
    if (last.kind == TokenKind::Number && last.end == look.start) return Wanted::Nothing;
    const bool lists = line.IsSign(last, u',') && before > 1 && tokens[before - 2].kind == TokenKind::Target;
    const auto isBranch = [&](TextView word) { return IsWord(wordAt(before - 1), word); };
    if (last.kind == TokenKind::Branch || lists || std::any_of(std::begin(kBranches), std::end(kBranches), isBranch))
        return Wanted::Labels;
    if (IsWord(wordAt(before - 1), u"CALL")) return Wanted::Callees;
    return last.Is(BasicKey::Do) ? Wanted::Statements : Wanted::Values;
}

Completer::Wanted Completer::InDirective(Look& look) const
{
    const Text before(look.line.Whole().substr(0, static_cast<size_t>(look.start)));
    const TextView words = Trim(before);
    const size_t blank = words.find(u' ');
    const TextView first = words.substr(0, blank);
    const auto isInclude = [&](TextView word) { return SameName(first, word); };
    if (std::none_of(std::begin(kIncludeWords), std::end(kIncludeWords), isInclude)) return Wanted::Nothing;
    if (!before.ends_with(u' ')) return Wanted::Nothing;
    const TextView file = blank == TextView::npos ? TextView() : Trim(words.substr(blank));
    if (file.find_first_of(u" =(") != TextView::npos) return Wanted::Nothing;
    look.includeFile = file;
    return Wanted::Includes;
}

void Completer::Add(Look& look, Completion what, int32_t bonus) const
{
    int32_t score = bonus;
    if (what.label.starts_with(look.prefix)) {
        score += kSamePrefix;
    } else if (BeginsAlike(what.label, look.prefix)) {
        score += kPrefix;
    } else {
        const int32_t fit = FitOf(ToUpper(look.prefix), what.label);
        if (fit == 0) return;
        score += fit;
    }
    if (what.insert.empty()) what.insert = what.label;
    look.found.push_back({std::move(what), score});
}

void Completer::Names(Look& look, Wanted wanted)
{
    const ProgramFacts& facts = sources_.Get(look.text);
    int32_t routine = 0;
    for (size_t i = 1; i < facts.routines.size(); ++i)
        if (facts.routines[i].first <= look.at.line && look.at.line <= facts.routines[i].last)
            routine = static_cast<int32_t>(i);
    // How near each name stands, but for the word that is being typed.
    std::vector<int32_t> distance(facts.symbols.size(), INT32_MAX);
    std::vector<bool> elsewhere(facts.symbols.size());
    for (const Occurrence& one : facts.occurrences) {
        const auto symbol = static_cast<size_t>(one.symbol);
        if (one.at.start.line == look.at.line && one.at.start.col == look.start) continue;
        elsewhere[symbol] = true;
        distance[symbol] = std::min(distance[symbol], std::abs(one.at.start.line - look.at.line));
    }
    std::unordered_map<Text, int32_t> recent;
    for (size_t i = 0; i < look.text.recent.size(); ++i)
        recent.emplace(look.text.recent[i], static_cast<int32_t>(look.text.recent.size() - i));
    for (size_t i = 0; i < facts.symbols.size(); ++i) {
        const Symbol& symbol = facts.symbols[i];
        const bool isLabel = symbol.kind == SymbolKind::Label;
        if (isLabel != (wanted == Wanted::Labels) || (!elsewhere[i] && symbol.item == 0)) continue;
        if (symbol.kind == SymbolKind::File || symbol.kind == SymbolKind::Item || symbol.kind == SymbolKind::External)
            continue;
        if (symbol.routine != 0 && symbol.routine != routine) continue;
        int32_t bonus = symbol.item == 0 ? 100 : 0;
        if (distance[i] < kNear) bonus += kNear - distance[i];
        if (const auto used = recent.find(ToUpper(symbol.name)); used != recent.end())
            bonus += kRecent * used->second / static_cast<int32_t>(look.text.recent.size());
        Text detail = symbol.kind == SymbolKind::Constant ? symbol.value : Text();
        Add(look, {symbol.name, KindOf(symbol.kind), {}, std::move(detail), {}}, bonus);
    }
}

void Completer::Words(Look& look, Wanted wanted)
{
    for (const DialectWord& word : look.text.dialect->Words()) {
        const bool statement = word.kind == WordKind::Statement;
        if (statement != (wanted == Wanted::Statements) && word.kind != WordKind::Clause) continue;
        const int32_t bonus = word.kind == WordKind::Clause ? 0 : 150;
        const Text label = InCaseOf(look.prefix, word.name);
        Add(look, {label, KindOf(word.kind), {}, word.form, word.help}, bonus);
    }
}

void Completer::Callees(Look& look)
{
    if (!look.text.account) return;
    const Text own = look.text.name.file;
    look.text.account->index->Names().EachRoutine([&](const ItemName& item, TextView name) {
        if (item == look.text.name) return;
        Add(look, {Text(name), Kind::Item, {}, item.file + u" " + item.item, {}}, item.file == own ? 100 : 0);
    });
}

void Completer::Files(Look& look)
{
    if (!look.text.account) return;
    for (const Text& file : look.text.account->index->Files()) Add(look, {file, Kind::File, {}, {}, {}}, 0);
}

void Completer::Includes(Look& look)
{
    if (!look.text.account) return;
    AccountIndex& index = *look.text.account->index;
    const bool named = !look.includeFile.empty();
    if (!named)
        for (const Text& file : index.Files()) Add(look, {file, Kind::File, {}, {}, {}}, 0);
    const auto take = [&](const Text& file, int32_t bonus) {
        for (const Text& id : index.ItemsOf(file)) Add(look, {id, Kind::Item, {}, file, {}}, bonus);
    };
    take(named ? look.includeFile : look.text.name.file, 100);
    if (named) return;
    for (const Text& file : look.text.account->rules.includeFiles) take(file, 50);
}

/// Where nothing but the caret stands in the line.
void Completer::Closer(Look& look)
{
    if (Trim(look.line.Whole().substr(0, static_cast<size_t>(look.at.col))) != look.prefix) return;
    sources_.Get(look.text);
    const std::optional<Text> closer = MissingCloser(look.text.analyser, *look.text.dialect, look.at.line);
    if (closer) Add(look, {InCaseOf(look.prefix, *closer), Kind::Closer, {}, {}, {}}, 1000);
}

} // namespace nib
