// Code that no path reaches, and subroutines that are left or entered the wrong way.

#include "language/ProgramFindings.h"

#include <algorithm>
#include <utility>

namespace nib {

using namespace finding_code;

namespace {

class FlowCheck {
public:
    explicit FlowCheck(FindingSink& sink) : sink_(sink), flow_(sink.Of().Flow()), nodes_(flow_.Nodes()) {}

    void Run()
    {
        Entries();
        Unreachable();
        Subroutines();
        MainReturns();
    }

private:
    struct Target {
        int32_t node;
        const NameFacts* facts;
        const Symbol* symbol;
    };

    void Entries()
    {
        std::vector<int32_t> entries{0};
        const auto& names = sink_.Of().Names();
        for (size_t i = 0; i < nodes_.size(); ++i) {
            const StepKind kind = nodes_[i].kind;
            if (kind == StepKind::Label || kind == StepKind::Routine || kind == StepKind::Catch)
                entries.push_back(static_cast<int32_t>(i));
            if (kind != StepKind::Label || nodes_[i].step->uses == 0) continue;
            const int32_t word = WordOf(nodes_[i], nodes_[i].statements->UsesOf(*nodes_[i].step)[0]);
            const int32_t symbol = names.LabelOf(flow_.RoutineOf(static_cast<int32_t>(i)), word);
            if (symbol < 0) continue;
            const auto at = static_cast<size_t>(symbol);
            targets_.push_back({static_cast<int32_t>(i), &names.Facts()[at], &sink_.Known().symbols[at]});
        }
        reached_ = flow_.Reached(entries);
    }

    static bool IsCode(const FlowNode& node)
    {
        switch (node.kind) {
        case StepKind::LineEnd:
        case StepKind::End:
        case StepKind::Clause:
        case StepKind::Next:
        case StepKind::Repeat:
        case StepKind::Declare:
        case StepKind::Common:
        case StepKind::Constant:
        case StepKind::Functions:
        case StepKind::Directive:
        case StepKind::Include: return false;
        default: return node.step != nullptr;
        }
    }

    static bool Leads(StepKind kind)
    {
        return kind == StepKind::Return || kind == StepKind::Stop || kind == StepKind::Go ||
               kind == StepKind::ReturnTo || kind == StepKind::Leave || kind == StepKind::Again;
    }

    /// The first statement of each stretch. One that only leads away itself is a habit, and harmless.
    void Unreachable()
    {
        bool inStretch = false;
        for (size_t i = 0; i < nodes_.size(); ++i) {
            const FlowNode& node = nodes_[i];
            if (!IsCode(node)) continue;
            const bool dead = !reached_[i];
            if (dead && !inStretch && node.place.item == 0 && !(Leads(node.kind) && !NextIsDead(i)) && !IsIdle(node))
                sink_.Add(kUnreachable, sink_.RangeOf(node), Wording::Unreachable);
            inStretch = dead;
        }
    }

    /// A = A, which keeps a compiler from telling that A is not used.
    static bool IsIdle(const FlowNode& node)
    {
        const auto uses = node.statements->UsesOf(*node.step);
        return node.kind == StepKind::Plain && uses.size() == 2 && uses[0].use == Use::Sets &&
               uses[1].use == Use::Reads && uses[0].word == uses[1].word;
    }

    bool NextIsDead(size_t i) const
    {
        while (++i < nodes_.size())
            if (IsCode(nodes_[i])) return !reached_[i];
        return false;
    }

    void Subroutines()
    {
        std::vector<int32_t> returns;
        for (size_t i = 0; i < nodes_.size(); ++i)
            if (nodes_[i].kind == StepKind::Return || nodes_[i].kind == StepKind::ReturnTo)
                returns.push_back(static_cast<int32_t>(i));
        const std::vector<uint8_t> returning = flow_.Reached(returns, true);
        const std::vector<uint8_t> ending = flow_.Reached(std::span(&end_, 1), true);
        for (const Target& target : targets_) {
            if (target.facts->gosubs == 0) continue;
            const auto at = static_cast<size_t>(target.node);
            if (nodes_[at].place.item != 0) continue;
            if (!returning[at] && ending[at])
                sink_.Add(kGosubWithoutReturn, sink_.RangeOf(nodes_[at]), {Wording::NoReturn, {target.symbol->name}});
        }
    }

    /// Only GOSUB leads to it.
    const Target* SubroutineAt(int32_t node) const
    {
        const auto at = std::ranges::lower_bound(targets_, node, {}, &Target::node);
        const bool found = at != targets_.end() && at->node == node;
        return found && at->facts->gosubs > 0 && at->facts->jumps == at->facts->gosubs ? &*at : nullptr;
    }

    /// A RETURN that a program comes to by itself.
    void MainReturns()
    {
        if (sink_.Known().routines.front().kind != SymbolKind::Program || sink_.Of().Included() ||
            sink_.Of().Internal())
            return;
        std::vector<uint8_t> seen(nodes_.size());
        std::vector<int32_t> open{0};
        while (!open.empty()) {
            const int32_t at = open.back();
            open.pop_back();
            if (seen[static_cast<size_t>(at)]) continue;
            seen[static_cast<size_t>(at)] = 1;
            const FlowNode& node = nodes_[static_cast<size_t>(at)];
            if (node.kind == StepKind::Return && node.place.item == 0 && node.step->uses == 0)
                sink_.Add(kReturnWithoutGosub, sink_.RangeOf(node), Wording::NoGosub);
            const bool sub = node.kind == StepKind::Gosub || node.kind == StepKind::OnGosub;
            for (int32_t next : flow_.After(at)) {
                const FlowNode& label = nodes_[static_cast<size_t>(next)];
                if (sub && label.kind == StepKind::Label && label.from != at) continue;
                const Target* target = SubroutineAt(next);
                if (!target)
                    open.push_back(next);
                else if (label.place.item == 0 && !std::exchange(seen[static_cast<size_t>(next)], 1))
                    sink_.Add(kFallsInto, sink_.RangeOf(label), {Wording::FallsInto, {target->symbol->name}});
            }
        }
    }

    FindingSink& sink_;
    const ProgramFlow& flow_;
    const std::vector<FlowNode>& nodes_;
    int32_t end_ = flow_.EndNode();
    std::vector<Target> targets_;
    std::vector<uint8_t> reached_;
};

/// The column where the statement of a line begins; -1 behind a label, and for a clause on a line of its own.
int32_t IndentOf(const ProgramText& text, int32_t line)
{
    while (line > 0 && text.At(line).statementLines == 0) --line;
    const BasicLine& tokens = text.At(line).tokens;
    if (!tokens.IsCode()) return -1;
    using enum BasicKey;
    const BasicToken& first = tokens.Tokens().front();
    const bool clause = first.Is(Then) || first.Is(Else) || first.Is(Locked) || first.Is(On);
    return clause || first.kind == BasicToken::Kind::Label ? -1 : first.start;
}

/// An END ahead of the first line that stands as far left as the one that opens the block.
std::vector<QuickMend> MendsOf(const ProgramText& text, const FlowBlock& block, int32_t indent)
{
    int32_t line = block.opens.line + 1;
    for (; line < block.closes.line; ++line) {
        const int32_t column = IndentOf(text, line);
        if (text.At(line).statementLines > 0 && column >= 0 && column <= indent) break;
    }
    const Position at{0, line};
    return {QuickMend{Wording::InsertEnd, {{{at, at}, Text(static_cast<size_t>(indent), u' ') + u"END\n"}}}};
}

} // namespace

void FindInFlow(FindingSink& sink)
{
    FlowCheck(sink).Run();
}

/// Where the END of a block is missing, those of the blocks around it close one too few each: the innermost is told.
void FindMissingEnds(FindingSink& sink)
{
    // A program that has an END of its own lacks none.
    if (sink.Of().Flow().Nodes()[static_cast<size_t>(sink.Of().Flow().EndNode())].step) return;
    const ProgramText& text = *sink.Of().Lines();
    int32_t told = -1;
    for (const FlowBlock& block : sink.Of().Flow().Blocks()) {
        if (block.opens.item != 0 || block.kind != StepKind::If || block.opens.line <= told) continue;
        const int32_t opens = IndentOf(text, block.opens.line);
        const int32_t closes = IndentOf(text, block.closes.line);
        if (opens < 0 || closes < 0 || closes >= opens) continue;
        told = block.closes.line;
        sink.Add(kMissingEnd, sink.CodeOf(block.opens.line),
                 {Wording::EndFurtherLeft, {Decimal(block.closes.line + 1)}}, MendsOf(text, block, opens));
    }
}

} // namespace nib
