#include "base/Text.h"

#include <unicode/uchar.h>
#include <unicode/ustring.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <charconv>
#include <limits>

namespace nib {

namespace {

using CaseFunction = int32_t (*)(char16_t*, int32_t, const char16_t*, int32_t, const char*, UErrorCode*);

Text MapCase(TextView text, CaseFunction map)
{
    if (text.empty()) return {};
    Text out(text.size(), u'\0');
    for (int attempt = 0; attempt < 2; ++attempt) {
        UErrorCode status = U_ZERO_ERROR;
        int32_t length = map(out.data(), static_cast<int32_t>(out.size()), text.data(),
                             static_cast<int32_t>(text.size()), "", &status);
        out.resize(static_cast<size_t>(length));
        if (status != U_BUFFER_OVERFLOW_ERROR) break;
    }
    return out;
}

} // namespace

Text FromUtf8(std::string_view bytes)
{
    Text out;
    out.reserve(bytes.size());
    auto size = static_cast<int64_t>(bytes.size());
    for (int64_t i = 0; i < size;) {
        const std::string_view ascii =
            bytes.substr(static_cast<size_t>(i), AsciiRun(bytes.substr(static_cast<size_t>(i))));
        const size_t old = out.size();
        out.resize(old + ascii.size());
        std::copy(ascii.begin(), ascii.end(), out.data() + old);
        i += static_cast<int64_t>(ascii.size());
        if (i == size) break;
        UChar32 c = 0;
        U8_NEXT_OR_FFFD(bytes.data(), i, size, c);
        if (U_IS_BMP(c)) {
            out.push_back(static_cast<char16_t>(c));
        } else {
            out.push_back(U16_LEAD(c));
            out.push_back(U16_TRAIL(c));
        }
    }
    return out;
}

std::string ToUtf8(TextView text)
{
    std::string out;
    out.reserve(text.size() + text.size() / 8);
    size_t i = 0;
    while (i < text.size()) {
        UChar32 c = 0;
        U16_NEXT_OR_FFFD(text.data(), i, text.size(), c);
        uint8_t buffer[4];
        int32_t n = 0;
        U8_APPEND_UNSAFE(buffer, n, c);
        out.append(reinterpret_cast<char*>(buffer), static_cast<size_t>(n));
    }
    return out;
}

bool IsValidUtf8(std::string_view bytes)
{
    auto size = static_cast<int64_t>(bytes.size());
    for (auto i = static_cast<int64_t>(AsciiRun(bytes)); i < size;
         i += static_cast<int64_t>(AsciiRun(bytes.substr(static_cast<size_t>(i))))) {
        UChar32 c = 0;
        U8_NEXT(bytes.data(), i, size, c);
        if (c < 0) return false;
    }
    return true;
}

Text ToUpper(TextView text)
{
    return MapCase(text, u_strToUpper);
}

Text ToLower(TextView text)
{
    return MapCase(text, u_strToLower);
}

bool EqualsNoCase(TextView a, TextView b)
{
    // An empty view may have no address, which is an error to ICU and would compare as equal.
    if (a.empty() || b.empty()) return a.empty() && b.empty();
    UErrorCode status = U_ZERO_ERROR;
    return u_strCaseCompare(a.data(), static_cast<int32_t>(a.size()), b.data(), static_cast<int32_t>(b.size()),
                            U_FOLD_CASE_DEFAULT, &status) == 0;
}

bool StartsWithNoCase(TextView text, TextView prefix)
{
    return text.size() >= prefix.size() && EqualsNoCase(text.substr(0, prefix.size()), prefix);
}

TextView Trim(TextView text)
{
    size_t first = text.find_first_not_of(u' ');
    if (first == TextView::npos) return {};
    return text.substr(first, text.find_last_not_of(u' ') - first + 1);
}

Text Replace(TextView text, TextView from, TextView to)
{
    size_t hits = 0;
    for (size_t hit = text.find(from); hit != TextView::npos; hit = text.find(from, hit + from.size())) ++hits;
    Text out;
    out.reserve(text.size() + hits * to.size() - hits * from.size());
    size_t at = 0;
    for (size_t hit = text.find(from); hit != TextView::npos; hit = text.find(from, at)) {
        out.append(text.substr(at, hit - at)).append(to);
        at = hit + from.size();
    }
    return out.append(text.substr(at));
}

std::vector<Text> Split(TextView text, char16_t delimiter)
{
    std::vector<Text> fields;
    if (text.empty()) return fields;
    for (size_t at = 0;;) {
        size_t end = text.find(delimiter, at);
        fields.emplace_back(text.substr(at, end == TextView::npos ? end : end - at));
        if (end == TextView::npos) return fields;
        at = end + 1;
    }
}

int32_t CountFields(TextView text, char16_t delimiter)
{
    if (text.empty()) return 0;
    return static_cast<int32_t>(std::count(text.begin(), text.end(), delimiter)) + 1;
}

TextView Field(TextView text, char16_t delimiter, int32_t number)
{
    for (int32_t n = 1;; ++n) {
        size_t end = text.find(delimiter);
        if (n == number) return text.substr(0, end);
        if (end == TextView::npos) return {};
        text.remove_prefix(end + 1);
    }
}

Text DoubleAmpersands(TextView text)
{
    return Replace(text, u"&", u"&&");
}

Text Decimal(int64_t number)
{
    char buffer[24];
    auto end = std::to_chars(buffer, buffer + sizeof buffer, number).ptr;
    return Text(buffer, end);
}

Text Hex(int32_t number)
{
    char buffer[16];
    auto end = std::to_chars(buffer, buffer + sizeof buffer, static_cast<uint32_t>(number), 16).ptr;
    std::transform(buffer, end, buffer, [](char c) { return c >= 'a' ? static_cast<char>(c - 'a' + 'A') : c; });
    return Text(buffer, end);
}

int32_t ToInt(TextView text)
{
    text = Trim(text);
    bool negative = !text.empty() && text.front() == u'-';
    if (!text.empty() && (text.front() == u'-' || text.front() == u'+')) text.remove_prefix(1);
    int64_t value = 0;
    for (char16_t c : text) {
        if (c < u'0' || c > u'9') break;
        value = std::min<int64_t>(value * 10 + (c - u'0'), int64_t{1} << 33);
    }
    value = negative ? -value : value;
    return static_cast<int32_t>(
        std::clamp<int64_t>(value, std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max()));
}

} // namespace nib
