#pragma once
// The lines of a text, in chunks: finding, inserting and removing lines anywhere costs the same in a thousand lines and
// in a million. Knows nothing of undo, scanning or views.

#include "base/Text.h"
#include "text/CountTree.h"
#include "text/TextLoader.h"

#include <memory>
#include <vector>

namespace nib {

/// Blocks that a stretch of lines leaves open: first `closes` blocks opened above it end, then `opens` of its own go
/// on.
struct Nesting {
    int32_t closes = 0;
    int32_t opens = 0;

    void Follow(Nesting next)
    {
        if (next.closes > opens) closes += next.closes - opens;
        opens = opens > next.closes ? opens - next.closes : 0;
        opens += next.opens;
    }
    friend bool operator==(const Nesting&, const Nesting&) = default;
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
    struct Chunk {
        std::vector<LineRecord> lines;
        int32_t hidden = 0;
        mutable Nesting nesting;
        mutable bool nestingKnown = false;
    };
    /// Where a line lies.
    struct Place {
        size_t chunk = 0;
        size_t index = 0;
    };

    LineStore();
    ~LineStore();
    LineStore(const LineStore&) = delete;
    LineStore& operator=(const LineStore&) = delete;

    /// Replaces everything.
    void Load(TextView text);

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

    size_t ChunkCount() const { return chunks_.size(); }
    const Chunk& ChunkAt(size_t i) const { return *chunks_[i]; }
    int32_t FirstLine(size_t chunk) const { return lineTree_.Before(chunk); }
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
    Place Search(int32_t line) const;
    const LineRecord& Record(Place p) const { return chunks_[p.chunk]->lines[p.index]; }
    LineRecord& Record(Place p) { return chunks_[p.chunk]->lines[p.index]; }
    void Clear();
    void RebuildTrees();
    void SplitIfLarge(size_t chunk);
    void Touch(size_t chunk);
    Nesting ChunkNesting(size_t chunk) const;

    std::vector<std::unique_ptr<Chunk>> chunks_;
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
