#pragma once
// The lines of a text, in chunks: finding, inserting and removing lines anywhere costs the same in a thousand lines and
// in a million. Knows nothing of undo, scanning or views.

#include "text/ByteLoader.h"
#include "text/LineText.h"
#include "text/SourceContract.h"
#include "text/TextSnapshot.h"

#include <cstddef>
#include <cstdint>
#include <memory>
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

/// Bits of a line's control word that are this component's own, beside line_bits.
namespace own_bits {
inline constexpr uint32_t kHidden = 0x200;
inline constexpr uint32_t kCollapsed = 0x400;
inline constexpr uint32_t kClosesShift = 16;
inline constexpr uint32_t kOpensShift = 24;
inline constexpr uint32_t kNestingMask = 0x7F7F0000;
inline constexpr int32_t kMostNesting = 0x7F; ///< a line with more blocks counts as this many
} // namespace own_bits

Nesting NestingOf(uint32_t controlWord);
uint32_t WithNesting(uint32_t controlWord, Nesting nesting);

class LineStore {
public:
    using Chunk = LineChunk;
    /// Where a line lies.
    struct Place {
        size_t chunk = 0;
        size_t index = 0;
    };

    LineStore();
    LineStore(const LineStore&) = delete;
    LineStore& operator=(const LineStore&) = delete;

    /// Replaces everything.
    void Load(TextView text);
    /// From the bytes that it was read in, each TAB as so many blanks; answers where those stood.
    std::vector<TabPlace> Load(ByteText text, int32_t tabWidth);

    /// In the time that a list of its chunks takes.
    std::shared_ptr<const TextSnapshot> Snapshot() const;

    int32_t Count() const { return count_; }
    const LineRecord& At(int32_t line) const { return Record(Locate(line)); }
    size_t Length(int32_t line) const { return At(line).Length(); }
    size_t UnitCount() const { return units_; }

    /// Replaces units within a line.
    void Replace(int32_t line, size_t at, size_t count, TextView with);
    /// Room for empty lines in front of `line`.
    void InsertLines(int32_t line, int32_t count);
    void RemoveLines(int32_t line, int32_t count);

    uint32_t Word(int32_t line, size_t which) const { return At(line).words[which]; }
    /// The control word's hidden and nesting bits keep their sums.
    void SetWord(int32_t line, size_t which, uint32_t value);

    // Lines without the hidden bit
    int32_t VisibleCount() const { return count_ - hidden_; }
    int32_t HiddenCount() const { return hidden_; }
    /// Visible lines before `line`.
    int32_t VisibleBefore(int32_t line) const;
    int32_t VisibleLine(int32_t index) const;

    /// Nesting of all lines before `line`.
    Nesting NestingBefore(int32_t line) const;
    /// First line from `line` on at which `depth` open blocks have all closed; -1 when none does.
    int32_t FindClose(int32_t line, int32_t depth) const;
    /// The line above `line` that opened the block which is the `depth`th from inside of those open there; -1 when
    /// there are fewer.
    int32_t FindOpen(int32_t line, int32_t depth) const;

    size_t ChunkCount() const { return chunks_.size(); }
    const Chunk& ChunkAt(size_t i) const { return *chunks_[i]; }
    Place Locate(int32_t line) const
    {
        // Most callers walk: the line asked for last, or its neighbour, is where it was.
        if (lastLine_ >= 0) {
            int64_t index = static_cast<int64_t>(last_.index) + line - lastLine_;
            if (index >= 0 && index < static_cast<int64_t>(chunks_[last_.chunk]->lines.size())) {
                last_.index = static_cast<size_t>(index);
                lastLine_ = line;
                return last_;
            }
        }
        return Search(line);
    }
    size_t MemoryUse() const;

private:
    template <typename Loader>
    void Take(Loader&& loader, size_t size);
    Place Search(int32_t line) const;
    const LineRecord& Record(Place p) const { return chunks_[p.chunk]->lines[p.index]; }
    /// To be changed.
    LineRecord& Record(Place p) { return Own(p.chunk).lines[p.index]; }
    Chunk& Own(size_t chunk);
    void RebuildTrees();
    void SplitIfLarge(size_t chunk);
    void Touch(size_t chunk);
    Nesting ChunkNesting(size_t chunk) const;

    std::vector<std::shared_ptr<Chunk>> chunks_;
    CountTree lineTree_;
    CountTree visibleTree_;
    LoadedText loaded_;
    int32_t count_ = 0;
    int32_t hidden_ = 0;
    size_t units_ = 0;
    mutable std::vector<Nesting> prefix_; ///< nesting before each chunk, as far as it is known
    mutable Place last_;                  ///< of the line asked for last
    mutable int32_t lastLine_ = -1;
};

} // namespace nib
