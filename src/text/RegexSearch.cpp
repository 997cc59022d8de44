#include "text/RegexSearch.h"

#include "base/Error.h"
#include "text/Units.h"

#include <algorithm>
#include <unicode/uregex.h>
#include <unicode/utf16.h>

namespace nib {

namespace {

using Clock = std::chrono::steady_clock;

/// What a line costs beside its units, in units, and what one of them may cost: many times what it does.
constexpr size_t kLineUnits = 16;
constexpr RegexSearch::Nanoseconds kEachUnit{40};

constexpr TextView kNotUnderstood{u"The expression is not understood here."};

struct FaultRow {
    UErrorCode code;
    TextView text;
};

constexpr FaultRow kFaults[] = {
    {U_REGEX_BAD_ESCAPE_SEQUENCE, u"There is no such escape."},
    {U_REGEX_PROPERTY_SYNTAX, u"There is no such class of characters."},
    {U_REGEX_MISMATCHED_PAREN, u"A parenthesis has no partner."},
    {U_REGEX_NUMBER_TOO_BIG, u"The number is too large."},
    {U_REGEX_BAD_INTERVAL, u"Braces hold one number, or two with a comma."},
    {U_REGEX_MAX_LT_MIN, u"The larger number stands before the smaller one."},
    {U_REGEX_INVALID_BACK_REF, u"There is no such group."},
    {U_REGEX_INVALID_CAPTURE_GROUP_NAME, u"There is no such group."},
    {U_REGEX_LOOK_BEHIND_LIMIT, u"What is looked for behind must have a greatest length."},
    {U_REGEX_MISSING_CLOSE_BRACKET, u"A bracket has no partner."},
    {U_REGEX_INVALID_RANGE, u"The range begins behind its end."},
    {U_REGEX_PATTERN_TOO_BIG, u"The expression is too large."},
};

bool IsDigitAt(TextView text, size_t at)
{
    return at < text.size() && units::IsDigit(text[at]);
}

Error TooLong()
{
    return {error_number::kSearch, u"The search was stopped: the expression takes too much time."};
}

Error NoGroup()
{
    return {error_number::kSearch, u"The replacement names a group that the expression does not have."};
}

} // namespace

Text PatternFault::Told() const
{
    return at > 0 ? u"Character " + Decimal(at) + u": " + Text(text) : Text(text);
}

void RegexSearch::Close::operator()(URegularExpression* expression) const
{
    uregex_close(expression);
}

RegexSearch::Handle RegexSearch::Opened(TextView expression, bool matchCase, std::optional<PatternFault>& fault)
{
    UErrorCode status = U_ZERO_ERROR;
    UParseError where{};
    Handle handle(uregex_open(expression.data(), static_cast<int32_t>(expression.size()),
                              matchCase ? 0 : UREGEX_CASE_INSENSITIVE, &where, &status));
    if (U_SUCCESS(status)) return handle;
    const auto row = std::find_if(std::begin(kFaults), std::end(kFaults), [&](auto& r) { return r.code == status; });
    fault = {std::clamp(where.offset, 0, static_cast<int32_t>(expression.size())),
             row == std::end(kFaults) ? kNotUnderstood : row->text};
    return {};
}

std::optional<PatternFault> RegexSearch::FaultOf(TextView expression)
{
    std::optional<PatternFault> fault;
    if (!expression.empty()) Opened(expression, true, fault);
    return fault;
}

RegexSearch::RegexSearch(TextView expression, FindOptions options) : wholeWord_(options.wholeWord)
{
    std::optional<PatternFault> fault;
    expression_ = Opened(expression, options.matchCase, fault);
    if (fault) throw Error{error_number::kSearch, fault->Told()};
    UErrorCode status = U_ZERO_ERROR;
    uregex_setMatchCallback(expression_.get(), &RegexSearch::MayGoOn, this, &status);
}

RegexSearch::~RegexSearch() = default;

bool RegexSearch::IsTired(Nanoseconds more) const
{
    return spent_ + more > patience_ + read_ * kEachUnit;
}

/// Called after some ten thousand steps within one line, and again.
int8_t RegexSearch::MayGoOn(const void* search, int32_t)
{
    const auto* self = static_cast<const RegexSearch*>(search);
    return self->IsTired(Clock::now() - self->started_) ? 0 : 1;
}

bool RegexSearch::Find(size_t from)
{
    UErrorCode status = U_ZERO_ERROR;
    const bool found = uregex_find(expression_.get(), static_cast<int32_t>(from), &status);
    if (status == U_REGEX_STACK_OVERFLOW)
        throw Error{error_number::kSearch, u"The search was stopped: the expression needs too much memory."};
    if (U_FAILURE(status)) throw TooLong();
    return found;
}

std::optional<ColumnRange> RegexSearch::In(TextView line, size_t from)
{
    started_ = Clock::now();
    UErrorCode status = U_ZERO_ERROR;
    uregex_setText(expression_.get(), line.data() ? line.data() : u"", static_cast<int32_t>(line.size()), &status);
    std::optional<ColumnRange> hit;
    const size_t first = from;
    const auto splitsPair = [&](size_t at) {
        return at > 0 && at < line.size() && U16_IS_TRAIL(line[at]) && U16_IS_LEAD(line[at - 1]);
    };
    while (!hit && from <= line.size() && Find(splitsPair(from) ? from + 1 : from)) {
        const size_t start = Group(0, false);
        const size_t end = Group(0, true);
        const bool alone =
            (start == 0 || !IsWordUnit(line[start - 1])) && (end == line.size() || !IsWordUnit(line[end]));
        if (!wholeWord_ || alone) hit = {static_cast<int32_t>(start), static_cast<int32_t>(end)};
        from = start + 1;
    }
    read_ += kLineUnits + (hit ? static_cast<size_t>(hit->last) : line.size()) - std::min(first, line.size());
    spent_ += Clock::now() - started_;
    if (IsTired({})) throw TooLong();
    return hit;
}

size_t RegexSearch::Group(int32_t group, bool end) const
{
    UErrorCode status = U_ZERO_ERROR;
    const int32_t at =
        end ? uregex_end(expression_.get(), group, &status) : uregex_start(expression_.get(), group, &status);
    return static_cast<size_t>(std::max(at, 0)); // a group that took no part is an empty one
}

Replacement RegexSearch::Prepared(TextView replacement) const
{
    UErrorCode status = U_ZERO_ERROR;
    const int32_t groups = uregex_groupCount(expression_.get(), &status);
    Replacement prepared;
    prepared.pieces.emplace_back();
    const auto addGroup = [&](int32_t group) {
        prepared.pieces.back().group = group;
        prepared.pieces.emplace_back();
    };
    for (size_t at = 0; at < replacement.size(); ++at) {
        const char16_t unit = replacement[at];
        if (unit == u'\\' && at + 1 < replacement.size()) {
            const char16_t escaped = replacement[++at];
            prepared.pieces.back().text += escaped == u'n' ? Text(u"\r\n") : Text(1, escaped);
        } else if (unit == u'\r' || unit == u'\n') {
            prepared.pieces.back().text += u"\r\n";
            if (replacement.substr(at, 2) == u"\r\n") ++at;
        } else if (unit != u'$') {
            prepared.pieces.back().text += unit;
        } else if (IsDigitAt(replacement, at + 1)) {
            // As many digits as there are groups for.
            int32_t group = replacement[++at] - u'0';
            while (IsDigitAt(replacement, at + 1) && group * 10 + replacement[at + 1] - u'0' <= groups)
                group = group * 10 + replacement[++at] - u'0';
            if (group > groups) throw NoGroup();
            addGroup(group);
        } else {
            const size_t end = replacement.find(u'}', at);
            if (replacement.substr(at + 1, 1) != u"{" || end == TextView::npos) throw NoGroup();
            const TextView name = replacement.substr(at + 2, end - at - 2);
            addGroup(
                uregex_groupNumberFromName(expression_.get(), name.data(), static_cast<int32_t>(name.size()), &status));
            if (U_FAILURE(status)) throw NoGroup();
            at = end;
        }
    }
    return prepared;
}

Text RegexSearch::Replaced(TextView line, size_t at, const Replacement& replacement)
{
    Text text;
    if (!In(line, at)) return text;
    for (const Replacement::Piece& piece : replacement.pieces) {
        text += piece.text;
        if (piece.group < 0) continue;
        const size_t start = Group(piece.group, false);
        text += line.substr(start, Group(piece.group, true) - start);
    }
    return text;
}

} // namespace nib
