#include "text/ByteLoader.h"

#include <algorithm>
#include <new>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace nib {

ByteLoader::ByteLoader(ByteText text, int32_t tabWidth, std::vector<TabPlace>& tabs)
    : text_(std::move(text)), tabWidth_(static_cast<size_t>(std::max(tabWidth, 1))), tabs_(tabs)
{
    loaded_.blocks.push_back(text_.owner);
    loaded_.bytes = text_.size;
}

/// Where the line ends that goes on at `at`; tells what is on the way.
size_t ByteLoader::FindBreak(size_t at, Seen& seen) const
{
    const char* bytes = text_.data;
#ifdef __SSE2__
    const auto bits = [](__m128i mask) { return static_cast<uint32_t>(_mm_movemask_epi8(mask)); };
    const auto same = [&bits](__m128i group, char c) { return bits(_mm_cmpeq_epi8(group, _mm_set1_epi8(c))); };
    for (; at + 16 <= text_.size; at += 16) {
        const __m128i group = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + at));
        // As numbers with a sign, bytes from 0x80 on are below the blank too.
        if (bits(_mm_cmplt_epi8(group, _mm_set1_epi8(' '))) == 0) continue;
        const uint32_t breaks = same(group, '\n') | same(group, '\r');
        const uint32_t before = breaks != 0 ? (breaks & (~breaks + 1)) - 1 : 0xFFFF;
        seen.tab = seen.tab || (same(group, '\t') & before) != 0;
        seen.high = seen.high || (bits(group) & before) != 0;
        if (breaks != 0) return at + static_cast<size_t>(__builtin_ctz(breaks));
    }
#endif
    for (; at < text_.size && bytes[at] != '\n' && bytes[at] != '\r'; ++at) {
        seen.tab = seen.tab || bytes[at] == '\t';
        seen.high = seen.high || static_cast<unsigned char>(bytes[at]) >= 0x80;
    }
    return at;
}

bool ByteLoader::Next(UnitSpan& line)
{
    if (done_) return false;
    Seen seen;
    const size_t end = FindBreak(at_, seen);
    line = {text_.data + at_, end - at_, false};
    if (seen.tab || seen.high) line = Rewritten(text_.data + at_, end - at_, seen);
    if (line.length > LineRecord::kMaxLength) throw std::bad_alloc();
    done_ = end == text_.size;
    at_ = end;
    if (!done_) at_ += text_.Bytes().substr(end, 2) == "\r\n" ? 2 : 1;
    ++line_;
    return true;
}

UnitSpan ByteLoader::Rewritten(char* piece, size_t length, Seen seen)
{
    units_.resize(length);
    if (seen.high)
        units_.resize(static_cast<size_t>(text_.widen({piece, length}, units_.data()) - units_.data()));
    else
        std::copy_n(piece, length, units_.data());
    if (seen.tab) ExpandTabs();
    return Stored(piece, length);
}

void ByteLoader::ExpandTabs()
{
    expanded_.clear();
    size_t done = 0;
    for (size_t tab = units_.find(u'\t'); tab != Text::npos; tab = units_.find(u'\t', done)) {
        expanded_.append(units_, done, tab - done);
        tabs_.push_back({line_, static_cast<int32_t>(expanded_.size())});
        expanded_.append(tabWidth_, u' ');
        done = tab + 1;
    }
    expanded_.append(units_, done);
    units_.swap(expanded_);
}

/// The units where the line was read, if they go in there, else in room of their own.
UnitSpan ByteLoader::Stored(char* place, size_t room)
{
    char16_t all = 0;
    for (char16_t c : units_) all |= c;
    if (all >= 0x100) {
        void* wide = Room(units_.size() * 2);
        std::copy(units_.begin(), units_.end(), static_cast<char16_t*>(wide));
        return {wide, units_.size(), true};
    }
    auto* narrow = static_cast<uint8_t*>(units_.size() <= room ? place : Room(units_.size()));
    std::transform(units_.begin(), units_.end(), narrow, [](char16_t c) { return static_cast<uint8_t>(c); });
    return {narrow, units_.size(), false};
}

void* ByteLoader::Room(size_t bytes)
{
    constexpr size_t kBlock = size_t{1} << 16;
    bytes += bytes & 1; // what follows may be wide
    if (left_ < bytes) {
        left_ = std::max(bytes, kBlock);
        loaded_.blocks.push_back(LoadedText::NewBlock(left_));
        free_ = static_cast<char*>(loaded_.blocks.back().get());
        loaded_.bytes += left_;
    }
    left_ -= bytes;
    free_ += bytes;
    return free_ - bytes;
}

std::vector<TabPlace> TabsOf(TextView text, int32_t tabWidth)
{
    static constexpr char16_t kStops[] = {u'\t', u'\r', u'\n', 0};
    std::vector<TabPlace> tabs;
    TabPlace at;
    size_t done = 0;
    for (size_t stop = text.find_first_of(kStops); stop != TextView::npos; stop = text.find_first_of(kStops, done)) {
        at.column += static_cast<int32_t>(stop - done);
        done = stop + 1;
        if (text[stop] == u'\t') {
            tabs.push_back(at);
            at.column += std::max(tabWidth, 1);
        } else {
            at = {at.line + 1, 0};
            if (text.substr(stop, 2) == u"\r\n") ++done;
        }
    }
    return tabs;
}

} // namespace nib
