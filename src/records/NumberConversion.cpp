// Numbers that are stored without their decimal point, and seconds since midnight. Reckoned by digits, so that nothing
// is lost of long ones.

#include "base/Error.h"
#include "records/Conversion.h"

#include <algorithm>

namespace nib {

namespace {

constexpr size_t kMostDigits = 60;

/// Its digits without a point, and how many of them stand behind that.
struct DecimalNumber {
    bool below = false;
    Text digits;
    size_t behind = 0;

    bool IsZero() const { return digits.find_first_not_of(u'0') == Text::npos; }
};

std::optional<DecimalNumber> ReadDecimal(TextView text)
{
    DecimalNumber number;
    if (text.starts_with(u'-') || text.starts_with(u'+')) {
        number.below = text.front() == u'-';
        text.remove_prefix(1);
    }
    const size_t point = text.find(u'.');
    number.digits = text.substr(0, point);
    if (point != TextView::npos) {
        number.behind = text.size() - point - 1;
        number.digits += text.substr(point + 1);
    }
    const Text& digits = number.digits;
    if (digits.empty() || digits.size() > kMostDigits || !std::all_of(digits.begin(), digits.end(), IsDigit))
        return std::nullopt;
    return number;
}

/// To so many decimal places, halves away from zero.
void RoundTo(DecimalNumber& number, size_t places)
{
    if (number.digits.size() <= number.behind) number.digits.insert(0, number.behind + 1 - number.digits.size(), u'0');
    if (number.behind <= places) {
        number.digits.append(places - number.behind, u'0');
    } else {
        const size_t kept = number.digits.size() - (number.behind - places);
        const bool up = number.digits[kept] >= u'5';
        number.digits.resize(kept);
        size_t at = kept;
        while (up && at > 0 && number.digits[at - 1] == u'9') number.digits[--at] = u'0';
        if (up && at > 0)
            ++number.digits[at - 1];
        else if (up)
            number.digits.insert(0, 1, u'1');
    }
    number.behind = places;
}

/// Without noughts that say nothing.
Text Plain(const DecimalNumber& number)
{
    Text whole = number.digits.substr(0, number.digits.size() - number.behind);
    Text fraction = number.digits.substr(number.digits.size() - number.behind);
    whole.erase(0, whole.find_first_not_of(u'0'));
    fraction.erase(fraction.find_last_not_of(u'0') + 1);
    if (whole.empty()) whole = u"0";
    const bool below = number.below && !number.IsZero();
    return (below ? u"-" : u"") + whole + (fraction.empty() ? Text() : u"." + fraction);
}

struct NumberForm {
    size_t places = 0;
    size_t scale = 0;
    bool thousands = false;
    bool dollar = false;
    bool emptyZero = false;
    bool pointCounts = false; ///< a value with a decimal point is not scaled
    char16_t signs = 0;       ///< how a negative one is told; 0: by a minus in front
    char16_t fill = 0;
    size_t width = 0;
    bool left = false;
};

struct SignRow {
    char16_t letter;
    TextView before;
    TextView behind;
    TextView behindOthers;
    TextView beforeOthers;
};

constexpr SignRow kSigns[] = {{u'-', u"", u"-", u" ", u""},
                              {u'<', u"<", u">", u" ", u" "},
                              {u'C', u"", u"cr", u"  ", u""},
                              {u'D', u"", u"db", u"  ", u""}};

bool TakeFlag(char16_t c, NumberForm& form)
{
    switch (c) {
    case u',': form.thousands = true; return true;
    case u'$': form.dollar = true; return true;
    case u'Z': form.emptyZero = true; return true;
    case u'P': form.pointCounts = true; return true;
    default: break;
    }
    const bool sign =
        std::any_of(std::begin(kSigns), std::end(kSigns), [&](const SignRow& r) { return r.letter == c; });
    if (sign) form.signs = c;
    return sign;
}

std::optional<NumberForm> ParseForm(TextView code)
{
    NumberForm form;
    const auto digit = [&](size_t fallback) {
        if (code.empty() || !IsDigit(code.front())) return fallback;
        const auto value = static_cast<size_t>(code.front() - u'0');
        code.remove_prefix(1);
        return value;
    };
    form.places = digit(0);
    form.scale = digit(form.places);
    while (!code.empty() && TakeFlag(code.front(), form)) code.remove_prefix(1);
    if (code.empty()) return form;
    form.fill = code.front() == u'#' ? u' ' : code.front() == u'%' ? u'0' : code.front() == u'*' ? u'*' : char16_t();
    code.remove_prefix(1);
    const std::optional<int32_t> width = TakeNumber(code);
    constexpr int32_t kMostWidth = 100;
    if (form.fill == 0 || !width || *width > kMostWidth || !code.empty()) return std::nullopt;
    form.width = static_cast<size_t>(*width);
    return form;
}

std::optional<Text> ShowNumber(TextView raw, const NumberForm& form)
{
    std::optional<DecimalNumber> number = ReadDecimal(raw);
    if (!number) return std::nullopt;
    if (form.emptyZero && number->IsZero()) return Text();
    if (!form.pointCounts || raw.find(u'.') == TextView::npos) number->behind += form.scale;
    RoundTo(*number, form.places);
    const bool below = number->below && !number->IsZero();
    Text whole = number->digits.substr(0, number->digits.size() - form.places);
    whole.erase(0, std::min(whole.find_first_not_of(u'0'), whole.size() - 1));
    for (size_t at = whole.size(); form.thousands && at > 3; at -= 3) whole.insert(at - 3, 1, u',');
    if (form.places > 0) whole += u"." + number->digits.substr(number->digits.size() - form.places);
    if (form.dollar) whole.insert(0, 1, u'$');
    const auto row =
        std::find_if(std::begin(kSigns), std::end(kSigns), [&](const SignRow& r) { return r.letter == form.signs; });
    if (row != std::end(kSigns))
        whole = below ? Text(row->before) + whole + Text(row->behind)
                      : Text(row->beforeOthers) + whole + Text(row->behindOthers);
    else if (below)
        whole.insert(0, 1, u'-');
    if (whole.size() < form.width) whole.insert(form.left ? whole.size() : 0, form.width - whole.size(), form.fill);
    return whole;
}

/// What stands around a number that was typed, or was shown so: blanks, currency, fill, and how it is told to be below
/// nought, which becomes a minus in front.
Text Bared(TextView typed)
{
    Text text(Trim(typed));
    bool below = false;
    for (const auto& [before, behind] :
         {std::pair(u"<", u">"), {u"(", u")"}, {u"", u"-"}, {u"", u"CR"}, {u"", u"DB"}}) {
        const TextView front(before);
        const TextView back(behind);
        if (below || text.size() <= front.size() + back.size() || !text.starts_with(front) ||
            ToUpper(TextView(text).substr(text.size() - back.size())) != back)
            continue;
        below = true;
        text = text.substr(front.size(), text.size() - front.size() - back.size());
    }
    text.erase(0, text.find_first_not_of(u"* "));
    const bool minus = text.starts_with(u'-');
    if (minus) text.erase(0, 1);
    if (text.starts_with(u'$')) text.erase(0, 1);
    return (below != minus ? u"-" : u"") + text;
}

/// Commas stand between thousands or are a mistake: a person may have meant a decimal point.
bool WithoutThousands(Text& text)
{
    const size_t point = std::min(text.find(u'.'), text.size());
    for (size_t comma = text.rfind(u','); comma != Text::npos; comma = text.rfind(u',', comma - 1)) {
        if (comma == 0 || comma > point || (point - comma) % 4 != 0) return false;
    }
    const bool any = text.find(u',') != Text::npos;
    const size_t first = text.find(u',');
    for (size_t at = first; any && at + 4 < point; at += 4)
        if (text[at + 4] != u',') return false;
    std::erase(text, u',');
    return true;
}

Text StoreNumber(TextView typed, const NumberForm& form)
{
    Text text = Bared(typed);
    std::optional<DecimalNumber> number;
    if (WithoutThousands(text)) number = ReadDecimal(text);
    if (!number) throw Error(error_number::kInvalidCall, u"'" + Text(typed) + u"' is no number.");
    const size_t most = std::max(form.places, form.scale);
    const size_t finer = number->behind - std::min(number->behind, most);
    if (number->digits.find_first_not_of(u'0', number->digits.size() - finer) != Text::npos)
        throw Error(error_number::kInvalidCall, u"'" + Text(typed) + u"' has more than " +
                                                    Decimal(static_cast<int64_t>(most)) + u" decimal places.");
    RoundTo(*number, most);
    number->behind -= form.scale;
    return Plain(*number);
}

ConversionRule Numbers(TextView code, bool left)
{
    std::optional<NumberForm> form = ParseForm(code);
    if (!form) return {};
    form->left = left;
    return {[form = *form](TextView raw) { return ShowNumber(raw, form); },
            [form = *form](TextView typed, TextView) { return StoreNumber(typed, form); }};
}

} // namespace

ConversionRule NumberRule(TextView code)
{
    return Numbers(code, false);
}

ConversionRule LeftNumberRule(TextView code)
{
    return Numbers(code, true);
}

} // namespace nib
