#include "text/TextSearch.h"

#include "base/Text.h"

#include <unicode/ubrk.h>
#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <cstring>
#include <memory>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

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

char16_t Fold(char16_t c)
{
    if (c < 0x80) return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c;
    return static_cast<char16_t>(u_foldCase(c, U_FOLD_CASE_DEFAULT));
}

/// Folds in place; of a surrogate pair only the trail can change.
void FoldUnit(char16_t before, char16_t& unit)
{
    if (U16_IS_LEAD(before) && U16_IS_TRAIL(unit))
        unit = U16_TRAIL(u_foldCase(static_cast<UChar32>(U16_GET_SUPPLEMENTARY(before, unit)), U_FOLD_CASE_DEFAULT));
    else
        unit = Fold(unit);
}

} // namespace

bool IsWordUnit(char16_t c)
{
    return c == u'.' || c == u'_' || c == u'$' || u_isalnum(c) || (c >= 0xD800 && c < 0xE000);
}

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

Text ExpandTabs(TextView text, int32_t width, std::optional<int32_t> column)
{
    width = std::max(width, 1);
    int32_t at = column.value_or(0);
    auto tabs = static_cast<size_t>(std::count(text.begin(), text.end(), u'\t'));
    Text out;
    out.reserve(text.size() + tabs * static_cast<size_t>(width - 1));
    for (;;) {
        TextView piece = text.substr(0, text.find(u'\t'));
        out += piece;
        if (piece.size() == text.size()) return out;
        int32_t blanks = width;
        if (column) {
            size_t lineEnd = piece.find_last_of(u"\r\n");
            at = lineEnd == TextView::npos ? at + Size(piece) : Size(piece.substr(lineEnd + 1));
            blanks -= at % width;
            at += blanks;
        }
        out.append(static_cast<size_t>(blanks), u' ');
        text.remove_prefix(piece.size() + 1);
    }
}

TextSearch::TextSearch(TextView text, FindOptions options)
    : needle_(text), wholeWord_(options.wholeWord), fold_(!options.matchCase),
      possible_(!text.empty() && text.find_first_of(u"\r\n") == TextView::npos)
{
    if (!possible_) return;
    if (fold_)
        for (size_t i = 0; i < needle_.size(); ++i) FoldUnit(i > 0 ? needle_[i - 1] : u'\0', needle_[i]);
    for (size_t c = 0; c < 256; ++c) narrowFold_[c] = fold_ ? Fold(static_cast<char16_t>(c)) : static_cast<char16_t>(c);
    auto forms = [&](char16_t unit, std::array<uint8_t, 2>& out) {
        size_t found = 0;
        for (size_t c = 0; c < 256 && found < 2; ++c)
            if (narrowFold_[c] == unit) out[found++] = static_cast<uint8_t>(c);
        if (found == 1) out[1] = out[0];
        return found > 0;
    };
    narrowPossible_ = forms(needle_.front(), first_) && forms(needle_.back(), last_);
}

bool TextSearch::Matches(const uint8_t* units) const
{
    for (size_t i = 0; i < needle_.size(); ++i)
        if (narrowFold_[units[i]] != needle_[i]) return false;
    return true;
}

bool TextSearch::Matches(const char16_t* units) const
{
    if (!fold_) return std::equal(needle_.begin(), needle_.end(), units);
    for (size_t i = 0; i < needle_.size(); ++i) {
        char16_t unit = units[i];
        FoldUnit(i > 0 ? units[i - 1] : u'\0', unit);
        if (unit != needle_[i]) return false;
    }
    return true;
}

size_t TextSearch::FindNarrow(const uint8_t* units, size_t length, size_t from) const
{
    size_t size = needle_.size();
    if (!narrowPossible_ || length < size) return kNone;
    size_t starts = length - size + 1;
    size_t i = from;
#ifdef __SSE2__
    // Sixteen places at once: where both the first and the last unit fit, the rest is compared.
    const __m128i first0 = _mm_set1_epi8(static_cast<char>(first_[0]));
    const __m128i first1 = _mm_set1_epi8(static_cast<char>(first_[1]));
    const __m128i last0 = _mm_set1_epi8(static_cast<char>(last_[0]));
    const __m128i last1 = _mm_set1_epi8(static_cast<char>(last_[1]));
    for (; i + 16 <= starts; i += 16) {
        __m128i head = _mm_loadu_si128(reinterpret_cast<const __m128i*>(units + i));
        __m128i tail = _mm_loadu_si128(reinterpret_cast<const __m128i*>(units + i + size - 1));
        __m128i fits = _mm_and_si128(_mm_or_si128(_mm_cmpeq_epi8(head, first0), _mm_cmpeq_epi8(head, first1)),
                                     _mm_or_si128(_mm_cmpeq_epi8(tail, last0), _mm_cmpeq_epi8(tail, last1)));
        for (auto mask = static_cast<unsigned>(_mm_movemask_epi8(fits)); mask; mask &= mask - 1) {
            size_t at = i + static_cast<size_t>(__builtin_ctz(mask));
            if (Matches(units + at)) return at;
        }
    }
#endif
    for (; i < starts; ++i)
        if ((units[i] == first_[0] || units[i] == first_[1]) && Matches(units + i)) return i;
    return kNone;
}

size_t TextSearch::FindWide(const char16_t* units, size_t length, size_t from) const
{
    size_t size = needle_.size();
    if (length < size) return kNone;
    char16_t first = needle_.front();
    for (size_t i = from; i + size <= length; ++i)
        if ((fold_ ? Fold(units[i]) : units[i]) == first && Matches(units + i)) return i;
    return kNone;
}

bool TextSearch::IsWholeWord(const UnitSpan& units, size_t at) const
{
    size_t end = at + needle_.size();
    return (at == 0 || !IsWordUnit(units[at - 1])) && (end == units.length || !IsWordUnit(units[end]));
}

size_t TextSearch::FindIn(const UnitSpan& units, size_t from) const
{
    for (;; ++from) {
        from = units.wide ? FindWide(units.Wide(), units.length, from) : FindNarrow(units.Narrow(), units.length, from);
        if (from == kNone || !wholeWord_ || IsWholeWord(units, from)) return from;
    }
}

size_t TextSearch::SkipLines(const LineStore::Chunk& chunk, size_t index) const
{
    const auto& lines = chunk.lines;
    // Lines as they were loaded follow each other without a gap: one search covers a run of them. Runs start short,
    // since where hits are frequent the next one is near.
    for (size_t run = 16; index < lines.size(); run *= 2) {
        UnitSpan first = lines[index].Units();
        if (first.wide) return index;
        const uint8_t* end = first.Narrow() + first.length;
        size_t stop = index + 1;
        for (; stop < lines.size() && stop - index < run; ++stop) {
            UnitSpan next = lines[stop].Units();
            if (next.wide || next.Narrow() != end) break;
            end += next.length;
        }
        size_t hit = FindNarrow(first.Narrow(), static_cast<size_t>(end - first.Narrow()), 0);
        if (hit == kNone) {
            index = stop;
            continue;
        }
        // A hit that spans two lines is found out by the caller.
        while (hit >= lines[index].Length()) hit -= lines[index++].Length();
        return index;
    }
    return index;
}

bool TextSearch::Forward(const LineStore& lines, Position from, FindHit& hit) const
{
    LineStore::Place place = lines.Locate(from.line);
    auto column = static_cast<size_t>(from.col);
    int32_t base = from.line - static_cast<int32_t>(place.index);
    for (size_t i = place.chunk; i < lines.ChunkCount(); ++i) {
        const LineStore::Chunk& chunk = lines.ChunkAt(i);
        size_t index = i == place.chunk ? place.index : 0;
        while (index < chunk.lines.size()) {
            size_t at = FindIn(chunk.lines[index].Units(), column);
            column = 0;
            if (at != kNone) {
                hit = {{static_cast<int32_t>(at), base + static_cast<int32_t>(index)},
                       static_cast<int32_t>(needle_.size())};
                return true;
            }
            index = SkipLines(chunk, index + 1);
        }
        base += static_cast<int32_t>(chunk.lines.size());
    }
    return false;
}

bool TextSearch::Backward(const LineStore& lines, Position from, FindHit& hit) const
{
    auto limit = static_cast<size_t>(from.col);
    for (int32_t line = from.line; line >= 0; --line) {
        UnitSpan units = lines.At(line).Units();
        size_t found = kNone;
        for (size_t at = FindIn(units, 0); at != kNone && at <= limit; at = FindIn(units, at + 1)) found = at;
        if (found != kNone) {
            hit = {{static_cast<int32_t>(found), line}, static_cast<int32_t>(needle_.size())};
            return true;
        }
        limit = kNone - 1;
    }
    return false;
}

} // namespace nib
