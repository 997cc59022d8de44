#include "language/ProgramFindings.h"

#include <algorithm>

namespace nib {

using namespace finding_code;

void FindingSink::Add(TextView code, TextRange at, Phrase message, std::vector<QuickMend> mends)
{
    program_.findings.push_back({Text(code), FindingKindOf(code).level, at, std::move(message), std::move(mends)});
}

TextRange FindingSink::CodeOf(int32_t line) const
{
    const BasicLine& tokens = analyser_.Lines()->At(line).tokens;
    const bool code = tokens.IsCode();
    const int32_t end = code ? tokens.Tokens().back().end : tokens.CommentStart();
    return {{code ? tokens.Tokens().front().start : 0, line}, {end, line}};
}

TextRange FindingSink::RangeOf(const FlowNode& node) const
{
    TextRange range = CodeOf(node.place.line);
    range.start.col = node.step->start;
    const BasicLine& tokens = analyser_.Lines()->At(node.place.line).tokens;
    for (const BasicToken& token : tokens.Tokens()) {
        if (token.start < node.step->start || token.kind != BasicToken::Kind::Separator) continue;
        range.end.col = std::max(token.start, node.step->end);
        break;
    }
    return range;
}

namespace {

/// Where on its line a finding of the checker is.
TextRange PlaceOf(const FindingSink& sink, const Finding& finding)
{
    const int32_t line = finding.line - 1;
    TextRange range = sink.CodeOf(line);
    const BasicLine& tokens = sink.Of().Lines()->At(line).tokens;
    if (finding.code == kOpenString && tokens.OpenQuote() && tokens.IsCode())
        range.start.col = tokens.Tokens().back().start;
    if (finding.code != kMissingLabel) return range;
    const auto& all = sink.Known().occurrences;
    auto at = std::ranges::lower_bound(all, line, {}, [](const Occurrence& o) { return o.at.start.line; });
    for (; at != all.end() && at->at.start.line == line; ++at)
        if (at->use == Use::Jumps && !sink.Of().Names().Facts()[static_cast<size_t>(at->symbol)].declared)
            return at->at;
    return range;
}

/// Without the label the statement behind it stays where it is.
QuickMend LabelRemoval(const FindingSink& sink, TextRange at)
{
    const BasicToken& label = sink.Of().Lines()->At(at.start.line).tokens.Tokens().front();
    const TextRange whole{{label.start, at.start.line}, {label.end, at.start.line}};
    return {Wording::RemoveLabel, {{whole, Text(static_cast<size_t>(label.end - label.start), u' ')}}};
}

/// Whether a slip of one key, or two keys the wrong way round, makes one of the other.
bool IsSlip(TextView a, TextView b)
{
    if (a.size() > b.size()) std::swap(a, b);
    if (b.size() - a.size() > 1 || b.size() < 4) return false;
    size_t head = 0;
    while (head < a.size() && a[head] == b[head]) ++head;
    const TextView restA = a.substr(head);
    const TextView restB = b.substr(head);
    if (a.size() != b.size()) return restA == restB.substr(1);
    if (restA.size() < 2) return !restA.empty();
    return restA.substr(1) == restB.substr(1) ||
           (restA[0] == restB[1] && restA[1] == restB[0] && restA.substr(2) == restB.substr(2));
}

/// The name that was meant, when there is only one that it can be.
std::vector<QuickMend> Renamings(const FindingSink& sink, size_t wrong, TextRange at)
{
    const std::vector<Symbol>& symbols = sink.Known().symbols;
    const auto& facts = sink.Of().Names().Facts();
    const Text name = ToUpper(symbols[wrong].name);
    const Text* meant = nullptr;
    for (size_t i = 0; i < symbols.size(); ++i) {
        const SymbolKind kind = symbols[i].kind;
        const bool named = kind == SymbolKind::Parameter || kind == SymbolKind::CommonMember ||
                           kind == SymbolKind::Constant || facts[i].sets + facts[i].outputs + facts[i].parts > 0;
        if (i == wrong || !named || !IsSlip(name, ToUpper(symbols[i].name))) continue;
        if (meant) return {};
        meant = &symbols[i].name;
    }
    if (!meant) return {};
    return {QuickMend{{Wording::ChangeTo, {*meant}}, {{at, *meant}}}};
}

void FindNames(FindingSink& sink)
{
    const ProgramFacts& program = sink.Known();
    const ProgramAnalyser& analyser = sink.Of();
    const auto& facts = analyser.Names().Facts();
    for (size_t i = 0; i < facts.size(); ++i) {
        const NameFacts& fact = facts[i];
        const Symbol& symbol = program.symbols[i];
        if (fact.first < 0 && fact.label < 0) continue;
        if (symbol.kind == SymbolKind::Label) {
            if (!fact.declared || fact.jumps > 0 || fact.label < 0) continue;
            const TextRange at = program.occurrences[static_cast<size_t>(fact.label)].at;
            sink.Add(kUnusedLabel, at, {Wording::UnusedLabel, {symbol.name}}, {LabelRemoval(sink, at)});
            continue;
        }
        const bool variable = symbol.kind == SymbolKind::Variable || symbol.kind == SymbolKind::Array ||
                              symbol.kind == SymbolKind::FileVariable;
        if (!variable || fact.unsure || analyser.Included() || !analyser.Complete()) continue;
        const TextRange at = program.occurrences[static_cast<size_t>(fact.first)].at;
        const bool set = fact.sets + fact.outputs + fact.parts + fact.given > 0;
        if (!set && fact.reads + fact.changes > 0)
            sink.Add(kUnsetVariable, at, {Wording::Unset, {symbol.name}}, Renamings(sink, i, at));
        else if (fact.reads + fact.given + fact.outputs == 0 && fact.sets + fact.parts > 0)
            sink.Add(kUnusedVariable, at, {Wording::Unused, {symbol.name}});
    }
}

/// Indices of arrays, and arguments of the language's own functions.
class UseCheck {
public:
    explicit UseCheck(FindingSink& sink) : sink_(sink), analyser_(sink.Of()), words_(analyser_.Lines()->Words()) {}

    void Check(const FlowNode& node)
    {
        if (node.place.item != 0 || !node.step) return;
        if (node.step->kind == StepKind::Constant || node.step->kind == StepKind::Functions) return;
        for (const NameUse& use : node.statements->UsesOf(*node.step)) {
            if (!(use.flags & use_flag::kParens) || use.use == Use::Declares || use.use == Use::Calls) continue;
            const int32_t line = node.place.line - node.step->line + use.line;
            const TextRange at{{use.start, line}, {use.end, line}};
            const int32_t symbol = analyser_.Names().VariableOf(use.word);
            if (symbol < 0)
                Function(use, at);
            else
                Array(use, at, sink_.Known().symbols[static_cast<size_t>(symbol)]);
        }
    }

private:
    void Function(const NameUse& use, TextRange at)
    {
        const DialectWord* word = words_.FactsOf(use.word).called;
        if (!word || use.use != Use::Reads || analyser_.Internal()) return;
        const int32_t given = use.indices;
        if (given >= word->least && (word->most < 0 || given <= word->most)) return;
        const bool fewer = given < word->least;
        const Wording wording = word->most == word->least ? Wording::Takes
                                : fewer                   ? Wording::TakesAtLeast
                                                          : Wording::TakesAtMost;
        sink_.Add(kArgumentCount, at,
                  {wording, {word->name, Decimal(fewer ? word->least : word->most), Decimal(given)}});
    }

    void Array(const NameUse& use, TextRange at, const Symbol& symbol)
    {
        if (symbol.dimensions == 0 || symbol.sizes.empty() || symbol.kind == SymbolKind::Parameter) return;
        // Element 0 is that which takes what is too much, however many dimensions there are.
        if (use.indices == 1 && use.index[0] == 0) return;
        if (use.indices != symbol.dimensions) {
            sink_.Add(kDimension, at,
                      {symbol.dimensions == 1 ? Wording::Dimension : Wording::Dimensions,
                       {symbol.name, Decimal(symbol.dimensions), Decimal(use.indices)}});
            return;
        }
        for (size_t i = 0; i < std::min(symbol.sizes.size(), std::size(use.index)); ++i) {
            const int32_t size = symbol.sizes[i];
            const int32_t index = analyser_.Names().NumberOf(use.index[i], nullptr);
            if (size < 0 || index <= size) continue;
            sink_.Add(kIndexRange, at, {Wording::IndexOutside, {Decimal(index), symbol.name, Decimal(size)}});
            return;
        }
    }

    FindingSink& sink_;
    const ProgramAnalyser& analyser_;
    const WordTable& words_;
};

} // namespace

void DropSilenced(const ProgramText& text, std::vector<ProgramFinding>& findings)
{
    struct Row {
        int32_t line;
        Silence silence;
    };
    std::vector<Row> rows;
    bool head = true;
    for (int32_t i = 0; i < text.LineCount() && !findings.empty(); ++i) {
        const ProgramText::Line& line = text.At(i);
        Silence silence;
        const auto start = static_cast<size_t>(line.tokens.CommentStart());
        if (line.silences && ReadSilence(line.tokens.Whole().substr(start), silence) && (head || !silence.all)) {
            rows.push_back({i, silence});
            // A comment that stands alone speaks of the line below it.
            if (!line.tokens.IsCode()) rows.push_back({i + 1, std::move(silence)});
        }
        head = head && !line.tokens.IsCode();
    }
    if (rows.empty()) return;
    std::erase_if(findings, [&](const ProgramFinding& finding) {
        return std::ranges::any_of(rows, [&](const Row& row) {
            return (row.silence.all || row.line == finding.at.start.line) && row.silence.Covers(finding.code);
        });
    });
}

void FindInProgram(const ProgramAnalyser& analyser, const std::vector<Finding>& checked, ProgramFacts& program)
{
    FindingSink sink(analyser, program);
    bool blocks = true;
    for (const Finding& finding : checked) {
        sink.Add(finding.code, PlaceOf(sink, finding), finding.text);
        // The label may be in an include that was not found.
        if (finding.code == kMissingLabel && !analyser.Complete())
            program.findings.back().level = FindingLevel::Warning;
        blocks = blocks && finding.code != kBlock;
    }
    FindNames(sink);
    UseCheck uses(sink);
    for (const FlowNode& node : analyser.Flow().Nodes()) {
        uses.Check(node);
        const bool odd = node.step && node.step->flags & step_flag::kOdd;
        if (odd && node.place.item == 0) sink.Add(kOddCondition, sink.RangeOf(node), Wording::OddCondition);
    }
    if (blocks) FindMissingEnds(sink);
    if (blocks && analyser.Flow().Sound()) {
        FindInFlow(sink);
        FindLocks(sink);
    }
    DropSilenced(*analyser.Lines(), program.findings);
    std::ranges::stable_sort(program.findings, {}, [](const ProgramFinding& finding) { return finding.at.start; });
}

} // namespace nib
