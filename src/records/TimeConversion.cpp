// Seconds since midnight, and how they are written.

#include "base/Error.h"
#include "records/Conversion.h"

#include <algorithm>

namespace nib {

namespace {

constexpr int64_t kMinute = 60;
constexpr int64_t kHour = 60 * kMinute;
constexpr int64_t kNoon = 12;
constexpr int64_t kDayHours = 24;
/// More are shown, such as of sums, but nobody means more.
constexpr int32_t kMostHours = 999;
constexpr int64_t kExample = 13 * kHour + 45 * kMinute;
constexpr size_t kMostParts = 3;

struct TimeForm {
    bool halves = false; ///< of the day, told by letters
    bool seconds = false;
    char16_t separator = u':';
};

std::optional<TimeForm> ParseForm(TextView code)
{
    TimeForm form;
    for (; !code.empty() && (code.front() == u'H' || code.front() == u'S' || code.front() == u's');
         code.remove_prefix(1))
        (code.front() == u'H' ? form.halves : form.seconds) = true;
    if (!code.empty()) form.separator = code.front();
    return code.size() > 1 || IsDigit(form.separator) ? std::nullopt : std::optional(form);
}

Text TwoDigits(int64_t number)
{
    return (number < 10 ? u"0" : u"") + Decimal(number);
}

std::optional<Text> ShowTime(TextView raw, const TimeForm& form)
{
    const std::optional<int64_t> number = WholeNumber(raw);
    if (!number || *number < 0 || *number / kHour > kMostHours) return std::nullopt;
    int64_t hours = *number / kHour;
    const bool late = hours % kDayHours >= kNoon;
    if (form.halves) hours = (hours + kNoon - 1) % kNoon + 1;
    Text text = TwoDigits(hours) + form.separator + TwoDigits(*number % kHour / kMinute);
    if (form.seconds) text += form.separator + TwoDigits(*number % kMinute);
    return text + (form.halves ? late ? u"pm" : u"am" : u"");
}

/// Cuts "am" or "pm" off the end.
char16_t TakeHalf(Text& text)
{
    const Text end = ToLower(TextView(text).substr(text.size() < 2 ? 0 : text.size() - 2));
    if (end != u"am" && end != u"pm") return 0;
    text = Trim(TextView(text).substr(0, text.size() - 2));
    return end.front();
}

std::optional<int64_t> ReadTime(TextView typed, const TimeForm& form)
{
    Text text(Trim(typed));
    const char16_t half = TakeHalf(text);
    std::replace(text.begin(), text.end(), form.separator, u':');
    std::replace(text.begin(), text.end(), u'.', u':');
    int64_t parts[kMostParts] = {};
    size_t count = 0;
    for (TextView rest = text; count < kMostParts;) {
        const std::optional<int32_t> number = TakeNumber(rest);
        if (!number) return std::nullopt;
        parts[count++] = *number;
        if (rest.empty()) break;
        if (rest.front() != u':' || count == kMostParts) return std::nullopt;
        rest.remove_prefix(1);
    }
    auto [hours, minutes, seconds] = parts;
    if (half != 0 && (hours < 1 || hours > kNoon)) return std::nullopt;
    if (half != 0) hours = hours % kNoon + (half == u'p' ? kNoon : 0);
    if (minutes >= 60 || seconds >= 60 || hours > kMostHours) return std::nullopt;
    return hours * kHour + minutes * kMinute + seconds;
}

} // namespace

ConversionRule TimeRule(TextView code)
{
    const std::optional<TimeForm> form = ParseForm(code);
    if (!form) return {};
    const auto store = [form = *form](TextView typed, TextView) {
        if (const auto seconds = ReadTime(typed, form)) return Decimal(*seconds);
        throw Error(error_number::kInvalidCall,
                    u"'" + Text(typed) + u"' is no time such as " + *ShowTime(Decimal(kExample), form) + u".");
    };
    return {[form = *form](TextView raw) { return ShowTime(raw, form); }, store};
}

} // namespace nib
