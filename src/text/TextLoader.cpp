#include "text/TextLoader.h"

#include <cstdlib>
#include <cstring>
#include <new>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace nib {

namespace {

void* Allocate(size_t bytes)
{
    void* block = std::malloc(bytes);
    if (!block) throw std::bad_alloc();
    return block;
}

} // namespace

void LoadedText::FreeBlock::operator()(void* block) const
{
    std::free(block);
}

TextLoader::TextLoader(TextView text) : at_(text.data()), end_(text.data() + text.size())
{
    loaded_.narrow.reset(Allocate(text.size() + 16));
    narrow_ = static_cast<uint8_t*>(loaded_.narrow.get());
}

/// Writes the line's units in 8 bits at narrow_ up to its end, which is answered; `wide` when some did not fit.
const char16_t* TextLoader::NarrowLine(const char16_t* from, bool& wide)
{
    uint8_t* to = narrow_;
    char16_t seen = 0;
#ifdef __SSE2__
    const __m128i carriageReturn = _mm_set1_epi16(u'\r');
    const __m128i lineFeed = _mm_set1_epi16(u'\n');
    __m128i all = _mm_setzero_si128();
    while (end_ - from >= 8) {
        __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
        __m128i ends = _mm_or_si128(_mm_cmpeq_epi16(units, carriageReturn), _mm_cmpeq_epi16(units, lineFeed));
        _mm_storel_epi64(reinterpret_cast<__m128i*>(to), _mm_packus_epi16(units, units));
        if (int mask = _mm_movemask_epi8(ends)) {
            int count = __builtin_ctz(static_cast<unsigned>(mask)) / 2;
            for (int i = 0; i < count; ++i) seen |= from[i];
            from += count;
            to += count;
            all = _mm_or_si128(all, _mm_set1_epi16(static_cast<short>(seen)));
            wide = _mm_movemask_epi8(_mm_cmpeq_epi16(_mm_srli_epi16(all, 8), _mm_setzero_si128())) != 0xFFFF;
            return from;
        }
        all = _mm_or_si128(all, units);
        from += 8;
        to += 8;
    }
    if (_mm_movemask_epi8(_mm_cmpeq_epi16(_mm_srli_epi16(all, 8), _mm_setzero_si128())) != 0xFFFF) seen = 0x100;
#endif
    for (; from < end_ && *from != u'\r' && *from != u'\n'; ++from, ++to) {
        seen |= *from;
        *to = static_cast<uint8_t>(*from);
    }
    wide = seen >= 0x100;
    return from;
}

bool TextLoader::Next(UnitSpan& line)
{
    if (done_) return false;
    bool wide = false;
    const char16_t* stop = NarrowLine(at_, wide);
    auto length = static_cast<size_t>(stop - at_);
    if (length > LineRecord::kMaxLength) throw std::bad_alloc();
    if (wide) {
        if (!wide_) {
            loaded_.wide.reset(Allocate((static_cast<size_t>(end_ - at_)) * 2));
            wide_ = static_cast<char16_t*>(loaded_.wide.get());
        }
        std::memcpy(wide_, at_, length * 2);
        line = {wide_, length, true};
        wide_ += length;
    } else {
        line = {narrow_, length, false};
        narrow_ += length;
    }
    loaded_.bytes += length * (wide ? 2 : 1);
    done_ = stop == end_;
    at_ = stop;
    if (!done_) at_ += *stop == u'\r' && stop + 1 < end_ && stop[1] == u'\n' ? 2 : 1;
    return true;
}

} // namespace nib
