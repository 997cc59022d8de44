#include "editing/LexClass.h"
#include "fakes/Patience.h"
#include "language/Dialects.h"
#include "text/SourceDocument.h"

#include <random>

namespace nib::lexer_test {

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

    Nesting nesting;
    for (const Token& token : tokens)
        if (token.attributes != 0) nesting.Follow(token.attributes == 1 ? Nesting{0, 1} : Nesting{1, 0});
    LineScan whole;
    EXPECT_TRUE(
        lexer.ScanLine(buffer.LineUnits(line), line > 0 ? buffer.GetLineData(line - 1, LineWord::Lexer) : 0, whole));
    EXPECT_EQ(whole.nesting, nesting) << ToUtf8(text);
    EXPECT_EQ(whole.data, buffer.GetLineData(line, LineWord::Lexer)) << ToUtf8(text);
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
    {u"LAB1: * note", "2:5 1:1 6:6 #30000"},
    {u"* note", "6:6 #10000"},
    {u"  !note", "1:2 6:5 #10000"},
    {u"rem x", "6:5 #10000"},
    {u"REMARKS x", "8:7 1:1 8:1"},
    {u"REM", "8:3"},
    {u"A = 1 ; REM x", "8:1 1:1 8:1 1:1 8:1 1:1 5:1 1:1 6:5"},
    {u"A * B", "8:1 1:1 8:1 1:1 8:1"},
    {u"* a\uF8FCb", "6:3 1002:1 6:1 #10000"},
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
    {u"LAB1:", "2:5 #20000"},
    {u"END: X", "2:4 1:1 8:1 #20000"},
    {u"A$B.C_1:", "2:8 #20000"},
    {u"  100 X = 1", "1:2 2:3 1:1 8:1 1:1 8:1 1:1 8:1 #20000"},
    {u"10.5: X", "2:5 1:1 8:1 #20000"},
    {u"100 FOR I", "2:3 1:1 10:3+ 1:1 8:1 #20001"},
    // Branches and lists of labels
    {u"GO TO END", "10:6 2:3"},
    {u"go   to X", "10:8 2:1"},
    {u"GOTO 10:", "10:5 3:3"},
    {u"GO SUB A:", "10:7 2:2"},
    {u"GO ", "10:3"},
    {u"GOSUB(X)", "10:5 8:1 8:1 8:1"},
    {u"GOOD X", "8:4 1:1 8:1"},
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
    {u"IF X THEN * note", "10:2 1:1 8:1 1:1 10:4 1:1 8:1 1:1 8:4"},
    {u"IF X THEN FOR I = 1", "10:2 1:1 8:1 1:1 10:4 1:1 10:3 1:1 8:1 1:1 8:1 1:1 8:1"},
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

constexpr Row kRowsInDialect[] = {
    // Names are whole
    {u"X = PARSER$END", "8:1 1:1 8:1 1:1 8:10"},
    {u"IF X = K$THEN", "10:2 1:1 8:1 1:1 8:1 1:1 8:6"},
    {u"K$END: X%END", "2:6 1:1 8:5 #420000"},
    {u"X = @END", "8:1 1:1 8:1 1:1 8:4"},
    {u"@WORD @WORDS", "4:5 1:1 8:6", u"@WORD"},
    // Blocks
    {u"READ X FROM Y ON ERROR", "8:4 1:1 8:1 1:1 8:4 1:1 8:1 1:1 10:8+ #800"},
    {u"READ X FROM Y ON ERROR ;* note", "8:4 1:1 8:1 1:1 8:4 1:1 8:1 1:1 10:8+ 1:1 5:1 6:6 #800"},
    {u"X ON ERROR Y", "8:1 1:1 10:8 1:1 8:1"},
    {u"END ON ERROR", "10:3- 1:1 10:8+ #840"},
    {u"ON ERROR", "4:8", u"ON~ERROR"},
    {u"TRY", "10:3+ #800"},
    {u"TRY = 1", "10:3 1:1 8:1 1:1 8:1"},
    {u"X = TRY", "8:1 1:1 8:1 1:1 10:3"},
    {u"CATCH E", "10:5 1:1 8:1 #2000"},
    {u"CATCH = 1", "10:5 1:1 8:1 1:1 8:1"},
    {u"local subroutine X(A)", "10:16+ 1:1 8:1 8:1 8:1 8:1 #800"},
    {u"CLASS<2> = X", "10:5 8:1 8:1 8:1 1:1 8:1 1:1 8:1"},
    {u"BEGIN TRANSACTION\nEND TRANSACTION", "10:17+ #800 | 10:15- #1000"},
    // Labels
    {u" LAB : X", "1:1 2:5 1:1 8:1 #420000"},
    {u"LAB  :", "2:6 #420000"},
    {u"LAB :X", "8:3 1:1 8:1 8:1"},
    {u"LAB := X", "8:3 1:1 8:1 8:1 1:1 8:1"},
    {u"PRINT :", "8:5 1:1 8:1"},
    {u"NEXT :", "10:4- 1:1 8:1 #2"},
    // Directives
    {u"$ELSE", "8:1 10:4 #80000"},
    {u"  #END,", "1:2 8:1 10:3 8:1 #80000"},
    // Statements on several lines
    {u"CALL X(A,\nB: C)\nB: C", "10:4 1:1 8:1 8:1 8:1 8:1 #100000 | 8:1 8:1 1:1 8:1 8:1 #200000 | 2:2 1:1 8:1 #420000"},
    {u"X = A + ~\n* note\n\nB", "8:1 1:1 8:1 1:1 8:1 1:1 8:1 1:1 8:1 #100000 | 6:6 #310000 | #300000 | 8:1 #200000"},
    {u"X(A;B, ; * note", "8:1 8:1 8:1 8:1 8:1 8:1 1:1 5:1 1:1 6:6 #100000"},
    {u"X, ;* note", "8:1 8:1 1:1 5:1 6:6 #100000"},
    {u"X = \\\nY", "8:1 1:1 8:1 1:1 7:1 #100000 | 8:1 #200000"},
    {u"X = \\A\\", "8:1 1:1 8:1 1:1 7:3"},
    {u"X = 'A,", "8:1 1:1 8:1 1:1 7:3"},
    {u"* X,\nY", "6:4 #10000 | 8:1"},
    {u"GOSUB A,\nB", "10:6 2:1 8:1 #140000 | 2:1 #200000"},
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

const LexRules& CommonRules()
{
    static Dialects dialects;
    return *dialects.Rules(u"common");
}

TEST(Lexer, TokensInADialect)
{
    for (const Row& row : kRowsInDialect) {
        SCOPED_TRACE(ToUtf8(row.text));
        clsKeywords keywords;
        keywords.SetRules(&CommonRules());
        keywords.SetKeywordList(keyword_class::kUser, u"\r\n", Lines(row.userWords));
        const clsKeywords copy = keywords.Clone();
        LexClass lexer;
        lexer.SetKeywords(copy);
        EXPECT_EQ(Render(lexer, row.text), row.tokens);
        EXPECT_EQ(copy.GetKeywordList(keyword_class::kUser, u"\r\n"), Lines(row.userWords));
    }
}

TEST(Lexer, LooksInADialect)
{
    // S, F and N under statements, functions and numbers.
    const std::pair<TextView, std::string> rows[] = {
        {u"CRT LEN(X) : 12.5", "SSS FFF      NNNN"},
        {u"READ CRT FROM F, ID ELSE PRINT .5", "SSSS     SSSS            SSSSS NN"},
        {u"LOCATE A IN B BY 'AL' SETTING P", "SSSSSS   SS   SS      SSSSSSS"},
        {u"PRINT = DATE() ; print A.1", "        FFFF     SSSSS"},
        {u"DATA(1) = 2", "     N    N"},
        {u"IF A EQ B AND C THEN NULL", "     SS   SSS        SSSS"},
        {u"LAB: OPEN 'X' TO F ELSE STOP", "     SSSS               SSSS"},
        {u"FROM = LEN", ""},
        {u"* CRT 1", ""}};
    clsKeywords keywords;
    keywords.SetRules(&CommonRules());
    for (const auto& [text, looks] : rows) {
        SCOPED_TRACE(ToUtf8(text));
        SourceDocument buffer;
        buffer.SetText(text);
        LexClass lexer;
        for (bool inDialect : {false, true}) {
            if (inDialect) lexer.SetKeywords(keywords);
            std::vector<Token> tokens = ScanLine(lexer, buffer, 0);
            lexer.Look(text, tokens);
            std::string seen;
            for (const Token& token : tokens) {
                EXPECT_EQ(token.start, static_cast<int32_t>(seen.size()));
                seen.append(static_cast<size_t>(token.length),
                            token.type < token_type::kStatement ? ' ' : "SFN"[token.type - token_type::kStatement]);
            }
            seen.erase(seen.find_last_not_of(' ') + 1);
            EXPECT_EQ(seen, inDialect ? looks : "");
        }
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

TEST(Lexer, WholeLinesComeToWhatTheirTokensDo)
{
    constexpr TextView kPieces[] = {u"END",  u"CASE",  u"IF ",  u"THEN",   u"ELSE",     u"FOR ", u"NEXT",   u"GO ",
                                    u"TO ",  u"GOSUB", u"A.B",  u"LAB:",   u"10",       u",",    u";",      u"(",
                                    u")",    u"'",     u"\"",   u"* ",     u"!",        u"REM ", u"*REG",   u"@WORD",
                                    u"MY X", u" ",     u"    ", u"\u00C9", u"\u0416",   u"=",    u"\uF8FC", u"\uF8FD",
                                    u"$",    u"TRY",   u"~",    u"\\",     u"ON ERROR", u":"};
    clsKeywords keywords;
    keywords.SetKeywordList(keyword_class::kUser, u"\n", u"*REG+\n*END-\nMY X+\n@WORD]\n\u00C9TAT[");
    std::mt19937 random(7);
    for (int round = 0; round < 3000; ++round) {
        keywords.SetCaseSensitive(round % 3 == 0);
        keywords.SetRules(round % 2 == 0 ? &CommonRules() : nullptr);
        LexClass lexer;
        lexer.SetKeywords(keywords);
        lexer.SetHighlight(round % 50 != 0);
        Text text;
        // Words at the edges of the groups that are looked at together, too.
        for (size_t pieces = random() % 30; pieces > 0; --pieces) {
            text += kPieces[random() % std::size(kPieces)];
            if (random() % 4 == 0) text += u' ';
            if (random() % 12 == 0) text += u'\n';
        }
        Render(lexer, text);
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

} // namespace nib::lexer_test
