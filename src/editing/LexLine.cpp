#include "editing/LexLine.h"

#include "text/Units.h"

#include <algorithm>

namespace nib {

void LexLine::Take(TextView text)
{
    constexpr size_t kReadAhead = units::kAtOnce;
    length_ = 0;
    if (units_.size() < text.size() + kReadAhead) {
        size_t room = text.size() * 2 + 4 * kReadAhead;
        blanks_.resize(room / 64 + 1);
        names_.resize(room / 64 + 1);
        marks_.resize(room / 64 + 1);
        units_.resize(room);
    }
    std::copy(text.begin(), text.end(), units_.begin());
    std::fill_n(units_.data() + text.size(), kReadAhead, kValueMark);
    length_ = static_cast<int32_t>(text.size());

    for (size_t word = 0; word <= text.size() / 64; ++word) {
        uint64_t blanks = 0;
        uint64_t names = 0;
        uint64_t marks = 0;
        for (size_t at = word * 64; at < word * 64 + 64 && at <= text.size(); at += units::kAtOnce) {
            units::Group group(units_.data() + at);
            blanks |= uint64_t{group.Equal(u' ')} << (at & 63);
            marks |= uint64_t{group.Breaks()} << (at & 63);
            names |= uint64_t{group.Names()} << (at & 63);
        }
        blanks_[word] = blanks;
        marks_[word] = marks;
        names_[word] = names;
    }
}

int32_t LexLine::MarkOr(char16_t c, int32_t at) const
{
    while ((*this)[at] != c && !IsBreak((*this)[at])) ++at;
    return at;
}

} // namespace nib
