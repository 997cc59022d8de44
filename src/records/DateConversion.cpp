// Days counted from 31 December 1967, and how they are written.

#include "base/Error.h"
#include "records/Conversion.h"

#include <algorithm>
#include <chrono>
#include <vector>

namespace nib {

namespace {

using std::chrono::day;
using std::chrono::month;
using std::chrono::sys_days;
using std::chrono::year;
using std::chrono::year_month_day;

constexpr TextView kMonths[] = {u"JANUARY", u"FEBRUARY", u"MARCH",     u"APRIL",   u"MAY",      u"JUNE",
                                u"JULY",    u"AUGUST",   u"SEPTEMBER", u"OCTOBER", u"NOVEMBER", u"DECEMBER"};
constexpr TextView kWeekdays[] = {u"MONDAY", u"TUESDAY", u"WEDNESDAY", u"THURSDAY", u"FRIDAY", u"SATURDAY", u"SUNDAY"};
constexpr size_t kShortName = 3;
constexpr sys_days kDayZero = year(1967) / 12 / 31;
/// Of what is counted, so that years have at most four digits.
constexpr int64_t kFirstDay = (sys_days(year(1) / 1 / 1) - kDayZero).count();
constexpr int64_t kLastDay = (sys_days(year(9999) / 12 / 31) - kDayZero).count();
/// Two digits of a year from here on are of the last century.
constexpr int32_t kLastCentury = 30;
constexpr int64_t kExample = 21137;

enum class Part : uint8_t { Day, Month, MonthName, Year, DayOfYear, Weekday, WeekdayName, Quarter };

struct PartRow {
    TextView letters;
    Part part;
};

/// The longer ones first.
constexpr PartRow kParts[] = {{u"MA", Part::MonthName}, {u"WA", Part::WeekdayName}, {u"D", Part::Day},
                              {u"M", Part::Month},      {u"Y", Part::Year},         {u"J", Part::DayOfYear},
                              {u"W", Part::Weekday},    {u"Q", Part::Quarter}};

struct DateForm {
    std::vector<Part> parts; ///< none: day, short name of the month, year
    Text separator = u" ";
    size_t yearDigits = 4;
    bool european = false;
    bool smallLetters = false;

    bool YearComesFirst() const { return !parts.empty() && parts.front() == Part::Year; }
    bool DayComesFirst() const
    {
        for (Part part : parts)
            if (part == Part::Day || part == Part::Month) return part == Part::Day;
        return european;
    }
};

Text TwoDigits(int64_t number)
{
    return (number < 10 ? u"0" : u"") + Decimal(number);
}

/// Widths of the parts in brackets: that of the year counts.
bool TakeWidths(TextView code, DateForm& form)
{
    if (code.empty()) return true;
    if (code.front() != u'[' || code.back() != u']') return false;
    const std::vector<Text> widths = Split(code.substr(1, code.size() - 2), u',');
    for (size_t i = 0; i < widths.size(); ++i) {
        const std::optional<int64_t> width = WholeNumber(widths[i]);
        if (!width || *width < 0 || *width > 4) return false;
        if (i < form.parts.size() && form.parts[i] == Part::Year) form.yearDigits = static_cast<size_t>(*width);
    }
    return true;
}

std::optional<DateForm> ParseForm(TextView code)
{
    DateForm form;
    if (!code.empty() && code.front() >= u'0' && code.front() <= u'4') {
        form.yearDigits = static_cast<size_t>(code.front() - u'0');
        code.remove_prefix(1);
    }
    bool separated = false;
    if (!code.empty() && !IsAsciiLetter(code.front()) && !IsDigit(code.front()) && code.front() != u'[') {
        separated = code.front() != u' ';
        form.separator = code.front();
        code.remove_prefix(1);
    }
    while (!code.empty() && code.front() != u'[') {
        const auto row = std::find_if(std::begin(kParts), std::end(kParts),
                                      [&](const PartRow& r) { return code.starts_with(r.letters); });
        if (row != std::end(kParts))
            form.parts.push_back(row->part);
        else if (code.front() == u'E')
            form.european = true;
        else if (code.front() == u'L')
            form.smallLetters = true;
        else
            return std::nullopt;
        code.remove_prefix(row != std::end(kParts) ? row->letters.size() : 1);
    }
    if (form.parts.empty() && separated)
        form.parts = form.european ? std::vector{Part::Day, Part::Month, Part::Year}
                                   : std::vector{Part::Month, Part::Day, Part::Year};
    return TakeWidths(code, form) ? std::optional(form) : std::nullopt;
}

Text Name(TextView name, const DateForm& form, size_t length = TextView::npos)
{
    name = name.substr(0, length);
    return form.smallLetters ? Text(1, name.front()) + ToLower(name.substr(1)) : Text(name);
}

Text YearText(year_month_day date, const DateForm& form)
{
    Text text = Decimal(static_cast<int>(date.year()));
    if (text.size() < 4) text.insert(0, 4 - text.size(), u'0');
    return text.substr(text.size() - form.yearDigits);
}

Text PartText(Part part, year_month_day date, const DateForm& form)
{
    const auto monthNumber = static_cast<unsigned>(date.month());
    const sys_days dayNumber = date;
    const unsigned weekday = std::chrono::weekday(dayNumber).iso_encoding();
    switch (part) {
    case Part::Day: return TwoDigits(static_cast<unsigned>(date.day()));
    case Part::Month: return TwoDigits(monthNumber);
    case Part::MonthName: return Name(kMonths[monthNumber - 1], form);
    case Part::Year: return YearText(date, form);
    case Part::DayOfYear: return TwoDigits((dayNumber - sys_days(date.year() / 1 / 1)).count() + 1);
    case Part::Weekday: return Decimal(weekday);
    case Part::WeekdayName: return Name(kWeekdays[weekday - 1], form);
    case Part::Quarter: break;
    }
    return Decimal((monthNumber + 2) / 3);
}

std::optional<Text> ShowDate(TextView raw, const DateForm& form)
{
    const std::optional<int64_t> number = WholeNumber(raw);
    if (!number || *number < kFirstDay || *number > kLastDay) return std::nullopt;
    const year_month_day date = kDayZero + std::chrono::days(*number);
    if (form.parts.empty()) {
        const TextView name = kMonths[static_cast<unsigned>(date.month()) - 1];
        return PartText(Part::Day, date, form) + form.separator + Name(name, form, kShortName) + form.separator +
               YearText(date, form);
    }
    Text text;
    for (size_t i = 0; i < form.parts.size(); ++i)
        text += (i > 0 ? form.separator : Text()) + PartText(form.parts[i], date, form);
    return text;
}

/// The runs of digits and of letters, capital ones.
std::vector<Text> Words(TextView typed)
{
    std::vector<Text> words;
    char16_t before = u' ';
    for (char16_t c : ToUpper(typed)) {
        const bool digit = IsDigit(c);
        const bool word = digit || IsAsciiLetter(c);
        const bool goesOn = word && (digit ? IsDigit(before) : IsAsciiLetter(before));
        if (goesOn)
            words.back() += c;
        else if (word)
            words.emplace_back(1, c);
        before = c;
    }
    return words;
}

/// Six or eight digits are a date without anything in between.
void CutDigits(std::vector<Text>& words, bool yearFirst)
{
    if (words.size() != 1 || !IsDigit(words[0][0]) || (words[0].size() != 6 && words[0].size() != 8)) return;
    const Text all = words[0];
    const size_t ofYear = all.size() - 4;
    words = yearFirst ? std::vector{all.substr(0, ofYear), all.substr(ofYear, 2), all.substr(ofYear + 2)}
                      : std::vector{all.substr(0, 2), all.substr(2, 2), all.substr(4)};
}

/// 1 for January; 0 for a word that begins no name of a month.
int32_t MonthNamed(TextView word)
{
    if (word.size() < kShortName) return 0;
    const auto name =
        std::find_if(std::begin(kMonths), std::end(kMonths), [&](TextView n) { return n.starts_with(word); });
    return name == std::end(kMonths) ? 0 : static_cast<int32_t>(name - std::begin(kMonths)) + 1;
}

std::optional<year_month_day> ReadDate(TextView typed, const DateForm& form)
{
    std::vector<Text> words = Words(typed);
    CutDigits(words, form.YearComesFirst());
    if (words.size() != 3) return std::nullopt;
    int32_t monthNumber = 0;
    const auto named = std::find_if(words.begin(), words.end(), [](const Text& w) { return IsAsciiLetter(w[0]); });
    if (named != words.end()) {
        monthNumber = MonthNamed(*named);
        if (monthNumber == 0) return std::nullopt;
        words.erase(named);
    }
    if (!std::all_of(words.begin(), words.end(), [](const Text& w) { return IsDigit(w[0]) && w.size() <= 4; }))
        return std::nullopt;
    // Four digits can be nothing but a year.
    const bool yearFirst = words.front().size() > 2 || (form.YearComesFirst() && words.back().size() <= 2);
    const Text yearWord = yearFirst ? words.front() : words.back();
    words.erase(yearFirst ? words.begin() : words.end() - 1);
    const bool dayFirst = monthNumber == 0 && form.DayComesFirst() && !yearFirst;
    const int32_t dayNumber = ToInt(dayFirst ? words.front() : words.back());
    if (monthNumber == 0) monthNumber = ToInt(dayFirst ? words.back() : words.front());
    int32_t yearNumber = ToInt(yearWord);
    if (yearWord.size() <= 2) yearNumber += yearNumber < kLastCentury ? 2000 : 1900;
    const year_month_day date(year(yearNumber), month(static_cast<unsigned>(monthNumber)),
                              day(static_cast<unsigned>(dayNumber)));
    return date.ok() && yearNumber > 0 ? std::optional(date) : std::nullopt;
}

} // namespace

ConversionRule DateRule(TextView code)
{
    const std::optional<DateForm> form = ParseForm(code);
    if (!form) return {};
    const auto store = [form = *form](TextView typed, TextView) {
        if (const auto date = ReadDate(typed, form)) return Decimal((sys_days(*date) - kDayZero).count());
        throw Error(error_number::kInvalidCall,
                    u"'" + Text(typed) + u"' is no date such as " + *ShowDate(Decimal(kExample), form) + u".");
    };
    return {[form = *form](TextView raw) { return ShowDate(raw, form); }, store};
}

} // namespace nib
