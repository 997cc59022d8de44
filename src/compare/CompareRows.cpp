#include "compare/CompareRows.h"

#include "compare/WordDifferences.h"

#include <algorithm>

namespace nib {

namespace {

/// Rows that stay in sight beside a change.
constexpr int32_t kContext = 3;
/// Fewer are not worth a fold.
constexpr int32_t kLeastFolded = 4;
/// Pairs of lines that are looked at in all blocks together.
constexpr size_t kMostLooks = 100'000;
constexpr size_t kMostInBlock = 4000;

int32_t RowCount(const LineBlock& block)
{
    return std::max(block.leftCount, block.rightCount);
}

} // namespace

void CompareRows::Build(TextDifferences differences, const LineOf& left, const LineOf& right)
{
    differences_ = std::move(differences);
    pairs_.clear();
    pairs_.resize(differences_.blocks.size());
    size_t looks = 0;
    for (size_t n = 0; n < pairs_.size(); ++n) {
        const LineBlock& block = differences_.blocks[n];
        const size_t all = static_cast<size_t>(block.leftCount) * static_cast<size_t>(block.rightCount);
        if (block.kind != BlockKind::Changed || all < 2 || all > kMostInBlock || looks + all > kMostLooks) continue;
        looks += all;
        const auto lines = [](int32_t first, int32_t count, const LineOf& line) {
            std::vector<Text> texts;
            for (int32_t at = first; at < first + count; ++at) texts.emplace_back(line(at));
            return texts;
        };
        const std::vector<Text> l = lines(block.left, block.leftCount, left);
        const std::vector<Text> r = lines(block.right, block.rightCount, right);
        for (const LinePair& pair : PairLines({l.begin(), l.end()}, {r.begin(), r.end()}))
            pairs_[n].emplace_back(pair.left < 0 ? -1 : block.left + pair.left,
                                   pair.right < 0 ? -1 : block.right + pair.right);
    }
    LayOut();
}

void CompareRows::Clear()
{
    opened_.clear();
    Build({}, {}, {});
}

void CompareRows::LayOut()
{
    rows_.clear();
    changes_.clear();
    const auto& blocks = differences_.blocks;
    for (size_t n = 0; n < blocks.size();) {
        size_t end = n;
        while (end < blocks.size() && !blocks[end].IsChange()) ++end;
        if (end > n)
            AddRun({n, end});
        else
            AddChange(end++);
        n = end;
    }
}

void CompareRows::AddRun(const Run& run)
{
    const auto& blocks = differences_.blocks;
    int32_t all = 0;
    for (size_t n = run.first; n < run.last; ++n) all += RowCount(blocks[n]);
    const int32_t head = run.first == 0 ? 0 : kContext;
    const int32_t tail = run.last == blocks.size() ? 0 : kContext;
    // Texts without a difference are there to be read.
    const bool whole = run.first == 0 && run.last == blocks.size();
    const bool folds = !whole && all - head - tail >= kLeastFolded && !opened_.contains(blocks[run.first].left);
    int32_t row = 0;
    for (size_t n = run.first; n < run.last; ++n) {
        const LineBlock& block = blocks[n];
        for (int32_t at = 0; at < RowCount(block); ++at, ++row) {
            const CompareRow made{static_cast<int32_t>(n), at < block.leftCount ? block.left + at : -1,
                                  at < block.rightCount ? block.right + at : -1, 0};
            if (!folds || row < head || row >= all - tail) {
                rows_.push_back(made);
            } else if (row == head) {
                rows_.push_back(made);
                rows_.back().folded = all - head - tail;
            } else if (at + 1 < RowCount(block)) {
                // The rest of the block at once, up to those that are shown.
                const int32_t skipped = std::min(RowCount(block) - at, all - tail - row) - 1;
                at += skipped;
                row += skipped;
            }
        }
    }
}

void CompareRows::AddChange(size_t n)
{
    const LineBlock& block = differences_.blocks[n];
    const int32_t first = Count();
    const auto number = static_cast<int32_t>(n);
    for (const auto& [left, right] : pairs_[n]) rows_.push_back({number, left, right, 0});
    if (pairs_[n].empty())
        for (int32_t at = 0; at < RowCount(block); ++at)
            rows_.push_back({number, at < block.leftCount ? block.left + at : -1,
                             at < block.rightCount ? block.right + at : -1, 0});
    changes_.push_back({first, Count()});
}

void CompareRows::Follow(bool right, const TextChange& change)
{
    if (change.newEnd.line == change.oldEnd.line) return;
    for (CompareRow& row : rows_) {
        int32_t& line = right ? row.right : row.left;
        if (line > change.start.line)
            line = std::max(line + change.newEnd.line - change.oldEnd.line, change.start.line);
    }
}

void CompareRows::Open(int32_t row)
{
    if (row < 0 || row >= Count() || At(row).folded == 0) return;
    auto first = static_cast<size_t>(At(row).block);
    while (first > 0 && !differences_.blocks[first - 1].IsChange()) --first;
    opened_.insert(differences_.blocks[first].left);
    LayOut();
}

int32_t CompareRows::ChangeAt(int32_t row) const
{
    const auto next = std::partition_point(changes_.begin(), changes_.end(),
                                           [&](const RowRange& range) { return range.last <= row; });
    return next != changes_.end() && next->first <= row ? static_cast<int32_t>(next - changes_.begin()) : -1;
}

int32_t CompareRows::NextChange(int32_t row, bool backward) const
{
    if (backward) {
        const auto next = std::partition_point(changes_.begin(), changes_.end(),
                                               [&](const RowRange& range) { return range.last <= row; });
        return static_cast<int32_t>(next - changes_.begin()) - 1;
    }
    const auto next = std::partition_point(changes_.begin(), changes_.end(),
                                           [&](const RowRange& range) { return range.first <= row; });
    return next == changes_.end() ? -1 : static_cast<int32_t>(next - changes_.begin());
}

int32_t CompareRows::RowOfLine(int32_t line, bool right) const
{
    int32_t best = 0;
    for (int32_t row = 0; row < Count(); ++row) {
        const int32_t shown = right ? At(row).right : At(row).left;
        if (shown > line) break;
        if (shown >= 0) best = row;
    }
    return best;
}

} // namespace nib
