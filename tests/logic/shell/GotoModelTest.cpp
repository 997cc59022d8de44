#include "documents/mvDocument.h"
#include "editing/LexClass.h"
#include "fakes/TestProgram.h"
#include "shell/navigation/Navigation.h"

namespace nib::test {
namespace {

struct GotoModelTest : testing::Test {
    TestProgram t;
    std::shared_ptr<mvDocument> document = t.New();
    SourceView& view = t.View(*document).txtText();

    GotoModelTest()
    {
        document->SetText(u"B:\r\nX = 1\r\n  A:\r\n10 X = 2");
        for (int32_t line : {0, 2, 3}) view.Document().SetLineData(line, LineWord::Lexer, line_flag::kLabel);
        document->Activate();
    }
};

TEST_F(GotoModelTest, Accept)
{
    struct {
        bool byLine;
        Text label, line;
        Position caret;
        Text target;
    } const rows[] = {{false, u"A", u"4", {2, 2}, u"A"},    {false, u"10", u"", {0, 3}, u"10"},
                      {true, u"A", u"2", {0, 1}, u"old"},   {true, u"", u" 3 ", {0, 2}, u"old"},
                      {true, u"A", u"abc", {0, 0}, u"old"}, {true, u"A", u"", {0, 0}, u"old"},
                      {true, u"", u"99", {0, 3}, u"old"},   {true, u"", u"9999999999", {0, 3}, u"old"}};
    for (auto& row : rows) {
        GotoModel model(t.program.Services());
        model.Begin(u"old");
        model.ChooseLine(row.byLine);
        EXPECT_TRUE(model.Accept(row.label, row.line));
        EXPECT_EQ(view.Caret(), row.caret) << ToUtf8(row.label) << " " << ToUtf8(row.line);
        EXPECT_EQ(model.Target(), row.target);
    }
}

TEST_F(GotoModelTest, FailureIsToldAndTheDialogStays)
{
    GotoModel model(t.program.Services());
    model.Begin(u"");
    view.SetCaret({1, 1});
    EXPECT_FALSE(model.Accept(u"NOWHERE", u"1"));
    EXPECT_EQ(view.Caret(), (Position{1, 1}));
    document->FileClose(false);
    t.window.activeDocument = 0;
    EXPECT_FALSE(model.Accept(u"A", u"1"));
    model.Begin(u"");
    EXPECT_TRUE(model.Labels().empty());
    EXPECT_EQ(model.LineCount(), 0);
    EXPECT_EQ(t.boxes.Take(), (Boxes{{u"The following error has occurred:\nTarget label not found!"},
                                     {u"The following error has occurred:\nNo document is open."}}));
    EXPECT_EQ(t.trace.lines.size(), 2u);
}

TEST_F(GotoModelTest, ChoiceAndSettings)
{
    MvEdit& settings = t.program.EditorSettings();
    settings.GotoLineNumber = true;
    GotoModel model(t.program.Services());
    EXPECT_TRUE(model.ByLine());
    model.ChooseLine(false);
    model.Begin(u"");
    EXPECT_FALSE(model.ByLine()) << "the user's choice stays";
    settings.GotoLineNumber = false;
    model.Begin(u"");
    settings.GotoLineNumber = true;
    model.Begin(u"");
    EXPECT_TRUE(model.ByLine()) << "until the setting changes";
    model.SetNoGotoDialog(true);
    EXPECT_TRUE(settings.NoGotoDialog) << "written at once";
    EXPECT_TRUE(model.NoGotoDialog());
}

} // namespace
} // namespace nib::test
