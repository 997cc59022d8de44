// What a program declares: routines, arrays, COMMON, constants; part of ProgramNames.

#include "language/ProgramNames.h"

#include <algorithm>

namespace nib {

/// Routine 0 is the program.
void ProgramNames::BeginRoutine(const Here& here, int32_t number)
{
    const Step& step = *here.node.step;
    const auto uses = here.node.statements->UsesOf(step);
    if (uses.empty()) return;
    const SymbolKind kind = step.flags & step_flag::kFunction  ? SymbolKind::Function
                            : step.flags & step_flag::kProgram ? SymbolKind::Program
                                                               : SymbolKind::Subroutine;
    local_.clear();
    const int32_t line = here.firstLine + step.line;
    if (number == 0) {
        program_.routines.front().kind = kind;
    } else {
        if (routine_ > 0) program_.routines.back().last = std::max(program_.routines.back().first, line - 1);
        program_.routines.push_back({{}, kind, {}, line, INT32_MAX, {}, (step.flags & step_flag::kLocal) != 0});
        routine_ = number;
    }
    Routine& routine = program_.routines.back();
    if (uses[0].word >= 0) {
        routine.name = Written(here, uses[0]);
        if (here.node.place.item == 0) routine.nameAt = Range(here, uses[0]);
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
    const bool local = use.flags & use_flag::kWhole && here.node.step->kind == StepKind::Declare &&
                       program_.routines[static_cast<size_t>(routine_)].local;
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
    if (use.indices > 0 && kind != SymbolKind::Function) {
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
    // What a class names is seen by others.
    const bool dim = here.node.step->kind == StepKind::Declare && use.flags & use_flag::kWhole;
    facts.unsure = facts.unsure || (dim && !local);
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
            TakeUse(here, use);
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
    for (const NameUse& use : uses.subspan(1)) TakeUse(here, use);
}

} // namespace nib
