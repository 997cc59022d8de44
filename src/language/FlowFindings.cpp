// Code that no path reaches, and subroutines that are left or entered the wrong way.

#include "language/ProgramFindings.h"

#include <algorithm>

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
            if (dead && !inStretch && node.place.item == 0 && !(Leads(node.kind) && !NextIsDead(i)))
                sink_.Add(kUnreachable, sink_.RangeOf(node), u"No path of the program leads here.");
            inStretch = dead;
        }
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
        std::vector<int32_t> main{0};
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
                sink_.Add(kGosubWithoutReturn, sink_.RangeOf(nodes_[at]),
                          u"GOSUB leads to " + target.symbol->name + u", and no path from there comes to RETURN.");
            FallsInto(target);
        }
    }

    /// What stands above a subroutine runs on into it.
    void FallsInto(const Target& target)
    {
        const FlowNode& label = nodes_[static_cast<size_t>(target.node)];
        if (target.facts->jumps > target.facts->gosubs || label.from < 0) return;
        if (!reached_[static_cast<size_t>(label.from)] || label.from == 0) return;
        sink_.Add(kFallsInto, sink_.RangeOf(label),
                  u"What stands above runs on into subroutine " + target.symbol->name + u".");
    }

    FindingSink& sink_;
    const ProgramFlow& flow_;
    const std::vector<FlowNode>& nodes_;
    int32_t end_ = flow_.EndNode();
    std::vector<Target> targets_;
    std::vector<uint8_t> reached_;
};

/// The column where the code of a line begins, or -1 behind a label.
int32_t IndentOf(const BasicLine& line)
{
    if (!line.IsCode() || line.Tokens().front().kind == BasicToken::Kind::Label) return -1;
    return line.Tokens().front().start;
}

} // namespace

void FindInFlow(FindingSink& sink)
{
    FlowCheck(sink).Run();
}

/// Where the END of a block is missing, those of the blocks around it close one too few each: the innermost is told.
void FindMissingEnds(FindingSink& sink)
{
    const ProgramText& text = *sink.Of().Lines();
    int32_t told = -1;
    for (const FlowBlock& block : sink.Of().Flow().Blocks()) {
        if (block.opens.item != 0 || block.kind != StepKind::If || block.opens.line <= told) continue;
        const int32_t opens = IndentOf(text.At(block.opens.line).tokens);
        const int32_t closes = IndentOf(text.At(block.closes.line).tokens);
        if (opens < 0 || closes < 0 || closes >= opens) continue;
        told = block.closes.line;
        sink.Add(kMissingEnd, sink.CodeOf(block.opens.line),
                 u"The END in line " + Decimal(block.closes.line + 1) +
                     u", which closes this block, stands further left than it.");
    }
}

} // namespace nib
