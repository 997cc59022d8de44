#include "records/Conversion.h"

#include <algorithm>

namespace nib {

namespace {

struct Kind {
    TextView name;
    ConversionRule (*rule)(TextView code);
};

/// The longer names first.
constexpr Kind kKinds[] = {
    {u"MCU", UpperRule}, {u"MCL", LowerRule},     {u"MCT", CapitalsRule}, {u"MD", NumberRule},
    {u"MR", NumberRule}, {u"ML", LeftNumberRule}, {u"MT", TimeRule},      {u"D", DateRule},
    {u"G", GroupRule},   {u"L", LengthRule},      {u"T", PieceRule},      {u"P", PatternRule},
};

} // namespace

Conversion::Conversion(TextView code) : code_(Trim(code))
{
    for (const Kind& kind : kKinds) {
        if (!TextView(code_).starts_with(kind.name)) continue;
        rule_ = kind.rule(TextView(code_).substr(kind.name.size()));
        return;
    }
}

std::optional<Text> Conversion::Show(TextView raw) const
{
    if (raw.empty() || code_.empty()) return Text(raw);
    return rule_ ? rule_.show(raw) : std::nullopt;
}

Text Conversion::Store(TextView typed, TextView before) const
{
    return typed.empty() || !rule_ ? Text(typed) : rule_.store(typed, before);
}

std::optional<int32_t> TakeNumber(TextView& text)
{
    const size_t count = static_cast<size_t>(std::find_if_not(text.begin(), text.end(), IsDigit) - text.begin());
    if (count == 0 || count > 9) return std::nullopt;
    const int32_t number = ToInt(text.substr(0, count));
    text.remove_prefix(count);
    return number;
}

std::optional<int64_t> WholeNumber(TextView raw)
{
    const bool below = raw.starts_with(u'-');
    if (below) raw.remove_prefix(1);
    constexpr size_t kMostDigits = 12;
    if (raw.empty() || raw.size() > kMostDigits || !std::all_of(raw.begin(), raw.end(), IsDigit)) return std::nullopt;
    int64_t number = 0;
    for (char16_t c : raw) number = number * 10 + (c - u'0');
    return below ? -number : number;
}

} // namespace nib
