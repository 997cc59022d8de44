#pragma once
// The line that is being scanned, with a map of its blanks and names, so that the ends of tokens are looked up and not
// searched.

#include "base/Text.h"
#include "text/Units.h"

#include <algorithm>
#include <bit>
#include <vector>

namespace nib {

class LexLine {
public:
    LexLine() { Take({}); }

    /// Copies the line; allocates only for one longer than all before.
    void Take(TextView text);

    int32_t Length() const { return length_; }
    /// Behind the end, where searches may look too, stands a mark.
    char16_t operator[](int32_t at) const { return units_[static_cast<size_t>(at)]; }
    TextView Piece(int32_t start, int32_t end) const
    {
        return {units_.data() + start, static_cast<size_t>(end - start)};
    }

    /// The first column from `at` on that holds no blank.
    int32_t BlanksEnd(int32_t at) const { return RunEnd(blanks_, at); }
    /// The first column from `at` on that holds no letter, digit, ".", "%" or "_".
    int32_t NameEnd(int32_t at) const { return RunEnd(names_, at); }
    /// The next value or subvalue mark, or the end of the line.
    int32_t MarkFrom(int32_t at) const
    {
        for (;;) {
            auto column = static_cast<uint32_t>(at);
            if (uint64_t rest = marks_[column >> 6] >> (column & 63)) return at + std::countr_zero(rest);
            at = static_cast<int32_t>((column | 63) + 1);
        }
    }
    /// The same, or `c` if it comes before.
    int32_t MarkOr(char16_t c, int32_t at) const
    {
        while ((*this)[at] != c && !IsBreak((*this)[at])) ++at;
        return at;
    }

    static constexpr bool IsBreak(char16_t c) { return c == kValueMark || c == kSubValueMark; }

private:
    using Bits = std::vector<uint64_t>; ///< one a column, up to the one behind the end, which is that of a mark

    static int32_t RunEnd(const Bits& bits, int32_t at)
    {
        for (;;) {
            auto column = static_cast<uint32_t>(at);
            int32_t run = std::countr_one(bits[column >> 6] >> (column & 63));
            at += run;
            if (run == 0 || (at & 63) != 0) return at;
        }
    }

    int32_t length_ = 0;
    std::vector<char16_t> units_;
    Bits blanks_;
    Bits names_;
    Bits marks_;
};

inline void LexLine::Take(TextView text)
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

} // namespace nib
