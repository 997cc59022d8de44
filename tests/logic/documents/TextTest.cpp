// The text of a document: its two forms, labels, selections, jumps and line identities.

#include "base/Text.h"
#include "documents/mvDocument.h"
#include "editing/LexClass.h"
#include "fakes/Failure.h"
#include "fakes/TestProgram.h"
#include "text/TextSearch.h"

namespace nib::test {
namespace {

TEST(TextFormsTest, Tabs)
{
    struct {
        Text text;
        int32_t width;
        Text expanded;
    } const rows[] = {{u"", 3, u""},        {u"a\tb", 3, u"a   b"}, {u"\t\t", 2, u"    "}, {u"a\tb", 1, u"a b"},
                      {u"a\tb", 0, u"a b"}, {u"a\tb", -4, u"a b"},  {u"ab", 8, u"ab"}};
    for (auto& row : rows) EXPECT_EQ(ExpandTabs(row.text, row.width), row.expanded) << ToUtf8(row.text) << row.width;
}

TEST(TextFormsTest, LineEnds)
{
    const std::pair<Text, Text> rows[] = {{u"", u""},
                                          {u"a", u"a"},
                                          {u"a\r\nb", u"a\r\nb"},
                                          {u"a\nb\n", u"a\r\nb\r\n"},
                                          {u"a\rb", u"a\r\nb"},
                                          {u"a\r\nb\nc\rd\n", u"a\r\nb\r\nc\r\nd\r\n"},
                                          {u"a\nb\rc", u"a\nb\rc"}, // as many of each: left alone
                                          {u"\n\r", u"\n\r"}};
    for (auto& [text, wanted] : rows) {
        EXPECT_EQ(NormalizeLineEnds(text), wanted) << ToUtf8(wanted);
        EXPECT_EQ(NormalizeLineEnds(NormalizeLineEnds(text)), wanted);
    }
}

TEST(LabelTest, ScanLabel)
{
    struct {
        Text line, name;
        int32_t column;
    } const rows[] = {{u"  100 X = 1", u"100", 2},
                      {u"A.B$_1: X", u"A.B$_1", 0},
                      {u"100A:", u"100", 0},
                      {u"   ", u"", 0},
                      {u"", u"", 0},
                      {u"\tA:", u"", 0},
                      {u"*A:", u"", 0},
                      {u"_A:", u"", 0},
                      {u"é:", u"", 0},
                      {u"z9", u"z9", 0}};
    for (auto& row : rows) {
        Label label = ScanLabel(row.line, 0);
        EXPECT_EQ(label.name, row.name) << ToUtf8(row.line);
        EXPECT_EQ(label.column, row.column) << ToUtf8(row.line);
    }
}

struct TextTest : testing::Test {
    TestProgram t;
    std::shared_ptr<mvDocument> document = t.New();
    FakeDocView& window = t.View(*document);
    SourceView& view = window.txtText();
    SourceDocument& text = view.Document();

    void Load(TextView lines)
    {
        document->SetText(lines);
        text.SetModified(false);
    }
    void LoadLines(int32_t count)
    {
        Text lines;
        for (int32_t i = 1; i < count; ++i) lines += u"\r\n";
        Load(lines);
    }
    void MarkLabel(int32_t line) { text.SetLineData(line, LineWord::Lexer, line_flag::kLabel); }
};

TEST_F(TextTest, LabelTableAndGotoLabel)
{
    Load(u"  100 X = 1\r\nA.B$_1: X\r\nNOT: marked\r\n* marked, but none\r\nLAST:");
    for (int32_t line : {0, 1, 3, 4}) MarkLabel(line);
    EXPECT_EQ(document->Labels(), (std::vector<Label>{{u"100", 0, 2}, {u"A.B$_1", 1, 0}, {u"LAST", 4, 0}}));
    document->GotoLabel(u"LAST");
    EXPECT_EQ(view.Caret(), (Position{0, 4}));
    document->GotoLabel(u"100");
    EXPECT_EQ(view.Caret(), (Position{2, 0}));
    for (TextView absent : {u"NOT", u"last", u""}) {
        const Error error = ErrorOf([&] { document->GotoLabel(absent); });
        EXPECT_EQ(error.number, 32767) << ToUtf8(absent);
        EXPECT_EQ(error.description, u"Target label not found!");
        EXPECT_EQ(view.Caret(), (Position{2, 0}));
    }
}

TEST_F(TextTest, LabelTableKeepsUpWithTheText)
{
    Load(u"A:\r\nB:");
    MarkLabel(0);
    EXPECT_EQ(document->Labels().at(0).name, u"A");
    text.InsertText({0, 0}, u"Z");
    EXPECT_EQ(document->Labels().at(0).name, u"ZA");
    document->Undo();
    EXPECT_FALSE(document->IsDirty());
    EXPECT_EQ(document->Labels().at(0).name, u"A") << "undone back to the saved text";
    text.InsertText({0, 0}, u"Y");
    EXPECT_TRUE(document->ItemSaveAs(t.Item(kMain)));
    EXPECT_EQ(document->Labels().at(0).name, u"YA") << "saved under another name meanwhile";
    EXPECT_TRUE(document->FileSave());
    Load(u"");
    EXPECT_TRUE(document->Labels().empty());
}

TEST_F(TextTest, ShowLineCentres)
{
    LoadLines(100);
    window.pane.pageLines = 20;
    struct {
        int32_t line;
        bool centre;
        int32_t before, after;
    } const rows[] = {{50, true, 0, 40}, {50, false, 0, 0},  {10, true, 0, 0},   {11, true, 0, 1},  {95, true, 0, 80},
                      {5, true, 60, 60}, {70, true, 60, 60}, {71, true, 60, 61}, {99, true, 85, 80}};
    for (auto& row : rows) {
        window.pane.firstLine = row.before;
        document->ShowLine(0, row.line, row.centre);
        EXPECT_EQ(window.pane.firstLine, row.after) << row.line << " from " << row.before;
        EXPECT_EQ(view.CaretLine(), row.line);
    }
    window.pane.firstLine = 0;
    LoadLines(15);
    document->ShowLine(0, 14, true);
    EXPECT_EQ(window.pane.firstLine, 0) << "a text shorter than the page never scrolls";
}

TEST_F(TextTest, LineIdentities)
{
    LoadLines(5);
    EXPECT_EQ(document->LineIdFromLine(-1), -1);
    int32_t second = document->LineIdFromLine(1);
    int32_t last = document->LineIdFromLine(4);
    EXPECT_EQ(document->LineIdFromLine(1), second);
    EXPECT_NE(second, last);
    text.InsertText({0, 0}, u"x\r\ny\r\n");
    text.InsertText({0, 3}, u"in front: ");
    EXPECT_EQ(document->LineFromLineId(second), 3);
    EXPECT_EQ(document->LineFromLineId(last), 6);
    text.DeleteRange({0, 2}, {0, 5});
    EXPECT_EQ(document->LineFromLineId(second), -1);
    EXPECT_EQ(document->LineFromLineId(last), 3);
    document->Undo();
    EXPECT_EQ(document->LineFromLineId(second), 3) << "it comes back with its line";
    for (int32_t id : {0, -1, 4711}) EXPECT_EQ(document->LineFromLineId(id), -1);
    EXPECT_NE(t.New()->LineIdFromLine(0), document->LineIdFromLine(0)) << "unique among all documents";
}

TEST_F(TextTest, SettingTheTextOnlyWhenItDiffers)
{
    document->SetText(u"a\tb\r\nc");
    EXPECT_TRUE(document->IsDirty());
    EXPECT_FALSE(document->CanUndo());
    text.ToggleBookmark(1);
    text.InsertText({0, 0}, u"x");
    text.SetModified(false);
    document->SetText(u"xa\tb\r\nc");
    EXPECT_FALSE(document->IsDirty());
    EXPECT_TRUE(document->CanUndo());
    EXPECT_EQ(text.BookmarkCount(), 1);
    document->SetText(u"other");
    EXPECT_TRUE(document->IsDirty());
    EXPECT_FALSE(document->CanUndo());
    EXPECT_EQ(text.BookmarkCount(), 0);
}

TEST_F(TextTest, Selections)
{
    const Text all = u"first\r\nsecond\r\nlast";
    Load(all);
    EXPECT_EQ(document->SelText(), u"");
    struct {
        Position anchor, caret;
        Text selected;
        bool lines;
    } const rows[] = {{{1, 0}, {3, 0}, u"ir", false},
                      {{3, 0}, {1, 0}, u"ir", false},
                      {{2, 0}, {3, 2}, u"rst\r\nsecond\r\nlas", true},
                      {{3, 2}, {2, 0}, u"rst\r\nsecond\r\nlas", true},
                      {{0, 1}, {0, 2}, u"second\r\n", true}};
    for (auto& row : rows) {
        view.SetSelection(row.anchor, row.caret);
        EXPECT_EQ(document->SelText(), row.selected);
        EXPECT_EQ(document->SelectionIsMultiLine(), row.lines);
        EXPECT_EQ(document->GetOrderedSelection().swapped, row.caret < row.anchor);
        document->SetSelText(u"<\t>");
        EXPECT_EQ(document->GetText(), Replace(all, row.selected, u"<   >"));
        document->Undo();
        EXPECT_EQ(document->GetText(), all);
        EXPECT_FALSE(document->CanUndo()) << "one step";
        document->Redo();
        EXPECT_EQ(document->GetText(), Replace(all, row.selected, u"<   >"));
        document->Undo();
    }
}

} // namespace
} // namespace nib::test
