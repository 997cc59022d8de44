#include "base/Error.h"
#include "fakes/Patience.h"
#include "text/SourceDocument.h"

namespace nib::test::text_pattern_test {

constexpr FindOptions kAnyCase{.regex = true};
constexpr FindOptions kCase{.matchCase = true, .regex = true};
constexpr FindOptions kWords{.wholeWord = true, .regex = true};

/// The text with its hits in brackets.
Text Hits(const TextPattern& pattern, TextView text)
{
    Text marked;
    size_t from = 0;
    for (auto hit = pattern.In(text, 0); hit;
         hit = pattern.In(text, static_cast<size_t>(std::max(hit->last, hit->first + 1)))) {
        const auto at = static_cast<size_t>(hit->first);
        marked.append(text.substr(from, at - from)).append(u"[");
        from = static_cast<size_t>(hit->last);
        marked.append(text.substr(at, from - at)).append(u"]");
    }
    return marked.append(text.substr(from));
}

TEST(RegexTest, FindsInEachLine)
{
    const struct {
        Text expression;
        FindOptions options;
        Text text, hits;
    } rows[] = {{u"a+b", kAnyCase, u"aab xAB", u"[aab] x[AB]"},
                {u"a+b", kCase, u"aab xAB", u"[aab] xAB"},
                {u"^.", kCase, u"ab\r\n\r\ncd", u"[a]b\r\n\r\n[c]d"},
                {u".$", kCase, u"ab\r\ncd", u"a[b]\r\nc[d]"},
                {u"[^x]+", kCase, u"a\r\nb", u"[a]\r\n[b]"},
                {u"^", kCase, u"a\r\n\r\nb", u"[]a\r\n[]\r\n[]b"},
                {u"a*", kCase, u"aab", u"[aa][]b[]"},
                {u"x*", kCase, u"\U0001F600y", u"[]\U0001F600[]y[]"},
                {u"(?<=a)b", kCase, u"ab b", u"a[b] b"},
                {u"RET\\w*", kWords, u"A.RET RETURN RETRY.X", u"A.RET [RETURN] RETRY.X"},
                {u"\\r?\\n", kCase, u"a\r\nb", u"a\r\nb"},
                {u"", kCase, u"a", u"a"}};
    for (const auto& row : rows)
        EXPECT_EQ(ToUtf8(Hits(TextPattern(row.expression, row.options), row.text)), ToUtf8(row.hits))
            << ToUtf8(row.expression);
}

TEST(RegexTest, BackwardComesToTheSameHits)
{
    SourceDocument document;
    document.SetText(u"aab ab\r\n\r\nxaaab");
    const TextPattern pattern(u"a+b", kCase);
    const std::pair<Position, std::optional<Position>> rows[] = {
        {{5, 2}, Position{1, 2}}, {{0, 2}, Position{4, 0}}, {{3, 0}, Position{0, 0}}, {{0, 0}, Position{0, 0}}};
    for (const auto& [from, wanted] : rows) {
        FindHit hit;
        EXPECT_EQ(document.Find(pattern, from, true, hit), wanted.has_value());
        EXPECT_EQ(hit.at, *wanted);
    }
}

TEST(RegexTest, SaysWhatIsWrongAndWhere)
{
    const std::tuple<Text, int32_t, TextView> rows[] = {
        {u"a(b", 3, u"A parenthesis has no partner."},
        {u"ab)", 3, u"A parenthesis has no partner."},
        {u"[a", 2, u"A bracket has no partner."},
        {u"a{3,2}", 6, u"The larger number stands before the smaller one."},
        {u"ab\\2", 4, u"There is no such group."},
        {u"*", 1, u"The expression is not understood here."}};
    for (const auto& [expression, at, text] : rows) {
        const auto fault = RegexSearch::FaultOf(expression);
        ASSERT_TRUE(fault) << ToUtf8(expression);
        EXPECT_EQ(fault->at, at) << ToUtf8(expression);
        EXPECT_EQ(ToUtf8(fault->text), ToUtf8(text)) << ToUtf8(expression);
        EXPECT_THROW(TextPattern(expression, kCase), Error);
    }
    EXPECT_FALSE(RegexSearch::FaultOf(u"a(b)"));
}

TEST(RegexTest, PutsGroupsIntoTheReplacement)
{
    const struct {
        Text expression, replacement, text, wanted; ///< no text: the replacement is faulty
    } rows[] = {{u"(\\w+)=(\\w+)", u"$2=$1", u"a=b", u"b=a"},
                {u"(a)|(b)", u"<$2>", u"a", u"<>"},
                {u"(?<one>a)b", u"${one}$0", u"ab", u"aab"},
                {u"a", u"\\$1\\\\\\n", u"a", u"$1\\\r\n"},
                {u"(a)", u"$12", u"a", u"a2"},
                {u"a", u"x\ny", u"a", u"x\r\ny"},
                {u"(a)", u"$2", u"a", u""},
                {u"a", u"${b}", u"a", u""},
                {u"a", u"$x", u"a", u""}};
    for (const auto& row : rows) {
        const TextPattern pattern(row.expression, kCase);
        if (row.wanted.empty())
            EXPECT_THROW(pattern.Prepared(row.replacement), Error) << ToUtf8(row.replacement);
        else
            EXPECT_EQ(pattern.Replaced(row.text, 0, pattern.Prepared(row.replacement)), row.wanted);
    }
}

/// As a hit takes years where it is looked for in earnest.
TEST(RegexTest, GivesUpWhatWouldTakeForEver)
{
    Patience patience("an expression");
    const Text line = Text(60, u'a') + u"c";
    const TextPattern pattern(u"(a+)+b", kCase);
    EXPECT_THROW(pattern.In(line, 0), Error);
    EXPECT_THROW(pattern.In(line, 0), Error) << "and is given no more time";
    const TextPattern deep(u"(a|b|c)*d", kCase);
    EXPECT_THROW(deep.In(Text(5'000'000, u'a'), 0), Error) << "it needs too much memory";
    const TextPattern harmless(u"b$", kCase);
    EXPECT_FALSE(harmless.In(Text(20'000'000, u'a'), 0)) << "it is long, but not too long for its text";
}

} // namespace nib::test::text_pattern_test
