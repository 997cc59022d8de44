#include "compare/ThreeWayMerge.h"

#include "compare/GitLibrary.h"
#include "compare/TextDifferences.h"

#include <algorithm>
#include <string>
#include <unordered_map>

namespace nib {

namespace {

using Kind = MergeBlock::Kind;
using Hunks = std::vector<GitHunk>;

/// Equal lines, equal numbers. Git's lines are then short, plain, and each has an end, whatever the text holds.
class Numbering {
public:
    std::string Written(const MergeLines& text)
    {
        std::string bytes;
        for (int32_t line = 0; line < text.Count(); ++line) {
            for (uint32_t rest = NumberOf(text.HasEnd(line) ? ended_ : open_, text.At(line)); rest > 0; rest >>= 6)
                bytes += static_cast<char>('0' + (rest & 0x3F));
            bytes += '\n';
        }
        return bytes;
    }

private:
    using Known = std::unordered_map<TextView, uint32_t>;

    uint32_t NumberOf(Known& known, TextView line)
    {
        const auto [at, isNew] = known.try_emplace(line, count_);
        count_ += isNew ? 1 : 0;
        return at->second;
    }

    Known ended_;
    Known open_;
    uint32_t count_ = 0;
};

/// Lines of two texts that are handed over to the library at once: it cannot be held to a time.
constexpr int32_t kMostAtOnce = 200'000;

Hunks ByLibrary(const MergeLines& base, const MergeLines& other)
{
    Numbering numbering;
    const std::string before = numbering.Written(base);
    Hunks hunks;
    GitLibrary().ForEachHunk(
        before, numbering.Written(other), [&](const GitHunk& hunk) { hunks.push_back(hunk); },
        GitLibrary::Cut::ForMerges);
    return hunks;
}

/// A last line without its end is another one than with it.
LinewiseText AsLines(const MergeLines& text)
{
    const auto walk = [&text](const LinewiseText::Visit& visit) {
        for (int32_t line = 0; line < text.Count(); ++line) {
            Text open;
            TextView units = text.At(line);
            if (!text.HasEnd(line)) units = open = Text(units) + u'\n';
            visit({units.data(), units.size(), true});
        }
    };
    return {walk, text.Count(), 0};
}

Hunks InTime(const MergeLines& base, const MergeLines& other, bool& coarse)
{
    Hunks hunks;
    const auto differences = CompareLines(AsLines(base), AsLines(other));
    for (const LineBlock& block : differences->blocks)
        if (block.IsChange()) hunks.push_back({block.left, block.leftCount, block.right, block.rightCount});
    coarse = coarse || differences->coarse;
    return hunks;
}

class Merging {
public:
    explicit Merging(const MergeTexts& texts) : texts_(texts)
    {
        for (size_t side = 1; side < kMergeSides; ++side) {
            const bool small = int64_t{texts[0].Count()} + texts[side].Count() <= kMostAtOnce;
            hunks_[side] = small ? ByLibrary(texts[0], texts[side]) : InTime(texts[0], texts[side], coarse_);
        }
    }

    ThreeWayMerge Merge()
    {
        while (at_[1] < hunks_[1].size() || at_[2] < hunks_[2].size()) TakeGroup();
        const int32_t rest = texts_[0].Count() - done_[0];
        Add(Kind::Same, {rest, rest, rest});
        return {std::move(blocks_), coarse_};
    }

private:
    using Counts = std::array<int32_t, kMergeSides>;

    const GitHunk* Next(size_t side) const
    {
        return at_[side] < hunks_[side].size() ? &hunks_[side][at_[side]] : nullptr;
    }

    /// The next changes that touch or overlap one another.
    void TakeGroup()
    {
        const GitHunk* theirs = Next(1);
        const GitHunk* mine = Next(2);
        const int32_t first = !mine || (theirs && theirs->left < mine->left) ? theirs->left : mine->left;
        const int32_t same = first - done_[0];
        Add(Kind::Same, {same, same, same});
        const auto from = at_;
        int32_t end = first;
        for (bool more = true; more;) {
            more = false;
            for (size_t side : {size_t{1}, size_t{2}})
                for (const GitHunk* hunk = Next(side); hunk && hunk->left <= end; hunk = Next(side)) {
                    end = std::max(end, hunk->left + hunk->leftCount);
                    ++at_[side];
                    more = true;
                }
        }
        Counts counts{end - first, 0, 0};
        for (size_t side : {size_t{1}, size_t{2}}) {
            counts[side] = counts[0];
            for (size_t i = from[side]; i < at_[side]; ++i)
                counts[side] += hunks_[side][i].rightCount - hunks_[side][i].leftCount;
        }
        if (at_[2] == from[2]) return Add(Kind::Theirs, counts);
        if (at_[1] == from[1]) return Add(Kind::Mine, counts);
        AddConflict(counts);
    }

    bool AreAlike(int32_t theirs, int32_t mine) const
    {
        return texts_[1].HasEnd(theirs) == texts_[2].HasEnd(mine) && texts_[1].At(theirs) == texts_[2].At(mine);
    }

    /// What both have done alike is none.
    void AddConflict(Counts counts)
    {
        int32_t head = 0;
        int32_t tail = 0;
        const int32_t shorter = std::min(counts[1], counts[2]);
        while (head < shorter && AreAlike(done_[1] + head, done_[2] + head)) ++head;
        if (head == counts[1] && head == counts[2]) return Add(Kind::Both, counts);
        while (tail < shorter - head && AreAlike(done_[1] + counts[1] - tail - 1, done_[2] + counts[2] - tail - 1))
            ++tail;
        Add(Kind::Both, {0, head, head});
        Add(Kind::Conflict, {counts[0], counts[1] - head - tail, counts[2] - head - tail});
        Add(Kind::Both, {0, tail, tail});
    }

    void Add(Kind kind, Counts counts)
    {
        if (counts == Counts{}) return;
        MergeBlock block;
        block.kind = kind;
        for (size_t side = 0; side < kMergeSides; ++side) {
            block.lines[side] = {done_[side], counts[side]};
            done_[side] += counts[side];
        }
        blocks_.push_back(block);
    }

    const MergeTexts& texts_;
    std::array<Hunks, kMergeSides> hunks_; ///< of Theirs and Mine, against Base
    std::array<size_t, kMergeSides> at_{};
    Counts done_{}; ///< lines that lie in blocks
    std::vector<MergeBlock> blocks_;
    bool coarse_ = false;
};

} // namespace

MergeLines::MergeLines(Text text) : text_(std::move(text))
{
    for (size_t at = 0; at < text_.size();) {
        const size_t end = std::min(text_.find_first_of(u"\r\n", at), text_.size());
        lines_.push_back({at, end - at});
        ended_ = end < text_.size();
        at = end + (text_.compare(end, 2, u"\r\n") == 0 ? 2 : 1);
    }
}

ThreeWayMerge MergeThree(const MergeTexts& texts)
{
    return Merging(texts).Merge();
}

} // namespace nib
