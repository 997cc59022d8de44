#include "shell/navigation/Navigation.h"
#include "editing/LexClass.h"
#include "fakes/TestProgram.h"

namespace nib::test::navigation_test {

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
    const std::tuple<bool, Text, Text, Position, Text> rows[] = {
        {false, u"A", u"4", {2, 2}, u"A"},    {false, u"10", u"", {0, 3}, u"10"},
        {true, u"A", u"2", {0, 1}, u"old"},   {true, u"", u" 3 ", {0, 2}, u"old"},
        {true, u"A", u"abc", {0, 0}, u"old"}, {true, u"A", u"", {0, 0}, u"old"},
        {true, u"", u"99", {0, 3}, u"old"},   {true, u"", u"9999999999", {0, 3}, u"old"}};
    for (const auto& [byLine, label, line, caret, target] : rows) {
        GotoModel model(t.program.Services());
        model.Begin(u"old");
        model.ChooseLine(byLine);
        EXPECT_TRUE(model.Accept(label, line));
        EXPECT_EQ(view.Caret(), caret) << ToUtf8(label) << " " << ToUtf8(line);
        EXPECT_EQ(model.Target(), target);
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

struct HistoryTest : testing::Test {
    TestProgram t;
    NavigationHistory& history = t.program.History();
    std::shared_ptr<mvDocument> document = Lines(300);

    std::shared_ptr<mvDocument> Lines(int32_t count)
    {
        auto made = t.New();
        Text lines;
        for (int32_t i = 1; i < count; ++i) lines += u"some text\r\n";
        made->SetText(lines);
        made->Activate();
        return made;
    }
    SourceView& Source(mvDocument& of) { return t.View(of).txtText(); }
    void Put(int32_t line, int32_t column = 0) { Source(*document).SetCaret({column, line}); }
    void Record(int32_t line, int32_t column = 0)
    {
        Put(line, column);
        EXPECT_TRUE(history.RecordPosition(document.get(), false));
    }
    std::shared_ptr<mvDocument> Active() { return t.Documents().ById(t.window.activeDocument); }
    /// The line of the active document after the move; -1 when there was none.
    int32_t Back() { return history.NavigateBack(Active().get()) ? Source(*Active()).CaretLine() : -1; }
    int32_t Forward() { return history.NavigateForward(Active().get()) ? Source(*Active()).CaretLine() : -1; }
    void ExpectCan(bool back, bool forward)
    {
        EXPECT_EQ(history.CanNavigateBack(), back);
        EXPECT_EQ(history.CanNavigateForward(), forward);
    }
};

TEST_F(HistoryTest, BackAndForwardWalkTheRecords)
{
    ExpectCan(false, false);
    EXPECT_EQ(Back(), -1);
    EXPECT_EQ(Forward(), -1);
    for (int32_t line : {10, 20, 30}) Record(line, 4);
    Put(40, 2);
    ExpectCan(true, false);
    for (int32_t line : {30, 20, 10, -1}) EXPECT_EQ(Back(), line);
    EXPECT_EQ(Source(*document).Caret().col, 4);
    ExpectCan(false, true);
    for (int32_t line : {20, 30, 40, -1}) EXPECT_EQ(Forward(), line);
    EXPECT_EQ(Source(*document).Caret().col, 2) << "where the first step back began";
    ExpectCan(true, false);
    EXPECT_EQ(Back(), 30);
    EXPECT_EQ(Forward(), 40);
}

TEST_F(HistoryTest, NewRecordEndsTheWayForward)
{
    for (int32_t line : {10, 20, 30}) Record(line);
    Back();
    Back();
    ExpectCan(true, true);
    Record(50);
    ExpectCan(true, false);
    EXPECT_EQ(Forward(), -1);
    Put(60);
    EXPECT_EQ(Back(), 50);
    EXPECT_EQ(Back(), 10);
}

TEST_F(HistoryTest, RingKeepsTheLastHundred)
{
    for (int32_t line = 0; line <= 100; ++line) Record(line);
    Put(200);
    int32_t steps = 0;
    int32_t last = -1;
    for (int32_t line = Back(); line >= 0; line = Back(), ++steps) {
        if (steps < 99) {
            EXPECT_EQ(line, 100 - steps);
        }
        last = line;
    }
    EXPECT_EQ(steps, 100);
    EXPECT_NE(last, 0) << "the 101st record took the place of the first";
    ExpectCan(false, true);
}

TEST_F(HistoryTest, ClosedDocumentIsSkipped)
{
    Record(10);
    auto other = Lines(20);
    EXPECT_TRUE(history.RecordPosition(other.get(), false));
    other->FileClose(false);
    document->Activate();
    Put(50);
    EXPECT_EQ(Back(), 10);
    ExpectCan(false, true);
}

TEST_F(HistoryTest, MarkersFollowEdits)
{
    for (int32_t line : {10, 20, 30}) Record(line);
    SourceDocument& text = Source(*document).Document();
    text.DeleteRange({0, 29}, {0, 31});
    text.InsertText({0, 0}, u"new\r\nlines\r\n");
    Put(100);
    EXPECT_EQ(Back(), 22) << "30 is gone, 20 has moved";
    EXPECT_EQ(Back(), 12);
    ExpectCan(false, true);
}

TEST_F(HistoryTest, StaleRecordsAreConsumed)
{
    for (int32_t line : {10, 20}) Record(line);
    Source(*document).Document().DeleteRange({0, 5}, {0, 50});
    Put(70, 3);
    EXPECT_EQ(Back(), -1);
    EXPECT_EQ(Source(*document).Caret(), (Position{3, 70}));
    ExpectCan(false, false);
}

TEST_F(HistoryTest, Throttle)
{
    const std::tuple<int64_t, bool, bool> rows[] = {{0, true, true},    {500, true, false},  {500, true, false},
                                                    {1, true, true},    {1000, true, false}, {0, false, true},
                                                    {0, false, true},   {0, true, true},     {1, true, false},
                                                    {-100, true, true}, {1001, true, true},  {1000, true, false}};
    int32_t at = 0;
    for (const auto& [after, throttled, recorded] : rows) {
        t.clock.now += after;
        EXPECT_EQ(history.RecordPosition(document.get(), throttled), recorded) << at;
        ++at;
    }
    EXPECT_FALSE(history.RecordPosition(nullptr, false));
    EXPECT_FALSE(history.NavigateBack(nullptr));
    EXPECT_FALSE(history.NavigateForward(nullptr));
}

TEST_F(HistoryTest, OwnMovesRecordNothing)
{
    Record(10);
    Record(20);
    Put(30);
    int32_t calls = 0;
    t.window.whileProcessing = [&] {
        ++calls;
        EXPECT_FALSE(history.RecordPosition(document.get(), false));
        EXPECT_FALSE(history.NavigateBack(document.get())) << "a key that repeats";
    };
    EXPECT_EQ(Back(), 20);
    EXPECT_EQ(calls, 1);
    t.window.whileProcessing = nullptr;
    EXPECT_EQ(Back(), 10);
    EXPECT_EQ(Forward(), 20);
    EXPECT_EQ(Forward(), 30);
}

TEST_F(HistoryTest, JumpsOfTheActiveDocumentRecord)
{
    Put(7);
    document->GotoLine(100);
    EXPECT_EQ(Back(), 7);
    EXPECT_EQ(Forward(), 99);
    auto other = Lines(20);
    document->GotoLine(150);
    Source(*other).SetCaret({0, 1});
    EXPECT_EQ(Back(), 7) << "a jump in a document that is not active is none of the user's";
}

} // namespace nib::test::navigation_test
