#include "editing/operations/CaseConversion.h"

#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include <algorithm>

namespace nib {

namespace {

enum class LetterCase { Open, Upper, Lower, Capitals };

constexpr size_t kTellingLength = 80;

LetterCase CaseAfter(TextView part)
{
    part = part.substr(0, kTellingLength);
    Text upper = ToUpper(part);
    Text lower = ToLower(part);
    if (upper == lower) return LetterCase::Open;
    if (part == upper) return LetterCase::Lower;
    return part == lower ? LetterCase::Capitals : LetterCase::Upper;
}

bool IsWordPart(UChar32 c)
{
    return u_isalnum(c) || (U_GET_GC_MASK(c) & U_GC_M_MASK);
}

Text ToCapitals(TextView part)
{
    Text text;
    text.reserve(part.size());
    Text lower = ToLower(part);
    auto length = static_cast<int32_t>(lower.size());
    bool inWord = false;
    for (int32_t at = 0; at < length;) {
        int32_t from = at;
        UChar32 c = 0;
        U16_NEXT(lower.data(), at, length, c);
        TextView unit = TextView(lower).substr(static_cast<size_t>(from), static_cast<size_t>(at - from));
        bool word = IsWordPart(c);
        if (word && !inWord)
            text += ToUpper(unit);
        else
            text += unit;
        inWord = word;
    }
    return text;
}

Text Converted(TextView part, LetterCase to)
{
    switch (to) {
    case LetterCase::Upper: return ToUpper(part);
    case LetterCase::Lower: return ToLower(part);
    case LetterCase::Capitals: return ToCapitals(part);
    case LetterCase::Open: break;
    }
    return Text(part);
}

/// Behind the closing quote; a string that stays open ends with its line.
size_t QuotedEnd(TextView text, size_t quote)
{
    const char16_t ends[] = {text[quote], u'\r'};
    size_t end = text.find_first_of(TextView(ends, 2), quote + 1);
    if (end == TextView::npos) return text.size();
    return text[end] == u'\r' ? end : end + 1;
}

} // namespace

std::optional<Text> WithToggledCase(TextView text)
{
    Text result;
    result.reserve(text.size());
    LetterCase to = LetterCase::Open;
    bool changed = false;
    for (size_t at = 0; at < text.size();) {
        size_t quote = std::min(text.find_first_of(u"\"'\\", at), text.size());
        TextView part = text.substr(at, quote - at);
        if (to == LetterCase::Open) to = CaseAfter(part);
        Text converted = Converted(part, to);
        changed = changed || converted != part;
        result += converted;
        at = quote < text.size() ? QuotedEnd(text, quote) : quote;
        result += text.substr(quote, at - quote);
    }
    if (!changed) return std::nullopt;
    return result;
}

} // namespace nib
