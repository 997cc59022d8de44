// Records that are locked and, on some path, neither written nor deleted nor released.

#include "language/ProgramFindings.h"

#include <algorithm>

namespace nib {

namespace {

/// More steps than a path of any program has that a reader follows; beyond, nothing is told.
constexpr size_t kMostSteps = 20'000;
constexpr int32_t kMostLocks = 200;

class LockCheck {
public:
    explicit LockCheck(FindingSink& sink) : sink_(sink), flow_(sink.Of().Flow()), nodes_(flow_.Nodes()) {}

    void Run()
    {
        int32_t count = 0;
        for (size_t i = 0; i < nodes_.size(); ++i) {
            const FlowNode& node = nodes_[i];
            if (node.kind != StepKind::Lock || node.place.item != 0 || ++count > kMostLocks) continue;
            const int32_t file = FileOf(node);
            if (file < 0 || IsShared(file)) continue;
            released_ = std::ranges::any_of(nodes_, [&](const FlowNode& each) { return Releases(each, file); });
            if (Kept(static_cast<int32_t>(i), file))
                sink_.Add(finding_code::kLockKept, sink_.RangeOf(node), Wording::LockKept);
        }
    }

private:
    /// The word of the file variable that a step names; -1 when there is none or it is no plain one.
    int32_t FileOf(const FlowNode& node) const
    {
        if (!node.step || node.step->file < 0) return -1;
        const auto uses = node.statements->UsesOf(*node.step);
        const auto at = static_cast<size_t>(node.step->file);
        if (at >= uses.size() || uses[at].flags & use_flag::kParens) return -1;
        return WordOf(node, uses[at]);
    }

    /// Other programs may release what is locked by a file that they know.
    bool IsShared(int32_t file) const
    {
        const int32_t symbol = sink_.Of().Names().VariableOf(file);
        if (symbol < 0) return true;
        const SymbolKind kind = sink_.Known().symbols[static_cast<size_t>(symbol)].kind;
        return kind == SymbolKind::CommonMember || kind == SymbolKind::Parameter || kind == SymbolKind::Array;
    }

    bool Releases(const FlowNode& node, int32_t file) const
    {
        if (!node.step) return false;
        if (node.kind == StepKind::Release) {
            const int32_t named = FileOf(node);
            return named < 0 || named == file;
        }
        if (node.kind == StepKind::Call) {
            const auto uses = node.statements->UsesOf(*node.step);
            return std::ranges::any_of(uses, [&](const NameUse& use) { return WordOf(node, use) == file; });
        }
        return false;
    }

    /// Whether a subroutine releases it on any of its paths, and in those that it calls.
    bool SubroutineReleases(int32_t label, int32_t file)
    {
        for (const auto& [known, answer] : subroutines_)
            if (known == label) return answer;
        const std::vector<uint8_t> within = flow_.Reached(std::span(&label, 1));
        bool answer = false;
        for (size_t i = 0; i < nodes_.size() && !answer; ++i) answer = within[i] && Releases(nodes_[i], file);
        subroutines_.emplace_back(label, answer);
        return answer;
    }

    /// The program takes the next one or goes back to its caller, and no path has let the record go before. Which of
    /// several paths is taken often hangs on variables, so that one that does is enough.
    bool Kept(int32_t lock, int32_t file)
    {
        subroutines_.clear();
        std::vector<uint8_t> seen(nodes_.size());
        std::vector<int32_t> open(flow_.After(lock).begin(), flow_.After(lock).end());
        size_t steps = 0;
        bool kept = false;
        while (!open.empty()) {
            const int32_t at = open.back();
            open.pop_back();
            kept = kept || at == lock;
            if (++steps > kMostSteps) return false;
            if (at == lock || seen[static_cast<size_t>(at)]) continue;
            seen[static_cast<size_t>(at)] = 1;
            const FlowNode& node = nodes_[static_cast<size_t>(at)];
            const bool failed = node.kind == StepKind::Clause &&
                                nodes_[static_cast<size_t>(node.from)].kind == StepKind::Lock &&
                                node.clause != ClauseKind::Then && node.clause != ClauseKind::Else;
            if (failed) continue;
            if (Releases(node, file)) return false;
            // What goes back to a caller may be released there, but not when the program never does so.
            if (node.kind == StepKind::Return && released_) return false;
            kept = kept || (node.kind == StepKind::Return && called_);
            const bool sub = node.kind == StepKind::Gosub || node.kind == StepKind::OnGosub;
            const std::span<const int32_t> next = flow_.After(at);
            if (sub &&
                std::ranges::any_of(next, [&](int32_t to) { return IsLabel(to) && SubroutineReleases(to, file); }))
                return false;
            for (int32_t to : next)
                if (!sub || !IsLabel(to)) open.push_back(to);
        }
        return kept;
    }

    bool IsLabel(int32_t node) const { return nodes_[static_cast<size_t>(node)].kind == StepKind::Label; }

    FindingSink& sink_;
    const ProgramFlow& flow_;
    const std::vector<FlowNode>& nodes_;
    const bool called_ = sink_.Known().routines.front().kind != SymbolKind::Program;
    bool released_ = false;                             ///< some step releases the present file
    std::vector<std::pair<int32_t, bool>> subroutines_; ///< of the present file
};

} // namespace

void FindLocks(FindingSink& sink)
{
    LockCheck(sink).Run();
}

} // namespace nib
