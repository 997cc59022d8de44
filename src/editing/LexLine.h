#pragma once
// The line that is being scanned, with a map of its blanks and names, so that the ends of tokens are looked up and not
// searched.

#include "base/Text.h"
#include "text/Units.h"

#include <algorithm>
#include <bit>
#include <span>
#include <vector>

namespace nib {

class LexLine {
public:
    LexLine() { Take(TextView()); }

    /// Copies the line; allocates only for one longer than all before.
    void Take(TextView text);
    void Take(std::span<const uint8_t> text);

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

    void MakeRoom(size_t length);
    void Map(size_t at, const units::Group& group)
    {
        blanks_[at >> 6] |= uint64_t{group.Equal(u' ')} << (at & 63);
        names_[at >> 6] |= uint64_t{group.Names()} << (at & 63);
        marks_[at >> 6] |= uint64_t{group.Breaks()} << (at & 63);
    }

    int32_t length_ = 0;
    std::vector<char16_t> units_;
    Bits blanks_;
    Bits names_;
    Bits marks_;
};

/// For so many units and the mark behind them, and for whole groups.
inline void LexLine::MakeRoom(size_t length)
{
    length_ = 0;
    if (units_.size() < length + units::kAtOnce) {
        const size_t room = length + length / 2 + 4 * units::kAtOnce;
        blanks_.resize(room / 64 + 1);
        names_.resize(room / 64 + 1);
        marks_.resize(room / 64 + 1);
        units_.resize(room);
    }
    length_ = static_cast<int32_t>(length);
    for (size_t word = 0; word <= length / 64; ++word) blanks_[word] = names_[word] = marks_[word] = 0;
}

inline void LexLine::Take(TextView text)
{
    MakeRoom(text.size());
    std::copy(text.begin(), text.end(), units_.begin());
    std::fill_n(units_.data() + text.size(), units::kAtOnce, kValueMark);
    for (size_t at = 0; at <= text.size(); at += units::kAtOnce) Map(at, units::Group(units_.data() + at));
}

inline void LexLine::Take(std::span<const uint8_t> text)
{
    MakeRoom(text.size());
    size_t at = 0;
    for (; at + units::kAtOnce <= text.size(); at += units::kAtOnce) {
        units::Widen(text.data() + at, units_.data() + at);
        Map(at, units::Group(units_.data() + at));
    }
    std::copy(text.begin() + static_cast<std::ptrdiff_t>(at), text.end(), units_.data() + at);
    std::fill_n(units_.data() + text.size(), units::kAtOnce, kValueMark);
    Map(at, units::Group(units_.data() + at));
}

} // namespace nib
