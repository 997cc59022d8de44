#include "persistence/store/LeadingNumber.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace nib {

double LeadingNumber(TextView text)
{
    text.remove_prefix(std::min(text.find_first_not_of(u" \t"), text.size()));
    const bool negative = text.starts_with(u'-');
    if (negative || text.starts_with(u'+')) text.remove_prefix(1);

    const TextView number = text.substr(0, text.find_first_not_of(u"0123456789.eE+-"));
    const std::string digits(number.begin(), number.end());
    double value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (error == std::errc::invalid_argument || digits.starts_with('-')) return 0;
    if (error == std::errc::result_out_of_range) {
        const bool tiny = std::string_view(digits.data(), end).find('-') != std::string_view::npos;
        value = tiny ? 0 : std::numeric_limits<double>::max();
    }
    return negative ? -value : value;
}

int32_t LeadingInt(TextView text)
{
    constexpr double kLowest = std::numeric_limits<int32_t>::min();
    constexpr double kHighest = std::numeric_limits<int32_t>::max();
    return static_cast<int32_t>(std::clamp(std::nearbyint(LeadingNumber(text)), kLowest, kHighest));
}

} // namespace nib
