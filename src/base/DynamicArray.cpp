#include "base/DynamicArray.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace nib {

namespace {

/// A stretch of the array's text.
struct Span {
    size_t begin = 0;
    size_t end = 0;
};

/// The levels of a path, outermost first, cut at the first 0.
struct Levels {
    std::array<int32_t, 3> numbers{};
    size_t depth = 0;

    explicit Levels(ElementPath at) : numbers{at.field, at.value, at.subValue}
    {
        while (depth < 3 && numbers[depth] != 0) ++depth;
    }
};

int32_t CountIn(TextView text, Span span, char16_t delimiter)
{
    if (span.begin == span.end) return 0;
    return static_cast<int32_t>(std::count(text.begin() + static_cast<std::ptrdiff_t>(span.begin),
                                           text.begin() + static_cast<std::ptrdiff_t>(span.end), delimiter)) +
           1;
}

/// Narrows `span` to its element `number`; false when there are fewer, and `missing` is by how many.
bool Enter(TextView text, Span& span, char16_t delimiter, int32_t number, int32_t& missing)
{
    size_t begin = span.begin;
    for (int32_t n = 1;; ++n) {
        size_t end = std::min(text.find(delimiter, begin), span.end);
        if (n == number) {
            span = {begin, end};
            return true;
        }
        if (end == span.end) {
            missing = number - n;
            return false;
        }
        begin = end + 1;
    }
}

/// The span of an element, made to exist by adding delimiters to `creating` when that is given. A level of -1 is one
/// past the last.
bool Find(TextView text, Text* creating, TextView delimiters, ElementPath at, Span& span, size_t& depth)
{
    Levels levels(at);
    span = {0, text.size()};
    for (depth = 0; depth < levels.depth && depth < delimiters.size(); ++depth) {
        char16_t delimiter = delimiters[depth];
        int32_t number = levels.numbers[depth];
        if (number < 0) number = CountIn(text, span, delimiter) + 1;
        int32_t missing = 0;
        if (Enter(text, span, delimiter, number, missing)) continue;
        if (!creating) return false;
        creating->insert(span.end, static_cast<size_t>(missing), delimiter);
        text = *creating;
        span.begin = span.end = span.end + static_cast<size_t>(missing);
    }
    return true;
}

} // namespace

void DynamicArray::Parse(TextView text, TextView delimiters)
{
    text_ = text;
    delimiters_ = delimiters.substr(0, 3);
}

int32_t DynamicArray::Count(ElementPath at) const
{
    Span span;
    size_t depth = 0;
    if (!Find(text_, nullptr, delimiters_, at, span, depth) || depth >= delimiters_.size()) return 0;
    return CountIn(text_, span, delimiters_[depth]);
}

Text DynamicArray::Extract(ElementPath at) const
{
    Span span;
    size_t depth = 0;
    if (!Find(text_, nullptr, delimiters_, at, span, depth)) return {};
    return text_.substr(span.begin, span.end - span.begin);
}

void DynamicArray::Append(TextView value, ElementPath at)
{
    Span span;
    size_t depth = 0;
    Find(text_, &text_, delimiters_, at, span, depth);
    if (depth >= delimiters_.size()) return;
    if (span.begin != span.end) text_.insert(span.end++, 1, delimiters_[depth]);
    text_.insert(span.end, value);
}

void DynamicArray::Replace(TextView value, ElementPath at)
{
    Span span;
    size_t depth = 0;
    Find(text_, &text_, delimiters_, at, span, depth);
    text_.replace(span.begin, span.end - span.begin, value);
}

} // namespace nib
