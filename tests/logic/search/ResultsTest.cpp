#include "fakes/FakeSearch.h"

namespace nib::test::results_test {

using Lines = std::vector<Text>;

struct TestResults : TestSearch {
    ResultsModel model{program.program.Services()};
};

TEST(ResultsModelTest, LinesAndStyles)
{
    TestResults test;
    EXPECT_EQ(test.model.LineCount(), 1);
    test.model.ResetResults(u"Search Results");
    test.model.AddResultLine(u"", 0, 0, false);
    test.model.AddResultLine(u"PROG [3]", 0, 0, true);
    test.model.AddResultLine(u"0012 ab", 5, 2, false);
    EXPECT_EQ(test.model.Contents(), u"Search Results\n \nPROG [3] \n0012 ab ");
    EXPECT_EQ(test.model.LineText(3), u"0012 ab ");
    EXPECT_TRUE(test.model.LineStyle(0).bold);
    EXPECT_TRUE(test.model.LineStyle(2).underlined);
    EXPECT_EQ(test.model.LineStyle(3).highlightStart, 5);
    EXPECT_EQ(test.model.LineStyle(3).highlightLength, 2);
    test.model.ShowResults(u"");
    EXPECT_EQ(test.model.LineCount(), 4) << "only shown";
    test.model.ShowResults(u"a\r\nb\n\rc\r\n");
    EXPECT_EQ(test.model.Contents(), u"a\nb\n\nc\n");
    EXPECT_EQ(test.model.LineCount(), 5);
    EXPECT_EQ(test.model.LineText(3), u"c");
}

TEST(ResultsModelTest, SourceLine)
{
    const std::tuple<Text, int32_t, Text, int32_t> rows[] = {{u"0123 text 42", 10, u"42", 42},
                                                             {u"0123 text", 0, u"0123", 123},
                                                             {u"0123 text", 5, u"text", 123},
                                                             {u"0123 text 42", 5, u"text", 42},
                                                             {u"0123 a45 b", 9, u"b", 45},
                                                             {u"00012 error in line", 8, u"", 12},
                                                             {u"Error on line 17: syntax", 0, u"Error", 17},
                                                             {u"no number", 3, u"", 0},
                                                             {u"", 0, u"", 0},
                                                             {u"12 x 0", 3, u"x", 12},
                                                             {u"0000 text", 5, u"", 0},
                                                             {u"x 7", 99, u"", 7},
                                                             {u"line 99999999999", 0, u"", 2147483647},
                                                             {u"about 2E1 lines", 0, u"about", 20},
                                                             {u"at &H1F", 3, u"&H1F", 31}};
    for (const auto& [line, caret, selected, wanted] : rows) {
        TestResults test;
        test.model.ShowResults(u"8\r\n" + line + u"\r\n9");
        EXPECT_EQ(test.model.SourceLine({caret, 1}, selected), wanted) << ToUtf8(line) << caret;
    }
}

TEST(ResultsModelTest, WhatACompilerPrintsLeadsToItsProgram)
{
    TestResults test;
    TestProgram& t = test.program;
    const Text account = u"mvdb:*/DEMO/";
    const std::pair<TextView, TextView> items[] = {
        {u"BP/MAIN", u"A\r\nB\r\n  $INCLUDE INC DEFS ;* x\r\n$INSERT common\r\n$INCLUDE NOT THERE\r\nF"},
        {u"BP/SUB", u"A\r\nB\r\nC"},
        {u"BP/A%2FB", u"1\r\n2\r\n3"},
        {u"BP/COMMON", u"include INC DEFS\r\nY\r\nZ"},
        {u"INC/DEFS", u"1\r\n2\r\n3\r\n4"}};
    for (const auto& [name, text] : items) t.Store(account + Text(name), Text(text));
    t.Open(kMain);
    auto& active = test.Add(u"1\r\n2\r\n3\r\n4\r\n5");
    t.program.Services().compiled = {u"mvdb", u"*", u"DEMO", u"BP", u"MAIN"};
    test.model.openPath = [&](TextView path) { return t.program.OpenPath(path, false); };
    const Text output = u"Compiling BP SUB\r\n2: B is wrong\r\n1 error(s)\r\nCompiling BP MAIN\r\n2: B 5\r\n"
                        u"3.3: no\r\n3: WARNING: x\r\n4.2: no\r\n4.1.2: no\r\n5.9: no\r\n"
                        u"WARNING: X1 is not assigned\r\n2 error(s)\r\nCompiled 1 program(s) with errors in:\r\n   M1";
    const Text broken = u"000000B1: Unassigned variable X1 at line 3 of ";
    const struct {
        Text output;
        int32_t line;
        Text item; ///< empty: the active document
        int32_t sourceLine;
    } rows[] = {{output, 1, u"BP/SUB", 2},
                {output, 2, u"", 1},
                {output, 4, u"BP/MAIN", 2},
                {output, 5, u"INC/DEFS", 3},
                {output, 6, u"BP/MAIN", 3},
                {output, 7, u"BP/COMMON", 2},
                {output, 8, u"INC/DEFS", 2},
                {output, 9, u"BP/MAIN", 5},
                {output, 10, u"", 1},
                {output, 11, u"", 1},
                {output, 12, u"", 1},
                {output, 13, u"", 1},
                {broken + u"/x/TESTACC/BP.OUT/SUB", 0, u"BP/SUB", 3},
                {broken + u"/x/TESTACC/BP.OUT/A%SB", 0, u"BP/A%2FB", 3},
                {broken + u"SUB", 0, u"BP/SUB", 3},
                {broken + u"NONE", 0, u"", 1},
                {u"Compiling 2 programs of BP\r\nError in line 4", 1, u"", 4},
                {u"3.3: no", 0, u"", 3}};
    for (const auto& row : rows) {
        SCOPED_TRACE(ToUtf8(row.output) + "\n" + std::to_string(row.line));
        active.Activate();
        test.View(active).SetCaret({0, 0});
        test.model.ShowResults(row.output);
        test.model.JumpToSource({0, row.line}, u"");
        auto at = t.Documents().ById(t.window.activeDocument);
        ASSERT_TRUE(at);
        EXPECT_EQ(at->Path(), row.item.empty() ? active.Path() : account + row.item);
        EXPECT_EQ(test.View(*at).Caret().line + 1, row.sourceLine);
    }

    // One key goes from error to error, wherever the user is.
    test.model.ShowResults(output);
    const std::pair<bool, int32_t> steps[] = {{false, 1}, {false, 4}, {false, 5}, {false, 6},  {true, 5}, {false, 6},
                                              {false, 7}, {false, 8}, {false, 9}, {false, -1}, {true, 8}};
    for (const auto& [backward, row] : steps) EXPECT_EQ(test.model.GoToError(backward).value_or(-1), row);
    test.model.AddOutput(u"12 lines checked", true);
    test.model.AddOutput(u"Error 4 in line 3: no END before line 4.\r\nOutline 2", false);
    active.Activate();
    EXPECT_EQ(test.model.GoToError(true), std::nullopt);
    EXPECT_EQ(test.model.GoToError(false), 1);
    auto at = t.Documents().ById(t.window.activeDocument);
    EXPECT_EQ(at->Path(), account + u"BP/MAIN") << "what was compiled, not what is in front";
    EXPECT_EQ(test.View(*at).Caret().line, 2);
    EXPECT_EQ(t.window.status[1], u"Error 4 in line 3: no END before line 4.");
    EXPECT_EQ(test.model.GoToError(false), std::nullopt);
    t.program.Services().compiledLine = [&](const mvDocument& document, int32_t line) {
        return &document == at.get() ? line + 2 : line;
    };
    test.model.JumpToSource({6, 1}, u"4");
    EXPECT_EQ(test.View(*at).Caret().line, 5) << "where the line is now";
}

/// To the line that was meant, whatever other numbers stand in it; lines that belong to no item lead nowhere.
TEST(ResultsModelTest, JumpsIntoTheItemOfAPath)
{
    TestResults test;
    Lines opened;
    auto& document = test.Add(u"1\r\n2\r\n3");
    test.model.openPath = [&](TextView path) {
        opened.emplace_back(path);
        return path != u"mvdb:gone";
    };
    test.model.ResetResults(u"T");                     // 0
    test.model.AddItemHeader(u"BP A", u"mvdb:a");      // 1
    test.model.AddItemLine(u"0002 X = 3", 5, 1, 2);    // 2
    test.model.AddItemHeader(u"BP B", u"mvdb:gone");   // 3
    test.model.AddItemLine(u"0003 X = 1", 5, 1, 3);    // 4
    test.model.AddResultLine(u"Hits: 3", 0, 0, false); // 5
    const std::pair<int32_t, int32_t> rows[] = {{0, 0}, {2, 1}, {1, 1}, {4, 1}, {5, 1}};
    for (auto& [line, caretLine] : rows) {
        test.model.JumpToSource({8, line}, u"3");
        EXPECT_EQ(test.View(document).Caret().line, caretLine) << line;
    }
    EXPECT_EQ(opened, (Lines{u"mvdb:a", u"mvdb:a", u"mvdb:gone"}));
    const int32_t list = test.model.ListNumber();
    test.model.ShowResults(u"0003 compiled");
    test.model.JumpToSource({0, 0}, u"");
    EXPECT_EQ(test.View(document).Caret().line, 2) << "the old ways are back";
    EXPECT_NE(test.model.ListNumber(), list);
}

TEST(ResultsModelTest, JumpsToTheDocumentOfTheHeaderAbove)
{
    TestResults test;
    auto& first = test.Add(u"1\r\n2\r\n3\r\n4");
    auto& second = test.Add(u"1\r\n2\r\n3\r\n4");
    auto gone = test.program.New();
    auto& active = test.Add(u"1\r\n2\r\n3\r\n4");
    test.model.ResetResults(u"T");                           // 0
    test.model.AddResultLine(u"0001 x", 5, 1, false);        // 1
    test.model.AddResultLine(first.ListName(), 0, 0, true);  // 2
    test.model.AddResultLine(u"0002 x", 5, 1, false);        // 3
    test.model.AddResultLine(second.ListName(), 0, 0, true); // 4
    test.model.AddResultLine(u"0003 x", 5, 1, false);        // 5
    test.model.AddResultLine(gone->ListName(), 0, 0, true);  // 6
    test.model.AddResultLine(u"0004 x", 5, 1, false);        // 7
    gone->FileClose(false);
    const std::tuple<int32_t, mvDocument&, int32_t> rows[] = {
        {1, active, 0}, {3, first, 1}, {5, second, 2}, {7, second, 3}};
    for (const auto& [line, document, caretLine] : rows) {
        active.Activate();
        test.model.JumpToSource({0, line}, u"");
        EXPECT_EQ(test.program.window.activeDocument, document.DocumentID()) << line;
        EXPECT_EQ(test.View(document).Caret().line, caretLine);
    }
    test.model.AddItemLine(u"0002 77 x", 8, 1, 2); // 8
    test.model.JumpToSource({6, 8}, u"77");
    EXPECT_EQ(test.View(second).Caret().line, 1) << "a row of a search leads to its line, whatever stands in it";
    active.Activate();
    test.model.ShowResults(first.ListName() + u"\r\n0002 x");
    test.model.JumpToSource({0, 1}, u"");
    EXPECT_EQ(test.program.window.activeDocument, active.DocumentID()) << "a finished text has no headers";
}

TEST(ResultsModelTest, WithoutADocumentNothingHappens)
{
    TestResults test;
    test.model.ShowResults(u"12 x");
    test.model.JumpToSource({0, 0}, u"");
    EXPECT_TRUE(test.program.trace.Take().empty());
}

TEST(ResultsModelTest, FontFallsBackToTheEditors)
{
    TestResults test;
    test.Settings().FontName = u"Mono";
    test.Settings().FontSize = u"11";
    EXPECT_EQ(test.model.FontName(), u"Mono");
    EXPECT_EQ(test.model.FontSize(), 11);
    test.model.SetFont(u"Serif", 8.5);
    EXPECT_EQ(test.Settings().ResultsFontSize, u"8.5");
    EXPECT_EQ(test.model.FontName(), u"Serif");
    EXPECT_EQ(test.model.FontSize(), 8.5);
    test.Settings().ResultsFontSize = u"big";
    EXPECT_EQ(test.model.FontSize(), 10);
}

TEST(ResultsPlacementTest, KeptSizeThatFits)
{
    const ResultsBounds main{100, 200, 10000, 8000};
    const std::tuple<Text, Text, ResultsBounds> rows[] = {{u"", u"", {5980, 5080, 4000, 3000}},
                                                          {u"5000", u"2000", {4980, 6080, 5000, 2000}},
                                                          {u"9880", u"7880", {100, 200, 9880, 7880}},
                                                          {u"9881", u"9000", {5980, 5080, 4000, 3000}},
                                                          {u"-5", u"x", {5980, 5080, 4000, 3000}}};
    for (const auto& [width, height, wanted] : rows) {
        MemorySettings store;
        if (!width.empty()) store.values = {{u"ResultsWidth", width}, {u"ResultsHeight", height}};
        EXPECT_EQ(PlaceResults(store, {0, 0, 4000, 3000}, main), wanted) << ToUtf8(width);
    }
    MemorySettings store;
    SaveResultsSize(store, {0, 0, 4000, 3000});
    EXPECT_EQ(store.values, (StoredValues{{u"ResultsWidth", u"4000"}, {u"ResultsHeight", u"3000"}}));
}

} // namespace nib::test::results_test
