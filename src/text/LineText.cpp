#include "text/LineText.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

namespace nib {

namespace {

/// In front of every block of a line's own.
struct alignas(8) BlockHeader {
    size_t bytes; ///< room for units
};

BlockHeader* HeaderOf(void* units)
{
    return static_cast<BlockHeader*>(units) - 1;
}

void* Allocate(size_t bytes)
{
    auto* header = static_cast<BlockHeader*>(std::malloc(sizeof(BlockHeader) + bytes));
    if (!header) throw std::bad_alloc();
    header->bytes = bytes;
    return header + 1;
}

} // namespace

bool FitsNarrow(TextView text)
{
    char16_t seen = 0;
    for (char16_t c : text) seen |= c;
    return seen < 0x100;
}

void UnitSpan::AppendTo(Text& text, size_t from, size_t count) const
{
    from = std::min(from, length);
    count = std::min(count, length - from);
    if (wide) {
        text.append(Wide() + from, count);
        return;
    }
    size_t old = text.size();
    text.resize(old + count);
    std::copy_n(Narrow() + from, count, text.data() + old);
}

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
    if (own_ && wide_ == wide && HeaderOf(text_)->bytes >= needed * unit) return;
    // Room to grow, so that typing in a line allocates seldom.
    void* block = Allocate((needed + needed / 2 + 16) * unit);
    UnitSpan old = Units();
    if (wide && !old.wide)
        std::copy_n(old.Narrow(), old.length, static_cast<char16_t*>(block));
    else if (old.length)
        std::memcpy(block, old.data, old.length * unit);
    if (own_) std::free(HeaderOf(text_));
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

void LineRecord::Release()
{
    if (own_) std::free(HeaderOf(text_));
    own_ = 0;
    text_ = nullptr;
    length_ = 0;
}

size_t LineRecord::OwnBytes() const
{
    return own_ ? HeaderOf(text_)->bytes + sizeof(BlockHeader) : 0;
}

} // namespace nib
