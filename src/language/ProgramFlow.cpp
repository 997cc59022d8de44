#include "language/ProgramFlow.h"

#include "language/IncludeSource.h"

#include <algorithm>

namespace nib {

namespace {

/// So many are searched for a label that their own routine does not have.
constexpr int32_t kFewRoutines = 100;

} // namespace

void ProgramFlow::Clear()
{
    nodes_.clear();
    routines_.clear();
    edges_.clear();
    stack_.clear();
    blocks_.clear();
    labels_.clear();
    current_ = last_ = end_ = -1;
    routine_ = routineCount_ = 0;
    local_ = false;
    sound_ = true;
    code_ = false;
    current_ = Meet();
}

int32_t ProgramFlow::Add(FlowNode node)
{
    const auto number = static_cast<int32_t>(nodes_.size());
    node.from = current_;
    Join(current_, number);
    code_ = code_ || (node.kind != StepKind::Constant && node.kind != StepKind::Include);
    nodes_.push_back(node);
    routines_.push_back(routine_);
    current_ = number;
    last_ = node.step && node.step->flags & step_flag::kClauses ? number : -1;
    return number;
}

/// A place where ways meet; no way leads there yet.
int32_t ProgramFlow::Meet()
{
    FlowNode node;
    node.kind = StepKind::LineEnd;
    nodes_.push_back(node);
    routines_.push_back(routine_);
    return static_cast<int32_t>(nodes_.size()) - 1;
}

void ProgramFlow::Push(StepKind kind, int32_t head, StepPlace place)
{
    const int32_t exit = Meet();
    stack_.push_back({kind, head, exit, place});
}

/// The innermost statement or block is over.
void ProgramFlow::Pop()
{
    const Frame frame = stack_.back();
    stack_.pop_back();
    const bool covered = frame.hasThen && frame.hasElse;
    if (frame.kind == StepKind::If && !covered) Join(frame.head, frame.exit);
    current_ = frame.exit;
    last_ = -1;
}

/// A statement begins: those before it whose clauses have ended are over.
void ProgramFlow::Settle()
{
    while (Top(StepKind::If) && (!stack_.back().open || stack_.back().due)) {
        if (stack_.back().open) EndClause();
        Pop();
    }
}

void ProgramFlow::EndClause()
{
    Frame& frame = stack_.back();
    Join(current_, frame.exit);
    frame.open = false;
    current_ = -1;
    last_ = -1;
}

void ProgramFlow::Take(FlowNode node)
{
    using enum StepKind;
    const StepKind kind = node.kind;
    if (kind == StepKind::Clause) return this->Clause(node);
    if (kind == StepKind::LineEnd) return this->LineEnd();
    if (kind == StepKind::End) return this->End(node);
    Settle();
    switch (kind) {
    case For:
    case Loop:
    case BeginCase:
    case Try: {
        const int32_t head = Add(node);
        Push(kind, head, node.place);
        break;
    }
    case Next: EndBlock(node, For); break;
    case Repeat: EndBlock(node, Loop); break;
    case EndCase: EndBlock(node, BeginCase); break;
    case StepKind::Case: this->Case(node); break;
    case Catch:
        if (!Top(Try)) break;
        Join(current_, stack_.back().exit);
        current_ = stack_.back().head;
        Add(node);
        break;
    case Test:
    case StepKind::Leave:
    case Again: this->Leave(node); break;
    case Go:
    case Gosub:
    case OnGo:
    case OnGosub:
    case Return:
    case ReturnTo:
    case Stop: Jump(node); break;
    case Label:
        Add(node);
        if (node.step->uses > 0)
            labels_.push_back({routine_, WordOf(node, node.statements->UsesOf(*node.step)[0]), current_});
        break;
    case Routine: BeginRoutine(node); break;
    case Directive: Conditional(node); break;
    default: Add(node);
    }
}

void ProgramFlow::Clause(const FlowNode& node)
{
    const ClauseKind kind = node.clause;
    const bool outer = Top(StepKind::If) && stack_.back().open && stack_.back().oneLine && !stack_.back().due;
    const bool alternative = kind == ClauseKind::Then || kind == ClauseKind::Else;
    // Within a clause of one line, what only may have clauses leaves them to the statement around it.
    const bool asks = last_ >= 0 && last_ == current_ &&
                      (!outer || !alternative || nodes_[static_cast<size_t>(last_)].step->flags & step_flag::kAsks);
    if (asks) {
        Push(StepKind::If, last_, node.place);
        return Reopen(node);
    }
    while (Top(StepKind::If)) {
        Frame& frame = stack_.back();
        if (frame.open && !frame.oneLine) break;
        if (frame.open) EndClause();
        const bool taken = (kind == ClauseKind::Else && frame.hasElse) || (kind == ClauseKind::Then && frame.hasThen);
        if (!taken) return Reopen(node);
        Pop();
    }
    sound_ = false;
}

/// A clause of the innermost statement begins.
void ProgramFlow::Reopen(const FlowNode& node)
{
    Frame& frame = stack_.back();
    frame.open = true;
    frame.due = false;
    frame.oneLine = !(node.step->flags & step_flag::kBlock);
    frame.opened = node.place;
    frame.hasThen = frame.hasThen || node.clause == ClauseKind::Then;
    frame.hasElse = frame.hasElse || node.clause == ClauseKind::Else;
    current_ = frame.head;
    Add(node);
}

/// Clauses that began in the line are over; others of their statements may begin in the next.
void ProgramFlow::LineEnd()
{
    for (auto frame = stack_.rbegin(); frame != stack_.rend() && frame->kind == StepKind::If; ++frame) {
        if (frame->open && !frame->oneLine) break;
        frame->due = true;
    }
    if (Top(StepKind::If) && stack_.back().due && stack_.back().open) EndClause();
}

void ProgramFlow::Close(StepPlace place)
{
    const Frame& frame = stack_.back();
    if (frame.opened.item == place.item && frame.opened.line < place.line)
        blocks_.push_back({frame.kind, frame.opened, place});
}

void ProgramFlow::End(const FlowNode& node)
{
    if (Top(StepKind::If) && stack_.back().open && stack_.back().oneLine && !stack_.back().due) return EndClause();
    Settle();
    if (Top(StepKind::If)) {
        Close(node.place);
        return EndClause();
    }
    if (Top(StepKind::Try)) {
        Close(node.place);
        Join(current_, stack_.back().exit);
        return Pop();
    }
    sound_ = sound_ && stack_.empty();
    Add(node);
    if (!stack_.empty()) return;
    if (end_ >= 0 && routine_ == 0) return; // notes may stand behind the END of a program
    if (routine_ == 0) end_ = current_;
    if (local_) routine_ = 0;
    local_ = false;
    current_ = -1;
    last_ = -1;
}

/// What closes a block ends the clauses of its line as well.
void ProgramFlow::EndLines()
{
    while (Top(StepKind::If) && (!stack_.back().open || stack_.back().oneLine)) {
        if (stack_.back().open) EndClause();
        Pop();
    }
}

/// NEXT, REPEAT, END CASE.
void ProgramFlow::EndBlock(const FlowNode& node, StepKind kind)
{
    EndLines();
    if (!Top(kind)) {
        sound_ = false;
        Add(node);
        return;
    }
    Close(node.place);
    if (kind == StepKind::BeginCase) {
        Join(current_, stack_.back().exit);
        if (!stack_.back().hasElse) Join(stack_.back().head, stack_.back().exit);
        return Pop();
    }
    if (current_ >= 0) Add(node);
    const Frame& frame = stack_.back();
    Join(current_, frame.head);
    if (kind == StepKind::For) Join(frame.head, frame.exit);
    Pop();
}

void ProgramFlow::Case(const FlowNode& node)
{
    if (!Top(StepKind::BeginCase)) {
        sound_ = false;
        Add(node);
        return;
    }
    Frame& frame = stack_.back();
    if (nodes_[static_cast<size_t>(frame.head)].kind == StepKind::Case) Join(current_, frame.exit);
    current_ = frame.head;
    frame.head = Add(node);
    frame.hasElse = frame.hasElse || node.step->flags & step_flag::kDefault;
}

/// WHILE, UNTIL, EXIT and CONTINUE lead out of the innermost loop, or to its start.
void ProgramFlow::Leave(const FlowNode& node)
{
    Add(node);
    const auto loop = std::find_if(stack_.rbegin(), stack_.rend(), [](const Frame& frame) {
        return frame.kind == StepKind::For || frame.kind == StepKind::Loop;
    });
    if (loop == stack_.rend()) return;
    Join(current_, node.kind == StepKind::Again ? loop->head : loop->exit);
    if (node.kind != StepKind::Test) current_ = -1;
}

void ProgramFlow::Jump(const FlowNode& node)
{
    Add(node);
    const bool goesOn = node.kind == StepKind::Gosub || node.kind == StepKind::OnGosub || node.kind == StepKind::OnGo;
    if (!goesOn) current_ = last_ = -1;
}

/// Code that may be compiled or not.
void ProgramFlow::Conditional(const FlowNode& node)
{
    const BasicDirective::Kind kind = static_cast<BasicDirective::Kind>(node.step->arguments);
    if (kind == BasicDirective::Kind::If) {
        const int32_t head = Add(node);
        return Push(StepKind::Directive, head, node.place);
    }
    if (!Top(StepKind::Directive)) {
        sound_ = false;
        const auto frame = std::find_if(stack_.rbegin(), stack_.rend(),
                                        [](const Frame& each) { return each.kind == StepKind::Directive; });
        if (kind == BasicDirective::Kind::EndIf && frame != stack_.rend()) stack_.erase(std::next(frame).base());
        return;
    }
    Frame& frame = stack_.back();
    Join(current_, frame.exit);
    current_ = frame.head;
    if (kind == BasicDirective::Kind::Else) return;
    Join(frame.head, frame.exit);
    Close(node.place);
    Pop();
}

void ProgramFlow::BeginRoutine(const FlowNode& node)
{
    if (code_) {
        sound_ = sound_ && stack_.empty();
        stack_.clear();
        routine_ = ++routineCount_;
        local_ = node.step->flags & step_flag::kLocal;
        current_ = -1;
    }
    Add(node);
}

void ProgramFlow::Finish()
{
    LineEnd();
    Settle();
    sound_ = sound_ && stack_.empty();
    if (end_ < 0) {
        FlowNode node;
        node.kind = StepKind::End;
        end_ = Add(node);
    }
    std::stable_sort(labels_.begin(), labels_.end(), [](const LabelAt& a, const LabelAt& b) {
        return a.routine == b.routine ? a.word < b.word : a.routine < b.routine;
    });
    for (size_t i = 0; i < nodes_.size(); ++i) {
        const FlowNode& node = nodes_[i];
        if (!node.step) continue;
        for (const NameUse& use : node.statements->UsesOf(*node.step)) {
            if (use.use != Use::Jumps) continue;
            int32_t label = LabelNode(routines_[i], WordOf(node, use));
            for (int32_t other = 0; label < 0 && other <= std::min(routineCount_, kFewRoutines); ++other)
                label = LabelNode(other, WordOf(node, use));
            if (label >= 0) Join(static_cast<int32_t>(i), label);
        }
    }
    Sort();
}

int32_t ProgramFlow::LabelNode(int32_t routine, int32_t word) const
{
    const auto at = std::partition_point(labels_.begin(), labels_.end(), [&](const LabelAt& label) {
        return label.routine == routine ? label.word < word : label.routine < routine;
    });
    return at != labels_.end() && at->routine == routine && at->word == word ? at->node : -1;
}

void ProgramFlow::Sort()
{
    const auto place = [this](std::vector<int32_t>& all, std::vector<int32_t>& starts, auto from, auto to) {
        starts.assign(nodes_.size() + 1, 0);
        all.resize(edges_.size());
        for (const Edge& edge : edges_) ++starts[static_cast<size_t>(from(edge)) + 1];
        for (size_t i = 1; i < starts.size(); ++i) starts[i] += starts[i - 1];
        std::vector<int32_t> next = starts;
        for (const Edge& edge : edges_) all[static_cast<size_t>(next[static_cast<size_t>(from(edge))]++)] = to(edge);
    };
    const auto from = [](const Edge& edge) { return edge.from; };
    const auto to = [](const Edge& edge) { return edge.to; };
    place(after_, afterStart_, from, to);
    place(before_, beforeStart_, to, from);
}

std::vector<uint8_t> ProgramFlow::Reached(std::span<const int32_t> from, bool backwards) const
{
    std::vector<uint8_t> reached(nodes_.size());
    std::vector<int32_t> open(from.begin(), from.end());
    for (int32_t node : open) reached[static_cast<size_t>(node)] = 1;
    while (!open.empty()) {
        const int32_t node = open.back();
        open.pop_back();
        for (int32_t next : backwards ? Before(node) : After(node)) {
            if (reached[static_cast<size_t>(next)]) continue;
            reached[static_cast<size_t>(next)] = 1;
            open.push_back(next);
        }
    }
    return reached;
}

} // namespace nib
