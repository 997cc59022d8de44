#include "language/ProgramAnalyser.h"

#include "language/BasicChecker.h"
#include "language/ProgramFindings.h"

#include <algorithm>

namespace nib {

namespace {

/// More than any program has; an end for items that include one another in ever new ways.
constexpr int32_t kMostIncludes = 1000;

/// Ids of items that programs include: what they do not set, the program does.
bool IsIncludeName(TextView item)
{
    constexpr TextView kEnds[] = {u".H", u".INC", u".INCLUDE", u".EQU", u".COM", u".DEF"};
    const auto ends = [item](TextView end) {
        return item.size() > end.size() && IsWord(item.substr(item.size() - end.size()), end);
    };
    return std::ranges::any_of(kEnds, ends);
}

/// By what a name is; Item stands for a word that is none.
std::optional<WordLook> LookOf(const BasicToken& token, SymbolKind kind, bool parens, const WordTable& words)
{
    using enum WordLook;
    if (token.kind == BasicToken::Kind::Number && kind == SymbolKind::Item) return Number;
    if (token.kind == BasicToken::Kind::Branch) return Statement;
    switch (kind) {
    case SymbolKind::Variable:
    case SymbolKind::Array:
    case SymbolKind::FileVariable: return Variable;
    case SymbolKind::CommonMember: return CommonMember;
    case SymbolKind::Constant: return Constant;
    case SymbolKind::Label: return Label;
    case SymbolKind::Parameter: return Parameter;
    case SymbolKind::Function: return Function;
    case SymbolKind::Program:
    case SymbolKind::Subroutine:
    case SymbolKind::External: return Subroutine;
    case SymbolKind::File:
    case SymbolKind::Item: break;
    }
    if (token.kind != BasicToken::Kind::Word) return std::nullopt;
    const WordFacts& facts = words.FactsOf(token.word);
    if (parens && facts.function) return Function;
    const bool clause = token.Is(BasicKey::Then) || token.Is(BasicKey::Else) || token.Is(BasicKey::Locked) ||
                        token.Is(BasicKey::Do) || token.Is(BasicKey::Operator) || token.Is(BasicKey::Error);
    if (clause) return Clause;
    if (token.key != BasicKey::None || facts.form || facts.statement) return Statement;
    return facts.clause ? std::optional(Clause) : std::nullopt;
}

} // namespace

ProgramAnalyser::ProgramAnalyser(const Dialect* dialect, Text file, Text item)
    : text_(std::make_shared<ProgramText>(dialect)), file_(std::move(file)), item_(std::move(item)),
      names_(text_->Words(), program_), included_(IsIncludeName(item_))
{
}

void ProgramAnalyser::Replace(int32_t first, int32_t removed, std::span<const Text> lines)
{
    text_->Replace(first, removed, lines);
}

const ProgramFacts& ProgramAnalyser::Analyse(IncludeSource& includes)
{
    program_.symbols.clear();
    program_.occurrences.clear();
    program_.routines.assign(1, Routine{item_, SymbolKind::Program, {}, 0, 0, {}, false});
    program_.includes.clear();
    program_.calls.clear();
    program_.commons.clear();
    program_.outline.clear();
    program_.findings.clear();
    program_.blocks.clear();
    includeCount_ = 0;
    complete_ = true;
    internal_ = false;
    BasicChecker checker(includes, false);
    const std::vector<Finding> findings = checker.Check(*text_, file_, item_);
    const int32_t lines = checker.LastLine().value_or(text_->LineCount());
    flow_.Clear();
    names_.Clear();
    Walk({*text_, file_, item_, 0, nullptr, nullptr, lines}, includes);
    flow_.Finish();
    names_.Finish();
    Finish(lines);
    FindInProgram(*this, findings, program_);
    return program_;
}

void ProgramAnalyser::Walk(const Source& source, IncludeSource& includes)
{
    for (int32_t at = 0; at < source.lines; ++at) {
        const ProgramText::Line& line = source.text.At(at);
        if (line.statementLines == 0) continue;
        if (line.directive && source.number == 0 && line.directive->kind == BasicDirective::Kind::Internal)
            internal_ = true;
        for (const Step& step : line.statements.steps) {
            FlowNode node;
            node.kind = step.kind;
            node.clause = step.clause;
            node.place = {source.number, at + step.line};
            node.step = &step;
            node.statements = &line.statements;
            node.words = source.words;
            flow_.Take(node);
            names_.Take(node, source.text, at, flow_.Routine());
            if (step.kind == StepKind::Include) Include(source, at, includes);
        }
    }
}

void ProgramAnalyser::Include(const Source& source, int32_t line, IncludeSource& includes)
{
    const ProgramText::Line& at = source.text.At(line);
    const BasicDirective& directive = *at.directive;
    const Text file = directive.file.empty() ? source.file : directive.file;
    std::shared_ptr<const ProgramText> text;
    bool circle = false;
    for (const Source* outer = &source; outer; outer = outer->includedBy)
        circle = circle || (outer->file == file && outer->item == directive.item);
    const bool readable = directive.kind != BasicDirective::Kind::Opaque;
    if (readable && !circle && ++includeCount_ <= kMostIncludes &&
        includes.Find(file, directive.item, text) != IncludeSource::Answer::Found)
        text = nullptr;
    complete_ = complete_ && (text || circle);
    int32_t number = source.number;
    if (number == 0) {
        const TextView whole = at.tokens.Whole();
        const auto start = static_cast<int32_t>(std::min(whole.find_first_not_of(u' '), whole.size()));
        program_.includes.push_back(
            {{{start, line}, {at.tokens.CommentStart(), line}}, directive.file, directive.item, text != nullptr});
        number = static_cast<int32_t>(program_.includes.size());
    }
    if (!text) return;
    const int32_t lines = text->LineCount();
    Walk({*text, file, directive.item, number, WordsOf(text), &source, lines}, includes);
}

const std::vector<int32_t>* ProgramAnalyser::WordsOf(const std::shared_ptr<const ProgramText>& text)
{
    const auto found = std::ranges::find(imports_, text, &Import::text);
    Import* import = found == imports_.end() ? nullptr : found->get();
    if (!import) {
        imports_.push_back(std::make_unique<Import>(Import{text, 0, {}}));
        import = imports_.back().get();
    }
    if (import->version == text->Version() && static_cast<int32_t>(import->words.size()) == text->Words().Size())
        return &import->words;
    import->version = text->Version();
    import->words.clear();
    for (int32_t word = 0; word < text->Words().Size(); ++word)
        import->words.push_back(text_->Words().NumberOf(text->Words().TextOf(word)));
    return &import->words;
}

void ProgramAnalyser::Finish(int32_t lines)
{
    const int32_t last = std::max(lines - 1, 0);
    program_.routines.front().last = last;
    for (Routine& routine : program_.routines)
        routine.last = std::clamp(routine.last, routine.first, std::max(last, routine.first));
    for (const FlowBlock& block : flow_.Blocks())
        if (block.opens.item == 0) program_.blocks.push_back({{0, block.opens.line}, {0, block.closes.line}});
    std::ranges::sort(program_.blocks, {}, [](const TextRange& block) { return block.start.line; });
    Outline();
}

/// Labels and routines; the body of each ends where the next begins.
void ProgramAnalyser::Outline()
{
    std::vector<OutlineEntry>& outline = program_.outline;
    for (const nib::Routine& routine : program_.routines) {
        if (&routine == &program_.routines.front() && routine.nameAt.end.col == 0) continue;
        outline.push_back({routine.name, routine.kind, routine.nameAt, routine.last, 0});
    }
    for (const Occurrence& occurrence : program_.occurrences) {
        const Symbol& symbol = program_.symbols[static_cast<size_t>(occurrence.symbol)];
        if (symbol.kind != SymbolKind::Label || occurrence.use != Use::Declares) continue;
        const nib::Routine& routine = program_.routines[static_cast<size_t>(symbol.routine)];
        outline.push_back({symbol.name, symbol.kind, occurrence.at, routine.last, 1});
    }
    std::ranges::stable_sort(outline, {}, [](const OutlineEntry& entry) { return entry.at.start.line; });
    for (size_t i = 0; i + 1 < outline.size(); ++i) {
        const OutlineEntry& next = outline[i + 1];
        if (next.level > 0 && outline[i].level == 0) continue;
        outline[i].last = std::min(outline[i].last, std::max(next.at.start.line - 1, outline[i].at.start.line));
    }
}

std::vector<LookedWord> ProgramAnalyser::Words(int32_t firstLine, int32_t lastLine) const
{
    std::vector<LookedWord> words;
    const auto& all = program_.occurrences;
    auto occurrence = std::ranges::lower_bound(all, firstLine, {}, [](const Occurrence& o) { return o.at.start.line; });
    for (int32_t at = std::max(firstLine, 0); at <= std::min(lastLine, text_->LineCount() - 1); ++at) {
        const BasicLine& line = text_->At(at).tokens;
        if (text_->At(at).comment) continue;
        const auto& tokens = line.Tokens();
        for (size_t i = 0; i < tokens.size(); ++i) {
            const BasicToken& token = tokens[i];
            const TextRange range{{token.start, at}, {token.end, at}};
            while (occurrence != all.end() && occurrence->at.start < range.start) ++occurrence;
            const bool named = occurrence != all.end() && occurrence->at.start == range.start;
            const SymbolKind kind =
                named ? program_.symbols[static_cast<size_t>(occurrence->symbol)].kind : SymbolKind::Item;
            const bool parens = i + 1 < tokens.size() && line.IsSign(tokens[i + 1], u'(');
            if (const auto look = LookOf(token, kind, parens, text_->Words()))
                words.push_back({named ? occurrence->at : range, *look, named && occurrence->use == Use::Declares});
        }
    }
    return words;
}

} // namespace nib
