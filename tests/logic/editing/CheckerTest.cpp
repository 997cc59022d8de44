// The checker of programs: what it finds, and above all what it leaves alone.

#include "language/BasicChecker.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>

namespace nib::test::checker_test {

/// Items by "FILE ITEM".
struct Items final : IncludeSource {
    std::map<Text, std::shared_ptr<const ProgramText>> texts;

    void Add(const Text& name, TextView text)
    {
        texts[name] = std::make_shared<ProgramText>(nullptr, LinesOfProgram(text));
    }
    Answer Find(TextView file, TextView item, std::shared_ptr<const ProgramText>& text) override
    {
        if (file == u"FAR") return Answer::Unknown;
        if (file != u"BP" && file != u"INC") return Answer::NoFile;
        const auto found = texts.find(Text(file) + u" " + Text(item));
        if (found == texts.end()) return Answer::NoItem;
        text = found->second;
        return Answer::Found;
    }
};

Items SomeItems()
{
    Items items;
    items.Add(u"BP EQUATES", u"EQU A TO 1\n* it's (fine");
    items.Add(u"INC SUBS", u"SUB1: RETURN\nSUB2: RETURN");
    items.Add(u"INC BROKEN", u"X = 1\nY = 'x");
    items.Add(u"BP SELF", u"$INCLUDE BP SELF");
    items.Add(u"INC OPEN", u"IF A THEN");
    return items;
}

Text Findings(TextView program)
{
    Items items = SomeItems();
    const ProgramText text(nullptr, LinesOfProgram(program));
    Text all;
    for (const Finding& finding : BasicChecker(items).Check(text, u"BP", u"MAIN"))
        all += Decimal(finding.line) + u": " + English(finding.text) + u"\n";
    return all;
}

TEST(CheckerTest, FindsWhatIsWrongInEveryDialect)
{
    const std::pair<TextView, TextView> rows[] = {
        {u"A = 1\nPRINT \"x\nB = 2", u"2: The string that begins with \" is not closed.\n"},
        {u"A = 'it''s", u"1: The string that begins with ' is not closed.\n"},
        {u"A = \\x", u"1: The string that begins with \\ is not closed.\n"},
        {u"A = (1 + 2\nB = 1", u"1: \"(\" without \")\".\n"},
        {u"A = F(1,\n 2\nB = 1", u"1: \"(\" without \")\".\n"},
        {u"A = 1)\nB = (", u"1: \")\" without \"(\".\n2: \"(\" without \")\".\n"},
        {u"IF (A = 1 THEN ;* (don't\n B = 1\nEND", u"1: \"(\" without \")\".\n"},
        {u"GOSUB X\nON A GOTO Y, 10,\n 20 ,Z\nY: STOP\n10 STOP",
         u"1: GOSUB to label X, which does not exist.\n"
         u"3: GOTO to label 20, which does not exist.\n3: GOTO to label Z, which does not exist.\n"},
        {u"10 A = 1\n10 B = 1\nX: C = 1\nX: GO 10", u"2: Label 10 is defined twice, first in line 1.\n"
                                                    u"4: Label X is defined twice, first in line 3.\n"},
        {u"LOOP\n A = 1", u"1: LOOP is not closed: REPEAT is missing.\n"},
        {u"FOR I = 1 TO 3\n A = 1", u"1: FOR is not closed: NEXT is missing.\n"},
        {u"BEGIN CASE\n CASE A\n B = 1", u"1: BEGIN CASE is not closed: END CASE is missing.\n"},
        {u"IF A THEN\n B = 1", u"1: THEN is not closed: END is missing.\n"},
        {u"IF A THEN\n GOSUB X\nSTOP\nX: B = 1\n IF B THEN\n  C = 1\n END\nRETURN\nEND\n* end",
         u"1: THEN is not closed by END before the label in line 4.\n"},
        {u"READU A FROM F, I LOCKED\n B = 1", u"1: LOCKED is not closed: END is missing.\n"},
        {u"FOR I = 1 TO 3\n IF A THEN\n  B = 1\nNEXT I", u"2: THEN is not closed by END before NEXT in line 4.\n"},
        {u"IF A THEN\n FOR I = 1 TO 3\n  B = 1\n END\n NEXT I\nEND",
         u"2: FOR is not closed by NEXT before END in line 4.\n"},
        {u"BEGIN CASE\n CASE A\n  IF B THEN\n   C = 1\n CASE 1\n  D = 1\nEND CASE",
         u"3: THEN is not closed by END before CASE in line 5.\n"},
        {u"LOOP\n A = 1\n END\nREPEAT", u"3: END closes no block; open is LOOP of line 1.\n"},
        {u"A = 1\nREPEAT\nNEXT I\nEND CASE", u"2: REPEAT without LOOP.\n3: NEXT without FOR.\n"
                                             u"4: END CASE without BEGIN CASE.\n"},
        {u"CASE A\n B = 1\nCASE 1\n B = 2\nEND CASE", u"1: CASE without BEGIN CASE.\n"},
        {u"A = 1\nEND\nX: B = 1\nRETURN\nEND", u"2: END closes no block, and the program goes on below it.\n"},
        {u"$INCLUDE BP NONE\nINCLUDE NO NONE ;* x\nINCLUDE NONE",
         u"1: Include item BP NONE does not exist.\n"
         u"2: Include item NO NONE does not exist: there is no file NO.\n3: Include item BP NONE does not exist.\n"},
        {u"A = 1\n$INCLUDE INC BROKEN", u"2: in line 2 of INC BROKEN: The string that begins with ' is not closed.\n"},
        {u"$INCLUDE INC SUBS\nSUB1: X = 1", u"2: Label SUB1 is defined twice, first in line 1 of INC SUBS.\n"},
        {u"$INCLUDE INC OPEN\nB = 1", u"1: in line 1 of INC OPEN: THEN is not closed: END is missing.\n"}};
    for (const auto& [program, findings] : rows) EXPECT_EQ(Findings(program), findings) << ToUtf8(program);
}

TEST(CheckerTest, LeavesDialectsAlone)
{
    const TextView programs[] = {
        u"",
        u"IF A THEN B = 1 ELSE C = 1\nIF A THEN B = 1 ELSE\n C = 1\nEND",
        u"IF A THEN\n B = 1\nEND ELSE\n C = 1\nEND",
        u"IF A THEN\n B = 1\nEND ELSE C = 1\nif a then\n b = 1\nend else if c then\n d = 1\nend",
        u"IF A\nTHEN\n B = 1\nEND\nELSE\n C = 1\nEND",
        u"IF A THEN IF B THEN\n C = 1\nEND",
        u"IF A THEN B = 1 END ELSE C = 1\nIF A THEN B = 1 ; END\nA = 1",
        u"IF A THEN ;* if it's so\n B = 1\nEND ;* (",
        u"IF A THEN * if it's so\n B = 1\nEND",
        u"LOOP WHILE A DO B = 1 REPEAT\nLOOP\nUNTIL A REPEAT\nLOOP\nWHILE A DO REPEAT",
        u"LOOP UNTIL A DO\n B = 1\n WHILE C\n D = 1\nREPEAT",
        u"FOR I = 1 TO 3 ; A = 1 ; NEXT I\nIF A THEN FOR I = 1 TO 3 ; B = 1 ; NEXT I\nFOR EACH X IN Y\nNEXT",
        u"FOR I = 1 TO 3 UNTIL A\n B = 1\nNEXT I ; C = 1",
        u"BEGIN CASE\n CASE A ; B = 1\n CASE ELSE\n  C = 1\nEND CASE",
        u"BEGIN CASE ;* x\nCASE A = 1 AND (B = 2)\n IF C THEN\n  D = 1\n END\nCASE 1 ; NULL\nEND CASE",
        u"READU A FROM F, I LOCKED\n B = 1\nEND THEN\n C = 1\nEND ELSE\n D = 1\nEND",
        u"READU A FROM F, I\nLOCKED\n B = 1\nEND\nTHEN C = 1\nELSE D = 1",
        u"READ A FROM F, I ON ERROR\n B = 1\nEND ELSE\n C = 1\nEND",
        u"READU A FROM F, I LOCKED GOTO 10\n10 STOP",
        u"LOCKED = 1\nIF LOCKED THEN STOP\nX = LOCKED\nLOOP UNTIL LOCKED\nREPEAT",
        u"END = 1\nNEXT += 1\nREPEAT<1> = 2\nX = A$END + B.NEXT + @END + L->NEXT",
        u"GO = 1\nIF GO THEN\n A = 1\nEND",
        u"10 A = 1\n20: B = 1\nGO 10\nGO TO 20:\nGOTO 010\nON A GOSUB 10, 20 ,\n* list\n  20,\n\n 10\nB = 1",
        u"GOSUB lower\nLOWER: RETURN\nGOSUB ALONE\nALONE\nRETURN\nGOSUB N%1\nGOSUB SUB.A(1)\nLOCAL SUBROUTINE SUB.A(X)",
        u"A := 1\nA:= 2\nA:=3\nX: Y: Z",
        u"A = F(1, ;* one\n  2)\nDIM B(1,\n 10,\n 10)\nCALL S(A,\n 10,\n 10\n ,20)",
        u"EQU A TO 1,\n10 TO B,\n10 TO C",
        u"PRINT @(0,0):'x':\nPRINT \"(\" ' \" '\nA = \"'\" : '\"' : '\\' : \\'\"\\",
        u"* it's (\n! don't\nREM isn't (\nrem: won't\nA = 1 ; * can't (\nX: * hasn't",
        u"A = 1 // it's (\n// don't\n/* several\n lines, isn't\n*/\nGOSUB X * it's\nX: RETURN",
        u"A = 'x' : \\\n'y'",
        u"$OPTIONS EXT\n$DEFINE IT'S (\n#define X 'y\n$COPYRIGHT \"x",
        u"$IFDEF UV\nX: IF A THEN\n$ELSE\nX: IF B THEN\n$ENDIF\n C = 1\nEND",
        u"IF A THEN\n STOP\nX: B = 1\nEND\nEND",
        u"IF A THEN\n STOP\nEND\nX: IF B THEN\n C = 1\nEND",
        u"BEGIN TRANSACTION\n A = 1\nEND TRANSACTION",
        u"SUBROUTINE A\n10 RETURN\nEND\nSUBROUTINE B\n10 RETURN\nEND",
        u"CLASS C\nPUBLIC SUBROUTINE A\n RETURN\nEND\nEND",
        u"STOP\nEND\nNotes: what isn't code (at all\nIF you like THEN\n",
        u"$INCLUDE BP EQUATES\n$INSERT NONE\n$INCLUDE FAR NONE\nINCLUDE = 1\n$INCLUDE ../X\n$INCLUDE A,B,C\nGOSUB X",
        u"$INCLUDE INC SUBS ;* x\n$include SUBS from INC\nGOSUB SUB1",
        u"$INCLUDE BP SELF\nINCLUDE \"BP\" \"EQUATES\" ;* x",
        u"$INCLUDE INC OPEN\nB = 1\nEND",
        u"\tFOR I = 1 TO 3\t; A = 1\nX:\tB = 1\n\tNEXT\tI\n\tGOSUB X",
        u"A = 'x\uF8FDy\uF8FCz' ;* \uF8FD isn't",
    };
    for (TextView program : programs) {
        Text found = Findings(program);
        if (program.starts_with(u"$INCLUDE INC SUBS ;")) continue;
        EXPECT_EQ(found, u"") << ToUtf8(program);
    }
}

TEST(CheckerTest, SurvivesEndlessNesting)
{
    EXPECT_EQ(Findings(Text(100'000, u'(')), u"1: \"(\" without \")\".\n");
    Text deep;
    for (int i = 0; i < 20'000; ++i) deep += u"LOOP\n";
    for (int i = 0; i < 20'000; ++i) deep += u"REPEAT\n";
    EXPECT_EQ(Findings(deep), u"");
}

} // namespace nib::test::checker_test
