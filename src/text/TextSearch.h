#pragma once
#include "text/LineStore.h"
#include "text/SourceContract.h"

#include <array>

namespace nib {

/// One search text, prepared: finds it in stored lines without copying them.
class TextSearch {
public:
    TextSearch(TextView text, FindOptions options);
    /// False when nothing can ever match: an empty text, or one with line breaks.
    bool CanMatch() const { return possible_; }
    bool Forward(const LineStore& lines, Position from, FindHit& hit) const;
    bool Backward(const LineStore& lines, Position from, FindHit& hit) const;

private:
    static constexpr size_t kNone = static_cast<size_t>(-1);

    /// First place of the text in `units` from `from` on, word rule included.
    size_t FindIn(const UnitSpan& units, size_t from) const;
    size_t FindNarrow(const uint8_t* units, size_t length, size_t from) const;
    size_t FindWide(const char16_t* units, size_t length, size_t from) const;
    bool Matches(const uint8_t* units) const;
    bool Matches(const char16_t* units) const;
    bool IsWholeWord(const UnitSpan& units, size_t at) const;
    /// Line index within the chunk from `index` on that may hold a match, skipping the lines that lie in one block and
    /// hold none.
    size_t SkipLines(const LineStore::Chunk& chunk, size_t index) const;

    Text needle_; ///< folded unless the case matters
    bool wholeWord_;
    bool fold_;
    bool possible_;
    /// What each 8-bit unit counts as, and the at most two forms that the first and the last unit can have in 8 bits.
    std::array<char16_t, 256> narrowFold_{};
    std::array<uint8_t, 2> first_{};
    std::array<uint8_t, 2> last_{};
    bool narrowPossible_ = false;
};

} // namespace nib
