#pragma once
// What differs between two texts: blocks of lines that cover both, in order. Any thread may ask; windows do so beside
// their own.

#include "base/LinewiseText.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <optional>
#include <vector>

namespace nib {

/// What does not count as a difference.
struct CompareOptions {
    bool blanks = false; ///< indents, blanks and TABs at the end, and how many stand between words
    bool letterCase = false;
    bool comments = false; ///< lines that hold nothing but a comment: each text may have its own

    friend bool operator==(const CompareOptions&, const CompareOptions&) = default;
};

enum class BlockKind : uint8_t {
    Same, ///< as many lines on both sides, each like the one beside it as far as the options look
    Changed,
    LeftOnly,
    RightOnly,
    Passed, ///< comments that do not count, of either side or both
};

/// All 0-based; where a side has no lines, its number is that of the line that they would stand before.
struct LineBlock {
    BlockKind kind = BlockKind::Same;
    int32_t left = 0;
    int32_t leftCount = 0;
    int32_t right = 0;
    int32_t rightCount = 0;

    bool IsChange() const { return kind != BlockKind::Same && kind != BlockKind::Passed; }
    int32_t LeftEnd() const { return left + leftCount; }
    int32_t RightEnd() const { return right + rightCount; }

    friend bool operator==(const LineBlock&, const LineBlock&) = default;
};

struct TextDifferences {
    std::vector<LineBlock> blocks;
    /// Finding all that the texts share would have taken too long: some of the changes hold lines that are alike.
    bool coarse = false;

    bool AreSame() const;
    int32_t ChangeCount() const;
    /// In changes, for whoever only tells how many lines came and went.
    int64_t LinesLeft() const;
    int64_t LinesRight() const;
};

inline constexpr std::chrono::milliseconds kCompareTime{1500};

/// Nothing when `cancelled` became true meanwhile. A text of any size takes about `time` at most, beside reading it.
std::optional<TextDifferences> CompareLines(const LinewiseText& left, const LinewiseText& right,
                                            const CompareOptions& options = {},
                                            const std::atomic<bool>* cancelled = nullptr,
                                            std::chrono::milliseconds time = kCompareTime);

/// A text that has NUL characters near its beginning is none that lines say anything about.
bool LooksBinary(const LinewiseText& text);

} // namespace nib
