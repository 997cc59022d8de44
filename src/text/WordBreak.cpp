#include "text/WordBreak.h"

#include "base/Text.h"

#include <unicode/ubrk.h>
#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <memory>

namespace nib {

namespace {

enum class Kind { Blank, Word, Other };

/// Longest stretch that is handed to ICU: no real grapheme comes near it, and a long line stays cheap.
constexpr int32_t kWindow = 128;

int32_t Size(TextView line)
{
    return static_cast<int32_t>(line.size());
}

char16_t At(TextView line, int32_t col)
{
    return line[static_cast<size_t>(col)];
}

/// A grapheme of its own between two characters of this kind.
bool IsPlain(char16_t c)
{
    return c < 0x0300 || IsMark(c) || (c >= 0x3400 && c < 0xA000);
}

struct CloseBreaks {
    void operator()(UBreakIterator* breaks) const { ubrk_close(breaks); }
};

/// A window round `col` that begins at a sure boundary where one is near, and a break iterator over it.
struct BreakWindow {
    BreakWindow(TextView line, int32_t col)
    {
        first = col;
        while (first > 0 && col - first < kWindow) {
            --first;
            if (IsPlain(At(line, first))) break;
        }
        if (first > 0 && U16_IS_TRAIL(At(line, first)) && U16_IS_LEAD(At(line, first - 1))) --first;
        int32_t last = col;
        while (last < Size(line) && last - col < kWindow) {
            if (last++ > col && IsPlain(At(line, last - 1))) break;
        }
        if (last < Size(line) && U16_IS_TRAIL(At(line, last)) && U16_IS_LEAD(At(line, last - 1))) ++last;
        auto part = line.substr(static_cast<size_t>(first), static_cast<size_t>(last - first));
        UErrorCode status = U_ZERO_ERROR;
        breaks.reset(ubrk_open(UBRK_CHARACTER, "", part.data(), Size(part), &status));
        if (U_FAILURE(status)) breaks.reset();
    }
    std::unique_ptr<UBreakIterator, CloseBreaks> breaks;
    int32_t first = 0;
};

bool PlainBoundary(TextView line, int32_t col)
{
    return col <= 0 || col >= Size(line) || (IsPlain(At(line, col - 1)) && IsPlain(At(line, col)));
}

Kind KindOf(TextView line, int32_t col)
{
    UChar32 c = 0;
    U16_GET(line.data(), 0, col, Size(line), c);
    if (c == ' ' || u_isUWhiteSpace(c)) return Kind::Blank;
    if (c == '.' || c == '_' || c == '$') return Kind::Word;
    constexpr uint32_t wordMask = U_GC_L_MASK | U_GC_M_MASK | U_GC_ND_MASK;
    return (U_GET_GC_MASK(c) & wordMask) ? Kind::Word : Kind::Other;
}

} // namespace

int32_t GraphemeStart(TextView line, int32_t col)
{
    col = std::clamp(col, 0, Size(line));
    if (PlainBoundary(line, col)) return col;
    // Inside a pair ICU looks from the pair's start back, past the boundary that is wanted.
    if (col < Size(line) && U16_IS_TRAIL(At(line, col)) && U16_IS_LEAD(At(line, col - 1))) --col;
    BreakWindow window(line, col);
    if (!window.breaks || ubrk_isBoundary(window.breaks.get(), col - window.first)) return col;
    int32_t before = ubrk_preceding(window.breaks.get(), col - window.first);
    return before == UBRK_DONE ? window.first : window.first + before;
}

int32_t NextGrapheme(TextView line, int32_t col)
{
    if (col >= Size(line)) return Size(line);
    if (IsPlain(At(line, col)) && PlainBoundary(line, col + 1)) return col + 1;
    BreakWindow window(line, col);
    int32_t next = window.breaks ? ubrk_following(window.breaks.get(), col - window.first) : UBRK_DONE;
    return next == UBRK_DONE ? col + 1 : window.first + next;
}

int32_t PreviousGrapheme(TextView line, int32_t col)
{
    if (col <= 0) return 0;
    return GraphemeStart(line, col - 1);
}

int32_t NextWord(TextView line, int32_t col)
{
    int32_t size = Size(line);
    if (col >= size) return size;
    Kind kind = KindOf(line, col);
    if (kind != Kind::Blank) {
        while (col < size && KindOf(line, col) == kind) ++col;
    }
    while (col < size && KindOf(line, col) == Kind::Blank) ++col;
    return GraphemeStart(line, col);
}

int32_t PreviousWord(TextView line, int32_t col)
{
    col = std::min(col, Size(line));
    while (col > 0 && KindOf(line, col - 1) == Kind::Blank) --col;
    if (col == 0) return 0;
    Kind kind = KindOf(line, col - 1);
    while (col > 0 && KindOf(line, col - 1) == kind) --col;
    return GraphemeStart(line, col);
}

ColumnRange WordAt(TextView line, int32_t col)
{
    int32_t size = Size(line);
    if (size == 0) return {};
    col = std::clamp(col, 0, size - 1);
    Kind kind = KindOf(line, col);
    ColumnRange range{col, col + 1};
    while (range.first > 0 && KindOf(line, range.first - 1) == kind) --range.first;
    while (range.last < size && KindOf(line, range.last) == kind) ++range.last;
    range.first = GraphemeStart(line, range.first);
    if (range.last < size && GraphemeStart(line, range.last) != range.last) range.last = NextGrapheme(line, range.last);
    return range;
}

int32_t IndentOf(TextView line)
{
    size_t first = line.find_first_not_of(u' ');
    return first == TextView::npos ? Size(line) : static_cast<int32_t>(first);
}

} // namespace nib
