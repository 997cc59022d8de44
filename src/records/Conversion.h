#pragma once
#include "base/Text.h"

#include <functional>
#include <optional>

namespace nib {

/// What a code means. Neither is asked about an empty value, which stays one.
struct ConversionRule {
    std::function<std::optional<Text>(TextView raw)> show;
    std::function<Text(TextView typed, TextView before)> store;

    explicit operator bool() const { return show != nullptr; }
};

/// How a dictionary says that values are shown: a code such as D4/ or MD2,.
class Conversion {
public:
    Conversion() = default; ///< none: values are shown as they are
    explicit Conversion(TextView code);

    const Text& Code() const { return code_; }
    /// False for a code of which nothing is known; then values are shown as they are.
    bool IsKnown() const { return code_.empty() || rule_; }
    bool Converts() const { return static_cast<bool>(rule_); }
    /// Nothing where the code cannot be meant for such a value, which then is shown as it is.
    std::optional<Text> Show(TextView raw) const;
    /// What is stored for a text that was typed in place of the value `before`. Throws Error with the reason for the
    /// user where it means no value.
    Text Store(TextView typed, TextView before) const;

private:
    Text code_;
    ConversionRule rule_;
};

// Rules by what follows the letters that name their kind; none where that is not understood.

ConversionRule DateRule(TextView code);
ConversionRule NumberRule(TextView code);
ConversionRule LeftNumberRule(TextView code);
ConversionRule TimeRule(TextView code);
ConversionRule UpperRule(TextView code);
ConversionRule LowerRule(TextView code);
ConversionRule CapitalsRule(TextView code);
ConversionRule GroupRule(TextView code);
ConversionRule LengthRule(TextView code);
ConversionRule PieceRule(TextView code);
ConversionRule PatternRule(TextView code);

inline constexpr bool IsDigit(char16_t c)
{
    return c >= u'0' && c <= u'9';
}
inline constexpr bool IsAsciiLetter(char16_t c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}
/// Cuts the digits off the front of `text`; at most nine are a number, and none are none.
std::optional<int32_t> TakeNumber(TextView& text);
/// The whole number that a value is, if it is one of at most twelve digits.
std::optional<int64_t> WholeNumber(TextView raw);

} // namespace nib
