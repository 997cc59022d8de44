#include "compare/MergeModel.h"

#include <algorithm>
#include <span>

namespace nib {

namespace {

using Kind = MergeBlock::Kind;

/// Lines shown of those that are the same, next to ones that are not.
constexpr int32_t kContext = 3;

/// Calls show(n) for the lines of a stretch that stand next to something else, and fold(count) for those between.
template <typename Show, typename Fold>
void Folded(int32_t count, bool first, bool last, Show&& show, Fold&& fold)
{
    const int32_t head = first ? 0 : kContext;
    const int32_t tail = last ? 0 : kContext;
    const bool folds = count > head + tail + 1; // a row for one line saves none
    for (int32_t n = 0; n < count; ++n) {
        if (!folds || n < head || n >= count - tail) {
            show(n);
            continue;
        }
        fold(count - head - tail);
        n = count - tail - 1;
    }
}

std::span<const MergeSide> SidesOf(MergeChoice choice)
{
    using enum MergeSide;
    static constexpr MergeSide kTheirsThenMine[] = {Theirs, Mine};
    static constexpr MergeSide kMineThenTheirs[] = {Mine, Theirs};
    static constexpr MergeSide kBase[] = {Base};
    const std::span<const MergeSide> theirsFirst(kTheirsThenMine);
    switch (choice) {
    case MergeChoice::Theirs: return theirsFirst.first(1);
    case MergeChoice::Mine: return theirsFirst.last(1);
    case MergeChoice::TheirsThenMine: return theirsFirst;
    case MergeChoice::MineThenTheirs: return kMineThenTheirs;
    case MergeChoice::Base:
    case MergeChoice::Open: break;
    }
    return kBase;
}

} // namespace

MergeModel::MergeModel(Text base, Text theirs, Text mine)
    : texts_{MergeLines(std::move(base)), MergeLines(std::move(theirs)), MergeLines(std::move(mine))},
      merge_(MergeThree(texts_)), choices_(static_cast<size_t>(Changes(Kind::Conflict)))
{
    ListRows();
    ListOutcome();
}

int32_t MergeModel::Changes(Kind kind) const
{
    return static_cast<int32_t>(std::count_if(merge_.blocks.begin(), merge_.blocks.end(),
                                              [kind](const MergeBlock& block) { return block.kind == kind; }));
}

int32_t MergeModel::Undecided() const
{
    return static_cast<int32_t>(std::count(choices_.begin(), choices_.end(), MergeChoice::Open));
}

void MergeModel::Choose(int32_t conflict, MergeChoice choice)
{
    choices_[static_cast<size_t>(conflict)] = choice;
    ListOutcome();
}

int32_t MergeModel::Next(int32_t conflict, bool backward) const
{
    const int32_t count = Conflicts();
    if (count == 0) return -1;
    if (conflict < 0) return backward ? count - 1 : 0;
    return (conflict + (backward ? count - 1 : 1)) % count;
}

int32_t MergeModel::NextUndecided(int32_t conflict) const
{
    for (int32_t step = 0; step < Conflicts(); ++step) {
        conflict = Next(conflict, false);
        if (ChoiceOf(conflict) == MergeChoice::Open) return conflict;
    }
    return -1;
}

template <typename Row>
int32_t MergeModel::FirstOf(const std::vector<Row>& rows, int32_t conflict)
{
    const auto at = std::find_if(rows.begin(), rows.end(), [=](const Row& row) { return row.conflict == conflict; });
    return at == rows.end() ? -1 : static_cast<int32_t>(at - rows.begin());
}
template int32_t MergeModel::FirstOf(const std::vector<MergeRow>&, int32_t);
template int32_t MergeModel::FirstOf(const std::vector<OutcomeRow>&, int32_t);

void MergeModel::ListRows()
{
    int32_t conflict = 0;
    for (const MergeBlock& block : merge_.blocks) {
        const int32_t number = block.kind == Kind::Conflict ? conflict++ : -1;
        int32_t count = 0;
        for (const LineSpan& span : block.lines) count = std::max(count, span.count);
        const auto show = [&](int32_t n) {
            MergeRow row{block.kind, number, {-1, -1, -1}, 0};
            for (size_t side = 0; side < kMergeSides; ++side)
                if (n < block.lines[side].count) row.lines[side] = block.lines[side].first + n;
            rows_.push_back(row);
        };
        if (block.kind != Kind::Same) {
            for (int32_t n = 0; n < count; ++n) show(n);
            continue;
        }
        Folded(count, &block == &merge_.blocks.front(), &block == &merge_.blocks.back(), show, [&](int32_t hidden) {
            rows_.push_back({block.kind, -1, {-1, -1, -1}, hidden});
        });
    }
}

template <typename Visit>
void MergeModel::ForEachLine(const MergeBlock& block, int32_t conflict, Visit&& visit) const
{
    const auto all = [&](MergeSide side) {
        const LineSpan span = block.Of(side);
        for (int32_t line = span.first; line < span.End(); ++line) visit(side, line);
    };
    if (block.kind != Kind::Conflict) return all(block.kind == Kind::Theirs ? MergeSide::Theirs : MergeSide::Mine);
    for (MergeSide side : SidesOf(ChoiceOf(conflict))) all(side);
}

void MergeModel::ListOutcome()
{
    outcomeRows_.clear();
    int32_t conflicts = 0;
    int32_t lines = 0;
    for (const MergeBlock& block : merge_.blocks) {
        const int32_t conflict = block.kind == Kind::Conflict ? conflicts++ : -1;
        const int32_t before = lines;
        const auto show = [&](MergeSide side, int32_t line) {
            outcomeRows_.push_back({block.kind, conflict, side, line, lines++, 0});
        };
        if (block.kind == Kind::Same) {
            const LineSpan mine = block.Of(MergeSide::Mine);
            Folded(
                mine.count, &block == &merge_.blocks.front(), &block == &merge_.blocks.back(),
                [&](int32_t n) { show(MergeSide::Mine, mine.first + n); },
                [&](int32_t hidden) {
                    outcomeRows_.push_back({block.kind, -1, MergeSide::Mine, -1, lines, hidden});
                    lines += hidden;
                });
        } else if (conflict < 0 || ChoiceOf(conflict) != MergeChoice::Open) {
            ForEachLine(block, conflict, show);
        }
        if (lines == before) outcomeRows_.push_back({block.kind, conflict, MergeSide::Mine, -1, lines, 0});
    }
}

Text MergeModel::Outcome() const
{
    Text text;
    int32_t conflicts = 0;
    bool open = false;
    for (const MergeBlock& block : merge_.blocks)
        ForEachLine(block, block.kind == Kind::Conflict ? conflicts++ : -1, [&](MergeSide side, int32_t line) {
            const MergeLines& lines = texts_[static_cast<size_t>(side)];
            if (open) text += u"\r\n";
            text += lines.At(line);
            open = !lines.HasEnd(line);
            if (!open) text += u"\r\n";
        });
    return text;
}

} // namespace nib
