#include "language/ProgramNames.h"

#include <algorithm>

namespace nib {

void ProgramNames::Clear()
{
    facts_.clear();
    global_.assign(static_cast<size_t>(words_.Size()), -1);
    external_.assign(static_cast<size_t>(words_.Size()), -1);
    local_.clear();
    labels_.clear();
    jumps_.clear();
    routine_ = 0;
    headed_ = false;
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

void ProgramNames::Take(const FlowNode& node, const ProgramText& text, int32_t firstLine)
{
    const Here here{node, text, firstLine};
    const Step& step = *node.step;
    switch (step.kind) {
    case StepKind::Label: Label(here); return;
    case StepKind::Routine: Routine(here); return;
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
            this->Use(here, use);
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

void ProgramNames::Routine(const Here& here)
{
    const Step& step = *here.node.step;
    const auto uses = here.node.statements->UsesOf(step);
    if (uses.empty()) return;
    const SymbolKind kind = step.flags & step_flag::kFunction  ? SymbolKind::Function
                            : step.flags & step_flag::kProgram ? SymbolKind::Program
                                                               : SymbolKind::Subroutine;
    local_.clear();
    const int32_t line = here.firstLine + step.line;
    if (!headed_ && routine_ == 0 && here.node.place.item == 0) {
        program_.routines.front().kind = kind;
    } else {
        program_.routines.back().last = std::max(program_.routines.back().first, line - 1);
        program_.routines.push_back({{}, kind, {}, line, line, {}, (step.flags & step_flag::kLocal) != 0});
        ++routine_;
    }
    headed_ = true;
    ::nib::Routine& routine = program_.routines.back();
    if (uses[0].word >= 0) {
        routine.name = Written(here, uses[0]);
        routine.nameAt = Range(here, uses[0]);
        const int32_t word = WordOf(here.node, uses[0]);
        int32_t symbol = Known(global_, word);
        if (symbol < 0 || !(facts_[static_cast<size_t>(symbol)].unsure)) symbol = Add(here, uses[0], kind);
        program_.symbols[static_cast<size_t>(symbol)].kind = kind;
        program_.symbols[static_cast<size_t>(symbol)].routine = routine_;
        facts_[static_cast<size_t>(symbol)].declared = facts_[static_cast<size_t>(symbol)].unsure = true;
        Set(external_, word, symbol);
        Occur(here, uses[0], symbol);
        labels_.push_back({-1, word, symbol});
    }
    const BasicLine& head = here.text.At(line).tokens;
    const auto leavesOut = [&](const BasicToken& token) { return IsWord(head.Of(token), u"VAR.ARGS"); };
    routine.fewer = std::any_of(head.Tokens().begin(), head.Tokens().end(), leavesOut);
    for (const NameUse& use : uses.subspan(1)) {
        const int32_t symbol = Add(here, use, SymbolKind::Parameter);
        program_.symbols.back().routine = routine_;
        program_.symbols.back().dimensions = use.indices;
        facts_.back().unsure = facts_.back().declared = true;
        const int32_t word = WordOf(here.node, use);
        if (routine.local)
            local_.emplace_back(word, symbol);
        else
            Set(global_, word, symbol);
        program_.routines.back().parameters.push_back(symbol);
        Occur(here, use, symbol);
    }
}

/// DIM, PRIVATE, LOCAL, DEFFUN.
void ProgramNames::Declare(const Here& here, const NameUse& use, SymbolKind kind)
{
    const int32_t word = WordOf(here.node, use);
    int32_t symbol = -1;
    const bool local = here.node.step->kind == StepKind::Declare && program_.routines.back().local;
    for (const auto& [known, mine] : local_)
        if (known == word) symbol = mine;
    if (symbol < 0 && !local) symbol = Known(global_, word);
    const bool isNew = symbol < 0;
    if (isNew) {
        symbol = Add(here, use, kind);
        if (local)
            local_.emplace_back(word, symbol);
        else
            Set(global_, word, symbol);
    }
    Symbol& known = program_.symbols[static_cast<size_t>(symbol)];
    NameFacts& facts = facts_[static_cast<size_t>(symbol)];
    if (kind == SymbolKind::Function) {
        known.kind = kind;
        facts.unsure = true;
    }
    if (use.indices > 0) {
        std::vector<int32_t> sizes;
        for (int32_t i = 0; i < std::min<int32_t>(use.indices, 2); ++i)
            sizes.push_back(NumberOf(use.index[i], here.node.words));
        const bool again = !known.sizes.empty() && known.sizes != sizes;
        if (again) sizes.assign(sizes.size(), -1);
        if (known.kind == SymbolKind::Variable) known.kind = SymbolKind::Array;
        known.dimensions = again && known.dimensions != use.indices ? 0 : use.indices;
        known.sizes = std::move(sizes);
    }
    facts.declared = true;
    Occur(here, use, symbol);
}

void ProgramNames::Common(const Here& here)
{
    const Step& step = *here.node.step;
    const auto block = static_cast<int32_t>(program_.commons.size());
    const TextView line = here.text.At(here.firstLine + step.line).tokens.Whole();
    CommonBlock common;
    common.name = Text(line.substr(static_cast<size_t>(step.start), static_cast<size_t>(step.end - step.start)));
    common.at = {{step.start, here.firstLine + step.line}, {step.end, here.firstLine + step.line}};
    common.item = here.node.place.item;
    for (const NameUse& use : here.node.statements->UsesOf(step)) {
        if (use.use == Use::Declares) {
            Declare(here, use, SymbolKind::CommonMember);
            const int32_t symbol = Known(global_, WordOf(here.node, use));
            if (symbol < 0) continue;
            Symbol& member = program_.symbols[static_cast<size_t>(symbol)];
            member.kind = SymbolKind::CommonMember;
            member.common = block;
            facts_[static_cast<size_t>(symbol)].unsure = true;
            common.members.push_back(symbol);
        } else {
            this->Use(here, use);
        }
    }
    program_.commons.push_back(std::move(common));
}

void ProgramNames::Constant(const Here& here)
{
    const Step& step = *here.node.step;
    const auto uses = here.node.statements->UsesOf(step);
    if (uses.empty()) return;
    const TextView line = here.text.At(here.firstLine + step.line).tokens.Whole();
    int32_t symbol = Known(global_, WordOf(here.node, uses[0]));
    if (symbol < 0) {
        symbol = Add(here, uses[0], SymbolKind::Constant);
        Set(global_, WordOf(here.node, uses[0]), symbol);
    }
    Symbol& constant = program_.symbols[static_cast<size_t>(symbol)];
    constant.kind = SymbolKind::Constant;
    constant.value = Text(line.substr(static_cast<size_t>(step.start), static_cast<size_t>(step.end - step.start)));
    facts_[static_cast<size_t>(symbol)].declared = facts_[static_cast<size_t>(symbol)].unsure = true;
    Occur(here, uses[0], symbol);
    for (const NameUse& use : uses.subspan(1)) this->Use(here, use);
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

void ProgramNames::Use(const Here& here, const NameUse& use)
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
    if (use.flags & use_flag::kOpens && known.kind == SymbolKind::Variable) known.kind = SymbolKind::FileVariable;
    Occur(here, use, symbol);
    Count(use, symbol);
    if (use.flags & use_flag::kIndirect && here.node.place.item == 0)
        program_.calls.push_back({Range(here, use), {}, here.node.step->arguments, routine_, false});
}

void ProgramNames::Count(const NameUse& use, int32_t symbol)
{
    NameFacts& facts = facts_[static_cast<size_t>(symbol)];
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
