#pragma once
// Two texts that both came from a third one, brought together line by line as git does it.

#include "base/Text.h"

#include <array>
#include <cstdint>
#include <vector>

namespace nib {

/// What both texts came from, what others have made of it, and what was made of it here.
enum class MergeSide : uint8_t { Base, Theirs, Mine };
inline constexpr size_t kMergeSides = 3;

/// The lines of a text as a merge sees them: the last one may lack its end, and then is another line than one with it.
class MergeLines {
public:
    explicit MergeLines(Text text);

    int32_t Count() const { return static_cast<int32_t>(lines_.size()); }
    /// Without its end.
    TextView At(int32_t line) const { return TextView(text_).substr(lines_[Index(line)].first, Length(line)); }
    bool HasEnd(int32_t line) const { return ended_ || line + 1 < Count(); }

private:
    struct Place {
        size_t first;
        size_t length;
    };
    static size_t Index(int32_t line) { return static_cast<size_t>(line); }
    size_t Length(int32_t line) const { return lines_[Index(line)].length; }

    Text text_;
    std::vector<Place> lines_;
    bool ended_ = true;
};

using MergeTexts = std::array<MergeLines, kMergeSides>; ///< by MergeSide

struct LineSpan {
    int32_t first = 0;
    int32_t count = 0;

    int32_t End() const { return first + count; }
    friend bool operator==(const LineSpan&, const LineSpan&) = default;
};

struct MergeBlock {
    enum class Kind : uint8_t {
        Same,
        Theirs, ///< changed by others alone
        Mine,   ///< changed here alone
        Both,   ///< to the same by either
        Conflict
    };

    Kind kind = Kind::Same;
    std::array<LineSpan, kMergeSides> lines; ///< by MergeSide

    const LineSpan& Of(MergeSide side) const { return lines[static_cast<size_t>(side)]; }
};

struct ThreeWayMerge {
    std::vector<MergeBlock> blocks; ///< in order; together they cover all lines of all three
    /// Finding all that large texts share would have taken too long: conflicts may hold lines that are alike.
    bool coarse = false;
};

/// Lines that both have put at the ends of a conflict are no part of it. Throws Error.
ThreeWayMerge MergeThree(const MergeTexts& texts);

} // namespace nib
