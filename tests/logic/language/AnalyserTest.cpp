// What is known of a program: its names, what happens to them, and that the answer after edits is that from scratch.

#include "logic/language/Programs.h"

#include <gtest/gtest.h>

#include <random>

namespace nib::test::analyser_test {

constexpr TextView kKinds[] = {u"variable", u"array",      u"common",   u"constant",  u"label",
                               u"program",  u"subroutine", u"function", u"parameter", u"filevariable",
                               u"external", u"file",       u"item"};
constexpr TextView kUses[] = {u"declares", u"sets", u"reads", u"both", u"calls", u"jumps", u"names"};

Text At(TextRange range)
{
    return Decimal(range.start.line + 1) + u"." + Decimal(range.start.col + 1) + u"-" + Decimal(range.end.col + 1);
}

/// All that is known, a line each.
Text Dump(const ProgramFacts& program)
{
    Text all;
    const auto add = [&all](std::initializer_list<Text> parts) {
        for (const Text& part : parts) all += part + u" ";
        all += u"\n";
    };
    for (const Symbol& symbol : program.symbols)
        add({symbol.name, Text(kKinds[static_cast<size_t>(symbol.kind)]), Decimal(symbol.routine), Decimal(symbol.item),
             Decimal(symbol.dimensions), symbol.value, Decimal(symbol.common)});
    for (const Occurrence& occurrence : program.occurrences)
        add({At(occurrence.at), Decimal(occurrence.symbol), Text(kUses[static_cast<size_t>(occurrence.use)])});
    for (const Routine& routine : program.routines)
        add({routine.name, Decimal(routine.first), Decimal(routine.last),
             Decimal(static_cast<int64_t>(routine.parameters.size()))});
    for (const CallSite& call : program.calls) add({call.name, At(call.at), Decimal(call.arguments)});
    for (const IncludeSite& include : program.includes) add({include.file, include.item, At(include.at)});
    for (const CommonBlock& common : program.commons)
        add({common.name, Decimal(static_cast<int64_t>(common.members.size()))});
    for (const OutlineEntry& entry : program.outline) add({entry.name, At(entry.at), Decimal(entry.last)});
    for (const ProgramFinding& finding : program.findings)
        add({finding.code, At(finding.at), English(finding.message)});
    for (const TextRange& block : program.blocks) add({At(block), Decimal(block.end.line)});
    return all;
}

/// "NAME use" of each place, and the kind of each name.
Text Uses(TextView text)
{
    SomeItems items;
    const AnalysedProgram analysed = Analysed(text, items);
    Text all;
    for (const Occurrence& occurrence : analysed.program.occurrences) {
        const Symbol& symbol = analysed.program.symbols[static_cast<size_t>(occurrence.symbol)];
        all += (all.empty() ? u"" : u", ") + symbol.name + u" " + Text(kUses[static_cast<size_t>(occurrence.use)]);
        if (symbol.kind != SymbolKind::Variable) all += u" " + Text(kKinds[static_cast<size_t>(symbol.kind)]);
    }
    return all;
}

TEST(AnalyserTest, StatementsUseTheirNames)
{
    const std::pair<TextView, TextView> rows[] = {
        {u"A = B + C<D, E>", u"A sets, B reads, C reads, D reads, E reads"},
        {u"A<B> = 1; C[1,D] = 2; E += 1; F := 'x'", u"A both, B reads, C both, D reads, E both, F both"},
        {u"READ A FROM B, C ELSE D = 1", u"A sets, B reads, C reads, D sets"},
        {u"READV A FROM B, C, 4 THEN D = 1", u"A sets, B reads, C reads, D sets"},
        {u"MATREADU A FROM B, C LOCKED GOSUB L ELSE NULL", u"A sets, B reads, C reads, L jumps label"},
        {u"READNEXT A, B FROM C ELSE EXIT", u"A sets, B sets, C reads"},
        {u"OPEN 'DICT', A TO B ELSE STOP", u"A reads, B sets filevariable"},
        {u"LOCATE A IN B<1>, 2 BY C SETTING D THEN NULL", u"A reads, B reads, C reads, D sets"},
        {u"LOCATE(A, B, 1; C; D) THEN NULL", u"A reads, B reads, C sets, D reads"},
        {u"FIND A IN B SETTING C, D ELSE NULL", u"A reads, B reads, C sets, D sets"},
        {u"INS A BEFORE B<1,C>", u"A reads, B both, C reads"},
        {u"DEL A<B>", u"A both, B reads"},
        {u"CONVERT A TO B IN C", u"A reads, B reads, C both"},
        {u"REMOVE A FROM B SETTING C", u"A sets, B both, C sets"},
        {u"FOR A = B TO C STEP D; NEXT A", u"A both, B reads, C reads, D reads, A reads"},
        {u"EXECUTE A CAPTURING B RETURNING C", u"A reads, B sets, C sets"},
        {u"SELECT A TO B", u"A reads, B sets"},
        {u"WRITE A ON B, C; WRITEV A ON B, C, D", u"A reads, B reads, C reads, A reads, B reads, C reads, D reads"},
        {u"CALL A(B, C<1>, (D), MAT E, F + 1)", u"A calls external, B both, C both, D reads, E both, F reads"},
        {u"CALL @A(B)", u"A reads, B both"},
        {u"CALL !A.B", u"!A.B calls external"},
        {u"INPUT @(A,B): C, D", u"A reads, B reads, C sets, D reads"},
        {u"DIM A(3), B(C)\nA(1) = B(2)", u"A declares array, B declares array, C reads, A sets array, B reads array"},
        {u"COMMON /X/ A, B(3)", u"A declares common, B declares common"},
        {u"EQU A TO B, C LIT 'x'", u"A declares constant, B reads, C declares constant, x reads"},
        {u"$DEFINE A B", u"A declares constant, B reads"},
        {u"ON A GOSUB B, ;* one\n C", u"A reads, B jumps label, C jumps label"},
        {u"10 GOTO 010\nX : GO X", u"10 declares label, 10 jumps label, X declares label, X jumps label"},
        {u"SUBROUTINE A(B, MAT C)", u"A declares subroutine, B declares parameter, C declares parameter"},
        {u"DEFFUN A(B)\nC = A(D)", u"A declares function, C sets, A calls function, D reads"},
        {u"IF A THEN B = C ELSE IF D THEN E = F", u"A reads, B sets, C reads, D reads, E sets, F reads"},
        {u"PRINT A$END:B.NEXT:@C:D->E", u"A$END reads, B.NEXT reads, D reads"},
        {u"A = 'B' ;* C\n* D\nREM E", u"A sets"},
        {u"CALL A(B,\n* why\n C)", u"A calls external, B both, C both"},
    };
    for (const auto& [program, uses] : rows) {
        const Text expected(uses);
        EXPECT_EQ(Uses(program), expected) << ToUtf8(program);
    }
}

TEST(AnalyserTest, KnowsTheWholeProgram)
{
    SomeItems items;
    const AnalysedProgram analysed = Analysed(u"SUBROUTINE MAIN(A)\n$INCLUDE INC NAMES\n$INCLUDE INC CIRCLE\n"
                                              u"CALL OTHER(A, ONE)\nSHARED = TWO\nOUTSIDE: READ.HERE = SET.HERE\n"
                                              u"IF A THEN\n GOSUB INSIDE\nEND\nRETURN\nINCLUDE CODE FROM INC\nEND",
                                              items);
    const ProgramFacts& program = analysed.program;
    EXPECT_TRUE(program.findings.empty()) << ToUtf8(Dump(program));
    ASSERT_EQ(program.includes.size(), 3U);
    EXPECT_TRUE(program.includes[0].found && program.includes[2].found);
    ASSERT_EQ(program.commons.size(), 1U);
    EXPECT_EQ(program.commons[0].members.size(), 2U);
    EXPECT_EQ(program.commons[0].item, 1);
    ASSERT_EQ(program.calls.size(), 1U);
    EXPECT_EQ(program.calls[0].arguments, 2);
    ASSERT_EQ(program.outline.size(), 2U);
    EXPECT_EQ(program.outline[1].name, u"OUTSIDE");
    ASSERT_EQ(program.blocks.size(), 1U);
    EXPECT_EQ(program.blocks[0].end.line, 8);
    EXPECT_EQ(program.routines[0].parameters.size(), 1U);

    Text looks;
    for (const LookedWord& word : analysed.analyser->Words(3, 7))
        looks += Decimal(static_cast<int64_t>(word.look)) + u" ";
    EXPECT_EQ(looks, u"0 9 5 7 6 7 8 4 4 0 5 2 0 8 ");
}

constexpr TextView kLines[] = {u"A = B",
                               u"IF A THEN",
                               u"END",
                               u"END ELSE",
                               u"FOR I = 1 TO 3",
                               u"NEXT I",
                               u"LOOP",
                               u"REPEAT",
                               u"WHILE A DO",
                               u"BEGIN CASE",
                               u"CASE A = 1",
                               u"END CASE",
                               u"X:",
                               u"Y : A = 1",
                               u"10 B = 2",
                               u"GOSUB X",
                               u"GOTO 10",
                               u"ON A GOSUB X,",
                               u"  Y, ;* two",
                               u"RETURN",
                               u"STOP",
                               u"READU A FROM F, B LOCKED",
                               u"OPEN 'F' TO F ELSE STOP",
                               u"CALL S(A,",
                               u"  B)",
                               u"/* several",
                               u"lines */",
                               u"PRINT 'open",
                               u"A = (B",
                               u"$INCLUDE INC NAMES",
                               u"$INCLUDE INC CODE",
                               u"$INCLUDE NO NO",
                               u"$IFDEF A",
                               u"$ELSE",
                               u"$ENDIF",
                               u"DIM A(3,2)",
                               u"A(1) = A(1,9)",
                               u"EQU N TO 3, M LIT 'x'",
                               u"COMMON /C/ A, B(3)",
                               u"SUBROUTINE S(A, B)",
                               u"LOCAL FUNCTION F(Q)",
                               u"TRY",
                               u"CATCH E",
                               u"",
                               u"* note",
                               u"* nib: ignore-all unset-variable",
                               u"PRINT A ;* nib: ignore",
                               u"IF A THEN B = 1 ELSE IF C THEN",
                               u"A<1,",
                               u"= := ( ) \\",
                               u"EXIT",
                               u"CONTINUE",
                               u"PRINT F(A):N",
                               u"GO",
                               u"CALL @",
                               u"LOCATE(",
                               u"FOR",
                               u"SUBROUTINE",
                               u"EQU A TO",
                               u"ON",
                               u"DIM"};

TEST(AnalyserTest, EditsEqualScratch)
{
    std::mt19937 random(7);
    const auto below = [&random](size_t most) { return static_cast<int32_t>(random() % most); };
    SomeItems items;
    ProgramAnalyser edited(CommonDialect(), u"BP", u"MAIN");
    std::vector<Text> lines;
    for (int step = 0; step < 1500; ++step) {
        const int32_t first = below(lines.size() + 1);
        const int32_t removed = std::min(below(step % 50 == 0 ? 40 : 3), static_cast<int32_t>(lines.size()) - first);
        std::vector<Text> added;
        for (int32_t i = below(lines.size() < 60 ? 4 : 3); i > 0; --i) {
            Text line(kLines[below(std::size(kLines))]);
            if (below(4) == 0 && !line.empty()) line.erase(static_cast<size_t>(below(line.size())), 1);
            if (below(6) == 0) line += Text(u" ; ") + Text(kLines[below(std::size(kLines))]);
            added.push_back(std::move(line));
        }
        lines.erase(lines.begin() + first, lines.begin() + first + removed);
        lines.insert(lines.begin() + first, added.begin(), added.end());
        edited.Replace(first, removed, added);
        ProgramAnalyser scratch(CommonDialect(), u"BP", u"MAIN");
        scratch.Replace(0, 0, lines);
        const Text after = Dump(edited.Analyse(items));
        ASSERT_EQ(after, Dump(scratch.Analyse(items))) << "step " << step;
        const auto& occurrences = edited.Known().occurrences;
        ASSERT_TRUE(std::ranges::is_sorted(occurrences, {}, [](const Occurrence& o) { return o.at.start; }))
            << "step " << step;
        for (const Occurrence& occurrence : occurrences) ASSERT_GE(occurrence.symbol, 0);
    }
}

} // namespace nib::test::analyser_test
