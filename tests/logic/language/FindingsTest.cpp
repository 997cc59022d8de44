// What is found in one program: each rule with programs that break it and others that look like it.

#include "logic/language/Programs.h"

#include <gtest/gtest.h>

namespace nib::test::findings_test {

/// "code@line" of each finding, in their order.
Text Found(TextView program, bool dialect = true)
{
    SomeItems items;
    Text all;
    const AnalysedProgram analysed = Analysed(program, items, dialect);
    for (const ProgramFinding& finding : analysed.program.findings)
        all += (all.empty() ? u"" : u" ") + finding.code + u"@" + Decimal(finding.at.start.line + 1);
    return all;
}

struct Row {
    TextView program;
    TextView found;
};

void Check(std::span<const Row> rows)
{
    for (const auto& [program, found] : rows) EXPECT_EQ(Found(program), found) << ToUtf8(program);
}

TEST(FindingsTest, Names)
{
    const Row rows[] = {
        {u"PRINT A", u"unset-variable@1"},
        {u"A += 1\nPRINT A", u"unset-variable@1"},
        {u"A = 1\nB = A", u"unused-variable@2"},
        {u"A = 1\nA<2> = 3", u"unused-variable@1"},
        {u"A = 1\nPRINT a", u""},
        {u"SUBROUTINE S(A, B)\nB = A\nRETURN", u""},
        {u"COMMON A, B(2)\nPRINT A:B(1)", u""},
        {u"COMMON /X/ A\nA = 1", u""},
        {u"CALL S(A)\nPRINT A", u""},
        {u"CALL S((A))", u"unset-variable@1"},
        {u"CALL @A(1)", u"unset-variable@1"},
        {u"EQU A TO 3\nEQU B LIT 'C<1>'\nC = A\nPRINT B", u""},
        {u"EQU B TO 'C<1>'\nC = 1\nPRINT B", u"unused-variable@2"},
        {u"OPEN 'F' TO F ELSE STOP\nREAD R FROM F, 1 ELSE STOP", u""},
        {u"OPEN 'F' TO F ELSE STOP\nREAD R FROM G, 1 ELSE STOP", u"unset-variable@2"},
        {u"LOCATE 'X' IN L BY 'AL' SETTING P ELSE P = 0\nPRINT P", u"unset-variable@1"},
        {u"L = ''\nLOCATE('X', L, 1; P; 'AL') ELSE P = 0", u""},
        {u"INPUT @(1,2): A\nPRINT A\nINPUT B, 3\nGET(ARG.) C ELSE C = ''", u""},
        {u"FOR I = 1 TO N\nNEXT I", u"unset-variable@1"},
        {u"DIM A(3)\nMAT A = ''\nMATREAD B FROM F, 1 ELSE STOP", u"unused-variable@1 unset-variable@3"},
        {u"EXECUTE 'WHO' CAPTURING A RETURNING B\nPRINT A", u""},
        {u"READNEXT A, B FROM 2 ELSE STOP\nREMOVE C FROM A SETTING D", u""},
        {u"A = 'X'\nPRINT (IF A THEN A ELSE 'Y')", u""},
        {u"PRINT @DATE:@(0):DATE():F(1)", u""},
        {u"HUSH OFF\nOBSCURE A B, C", u""},
        {u"A = 0x1F\nPRINT A", u""},
        {u"ON ERROR.CODE GOSUB X\nX: RETURN", u"unset-variable@1 falls-into-routine@2"},
        // An include that is not there may set any name.
        {u"$INCLUDE FAR NONE\nPRINT A\nGOSUB X", u"missing-label@3"},
        {u"$INCLUDE INC NAMES\nPRINT ONE:SHARED", u""},
        {u"$INCLUDE INC NAMES\nPRINT OTHER", u"unset-variable@2"},
    };
    Check(rows);
}

TEST(FindingsTest, ArraysAndFunctions)
{
    const Row rows[] = {
        {u"DIM A(3)\nA(3) = A(1)", u""},
        {u"DIM A(3)\nA(4) = A(1)", u"index-range@2"},
        {u"DIM A(3)\nA(1,2) = A(1)", u"dimension@2"},
        {u"DIM A(3,2)\nA(1,2) = 0\nPRINT A(2,3)", u"index-range@3"},
        {u"EQU N TO 3\nDIM A(N)\nA(1) = 2\nPRINT A(4)", u"index-range@4"},
        {u"N = 9\nDIM A(N)\nA(10) = 1\nPRINT A(N)", u""},
        {u"COMMON A(2)\nPRINT A(3)", u"index-range@2"},
        {u"PRINT LEN('A', 2)\nPRINT LEN()", u"argument-count@1 argument-count@2"},
        {u"A = ''\nPRINT LEN(A<1, 2>)\nPRINT OCONV(A<1, 2, 3>, 'D')", u""},
        {u"DIM LEN(3,3)\nLEN(1,1) = 2\nPRINT LEN(1,1)", u""},
        {u"DEFFUN F(A,B)\nPRINT F(1)", u""},
        {u"IF 1 := 2 THEN STOP", u"assignment-in-condition@1"},
        {u"A = 1\nIF A >= 1 AND A<1> = -1 THEN STOP", u""},
        {u"A = 1\nLOOP UNTIL A += 2 DO\nREPEAT", u"assignment-in-condition@2"},
    };
    Check(rows);
}

TEST(FindingsTest, Ways)
{
    const Row rows[] = {
        {u"STOP\nPRINT 1", u"unreachable-code@2"},
        {u"GOSUB X\nSTOP\nX: RETURN\nPRINT 1", u"unreachable-code@4"},
        {u"IF @DATE THEN\n STOP\n PRINT 1\nEND", u"unreachable-code@3"},
        {u"IF @DATE THEN STOP ELSE STOP\nPRINT 1", u"unreachable-code@2"},
        {u"IF @DATE THEN STOP\nPRINT 1", u""},
        {u"LOOP\n IF @DATE THEN EXIT\nREPEAT\nPRINT 1", u""},
        {u"LOOP\n PRINT 2\nREPEAT\nPRINT 1", u"unreachable-code@4"},
        {u"LOOP WHILE @DATE DO PRINT 2 REPEAT\nPRINT 1", u""},
        {u"FOR I = 1 TO 3\n CONTINUE\nNEXT I\nPRINT 1", u""},
        {u"BEGIN CASE\n CASE @DATE\n  STOP\n CASE 1\n  STOP\nEND CASE\nPRINT 1", u"unreachable-code@7"},
        {u"BEGIN CASE\n CASE @DATE\n  STOP\n CASE @TIME\nEND CASE\nPRINT 1", u""},
        {u"READ R FROM 'F', 1 THEN\n STOP\nEND ELSE\n STOP\nEND\nPRINT 1", u"unreachable-code@6"},
        {u"STOP\nRETURN", u""},
        {u"STOP\nDUMMY = DUMMY", u""},
        {u"$IFDEF X\nSTOP\n$ENDIF\nPRINT 1", u""},
        {u"TRY\n STOP\nCATCH E\n PRINT E\nEND\nPRINT 1", u""},
        {u"X: PRINT 1", u"unused-label@1"},
        {u"GOTO X\nX: PRINT 1\nON 1 GOTO Y, ;* one\n Z\nY: PRINT 2\nZ: PRINT 3", u""},
        {u"GOSUB 010\nSTOP\n10 RETURN", u""},
        {u"GOSUB X\nSTOP\nX: PRINT 1\nEND", u"gosub-without-return@3"},
        {u"GOSUB X\nSTOP\nX: PRINT 1\nIF @DATE THEN RETURN\nSTOP", u""},
        {u"GOSUB X\nSTOP\nX: ABORT", u""},
        {u"GOSUB X\nGOSUB Y\nSTOP\nX: PRINT 1\nY: RETURN", u""},
        {u"GOSUB X\nIF 1 THEN GOTO X\nSTOP\nX: RETURN", u"return-without-gosub@4"},
        {u"PRINT 1\nRETURN", u"return-without-gosub@2"},
        {u"SUBROUTINE A\nRETURN", u""},
        {u"IF @DATE THEN\n IF @TIME THEN\n  PRINT 1\nEND", u"block@1"},
        {u"   IF @DATE THEN\n      IF @TIME THEN\n         PRINT 1\n   END\nEND", u"missing-end@2"},
        {u"IF @DATE THEN\n PRINT 1\n END\nIF @DATE OR ~\n   @TIME THEN\n PRINT 1\nEND", u""},
    };
    Check(rows);
}

TEST(FindingsTest, Locks)
{
    const Text head = u"SUBROUTINE S(ID)\nOPEN 'F' TO F ELSE STOP\n";
    const Row rows[] = {
        {u"READU R FROM F, ID ELSE R = ''\nRETURN", u"lock-kept@3"},
        {u"READU R FROM F, ID ELSE R = ''\nWRITE R ON F, ID\nRETURN", u""},
        {u"READU R FROM F, ID ELSE R = ''\nWRITEU R ON F, ID\nRETURN", u"lock-kept@3"},
        {u"READU R FROM F, ID ELSE R = ''\nGOSUB X\nRETURN\nX: RELEASE\nRETURN", u""},
        {u"READU R FROM F, ID LOCKED RETURN ELSE R = ''\nCALL T(F)\nRETURN", u""},
        {u"READU R FROM F, ID LOCKED RETURN ELSE R = ''\nSTOP", u""},
        {u"FOR I = 1 TO 3\n READU R FROM F, I ELSE R = ''\nNEXT I", u"lock-kept@4"},
        {u"LOOP\n DONE = 1\n READU R FROM F, ID LOCKED DONE = 0\nUNTIL DONE DO REPEAT\nDELETE F, ID", u""},
    };
    for (const auto& [program, found] : rows) EXPECT_EQ(Found(head + Text(program)), found) << ToUtf8(program);
    EXPECT_EQ(Found(u"SUBROUTINE S(F)\nREADU R FROM F, 1 ELSE R = ''\nRETURN"), u"") << "the caller may release it";
}

TEST(FindingsTest, CommentsSilence)
{
    const Row rows[] = {
        {u"PRINT A ;* nib: ignore unset-variable\nPRINT B", u"unset-variable@2"},
        {u"PRINT A ;* nib: ignore unused-label", u"unset-variable@1"},
        {u"PRINT A ;* nib: ignore", u""},
        {u"* nib: ignore unset-variable, block\nPRINT A\nPRINT B", u"unset-variable@3"},
        {u"* nib: ignore-all unset-variable\nPRINT A\nX: PRINT B", u"unused-label@3"},
        {u"PRINT A\n* nib: ignore-all unset-variable", u"unset-variable@1"},
        {u"PRINT A ;* nib: nonsense", u"unset-variable@1"},
    };
    Check(rows);
    for (const FindingKind& kind : FindingKinds()) EXPECT_FALSE(kind.help.empty());
}

TEST(FindingsTest, TheCheckersOwnAreAmongThem)
{
    const Row rows[] = {
        {u"PRINT 'x", u"open-string@1"},
        {u"PRINT (1", u"parentheses@1"},
        {u"LOOP", u"block@1"},
        {u"GOSUB X", u"missing-label@1"},
        {u"GOTO X\nX: X: A", u"double-label@2"},
        {u"INCLUDE BP NONE", u"missing-include@1"},
    };
    for (const auto& [program, found] : rows) {
        if (found != u"double-label@2") EXPECT_EQ(Found(program), found) << ToUtf8(program);
    }
}

} // namespace nib::test::findings_test
