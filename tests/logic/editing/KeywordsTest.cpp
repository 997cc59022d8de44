#include "editing/BlockStyles.h"
#include "editing/clsKeywords.h"
#include "fakes/Patience.h"

namespace nib::keywords_test {

using namespace keyword_class;

static_assert(kBeginBlocks == 0xCB95 && kEndBlocks == 0x1442);

constexpr TextView kDefaultLanguage = u"IF THEN+ ELSE+ LOCKED+ BEGIN+ END- CASE= FOR+ NEXT- DO LOOP+ UNTIL= WHILE= "
                                      u"REPEAT- GO GOTO GOSUB TO SUB SUBROUTINE CALL STEP INCLUDE";

TEST(Keywords, StartWithTheLanguage)
{
    clsKeywords keywords;
    EXPECT_EQ(keywords.Count(), 23);
    EXPECT_EQ(keywords.GetKeywordList(kLanguage, u" "), kDefaultLanguage);
    EXPECT_EQ(keywords.GetKeywordList(kUser, u" "), u"");
    EXPECT_EQ(keywords.Item(u"then")->Block, 128);
    EXPECT_EQ(keywords.Item(u"then")->Class, kReserved | kLanguage);
    EXPECT_EQ(keywords.Item(u"STEP")->Class, kLanguage);
    EXPECT_EQ(keywords.Item(u"NOT.THERE"), nullptr);
    EXPECT_EQ(keywords.KeywordFirstChars(), u"@%_");
    EXPECT_EQ(keywords.KeywordNextChars(), u".%_");
    EXPECT_EQ(keywords.CompoundKeywordSize(), 0);
    EXPECT_EQ(keywords.CommentPrefixes(), u"*,!");
}

TEST(Keywords, ListsAsText)
{
    const std::pair<TextView, TextView> rows[] = {{u"", u""},
                                                  {u"\n\n  \n", u""},
                                                  {u"MYEND-\nA+\nB=\nC[\nD]\nE", u"MYEND-\nA+\nB=\nC[\nD]\nE"},
                                                  {u"  X Y+  ", u"X Y+"},
                                                  {u"THEN+\nTHEN-\nif", u"IF\nTHEN+"},
                                                  {u"+\n-\nA++", u"A++"},
                                                  {u"F(X)\nA,B\nA;B\nOK", u"OK"},
                                                  {u"*NOTE(1);-\n!A,", u"*NOTE(1);-\n!A,"},
                                                  {u"; remark\n;CASE SENSITIVE\nA", u"A"},
                                                  {u"Word+\nWORD-", u"Word-"},
                                                  {u";case sensitive\nWord+\nWORD-\nthen", u"Word+"}};
    for (const auto& [list, answer] : rows) {
        SCOPED_TRACE(ToUtf8(list));
        clsKeywords keywords;
        keywords.SetKeywordList(kUser, u"\n", list);
        EXPECT_EQ(keywords.GetKeywordList(kUser, u"\n"), answer);
        keywords.SetKeywordList(kUser, u"\n", answer);
        EXPECT_EQ(keywords.GetKeywordList(kUser, u"\n"), answer);
        EXPECT_EQ(keywords.GetKeywordList(kLanguage, u" "), kDefaultLanguage);
    }
}

TEST(Keywords, ReservedWordsStay)
{
    clsKeywords keywords;
    keywords.SetKeywordList(kLanguage, u" ", u"");
    EXPECT_EQ(keywords.Count(), 17);
    EXPECT_EQ(keywords.GetKeywordList(kLanguage, u" "), u"");
    EXPECT_EQ(keywords.Item(u"END")->Class, kReserved);
    keywords.AddKeyword(u"END", kUser, block::kUserBegin);
    EXPECT_EQ(keywords.Item(u"END")->Block, 64);
    keywords.AddKeyword(u"BOTH", kUser, block::kUserEnd);
    keywords.AddKeyword(u"both", kLanguage, block::kUserBegin);
    EXPECT_EQ(keywords.GetKeywordList(kUser, u" "), u"END- BOTH+");
    keywords.RemoveKeyword(u"Both", kUser);
    EXPECT_EQ(keywords.Item(u"BOTH")->Class, kLanguage);
    keywords.RemoveKeyword(u"BOTH", kLanguage);
    EXPECT_EQ(keywords.Item(u"BOTH"), nullptr);
}

TEST(Keywords, CaseOfWords)
{
    clsKeywords keywords;
    keywords.SetCaseSensitive(true);
    EXPECT_NE(keywords.AddKeyword(u"Word", kUser, 0), nullptr);
    EXPECT_EQ(keywords.AddKeyword(u"WORD", kUser, 0), nullptr);
    EXPECT_EQ(keywords.Item(u"WORD"), nullptr);
    EXPECT_NE(keywords.Item(u"Word"), nullptr);
    EXPECT_EQ(keywords.Count(), 24);
    keywords.SetCaseSensitive(false);
    EXPECT_NE(keywords.Item(u"WORD"), nullptr);
    keywords.AddKeyword(u"Gr\u00F6\u00DFe", kUser, 0);
    EXPECT_NE(keywords.Item(u"GR\u00D6SSE"), nullptr);
    keywords.Remove(u"gr\u00F6sse");
    EXPECT_EQ(keywords.Count(), 24);
    Text large(1000, u'x');
    keywords.AddKeyword(large, kUser, 0);
    EXPECT_NE(keywords.Item(ToUpper(large)), nullptr);
    keywords.SetKeywordList(kUser, u"\r\n", u"; case insensitive, not case sensitive");
    EXPECT_TRUE(keywords.CaseSensitive()) << "a list may say so";
    keywords.SetKeywordList(kUser, u"\r\n", u"; now CASE INSENSITIVE");
    EXPECT_FALSE(keywords.CaseSensitive());
}

TEST(Keywords, Validation)
{
    struct {
        TextView word;
        bool valid;
        TextView clean, bad;
    } rows[] = {{u"", false, u"", u""},
                {u"+", false, u"", u""},
                {u"A+", true, u"A", u""},
                {u"A+]", true, u"A+", u""},
                {u"F(X)", false, u"FX", u"parentheses"},
                {u"A,B(C,D", false, u"ABCD", u"parentheses"},
                {u"(A,B(", false, u"AB", u"comma"},
                {u"A;", false, u"A", u"semicolon"},
                {u"*A(;", true, u"", u""}};
    clsKeywords keywords;
    for (const auto& row : rows) {
        Text clean = u"old";
        Text bad = u"old";
        EXPECT_EQ(keywords.ValidateKeyword(row.word, clean, bad), row.valid) << ToUtf8(row.word);
        EXPECT_EQ(clean, row.clean);
        EXPECT_EQ(bad, row.bad);
    }
}

TEST(Keywords, DerivedTables)
{
    clsKeywords keywords;
    keywords.SetKeywordList(kUser, u"\n", u"$A-B#\n1ST\n*A&B C\n#X$\nEND CASE\nA B C\n*LONGER");
    EXPECT_EQ(keywords.KeywordFirstChars(), u"@%_$1*#");
    EXPECT_EQ(keywords.KeywordNextChars(), u".%_-#$");
    EXPECT_EQ(keywords.CompoundKeywordSize(), 3);
    EXPECT_TRUE(keywords.KeywordsHaveEmbeddedBlanks());
    ASSERT_EQ(keywords.CommentKeywords().size(), 2U);
    EXPECT_EQ(keywords.CommentKeywords()[0]->Word, u"*LONGER");
    keywords.AddKeyword(u"*SAME12", kUser, 0);
    EXPECT_EQ(keywords.CommentKeywords()[1]->Word, u"*SAME12");
    keywords.SetCommentPrefixes(u"#");
    EXPECT_EQ(keywords.CommentKeywords().size(), 4U);
    keywords.RemoveKeyword(u"A B C", kUser);
    EXPECT_EQ(keywords.CompoundKeywordSize(), 2);
    keywords.RemoveKeyword(u"END CASE", kUser);
    EXPECT_EQ(keywords.CompoundKeywordSize(), 0);
    EXPECT_FALSE(keywords.KeywordsHaveEmbeddedBlanks());
}

TEST(Keywords, CommentPrefixes)
{
    struct {
        TextView given, answer;
    } rows[] = {{u"", u"*,!"}, {u" # ,$,ab,A,7,*,!,,", u"*,!,#,$"}, {u"#,#", u"*,!,#,#"}};
    clsKeywords keywords;
    for (const auto& row : rows) {
        keywords.SetCommentPrefixes(row.given);
        EXPECT_EQ(keywords.CommentPrefixes(), row.answer);
    }
    EXPECT_TRUE(keywords.IsCommentPrefix(u'#'));
    EXPECT_FALSE(keywords.IsCommentPrefix(u'$'));
}

TEST(Keywords, ALongListTakesNoLongTime)
{
    constexpr int32_t kWords = 100000;
    Text list;
    for (int32_t i = 0; i < kWords; ++i)
        list.append(u"W").append(Decimal(i)).append(i % 7 ? u"\n" : u"+\n;case sensitive\n");
    list.append(u"\0A\n", 3);
    test::Patience patience("a million words");
    clsKeywords keywords;
    for (int round = 0; round < 2; ++round) keywords.SetKeywordList(kUser, u"\n", list);
    EXPECT_EQ(keywords.Count(), 23 + kWords + 1);
    EXPECT_NE(keywords.Item(TextView(u"\0A", 2)), nullptr);
    for (int32_t i = 0; i < kWords; ++i) keywords.RemoveKeyword(u"W" + Decimal(i), kUser);
    EXPECT_EQ(keywords.Count(), 24);
    keywords.SetKeywordList(kUser, u"+", Text(kWords, u'+'));
    EXPECT_EQ(keywords.Count(), 23);
}

} // namespace nib::keywords_test
