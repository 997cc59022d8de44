#include "persistence/store/SettingsStore.h"

#include "base/Error.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>

namespace nib {

namespace {

constexpr double kBeyondAll = std::numeric_limits<double>::infinity();

bool IsDigit(char16_t c)
{
    return c >= u'0' && c <= u'9';
}

/// Upper-case hexadecimal; 16 for what is no digit.
uint64_t DigitValue(char16_t c)
{
    if (IsDigit(c)) return static_cast<uint64_t>(c - u'0');
    if (c >= u'A' && c <= u'F') return static_cast<uint64_t>(c - u'A') + 10;
    if (c >= u'a' && c <= u'f') return static_cast<uint64_t>(c - u'a') + 10;
    return 16;
}

/// What stands behind "&H" or "&O". Such numbers are bit patterns: 16 bits, or 32 when they need it or end with "&".
double PatternNumber(TextView text, uint64_t base)
{
    constexpr uint64_t kTooMuch = uint64_t{1} << 40;
    uint64_t value = 0;
    for (; !text.empty() && DigitValue(text.front()) < base; text.remove_prefix(1))
        value = std::min(value * base + DigitValue(text.front()), kTooMuch);
    if (value <= 0xFFFF && !text.starts_with(u'&')) return static_cast<int16_t>(value);
    if (value <= 0xFFFFFFFF) return static_cast<int32_t>(value);
    return kBeyondAll;
}

double DecimalNumber(TextView text)
{
    bool negative = text.starts_with(u'-');
    if (negative || text.starts_with(u'+')) text.remove_prefix(1);
    if (text.empty() || !(IsDigit(text.front()) || text.front() == u'.')) return 0;
    std::string digits;
    for (char16_t c : text.substr(0, text.find_first_not_of(u"0123456789.eE+-")))
        digits.push_back(static_cast<char>(c));
    double value = 0;
    auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (result.ec == std::errc::result_out_of_range) value = digits.find('-') == std::string::npos ? kBeyondAll : 0;
    return negative ? -value : value;
}

[[noreturn]] void BadIndex()
{
    throw Error{error_number::kBadIndex, u"Invalid index of a recent list"};
}

} // namespace

double LeadingNumber(TextView text)
{
    text.remove_prefix(std::min(text.find_first_not_of(u" \t\r\n"), text.size()));
    if (StartsWithNoCase(text.substr(0, 2), u"&H")) return PatternNumber(text.substr(2), 16);
    if (StartsWithNoCase(text.substr(0, 2), u"&O")) return PatternNumber(text.substr(2), 8);
    return DecimalNumber(text);
}

int64_t LeadingWhole(TextView text)
{
    constexpr double kMost = 1e15;
    return std::llrint(std::clamp(LeadingNumber(text), -kMost, kMost));
}

int32_t LeadingInt(TextView text)
{
    return static_cast<int32_t>(std::clamp<int64_t>(LeadingWhole(text), std::numeric_limits<int32_t>::min(),
                                                    std::numeric_limits<int32_t>::max()));
}

void clsRecentList::SetListSize(int32_t size)
{
    if (size < 0) return;
    size = std::min(size, maxListSize_);
    listSize_ = size;
    listCount_ = std::min(listCount_, size);
    if (static_cast<size_t>(size) > entries_.size()) entries_.resize(static_cast<size_t>(size));
}

const Text& clsRecentList::ListItem(int32_t index) const
{
    if (index < 1 || index > listCount_) BadIndex();
    return entries_[static_cast<size_t>(index - 1)];
}

int32_t clsRecentList::Find(TextView text) const
{
    for (int32_t i = 0; i < listCount_; ++i)
        if (AreSame(entries_[static_cast<size_t>(i)], text)) return i;
    return -1;
}

void clsRecentList::MoveToFront(int32_t from, TextView text)
{
    Text entry(text); // may be a view of an entry that is about to move
    std::rotate(entries_.begin(), entries_.begin() + from, entries_.begin() + from + 1);
    entries_.front() = std::move(entry);
}

void clsRecentList::AddItem(TextView text)
{
    if (listSize_ < 1) return;
    int32_t at = Find(text);
    if (at < 0) {
        listCount_ = std::min(listCount_ + 1, listSize_);
        at = listCount_ - 1;
    }
    MoveToFront(at, text);
}

void clsRecentList::RemoveItem(TextView text)
{
    int32_t at = Find(text);
    if (at < 0) return;
    std::rotate(entries_.begin() + at, entries_.begin() + at + 1, entries_.begin() + listCount_);
    --listCount_;
}

void clsRecentList::SetMaxListSize(int32_t size)
{
    if (size > 0) maxListSize_ = size;
}

} // namespace nib
