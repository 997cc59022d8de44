#include "language/account/ProgramShape.h"

#include "language/Dialect.h"
#include "text/Units.h"

#include <algorithm>

namespace nib {

namespace {

constexpr int32_t kLinesLookedAt = 60;

/// Ends and beginnings of such names, in capitals.
constexpr TextView kEnds[] = {u".OUT", u".DIC", u".DICT", u".O", u"_DICT"};
constexpr TextView kWhole[] = {u"VOC",         u"MD",     u"NEWVOC", u"DICT.DICT",    u"DIR_DICT",
                               u"ERRMSG",      u"&HOLD&", u"$HOLD",  u"&SAVEDLISTS&", u"SAVEDLISTS",
                               u"$SAVEDLISTS", u"&COMO&", u"$COMO",  u"POINTER-FILE"};

enum class Shape : uint8_t { Nothing, Comment, Other, Likely, Sure };

/// Code that begins an item in one way only.
bool IsHead(TextView word)
{
    constexpr TextView kHeads[] = {u"SUBROUTINE", u"PROGRAM", u"FUNCTION"};
    return std::any_of(std::begin(kHeads), std::end(kHeads), [&](TextView head) { return EqualsNoCase(word, head); });
}

/// Behind what a value can be given to: "=", "+=", "<1,2> =", "(I) =".
bool IsAssignment(TextView rest)
{
    rest = Trim(rest);
    if (rest.starts_with(u'(') || rest.starts_with(u'<')) {
        const size_t close = rest.find(rest.front() == u'(' ? u')' : u'>');
        if (close == TextView::npos) return false;
        rest = Trim(rest.substr(close + 1));
    }
    if (rest.size() > 1 && rest[1] == u'=' && TextView(u"+-*/:").find(rest[0]) != TextView::npos) return true;
    return rest.starts_with(u'=');
}

Shape ShapeOf(TextView line, const Dialect& dialect)
{
    const size_t start = line.find_first_not_of(u" \t");
    if (start == TextView::npos) return Shape::Nothing;
    line.remove_prefix(start);
    const char16_t first = line.front();
    if (first == u'*' || first == u'!' || line.starts_with(u"/*")) return Shape::Comment;
    if (first == u'$' || first == u'#')
        return line.size() > 3 && dialect.BeginsName(line[1]) ? Shape::Likely : Shape::Other;
    if (units::IsDigit(first)) { // a label, unless it is a number
        const size_t end = line.find_first_not_of(u"0123456789");
        if (end == TextView::npos) return Shape::Other;
        if (line[end] == u':' || line[end] == u' ')
            return line.size() > end + 1 ? ShapeOf(line.substr(end + 1), dialect) : Shape::Likely;
        return Shape::Other;
    }
    if (!dialect.BeginsName(first)) return Shape::Other;
    size_t end = 1;
    while (end < line.size() && dialect.IsInName(line[end])) ++end;
    const TextView word = line.substr(0, end);
    const TextView rest = line.substr(end);
    if (IsHead(word) && !Trim(rest).empty()) return Shape::Sure;
    if (IsAssignment(rest)) return Shape::Sure;
    if (rest.starts_with(u':')) return Shape::Likely;
    return dialect.Find(word, WordKind::Statement) ? Shape::Likely : Shape::Other;
}

} // namespace

bool LooksLikeProgram(TextView text, const Dialect& dialect)
{
    int32_t lines = 0;
    int32_t likely = 0;
    bool sure = false;
    for (size_t at = 0; at < text.size() && lines < kLinesLookedAt;) {
        const size_t end = std::min(text.find_first_of(u"\r\n", at), text.size());
        const Shape shape = ShapeOf(text.substr(at, end - at), dialect);
        at = end + 1;
        if (shape == Shape::Nothing || shape == Shape::Comment) continue;
        if (lines == 0 && shape == Shape::Sure) sure = true;
        ++lines;
        likely += shape == Shape::Other ? 0 : 1;
        sure = sure || shape == Shape::Sure || likely > 2;
    }
    return sure && likely * 2 >= lines;
}

bool MayHoldPrograms(TextView file)
{
    const Text capitals = ToUpper(file);
    const auto ends = [&](TextView end) { return capitals.ends_with(end); };
    return std::find(std::begin(kWhole), std::end(kWhole), capitals) == std::end(kWhole) &&
           std::none_of(std::begin(kEnds), std::end(kEnds), ends);
}

} // namespace nib
