#pragma once
// Graphemes, words and blanks within one line, and a text among many. A word is letters, digits, ".", "_", "$": the
// names of the edited programs.

#include "text/LineStore.h"
#include "text/SourceContract.h"

#include <array>
#include <optional>

namespace nib {

struct ColumnRange {
    int32_t first = 0;
    int32_t last = 0; ///< excluded
};

/// `col` if a grapheme begins there, else the start of the grapheme that it stands in.
int32_t GraphemeStart(TextView line, int32_t col);
int32_t NextGrapheme(TextView line, int32_t col);
int32_t PreviousGrapheme(TextView line, int32_t col);

bool IsWordUnit(char16_t c);
/// Start of the next word, or of the next run of other characters; the line's length behind the last.
int32_t NextWord(TextView line, int32_t col);
int32_t PreviousWord(TextView line, int32_t col);
/// The word, run of blanks or run of other characters at a column; at the end of the line the last one.
ColumnRange WordAt(TextView line, int32_t col);

/// Columns of the leading blanks.
int32_t IndentOf(TextView line);

/// Every TAB becomes `width` blanks, one when that is below 1; for a text that will stand at a column, those up to the
/// next stop instead.
Text ExpandTabs(TextView text, int32_t width, std::optional<int32_t> column = std::nullopt);

/// One search text, prepared: finds it in stored lines without copying them.
class TextSearch {
public:
    TextSearch(TextView text, FindOptions options);
    /// False when nothing can ever match: an empty text, or one with line breaks.
    bool CanMatch() const { return possible_; }
    size_t Length() const { return needle_.size(); }
    bool Forward(const LineStore& lines, Position from, FindHit& hit) const;
    bool Backward(const LineStore& lines, Position from, FindHit& hit) const;
    /// The first place in a text with line breaks, from a unit on; npos when there is none.
    size_t In(TextView text, size_t from) const
    {
        return possible_ && from < text.size() ? FindIn({text.data(), text.size(), true}, from) : TextView::npos;
    }

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
