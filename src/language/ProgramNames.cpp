#include "language/ProgramNames.h"

#include <algorithm>

namespace nib {

namespace {

/// So many are searched for a label that their own routine does not have.
constexpr int32_t kFewRoutines = 100;

/// What stands in the last quotes.
Text LastString(TextView text)
{
    const size_t end = text.find_last_of(u"\"'\\");
    const size_t start = end == TextView::npos || end == 0 ? TextView::npos : text.find_last_of(text[end], end - 1);
    return start == TextView::npos ? Text() : Text(text.substr(start + 1, end - start - 1));
}

} // namespace

void ProgramNames::Clear()
{
    facts_.clear();
    global_.assign(static_cast<size_t>(words_.Size()), -1);
    external_.assign(static_cast<size_t>(words_.Size()), -1);
    local_.clear();
    labels_.clear();
    jumps_.clear();
    routine_ = 0;
}

void ProgramNames::Set(std::vector<int32_t>& symbols, int32_t word, int32_t symbol)
{
    if (static_cast<size_t>(word) >= symbols.size()) symbols.resize(static_cast<size_t>(word) + 1, -1);
    symbols[static_cast<size_t>(word)] = symbol;
}

TextRange ProgramNames::Range(const Here& here, const NameUse& use) const
{
    const int32_t line = here.firstLine + use.line;
    return {{use.start, line}, {use.end, line}};
}

Text ProgramNames::Written(const Here& here, const NameUse& use) const
{
    const TextView line = here.text.At(here.firstLine + use.line).tokens.Whole();
    return Text(line.substr(static_cast<size_t>(use.start), static_cast<size_t>(use.end - use.start)));
}

int32_t ProgramNames::Add(const Here& here, const NameUse& use, SymbolKind kind)
{
    Symbol symbol;
    symbol.name = Written(here, use);
    symbol.kind = kind;
    symbol.item = here.node.place.item;
    symbol.caseSensitive = false;
    program_.symbols.push_back(std::move(symbol));
    facts_.emplace_back();
    return static_cast<int32_t>(facts_.size()) - 1;
}

void ProgramNames::Occur(const Here& here, const NameUse& use, int32_t symbol)
{
    if (here.node.place.item != 0 || use.end <= use.start) return;
    program_.occurrences.push_back({Range(here, use), symbol, use.use});
    NameFacts& facts = facts_[static_cast<size_t>(symbol)];
    const bool reads = use.use == Use::Reads || (use.flags & use_flag::kInPlace && !(use.flags & use_flag::kPart));
    if (facts.first < 0 || (reads && program_.occurrences[static_cast<size_t>(facts.first)].use == Use::Sets))
        facts.first = static_cast<int32_t>(program_.occurrences.size()) - 1;
}

void ProgramNames::Take(const FlowNode& node, const ProgramText& text, int32_t firstLine, int32_t routine)
{
    const Here here{node, text, firstLine};
    if (routine < routine_) {
        // A local one has ended, and the program goes on.
        if (node.place.item == 0) program_.routines[static_cast<size_t>(routine_)].last = std::max(firstLine - 1, 0);
        local_.clear();
        routine_ = routine;
    }
    const Step& step = *node.step;
    switch (step.kind) {
    case StepKind::Label: Label(here); return;
    case StepKind::Routine: BeginRoutine(here, routine); return;
    case StepKind::Common: Common(here); return;
    case StepKind::Constant: Constant(here); return;
    default: break;
    }
    for (const NameUse& use : node.statements->UsesOf(step)) {
        if (use.use == Use::Jumps)
            Jumps(here, use);
        else if (use.use == Use::Calls)
            Call(here, use);
        else if (use.use == Use::Declares)
            Declare(here, use, step.kind == StepKind::Functions ? SymbolKind::Function : SymbolKind::Variable);
        else
            TakeUse(here, use);
    }
}

void ProgramNames::Label(const Here& here)
{
    const NameUse& use = here.node.statements->UsesOf(*here.node.step)[0];
    const int32_t symbol = Add(here, use, SymbolKind::Label);
    program_.symbols.back().routine = routine_;
    Occur(here, use, symbol);
    NameFacts& facts = facts_.back();
    facts.label = here.node.place.item == 0 ? static_cast<int32_t>(program_.occurrences.size()) - 1 : -1;
    facts.declared = true;
    labels_.push_back({routine_, WordOf(here.node, use), symbol});
}

void ProgramNames::Jumps(const Here& here, const NameUse& use)
{
    int32_t occurrence = -1;
    if (here.node.place.item == 0) {
        occurrence = static_cast<int32_t>(program_.occurrences.size());
        program_.occurrences.push_back({Range(here, use), -1, use.use});
    }
    const bool sub = here.node.kind == StepKind::Gosub || here.node.kind == StepKind::OnGosub;
    jumps_.push_back({routine_, WordOf(here.node, use), occurrence, sub, Written(here, use)});
}

void ProgramNames::Call(const Here& here, const NameUse& use)
{
    const int32_t word = WordOf(here.node, use);
    int32_t symbol = Known(external_, word);
    if (symbol < 0) {
        symbol = Add(here, use, SymbolKind::External);
        facts_.back().unsure = true;
        Set(external_, word, symbol);
    }
    Occur(here, use, symbol);
    if (here.node.place.item != 0) return;
    program_.calls.push_back({Range(here, use), Written(here, use), here.node.step->arguments, routine_, false});
}

int32_t ProgramNames::Variable(const Here& here, const NameUse& use)
{
    const int32_t word = WordOf(here.node, use);
    for (const auto& [known, symbol] : local_)
        if (known == word) return symbol;
    int32_t symbol = Known(global_, word);
    if (symbol >= 0) return symbol;
    const bool parens = use.flags & use_flag::kParens;
    if (parens && use.use == Use::Reads && words_.FactsOf(word).function) return -1;
    symbol = Add(here, use, SymbolKind::Variable);
    // An array of an item that is not there, or a function.
    facts_.back().unsure = parens && use.use == Use::Reads;
    Set(global_, word, symbol);
    return symbol;
}

void ProgramNames::TakeUse(const Here& here, const NameUse& use)
{
    const int32_t symbol = Variable(here, use);
    if (symbol < 0) return;
    Symbol& known = program_.symbols[static_cast<size_t>(symbol)];
    if (use.flags & use_flag::kParens && known.kind == SymbolKind::Function) {
        NameUse call = use;
        call.use = Use::Calls;
        Occur(here, call, symbol);
        if (here.node.place.item == 0)
            program_.calls.push_back({Range(here, use), Written(here, use), use.indices, routine_, true});
        return;
    }
    if (use.flags & use_flag::kOpens && known.kind == SymbolKind::Variable) {
        known.kind = SymbolKind::FileVariable;
        const TextView line = here.text.At(here.firstLine + use.line).tokens.Whole();
        known.value = LastString(line.substr(0, static_cast<size_t>(use.start)));
    }
    Occur(here, use, symbol);
    Count(use, symbol);
    if (use.flags & use_flag::kArgument && MaySet(WordOf(here.node, use.index[0])))
        ++facts_[static_cast<size_t>(symbol)].given;
    if (use.flags & use_flag::kIndirect && here.node.place.item == 0)
        program_.calls.push_back({Range(here, use), {}, here.node.step->arguments, routine_, false});
}

/// Functions that are no part of the language may set their arguments; of those that are, few do.
bool ProgramNames::MaySet(int32_t function) const
{
    const int32_t symbol = Known(global_, function);
    if (symbol >= 0) {
        const SymbolKind kind = program_.symbols[static_cast<size_t>(symbol)].kind;
        return kind == SymbolKind::Function || kind == SymbolKind::Variable;
    }
    const TextView name = words_.TextOf(function);
    return !words_.FactsOf(function).function || name == u"REMOVE" || name == u"ASSIGNED" || name == u"UNASSIGNED";
}

void ProgramNames::Count(const NameUse& use, int32_t symbol)
{
    NameFacts& facts = facts_[static_cast<size_t>(symbol)];
    if (use.flags & use_flag::kUnsure) facts.unsure = true;
    if (use.flags & use_flag::kValue)
        facts.unsure = true;
    else if (use.flags & use_flag::kLoop)
        return;
    else if (use.use == Use::Reads)
        ++facts.reads;
    else if (use.flags & use_flag::kGiven)
        ++facts.given;
    else if (use.flags & use_flag::kOutput)
        ++facts.outputs;
    else if (use.flags & use_flag::kPart)
        ++facts.parts;
    else if (use.flags & use_flag::kInPlace)
        ++facts.changes;
    else
        ++facts.sets;
}

int32_t ProgramNames::NumberOf(int32_t index, const std::vector<int32_t>* words) const
{
    if (index >= -1) return index;
    int32_t word = -2 - index;
    if (words) word = (*words)[static_cast<size_t>(word)];
    const int32_t symbol = Known(global_, word);
    if (symbol < 0 || program_.symbols[static_cast<size_t>(symbol)].kind != SymbolKind::Constant) return -1;
    const TextView value = program_.symbols[static_cast<size_t>(symbol)].value;
    if (value.empty() || value.size() > 8 || value.find_first_not_of(u"0123456789") != TextView::npos) return -1;
    return ToInt(value);
}

int32_t ProgramNames::LabelOf(int32_t routine, int32_t word) const
{
    const auto at = std::partition_point(labels_.begin(), labels_.end(), [&](const LabelKey& label) {
        return label.routine == routine ? label.word < word : label.routine < routine;
    });
    return at != labels_.end() && at->routine == routine && at->word == word ? at->symbol : -1;
}

void ProgramNames::Finish()
{
    std::stable_sort(labels_.begin(), labels_.end(), [](const LabelKey& a, const LabelKey& b) {
        return a.routine == b.routine ? a.word < b.word : a.routine < b.routine;
    });
    Resolve();
}

/// Labels may come behind what jumps to them; a local routine is reached by its name as well.
void ProgramNames::Resolve()
{
    for (Jump& jump : jumps_) {
        int32_t symbol = LabelOf(jump.routine, jump.word);
        if (symbol < 0) symbol = LabelOf(-1, jump.word);
        const auto most = std::min(static_cast<int32_t>(program_.routines.size()), kFewRoutines);
        for (int32_t other = 0; symbol < 0 && other < most; ++other) symbol = LabelOf(other, jump.word);
        if (symbol < 0) {
            Symbol missing;
            missing.name = jump.written;
            missing.kind = SymbolKind::Label;
            missing.routine = jump.routine;
            missing.caseSensitive = false;
            symbol = static_cast<int32_t>(facts_.size());
            program_.symbols.push_back(std::move(missing));
            facts_.emplace_back();
            const auto at = std::partition_point(labels_.begin(), labels_.end(), [&](const LabelKey& label) {
                return label.routine == jump.routine ? label.word < jump.word : label.routine < jump.routine;
            });
            labels_.insert(at, {jump.routine, jump.word, symbol});
        }
        NameFacts& facts = facts_[static_cast<size_t>(symbol)];
        ++facts.jumps;
        facts.gosubs += jump.sub ? 1 : 0;
        if (jump.occurrence >= 0) program_.occurrences[static_cast<size_t>(jump.occurrence)].symbol = symbol;
    }
}

} // namespace nib
