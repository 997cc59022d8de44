#include "text/Matching.h"
#include "editing/LexClass.h"
#include "text/Occurrences.h"

#include <gtest/gtest.h>

#include <random>

namespace nib::test::matching_test {

/// A program whose lines are told apart by "/", with the caret at "|".
struct Program {
    SourceDocument text;
    LexClass lexer;
    Position caret;

    explicit Program(Text source)
    {
        source = Replace(source, u"/", u"\r\n");
        const size_t mark = source.find(u'|');
        const Text before = source.substr(0, mark);
        caret.line = static_cast<int32_t>(std::count(before.begin(), before.end(), u'\n'));
        caret.col = static_cast<int32_t>(before.size() - before.rfind(u'\n') - 1);
        text.SetText(mark == Text::npos ? source : source.erase(mark, 1));
        text.SetLexer(&lexer);
        text.EnsureScanned();
    }
    ~Program() { text.SetLexer(nullptr); }

    std::string With(std::vector<TextRange> ranges)
    {
        if (ranges.empty()) return {};
        std::sort(ranges.begin(), ranges.end(), [](auto& a, auto& b) { return b.start < a.start; });
        Text shown;
        for (int32_t line = text.LineCount() - 1; line >= 0; --line) {
            Text row = text.GetLine(line);
            for (const TextRange& range : ranges) {
                if (range.start.line != line) continue;
                row.insert(static_cast<size_t>(range.end.col), u"]");
                row.insert(static_cast<size_t>(range.start.col), u"[");
            }
            shown = row + (shown.empty() ? u"" : u"/") + shown;
        }
        return ToUtf8(shown);
    }
    template <typename Visit>
    void EachLine(Visit&& visit)
    {
        std::vector<Token> tokens;
        for (int32_t line = 0; line < text.LineCount(); ++line) text.ScanLine(line, tokens), visit(line, tokens);
    }
    std::vector<TextRange> Block()
    {
        std::optional<BlockMatch> match = MatchBlock(text, caret);
        if (!match) return {};
        EachLine([&](int32_t line, auto& tokens) { AddMiddles(text, *match, line, tokens, match->words); });
        return match->words;
    }
    std::vector<TextRange> Brackets()
    {
        const auto match = MatchBrackets(text, caret);
        return match ? std::vector{match->first, match->second} : std::vector<TextRange>();
    }
    std::vector<TextRange> Jump()
    {
        const auto range = MatchingWord(text, caret);
        return range ? std::vector{*range} : std::vector<TextRange>();
    }
    std::vector<TextRange> Names()
    {
        const Occurrences names(NameAt(text, caret));
        std::vector<TextRange> ranges;
        EachLine([&](int32_t line, auto& tokens) {
            names.InLine(text.GetLine(line), tokens, [&](ColumnRange r) {
                ranges.push_back({{r.first, line}, {r.last, line}});
            });
        });
        return ranges;
    }
};

struct Row {
    std::vector<TextRange> (Program::*what)();
    const char16_t* source;
    const char* shown;
};

const Row kRows[] = {
    {&Program::Block, u"IF A TH|EN/B/END", "[IF] A [THEN]/B/[END]"},
    {&Program::Block, u"|IF A THEN/B/END", "[IF] A [THEN]/B/[END]"},
    {&Program::Block, u"I|F A THEN B ELSE C", ""},
    {&Program::Block, u"IF A THEN/IF B THEN C/EN|D", "[IF] A [THEN]/IF B THEN C/[END]"},
    {&Program::Block, u"IF A THEN I|F B THEN/C/END", "IF A THEN [IF] B [THEN]/C/[END]"},
    {&Program::Block, u"READU R FROM F LOCKED|/A/END THEN/B/END ELSE/C/END/END",
     "READU R FROM F [LOCKED]/A/[END] [THEN]/B/[END] [ELSE]/C/[END]/END"},
    {&Program::Block, u"IF A THEN/B/END ELSE IF C THEN/D/|END", "[IF] A [THEN]/B/[END] ELSE [IF] C [THEN]/D/[END]"},
    {&Program::Block, u"LOOP/A/WH|ILE B DO/LOOP/UNTIL C/REPEAT/UNTIL D/REPEAT",
     "[LOOP]/A/[WHILE] B DO/LOOP/UNTIL C/REPEAT/[UNTIL] D/[REPEAT]"},
    {&Program::Block, u"FOR I = 1 TO 2/FOR J = 1 TO 2/NEXT J/NE|XT I",
     "[FOR] I = 1 TO 2/FOR J = 1 TO 2/NEXT J/[NEXT] I"},
    {&Program::Block, u"FOR I = 1 TO 2; LOOP; REPEAT; NEX|T I; FOR I = 2 TO 3/NEXT I",
     "[FOR] I = 1 TO 2; LOOP; REPEAT; [NEXT] I; FOR I = 2 TO 3/NEXT I"},
    {&Program::Block, u"BEGIN CASE/CASE A/BEGIN CASE/CASE B/END CASE/C|ASE 1/END CASE",
     "[BEGIN] [CASE]/[CASE] A/BEGIN CASE/CASE B/END CASE/[CASE] 1/[END] [CASE]"},
    {&Program::Block, u"BEGIN CASE/CASE A/B/END C|ASE", "[BEGIN] [CASE]/[CASE] A/B/[END] [CASE]"},
    {&Program::Block, u"END|/A", ""},
    {&Program::Block, u"LOO|P/A", ""},
    {&Program::Block, u"IF A THEN/B|B/END", ""},
    {&Program::Jump, u"IF A THEN|/B/END ELSE/C/END", "IF A THEN/B/[END] ELSE/C/END"},
    {&Program::Jump, u"IF A THEN/B/END ELSE/C/|END", "IF A THEN/B/END [ELSE]/C/END"},
    {&Program::Jump, u"|IF A THEN/B/END ELSE/C/END", "IF A THEN/B/END ELSE/C/[END]"},
    {&Program::Jump, u"LOOP/WHILE| A/REPEAT", "LOOP/WHILE A/[REPEAT]"},
    {&Program::Jump, u"X = F(A, (B)|)", "X = F[(]A, (B))"},
    {&Program::Brackets, u"X = F|(A, (B))", "X = F[(]A, (B)[)]"},
    {&Program::Brackets, u"X = F(A, \")\", G(1)|)", "X = F[(]A, \")\", G(1)[)]"},
    {&Program::Brackets, u"X = \"(a|)\"", "X = \"[(]a[)]\""},
    {&Program::Brackets, u"CALL A|(B, * see (1)/C)", "CALL A[(]B, * see (1)/C[)]"},
    {&Program::Brackets, u"X = A[1, 2]|", "X = A[[]1, 2[]]"},
    {&Program::Brackets, u"* a ) b/X = (|1", ""},
    {&Program::Names, u"ORD.N|R = 1/X = ord.nr + ORD.NR2/* ORD.NR/Y = \"ORD.NR\"",
     "[ORD.NR] = 1/X = [ord.nr] + ORD.NR2/* ORD.NR/Y = \"ORD.NR\""},
    {&Program::Names, u"GOSUB CHE|CK/STOP/CHECK:/RETURN", "GOSUB [CHECK]/STOP/[CHECK]:/RETURN"},
    {&Program::Names, u"X = @AM|/AM = 1", "X = [@AM]/AM = 1"},
    {&Program::Names, u"I|F A THEN IF B THEN C", ""},
    {&Program::Names, u"* A| word/A = 1", ""},
};

TEST(Matching, MarksWhatBelongsTogether)
{
    for (const Row& row : kRows) {
        Program program(row.source);
        EXPECT_EQ(program.With((program.*row.what)()), row.shown) << ToUtf8(row.source);
    }
}

TEST(Matching, WhatOpensABlockIsFoundFromItsEnd)
{
    std::mt19937 dice(7);
    Text source;
    for (int i = 0; i < 6000; ++i) source += dice() % 2 ? u"LOOP\n" : dice() % 3 ? u"REPEAT\n" : u"REPEAT; LOOP\n";
    Program program(source);
    int32_t pairs = 0;
    for (int32_t line = 0; line < program.text.LineCount(); ++line) {
        const int32_t end = program.text.BlockEnd(line);
        if (end < 0) continue;
        const auto match = MatchBlock(program.text, {0, end});
        ASSERT_TRUE(match) << line;
        EXPECT_TRUE(std::any_of(match->parts.begin(), match->parts.end(), [&](auto& part) {
            return part.begin.start.line == line;
        })) << line;
        ++pairs;
    }
    EXPECT_GT(pairs, 1000);
}

TEST(Matching, NothingIsSaidOfWhatIsNotScanned)
{
    Program program(u"LOOP|/REPEAT");
    program.text.SetLexer(&program.lexer);
    EXPECT_FALSE(MatchBlock(program.text, program.caret));
    EXPECT_EQ(program.With(program.Jump()), "LOOP/[REPEAT]");
}

} // namespace nib::test::matching_test
