// The lexer: rows of a text and its tokens, and random lines against a plain reading of the keyword rules.

#include "editing/LexClass.h"
#include "fakes/Patience.h"
#include "fakes/RecordingTrace.h"
#include "text/SourceDocument.h"

#include <gtest/gtest.h>

#include <random>

namespace nib {
namespace {

constexpr size_t kMostTokens = 10000;

std::vector<Token> ScanLine(LexClass& lexer, SourceDocument& buffer, int32_t line)
{
    Text text = buffer.GetLine(line);
    lexer.BeginLineScan(buffer, line, text, 0);
    std::vector<Token> tokens;
    do {
        lexer.ScanToken(tokens.emplace_back());
    } while (tokens.back().type != 0 && tokens.size() < kMostTokens);
    EXPECT_EQ(lexer.EndLineScan(buffer), 0);
    return tokens;
}

/// A token is "type:length", with "+" when it begins a block and "-" when it ends one; "#" and the line's flags when
/// there are any; lines are parted by " | ".
std::string Render(LexClass& lexer, TextView text)
{
    SourceDocument buffer;
    buffer.SetText(text);
    std::string out;
    for (int32_t line = 0; line < buffer.LineCount(); ++line) {
        if (line > 0) out += " | ";
        int32_t at = 0;
        std::string parts;
        for (const Token& token : ScanLine(lexer, buffer, line)) {
            EXPECT_EQ(token.start, at);
            at += token.length;
            if (token.type == 0) continue;
            parts += (parts.empty() ? "" : " ") + std::to_string(token.type) + ":" + std::to_string(token.length);
            parts += token.attributes == 1 ? "+" : token.attributes == 2 ? "-" : "";
        }
        EXPECT_EQ(at, buffer.LineLength(line));
        uint32_t flags = buffer.GetLineData(line, LineWord::Lexer);
        if (flags) parts += (parts.empty() ? "#" : " #") + ToUtf8(Hex(static_cast<int32_t>(flags)));
        out += parts;
    }
    return out;
}

struct Row {
    TextView text;
    const char* tokens;
    TextView userWords = u"";
    TextView prefixes = u"";
};

constexpr Row kRows[] = {
    {u"", ""},
    {u"   ", "1:3"},
    // Comments
    {u"X = 1; * note", "8:1 1:1 8:1 1:1 8:1 5:1 1:1 6:6"},
    {u"LAB1: * note", "2:5 1:1 6:6 #30000"},
    {u"* note", "6:6 #10000"},
    {u"  !note", "1:2 6:5 #10000"},
    {u"REM", "8:3"},
    {u"rem x", "6:5 #10000"},
    {u"REMARK x", "6:8 #10000"},
    {u"REMARKS x", "8:7 1:1 8:1"},
    {u"REM", "8:3"},
    {u"A = 1 ; REM x", "8:1 1:1 8:1 1:1 8:1 1:1 5:1 1:1 6:5"},
    {u"A * B", "8:1 1:1 8:1 1:1 8:1"},
    {u"* a\uF8FCb", "6:3 1002:1 6:1 #10000"},
    {u"rem a\uF8FD", "6:5 1001:1 #10000"},
    {u"# x", "6:3 #10000", u"", u"#"},
    {u"# x", "8:1 1:1 8:1"},
    // Comment keywords
    {u"*REGION a", "6:9+ #10800", u"*REGION["},
    {u"*region a", "6:9+ #10800", u"*REGION]"},
    {u"*ENDR a", "6:7- #11000", u"*END+ *ENDR-"},
    {u"*MID", "6:4 #10000", u"*MID="},
    {u"*REG", "6:4 #10000", u"*REGION+"},
    {u"X ; *REGION", "8:1 1:1 5:1 1:1 6:7+ #800", u"*REGION+"},
    {u"A *MULT B", "8:1 1:1 4:5 1:1 8:1", u"*MULT"},
    // Labels
    {u"LAB1 := 2", "8:4 1:1 8:1 8:1 1:1 8:1"},
    {u"LAB1:= 2", "8:4 8:1 8:1 1:1 8:1"},
    {u"LAB1:", "2:5 #20000"},
    {u"END: X", "2:4 1:1 8:1 #20000"},
    {u"A$B.C_1:", "2:8 #20000"},
    {u"A$", "8:1 8:1"},
    {u"  100 X = 1", "1:2 2:3 1:1 8:1 1:1 8:1 1:1 8:1 #20000"},
    {u"10.5: X", "2:5 1:1 8:1 #20000"},
    {u"100 FOR I", "2:3 1:1 10:3+ 1:1 8:1 #20001"},
    // Branches and lists of labels
    {u"GO TO END", "10:6 2:3"},
    {u"go   to X", "10:8 2:1"},
    {u"GOTO 10:", "10:5 3:3"},
    {u"GO SUB A:", "10:7 2:2"},
    {u"GO LOOP1", "10:3 2:5"},
    {u"GO ", "10:3"},
    {u"GOTO", "10:4"},
    {u"GOSUB(X)", "10:5 8:1 8:1 8:1"},
    {u"GOOD X", "8:4 1:1 8:1"},
    {u"G", "8:1"},
    {u"ON X GOTO A,B, C", "8:2 1:1 8:1 1:1 10:5 2:1 8:1 2:1 8:1 1:1 2:1"},
    {u"ON X GOTO 10,20", "8:2 1:1 8:1 1:1 10:5 3:2 8:1 8:1 8:1"},
    {u"GOSUB LAB1, LAB2,\nEND", "10:6 2:4 8:1 1:1 2:4 8:1 #40000 | 2:3"},
    {u"GOSUB A,\n \nB", "10:6 2:1 8:1 #40000 | 1:1 #40000 | 2:1"},
    {u"GOSUB A,\n10 X", "10:6 2:1 8:1 #40000 | 3:2 1:1 8:1"},
    {u"GOSUB A, * x", "10:6 2:1 8:1 1:1 8:1 1:1 8:1"},
    // Strings
    {u"X = \"a'b\\c\"'d'\\e", "8:1 1:1 8:1 1:1 7:7 7:3 7:2"},
    {u"'open\nX", "7:5 | 8:1"},
    {u"'a\uF8FD b' X", "7:2 1001:1 7:3 1:1 8:1"},
    {u"'a\uF8FC\uF8FD' X", "7:2 1002:1 1001:1 7:1 1:1 8:1"},
    {u"'abcdefgh;jkl\uF8FDmnopqrstuv'", "7:13 1001:1 7:11"},
    // Separators and parentheses
    {u"A;B", "8:1 5:1 8:1"},
    {u"F(1;2)", "8:1 8:1 8:1 8:1 8:1 8:1"},
    {u"A = B) ; C", "8:1 1:1 8:1 1:1 8:1 8:1 1:1 8:1 1:1 8:1"},
    {u"\uF8FD* x", "1001:1 6:3 #10000"},
    // Blocks of the language
    {u"FOR I = 1 TO 9", "10:3+ 1:1 8:1 1:1 8:1 1:1 8:1 1:1 10:2 1:1 8:1 #1"},
    {u"NEXT I", "10:4- 1:1 8:1 #2"},
    {u"LOOP", "10:4+ #4"},
    {u"until X do", "10:5 1:1 8:1 1:1 10:2 #8"},
    {u"REPEAT", "10:6- #400"},
    {u"BEGIN CASE", "10:5+ 1:1 10:4 #30"},
    {u"END CASE", "10:3- 1:1 10:4 #60"},
    {u"IF X THEN", "10:2 1:1 8:1 1:1 10:4+ #80"},
    {u"IF X THEN ", "10:2 1:1 8:1 1:1 10:4+ 1:1 #80"},
    {u"IF X THEN Y = 1", "10:2 1:1 8:1 1:1 10:4 1:1 8:1 1:1 8:1 1:1 8:1"},
    {u"IF X THEN ELSE", "10:2 1:1 8:1 1:1 10:4 1:1 10:4+ #100"},
    {u"IF X THEN ;* note", "10:2 1:1 8:1 1:1 10:4+ 1:1 5:1 6:6 #80"},
    {u"IF X THEN ; ;", "10:2 1:1 8:1 1:1 10:4+ 1:1 5:1 1:1 5:1 #80"},
    {u"IF X THEN * note", "10:2 1:1 8:1 1:1 10:4 1:1 8:1 1:1 8:4"},
    {u"IF X THEN FOR I = 1", "10:2 1:1 8:1 1:1 10:4 1:1 10:3 1:1 8:1 1:1 8:1 1:1 8:1"},
    {u"X ; LOOP", "8:1 1:1 5:1 1:1 10:4+ #4"},
    {u"END ELSE", "10:3- 1:1 10:4+ #140"},
    {u"LOCKED", "10:6+ #200"},
    // Words of the user
    {u"MYEND X", "4:5- 1:1 8:1 #1000", u"MYEND-"},
    {u"X MID", "8:1 1:1 4:3 #2000", u"MID="},
    {u"X OPN Y", "8:1 1:1 4:3+ 1:1 8:1 #800", u"OPN+"},
    {u"OPN OPN", "4:3+ 1:1 4:3 #4000", u"OPN["},
    {u"OPN OPN", "4:3 1:1 4:3+ #8000", u"OPN]"},
    {u"THEN X", "10:4 1:1 8:1", u"THEN+"},
    {u"END CASE", "4:8- #1000", u"END~CASE-"},
    {u"END  CASE", "10:3- 1:2 10:4 #60", u"END~CASE-"},
    {u"READ NEXT FROM X", "4:9 1:1 8:4 1:1 8:1", u"READ~NEXT READ~NEXT~FROM~Y READ"},
    {u"READ NEXT FROM Y", "4:16", u"READ~NEXT READ~NEXT~FROM~Y READ"},
    {u"READ NEXTS", "4:4 1:1 8:5", u"READ~NEXT READ~NEXT~FROM~Y READ"},
    {u"READ NEXT", "8:4 1:1 10:4- #2", u"READ~NEXT~FROM~Y"},
    {u"A B C D E F G H I J K", "4:19 1:1 8:1", u"A~B~C~D~E~F~G~H~I~J~K A~B~C~D~E~F~G~H~I~J"},
    {u"@AM @XYZ", "4:3 1:1 8:1 8:3", u"@AM"},
    {u"A-B A", "4:3 1:1 8:1", u"A-B"},
    {u"\u00C4ND \u00E4nd", "4:3 1:1 4:3", u"\u00C4ND"},
    {u"X=1+A(2)", "8:1 8:1 8:1 8:1 8:1 8:1 8:1 8:1"},
};

Text Lines(TextView words)
{
    return Replace(Replace(words, u" ", u"\r\n"), u"~", u" ");
}

TEST(Lexer, TokensOfLines)
{
    for (const Row& row : kRows) {
        SCOPED_TRACE(ToUtf8(row.text) + "   " + ToUtf8(row.userWords));
        clsKeywords keywords;
        keywords.SetCommentPrefixes(row.prefixes);
        keywords.SetKeywordList(keyword_class::kUser, u"\r\n", Lines(row.userWords));
        LexClass lexer;
        lexer.SetKeywords(keywords);
        EXPECT_EQ(Render(lexer, row.text), row.tokens);
    }
}

TEST(Lexer, CaseCountsWhenAsked)
{
    clsKeywords keywords;
    keywords.SetKeywordList(keyword_class::kUser, u" ", u"Word *Mark+");
    keywords.SetCaseSensitive(true);
    LexClass lexer;
    lexer.SetKeywords(keywords);
    EXPECT_EQ(Render(lexer, u"Word WORD end"), "4:4 1:1 8:4 1:1 8:3");
    EXPECT_EQ(Render(lexer, u"rem x"), "8:3 1:1 8:1");
    EXPECT_EQ(Render(lexer, u"go to X"), "8:2 1:1 8:2 1:1 8:1");
    EXPECT_EQ(Render(lexer, u"*MARK\n*Marks"), "6:5 #10000 | 6:6+ #10800");
}

TEST(Lexer, WithoutHighlightTextIsPlain)
{
    LexClass lexer;
    lexer.SetHighlight(false);
    EXPECT_EQ(Render(lexer, u"FOR I ; * x\uF8FDIF 'A'\uF8FC"), "1:11 1001:1 1:6 1002:1");
}

TEST(Lexer, SeesChangesOfTheKeywordsAtOnce)
{
    clsKeywords keywords;
    LexClass lexer;
    lexer.SetKeywords(keywords);
    EXPECT_EQ(Render(lexer, u"MY WORD"), "8:2 1:1 8:4");
    keywords.AddKeyword(u"MY WORD", keyword_class::kUser, 0);
    EXPECT_EQ(Render(lexer, u"MY WORD"), "4:7");
    keywords.RemoveKeyword(u"MY WORD", keyword_class::kUser);
    EXPECT_EQ(Render(lexer, u"MY WORD"), "8:2 1:1 8:4");
    keywords.SetKeywordList(keyword_class::kLanguage, u" ", u"");
    EXPECT_EQ(Render(lexer, u"END STEP"), "10:3- 1:1 8:4 #40");
}

TEST(Lexer, PositionCanBeSetBetweenTokens)
{
    SourceDocument buffer;
    buffer.SetText(u"A + END");
    LexClass lexer;
    Text text = buffer.GetLine(0);
    lexer.BeginLineScan(buffer, 0, text, 0);
    lexer.SetLineIndex(4);
    Token token;
    lexer.ScanToken(token);
    EXPECT_EQ(token.type, token_type::kReserved);
    EXPECT_EQ(lexer.GetLineIndex(), 7);
    lexer.SetLineIndex(100);
    lexer.ScanToken(token);
    EXPECT_EQ(token.type, token_type::kEndOfLine);
    EXPECT_EQ(token.length, 0);
}

TEST(Lexer, TracesTokensForWhoWantsThem)
{
    test::RecordingTrace trace;
    DebugLog log(&trace);
    LexClass lexer(&log);
    Render(lexer, u"END X");
    EXPECT_TRUE(trace.lines.empty());
    trace.wanted = trace::kTokens;
    Render(lexer, u"L: END");
    ASSERT_EQ(trace.lines.size(), 4U);
    EXPECT_EQ(trace.lines[0].second, u"LexClass.ScanToken: token=L: type=2 atts=0 flags=0x20000");
    EXPECT_EQ(trace.lines[2].second, u"LexClass.ScanToken: token=END type=10 atts=2 flags=0x40");
    EXPECT_EQ(trace.lines[3].second, u"LexClass.ScanToken: token= type=0 atts=0 flags=0x0");
}

struct FailingTrace final : TraceChannel {
    Text error;
    bool Wants(int32_t) const override { return true; }
    void Write(TextView line, int32_t mask) override
    {
        if (mask == trace::kTokens) throw Error(5, u"no room");
        error = line;
    }
};

TEST(Lexer, AFailureLeavesTheStateAsItWas)
{
    FailingTrace trace;
    DebugLog log(&trace);
    LexClass lexer(&log);
    SourceDocument buffer;
    buffer.SetText(u"END");
    Text text = buffer.GetLine(0);
    lexer.BeginLineScan(buffer, 0, text, 0);
    Token token{1, 1, 1, 1};
    lexer.ScanToken(token);
    EXPECT_EQ(token.type, token_type::kEndOfLine);
    EXPECT_EQ(lexer.GetLineIndex(), 0);
    EXPECT_EQ(trace.error, u"LexClass.ScanToken: error=0x5 no room");
    lexer.EndLineScan(buffer);
    EXPECT_EQ(buffer.GetLineData(0, LineWord::Lexer), 0U);
}

// The look-up again, word for word as a person would do it.

struct Answer {
    size_t end;
    const clsKeyword* keyword;
};

bool Among(char16_t c, const Text& characters)
{
    return characters.find(c) != Text::npos;
}
bool IsLetter(char16_t c)
{
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
}

const clsKeyword* PlainItem(const clsKeywords& keywords, TextView word)
{
    for (const clsKeyword& keyword : keywords)
        if (keywords.CaseSensitive() ? keyword.Word == word : EqualsNoCase(ToUpper(keyword.Word), ToUpper(word)))
            return &keyword;
    return nullptr;
}

bool PlainFirst(const clsKeywords& keywords, char16_t c)
{
    if (IsLetter(c)) return true;
    for (char16_t first : keywords.KeywordFirstChars())
        if (EqualsNoCase(TextView(&first, 1), TextView(&c, 1))) return true;
    return false;
}

Answer PlainLookUp(const clsKeywords& keywords, const Text& line, size_t start)
{
    std::vector<size_t> ends;
    size_t most = std::clamp<size_t>(static_cast<size_t>(keywords.CompoundKeywordSize()), 1, 10);
    size_t at = start;
    while (ends.size() < most && PlainFirst(keywords, line[at])) {
        ++at;
        while (at < line.size() && (IsLetter(line[at]) || (line[at] >= u'0' && line[at] <= u'9') ||
                                    Among(line[at], keywords.KeywordNextChars())))
            ++at;
        ends.push_back(at);
        if (at >= line.size() || line[at] != u' ') break;
        at = line.find_first_not_of(u' ', at);
        if (at == Text::npos) break;
    }
    for (size_t i = ends.size(); i-- > 0;)
        if (const clsKeyword* found = PlainItem(keywords, Trim(TextView(line).substr(start, ends[i] - start))))
            return {ends[i], found};
    if (Among(line[start], keywords.KeywordFirstChars()) || ends.empty()) return {start + 1, nullptr};
    return {ends[0], nullptr};
}

class RandomText {
public:
    Text Make(TextView alphabet, size_t most)
    {
        Text text(random_() % (most + 1), u' ');
        for (char16_t& c : text) c = alphabet[random_() % alphabet.size()];
        return text;
    }
    bool Chance(unsigned of) { return random_() % of == 0; }

private:
    std::mt19937 random_{71};
};

void ExpectKeywordRules(const clsKeywords& keywords, const Text& line, const Token& token)
{
    bool keyword = token.type == token_type::kUserKeyword || token.type == token_type::kReserved;
    if (!keyword && token.type != token_type::kNormal) return;
    TextView text = TextView(line).substr(static_cast<size_t>(token.start), static_cast<size_t>(token.length));
    // Branch words, parentheses and list commas are not looked up.
    if (text == u"(" || text == u")" || text == u"," || (keyword && text.back() == u' ')) return;
    Answer plain = PlainLookUp(keywords, line, static_cast<size_t>(token.start));
    EXPECT_EQ(plain.keyword != nullptr, keyword);
    EXPECT_EQ(static_cast<int32_t>(plain.end), token.start + token.length);
    if (plain.keyword && keyword) {
        EXPECT_EQ(token.type == token_type::kReserved, (plain.keyword->Class & 3) != 0);
    }
}

TEST(Lexer, NoTokenLooksFurtherThanItsLineMakesItLook)
{
    // Were each of these to look at the whole rest of the line, every row would take minutes.
    for (TextView piece : {u"'a' ", u"THEN ", u"GO X ", u"A.B ( ", u"* ", u"; REM ", u"GOSUB A, "}) {
        SCOPED_TRACE(ToUtf8(piece));
        Text line;
        while (line.size() < 4000000) line += piece;
        SourceDocument buffer;
        buffer.SetText(line);
        LexClass lexer;
        buffer.SetLexer(&lexer);
        {
            test::Patience patience("scan");
            buffer.EnsureScanned();
        }
        buffer.SetLexer(nullptr);
    }
}

TEST(Lexer, RandomLinesAgreeWithThePlainRules)
{
    RandomText random;
    constexpr TextView kWordUnits = u"ABEGNDab  Xx.1-$%@_*\u00E4\u00C4\u00DF\u017FsSk\u212A";
    constexpr TextView kLineUnits =
        u"ABEGONDTabgnd   Xx.12-$%@_*;:=,()'\"\\!\u00E4\u00C4\u00DF\u017FsSk\u212A\uF8FD\uF8FC";
    for (int round = 0; round < 400; ++round) {
        clsKeywords keywords;
        bool wide = random.Chance(2);
        Text list;
        for (int i = 0; i < 40; ++i) list += random.Make(wide ? kWordUnits : kWordUnits.substr(0, 20), 6) + u"\n";
        keywords.SetKeywordList(keyword_class::kUser, u"\n", list);
        keywords.SetCaseSensitive(random.Chance(3));
        LexClass lexer;
        lexer.SetKeywords(keywords);
        Text text;
        for (int i = 0; i < 30; ++i) text += random.Make(kLineUnits, random.Chance(8) ? 300 : 40) + u"\n";
        SourceDocument buffer;
        buffer.SetText(text);
        for (int32_t line = 0; line < buffer.LineCount(); ++line) {
            int32_t at = 0;
            Text lineText = buffer.GetLine(line);
            SCOPED_TRACE(ToUtf8(lineText) + "\n" + ToUtf8(list));
            for (const Token& token : ScanLine(lexer, buffer, line)) {
                ASSERT_EQ(token.start, at);
                ASSERT_TRUE(token.type == 0 ? token.length == 0 : token.length > 0);
                at += token.length;
                ExpectKeywordRules(keywords, lineText, token);
            }
            ASSERT_EQ(at, buffer.LineLength(line));
            if (HasFailure()) return;
        }
    }
}

} // namespace
} // namespace nib
