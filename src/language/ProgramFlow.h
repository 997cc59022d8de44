#pragma once
// Which statement of a program can follow which. A node is a step of a statement, or a place where ways meet.

#include "language/ProgramText.h"

namespace nib {

/// A line of the program, or of an item that it includes.
struct StepPlace {
    int32_t item = 0; ///< 0: the program itself
    int32_t line = 0; ///< 0-based
};

struct FlowNode {
    StepKind kind = StepKind::Plain; ///< LineEnd: where ways meet
    ClauseKind clause = ClauseKind::Then;
    StepPlace place; ///< of the step
    const Step* step = nullptr;
    const Statements* statements = nullptr;
    const std::vector<int32_t>* words = nullptr; ///< what the words of an included item are called here
    int32_t from = -1;                           ///< the node that goes on with this one; -1: only jumps lead here
};

/// A block of several lines: those of the words that open and close it, and how far these are indented.
struct FlowBlock {
    StepKind kind;
    StepPlace opens;
    StepPlace closes;
};

class ProgramFlow {
public:
    void Clear();
    /// Steps in their order.
    void Take(FlowNode node);
    /// Behind the last step.
    void Finish();

    /// Blocks nest, so that the ways are known.
    bool Sound() const { return sound_; }
    const std::vector<FlowNode>& Nodes() const { return nodes_; }
    const std::vector<FlowBlock>& Blocks() const { return blocks_; }
    /// Where the steps of the program come to its end.
    int32_t EndNode() const { return end_; }
    /// The nodes that can follow one; those of a GOSUB are the label's and the next one's.
    std::span<const int32_t> After(int32_t node) const { return Slice(after_, afterStart_, node); }
    std::span<const int32_t> Before(int32_t node) const { return Slice(before_, beforeStart_, node); }
    /// The first node of a label; -1 when there is none.
    int32_t LabelNode(int32_t routine, int32_t word) const;
    /// The routine that a node is in, counted as the heads of routines come.
    int32_t RoutineOf(int32_t node) const { return routines_[static_cast<size_t>(node)]; }
    /// The routine that the next step is in.
    int32_t Routine() const { return routine_; }
    /// Marks what can be reached from `from` on.
    std::vector<uint8_t> Reached(std::span<const int32_t> from, bool backwards = false) const;

private:
    struct Frame {
        StepKind kind; ///< If: a statement with clauses
        int32_t head;
        int32_t exit;
        StepPlace opened;
        bool open = true; ///< a clause goes on
        bool oneLine = false;
        bool due = false; ///< its line has ended; only another clause can still come
        bool hasThen = false;
        bool hasElse = false; ///< or the CASE that is always true
    };
    struct Edge {
        int32_t from;
        int32_t to;
    };

    static std::span<const int32_t> Slice(const std::vector<int32_t>& all, const std::vector<int32_t>& starts,
                                          int32_t node)
    {
        const auto at = static_cast<size_t>(node);
        return std::span(all).subspan(static_cast<size_t>(starts[at]),
                                      static_cast<size_t>(starts[at + 1] - starts[at]));
    }
    int32_t Add(FlowNode node);
    int32_t Meet();
    void Join(int32_t from, int32_t to)
    {
        if (from >= 0) edges_.push_back({from, to});
    }
    bool Top(StepKind kind) const { return !stack_.empty() && stack_.back().kind == kind; }
    void Push(StepKind kind, int32_t head, StepPlace place);
    void Pop();
    void Settle();
    void Clause(const FlowNode& node);
    void Reopen(const FlowNode& node);
    void EndClause();
    void LineEnd();
    void End(const FlowNode& node);
    void EndLines();
    void EndBlock(const FlowNode& node, StepKind kind);
    void Case(const FlowNode& node);
    void Leave(const FlowNode& node);
    void Conditional(const FlowNode& node);
    void Jump(const FlowNode& node);
    void BeginRoutine(const FlowNode& node);
    void Close(StepPlace place);
    void Sort();

    std::vector<FlowNode> nodes_;
    std::vector<int32_t> routines_;
    std::vector<Edge> edges_;
    std::vector<Frame> stack_;
    std::vector<FlowBlock> blocks_;
    struct LabelAt {
        int32_t routine;
        int32_t word;
        int32_t node;
    };
    std::vector<LabelAt> labels_;
    std::vector<int32_t> after_, afterStart_, before_, beforeStart_;
    int32_t current_ = -1;
    int32_t last_ = -1; ///< the last step, when clauses may follow it
    int32_t end_ = -1;
    int32_t routine_ = 0;
    int32_t routineCount_ = 0;
    bool local_ = false; ///< the routine ends with an END of its own
    bool sound_ = true;
    bool code_ = false; ///< statements have been there
};

/// A word of a node's step as the including program numbers it.
inline int32_t WordOf(const FlowNode& node, int32_t word)
{
    return node.words && word >= 0 ? (*node.words)[static_cast<size_t>(word)] : word;
}
inline int32_t WordOf(const FlowNode& node, const NameUse& use)
{
    return WordOf(node, use.word);
}

} // namespace nib
