#include "text/LineText.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <new>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace nib {

namespace {

void* Malloc(size_t bytes)
{
    void* block = std::malloc(bytes);
    if (!block) throw std::bad_alloc();
    return block;
}

/// In front of every block of a line's own.
struct alignas(8) BlockHeader {
    uint32_t bytes; ///< room for units
    std::atomic<uint32_t> holders{1};
};
static_assert(sizeof(BlockHeader) == 8);

BlockHeader* HeaderOf(void* units)
{
    return static_cast<BlockHeader*>(units) - 1;
}

void* Allocate(size_t bytes)
{
    return new (Malloc(sizeof(BlockHeader) + bytes)) BlockHeader{static_cast<uint32_t>(bytes)} + 1;
}

void LetGo(void* units)
{
    // Whoever frees it, or goes on to write to it, sees all that others did with it.
    if (HeaderOf(units)->holders.fetch_sub(1, std::memory_order_acq_rel) == 1) std::free(HeaderOf(units));
}

bool IsShared(void* units)
{
    return HeaderOf(units)->holders.load(std::memory_order_acquire) > 1;
}

/// True when every unit fits 8 bits.
bool FitsNarrow(TextView text)
{
    char16_t seen = 0;
    for (char16_t c : text) seen |= c;
    return seen < 0x100;
}

} // namespace

void LineRecord::Share(const void* text, size_t length, bool wide)
{
    text_ = const_cast<void*>(text); // written to only when own_ is set
    length_ = static_cast<uint32_t>(length);
    wide_ = wide;
    own_ = 0;
}

void LineRecord::MakeOwn(bool wide, size_t needed)
{
    size_t unit = wide ? 2 : 1;
    if (own_ && wide_ == wide && HeaderOf(text_)->bytes >= needed * unit && !IsShared(text_)) return;
    // Room to grow, so that typing in a line allocates seldom; a very long one must not take half as much again.
    constexpr size_t kMostGrowth = size_t{1} << 20;
    void* block = Allocate((needed + std::min(needed / 2, kMostGrowth) + 16) * unit);
    UnitSpan old = Units();
    if (wide && !old.wide)
        std::copy_n(old.Narrow(), old.length, static_cast<char16_t*>(block));
    else if (old.length)
        std::memcpy(block, old.data, old.length * unit);
    if (own_) LetGo(text_);
    text_ = block;
    wide_ = wide;
    own_ = 1;
}

void LineRecord::Replace(size_t at, size_t count, TextView with)
{
    size_t length = length_ - count + with.size();
    if (length > kMaxLength) throw std::bad_alloc();
    bool wide = wide_ || !FitsNarrow(with);
    MakeOwn(wide, std::max<size_t>(length, length_));
    size_t tail = length_ - at - count;
    if (wide) {
        auto* units = static_cast<char16_t*>(text_);
        std::memmove(units + at + with.size(), units + at + count, tail * 2);
        std::copy(with.begin(), with.end(), units + at);
    } else {
        auto* units = static_cast<uint8_t*>(text_);
        std::memmove(units + at + with.size(), units + at + count, tail);
        std::transform(with.begin(), with.end(), units + at, [](char16_t c) { return static_cast<uint8_t>(c); });
    }
    length_ = static_cast<uint32_t>(length);
}

void LineRecord::Retain() const
{
    if (own_) HeaderOf(text_)->holders.fetch_add(1, std::memory_order_relaxed);
}

void LineRecord::Release()
{
    if (own_) LetGo(text_);
    own_ = 0;
    text_ = nullptr;
    length_ = 0;
}

size_t LineRecord::OwnBytes() const
{
    return own_ ? HeaderOf(text_)->bytes + sizeof(BlockHeader) : 0;
}

std::shared_ptr<void> LoadedText::NewBlock(size_t bytes)
{
    return {Malloc(bytes), std::free};
}

TextLoader::TextLoader(TextView text) : at_(text.data()), end_(text.data() + text.size())
{
    // For the worst case: pages that no line needs are never touched, so they cost no memory.
    loaded_.blocks.push_back(LoadedText::NewBlock(text.size() + 16));
    narrow_ = static_cast<uint8_t*>(loaded_.blocks.back().get());
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
            loaded_.blocks.push_back(LoadedText::NewBlock(static_cast<size_t>(end_ - at_) * 2));
            wide_ = static_cast<char16_t*>(loaded_.blocks.back().get());
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
