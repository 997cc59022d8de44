// Conversions of texts: letters, pieces of a value, lengths and patterns.

#include "base/Error.h"
#include "records/Conversion.h"

#include <algorithm>
#include <vector>

namespace nib {

namespace {

using Change = std::function<Text(TextView)>;

/// Shown and stored in the same letters.
ConversionRule Letters(TextView code, const Change& change)
{
    if (!code.empty()) return {};
    return {[change](TextView raw) { return std::optional(change(raw)); },
            [change](TextView typed, TextView) { return change(typed); }};
}

Text Capitals(TextView text)
{
    Text all = ToLower(text);
    bool first = true;
    for (char16_t& c : all) {
        const Text upper = ToUpper(TextView(&c, 1));
        const bool letter = upper != TextView(&c, 1) || ToLower(upper) != upper;
        if (letter && first && upper.size() == 1) c = upper[0];
        first = !letter;
    }
    return all;
}

/// Shown of a value is what `part` takes of it: only one that is shown whole can be replaced.
ConversionRule Parts(TextView code, const Change& part)
{
    const auto store = [part, name = Text(code)](TextView typed, TextView before) {
        if (part(before) != before)
            throw Error(error_number::kInvalidCall,
                        u"Only a part of this value is shown, by " + name + u". It can be changed in the text.");
        if (part(typed) != typed)
            throw Error(error_number::kInvalidCall, u"'" + Text(typed) + u"' is not of the form " + name + u".");
        return Text(typed);
    };
    return {[part](TextView raw) { return std::optional(part(raw)); }, store};
}

/// A value that does not fit is shown as it is.
ConversionRule Fitting(TextView code, const std::function<bool(TextView)>& fits)
{
    const auto store = [fits, name = Text(code)](TextView typed, TextView) {
        if (fits(typed)) return Text(typed);
        throw Error(error_number::kInvalidCall, u"'" + Text(typed) + u"' is not of the form " + name + u".");
    };
    return {[fits](TextView raw) { return fits(raw) ? std::optional(Text(raw)) : std::nullopt; }, store};
}

// Patterns: counted letters, digits and characters, and literals between them

/// Nobody writes a pattern for a longer value.
constexpr size_t kMostMatched = 1000;

struct PatternPart {
    int32_t count = 1; ///< 0: any number of them
    char16_t kind = 0; ///< A, N or X; 0 for a literal
    Text literal;

    bool Takes(char16_t c) const { return kind == u'X' || (kind == u'N' ? IsDigit(c) : IsAsciiLetter(c)); }
};
using Pattern = std::vector<PatternPart>;

std::optional<Pattern> ParsePattern(TextView text)
{
    Pattern pattern;
    constexpr size_t kMostParts = 50;
    while (!text.empty() && pattern.size() < kMostParts) {
        PatternPart part;
        TextView rest = text;
        const std::optional<int32_t> count = TakeNumber(rest);
        if (count && !rest.empty() && TextView(u"ANX").find(rest.front()) != TextView::npos) {
            part.count = *count;
            part.kind = rest.front();
            text = rest.substr(1);
        } else if (text.front() == u'\'' || text.front() == u'"') {
            const size_t end = text.find(text.front(), 1);
            if (end == TextView::npos) return std::nullopt;
            part.literal = text.substr(1, end - 1);
            text.remove_prefix(end + 1);
        } else {
            part.literal = text.front();
            text.remove_prefix(1);
        }
        pattern.push_back(std::move(part));
    }
    return text.empty() && !pattern.empty() ? std::optional(std::move(pattern)) : std::nullopt;
}

/// All ends that the parts so far can have, so that no value takes longer than its length times the parts.
bool Matches(const Pattern& pattern, TextView value)
{
    if (value.size() > kMostMatched) return false;
    std::vector<bool> ends(value.size() + 1);
    ends[0] = true;
    for (const PatternPart& part : pattern) {
        std::vector<bool> next(value.size() + 1);
        for (size_t at = 0; at <= value.size(); ++at) {
            if (!ends[at]) continue;
            if (part.kind == 0) {
                if (value.substr(at).starts_with(part.literal)) next[at + part.literal.size()] = true;
                continue;
            }
            const auto count = static_cast<size_t>(part.count);
            const size_t most = count == 0 ? value.size() - at : std::min(count, value.size() - at);
            size_t taken = 0;
            if (count == 0) next[at] = true;
            while (taken < most && part.Takes(value[at + taken])) {
                ++taken;
                if (count == 0 || taken == count) next[at + taken] = true;
                if (count == 0 && ends[at + taken]) break; // which goes on from there itself
            }
        }
        ends = std::move(next);
    }
    return ends.back();
}

} // namespace

ConversionRule UpperRule(TextView code)
{
    return Letters(code, ToUpper);
}

ConversionRule LowerRule(TextView code)
{
    return Letters(code, ToLower);
}

ConversionRule CapitalsRule(TextView code)
{
    return Letters(code, Capitals);
}

ConversionRule GroupRule(TextView code)
{
    const Text name = u"G" + Text(code);
    const int32_t skipped = TakeNumber(code).value_or(0);
    if (code.size() < 2 || IsDigit(code.front())) return {};
    const char16_t delimiter = code.front();
    code.remove_prefix(1);
    const std::optional<int32_t> count = TakeNumber(code);
    if (!count || *count == 0 || !code.empty()) return {};
    return Parts(name, [=](TextView value) {
        size_t start = 0;
        for (int32_t i = 0; i < skipped; ++i) {
            const size_t end = value.find(delimiter, start);
            if (end == TextView::npos) return Text();
            start = end + 1;
        }
        size_t end = start;
        for (int32_t i = 0; i < *count && end != TextView::npos; ++i)
            end = value.find(delimiter, i > 0 ? end + 1 : end);
        return Text(value.substr(start, end == TextView::npos ? end : end - start));
    });
}

ConversionRule LengthRule(TextView code)
{
    const Text name = u"L" + Text(code);
    const std::optional<int32_t> first = code.empty() ? std::optional(0) : TakeNumber(code);
    if (first == 0 && code.empty())
        return Parts(name, [](TextView value) { return Decimal(static_cast<int64_t>(value.size())); });
    int32_t least = 0;
    std::optional<int32_t> most = first;
    if (first && code.starts_with(u',')) {
        code.remove_prefix(1);
        least = *first;
        most = TakeNumber(code);
    }
    if (!most || !code.empty()) return {};
    return Fitting(name, [=](TextView value) {
        const auto length = static_cast<int64_t>(value.size());
        return length >= least && length <= *most;
    });
}

ConversionRule PieceRule(TextView code)
{
    const Text name = u"T" + Text(code);
    const std::optional<int32_t> first = TakeNumber(code);
    if (first && code.empty())
        return Parts(name, [last = static_cast<size_t>(*first)](TextView value) {
            return Text(value.substr(value.size() - std::min(last, value.size())));
        });
    if (!first || *first == 0 || !code.starts_with(u',')) return {};
    code.remove_prefix(1);
    const std::optional<int32_t> count = TakeNumber(code);
    if (!count || !code.empty()) return {};
    return Parts(name, [from = static_cast<size_t>(*first - 1), length = static_cast<size_t>(*count)](TextView value) {
        return Text(value.substr(std::min(from, value.size()), length));
    });
}

ConversionRule PatternRule(TextView code)
{
    const Text name = u"P" + Text(code);
    std::vector<Pattern> patterns;
    for (TextView choice : Split(code, u';')) {
        if (choice.size() < 2 || choice.front() != u'(' || choice.back() != u')') return {};
        std::optional<Pattern> pattern = ParsePattern(choice.substr(1, choice.size() - 2));
        if (!pattern) return {};
        patterns.push_back(std::move(*pattern));
    }
    if (patterns.empty()) return {};
    return Fitting(name, [patterns](TextView value) {
        return std::any_of(patterns.begin(), patterns.end(), [&](const Pattern& p) { return Matches(p, value); });
    });
}

} // namespace nib
