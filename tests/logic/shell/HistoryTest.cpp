// The navigation history: what is recorded, and where Back and Forward lead after edits and closed documents.

#include "fakes/TestProgram.h"

namespace nib::test {
namespace {

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
    struct {
        int64_t after;
        bool throttled, recorded;
    } const rows[] = {{0, true, true},     {500, true, false}, {500, true, false}, {1, true, true},
                      {1000, true, false}, {0, false, true},   {0, false, true},   {0, true, true},
                      {1, true, false},    {-100, true, true}, {1001, true, true}, {1000, true, false}};
    int32_t at = 0;
    for (auto& row : rows) {
        t.clock.now += row.after;
        EXPECT_EQ(history.RecordPosition(document.get(), row.throttled), row.recorded) << at;
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

} // namespace
} // namespace nib::test
