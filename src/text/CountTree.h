#pragma once
#include <cstddef>
#include <cstdint>
#include <vector>

namespace nib {

/// Running sums over a list of counts (a Fenwick tree): change, sum and search in logarithmic time.
class CountTree {
public:
    template <typename CountOf>
    void Build(size_t size, CountOf&& countOf)
    {
        tree_.assign(size + 1, 0);
        for (size_t i = 1; i <= size; ++i) {
            tree_[i] += countOf(i - 1);
            if (size_t up = i + (i & (~i + 1)); up <= size) tree_[up] += tree_[i];
        }
    }
    void Add(size_t index, int32_t delta)
    {
        for (size_t i = index + 1; i < tree_.size(); i += i & (~i + 1)) tree_[i] += delta;
    }
    /// Sum of the counts before `index`.
    int32_t Before(size_t index) const
    {
        int32_t sum = 0;
        for (size_t i = index; i > 0; i -= i & (~i + 1)) sum += tree_[i];
        return sum;
    }
    /// The entry that holds unit `unit` (0-based); `unit` becomes its place within the entry. Past the end: size.
    size_t Find(int32_t& unit) const
    {
        size_t at = 0;
        size_t step = 1;
        while (step * 2 < tree_.size()) step *= 2;
        for (; step > 0; step /= 2) {
            if (at + step < tree_.size() && tree_[at + step] <= unit) {
                at += step;
                unit -= tree_[at];
            }
        }
        return at;
    }

private:
    std::vector<int32_t> tree_;
};

} // namespace nib
