#include "BufferModel.h"

#include <gtest/gtest.h>

#include <functional>

namespace nib::test::undo_test {

/// One letter an action: see Do().
struct Row {
    const char* name;
    const char* actions;
    int32_t steps;  ///< of undo at the end
    Text text;      ///< at the end
    Text afterUndo; ///< of one step
    bool modified;  ///< at the end
};

std::unique_ptr<ISourceOp> AppendOp()
{
    return std::make_unique<CallOp>(
        [](SourceDocument& d) {
            d.InsertText({0, 9}, u"op");
        },
        [](SourceDocument& d) {
            const Position end = d.End();
            d.DeleteRange({end.col - 2, end.line}, end);
        });
}

void Do(SourceDocument& b, char action)
{
    int32_t last = b.LineCount() - 1;
    int32_t end = b.LineLength(last);
    switch (action) {
    case 't': b.InsertText({end, last}, u"x"); break;             // types at the end
    case 'h': b.InsertText({0, 0}, u"h"); break;                  // types at the front
    case 'n': b.InsertText({end, last}, u"\r\n"); break;          // Enter
    case 'b': b.DeleteRange({end - 1, last}, {end, last}); break; // Backspace at the end
    case 'd': b.DeleteRange({0, 0}, {1, 0}); break;               // Delete at the front
    case 'B': b.BreakTyping(); break;
    case '(': b.BeginGroup(); break;
    case ')': b.EndGroup(); break;
    case 's': b.SetModified(false); break;
    case 'm': b.SetModified(true); break;
    case 'u': b.Undo(); break;
    case 'r': b.Redo(); break;
    case 'c': b.ClearUndo(); break;
    case 'S': b.BeginSaving(); break;
    case 'E': b.EndSaving(true); break;
    case 'F': b.EndSaving(false); break;
    case 'x': b.SetText(u"abc"); break;
    case 'o': b.ExecuteOp(AppendOp()); break;
    default: FAIL() << action;
    }
}

int32_t UndoSteps(SourceDocument& buffer)
{
    int32_t steps = 0;
    for (; buffer.CanUndo(); ++steps) buffer.Undo();
    for (int32_t i = 0; i < steps; ++i) buffer.Redo();
    return steps;
}

TEST(Undo, StepsAndSavePoints)
{
    const Row rows[] = {{"typing is one step", "ttt", 1, u"abcxxx", u"abc", true},
                        {"backspacing is one step", "bb", 1, u"a", u"abc", true},
                        {"deleting forward is one step", "dd", 1, u"c", u"abc", true},
                        {"backspace ends typing", "ttb", 2, u"abcx", u"abcxx", true},
                        {"typing elsewhere starts anew", "th", 2, u"habcx", u"abcx", true},
                        {"Enter is a step of its own", "tnt", 3, u"abcx\r\nx", u"abcx\r\n", true},
                        {"a break ends the run", "tBt", 2, u"abcxx", u"abcx", true},
                        {"saving ends the run", "tst", 2, u"abcxx", u"abcx", true},
                        {"undo ends the run", "tBtut", 2, u"abcxx", u"abcx", true},
                        {"redo ends the run", "turt", 2, u"abcxx", u"abcx", true},
                        {"a group is one step", "(tnh)", 1, u"habcx\r\n", u"abc", true},
                        {"groups nest", "(t(n)(h)t)", 1, u"habcx\r\nx", u"abc", true},
                        {"an empty group is none", "t()", 1, u"abcx", u"abc", true},
                        {"a group of one goes on as typing", "(t)t", 1, u"abcxx", u"abc", true},
                        {"a group of two does not", "(tn)t", 2, u"abcx\r\nx", u"abcx\r\n", true},
                        {"an operation is one step", "tot", 3, u"abcxopx", u"abcxop", true},
                        {"an operation within a group belongs to its step", "(tot)", 1, u"abcxopx", u"abc", true},
                        {"saved at once", "s", 0, u"abc", u"abc", false},
                        {"saved and undone", "tsu", 0, u"abc", u"abc", true},
                        {"saved, undone, redone", "tsur", 1, u"abcx", u"abc", false},
                        {"undone to the start", "tu", 0, u"abc", u"abc", false},
                        {"the save point is lost with its steps", "tsuhu", 0, u"abc", u"abc", true},
                        {"marked as modified", "mtu", 0, u"abc", u"abc", true},
                        {"clearing keeps modified", "tc", 0, u"abcx", u"abcx", true},
                        {"clearing keeps unmodified", "tsctu", 0, u"abcx", u"abcx", false},
                        {"a save point inside a cleared past", "tsttcu", 0, u"abcxxx", u"abcxxx", true},
                        {"saved, and nothing meanwhile", "tSE", 1, u"abcx", u"abc", false},
                        {"a save that fails", "tSF", 1, u"abcx", u"abc", true},
                        {"typed while it is saved", "tStE", 2, u"abcxx", u"abcx", true},
                        {"and taken back", "tSttuE", 1, u"abcx", u"abc", false},
                        {"and taken back later", "tStEu", 1, u"abcx", u"abc", false},
                        {"typing goes on after what was saved", "tSuEr", 1, u"abcx", u"abc", false},
                        {"what is saved is undone and lost", "tSuhEu", 0, u"abc", u"abc", true},
                        {"replaced while it is saved", "tSxE", 0, u"abc", u"abc", true},
                        {"marked while it is saved", "tSmE", 1, u"abcx", u"abc", true},
                        {"cleared while it is saved", "tScEtu", 0, u"abcx", u"abcx", true}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        SourceDocument buffer;
        buffer.SetText(u"abc");
        for (const char* action = row.actions; *action; ++action) Do(buffer, *action);
        EXPECT_EQ(buffer.GetText(), row.text);
        EXPECT_EQ(buffer.Modified(), row.modified);
        EXPECT_EQ(UndoSteps(buffer), row.steps);
        EXPECT_EQ(buffer.GetText(), row.text);
        if (buffer.CanUndo()) buffer.Undo();
        EXPECT_EQ(buffer.GetText(), row.afterUndo);
    }
}

/// Does the same on its way there and back, once the text is changed.
std::unique_ptr<ISourceOp> ThereAndBack(CallOp::Step body)
{
    return std::make_unique<CallOp>(
        [body](SourceDocument& d) {
            d.InsertText({0, 0}, u"op\r\n");
            body(d);
        },
        [body](SourceDocument& d) {
            d.DeleteRange({0, 0}, {0, 1});
            body(d);
        });
}

TEST(Undo, AnOperationIsRefusedTheUndoStack)
{
    const std::function<void(SourceDocument&)> bodies[] = {
        [](SourceDocument& d) { d.Undo(); }, [](SourceDocument& d) { d.Redo(); },
        [](SourceDocument& d) { d.ClearUndo(); }, [](SourceDocument& d) { d.ExecuteOp(AppendOp()); },
        [](SourceDocument& d) { static_cast<SourceDocument&>(d).SetText(u"new"); }};
    for (auto& body : bodies) {
        SourceDocument buffer;
        buffer.InsertText({0, 0}, u"abc");
        buffer.BreakTyping();
        buffer.InsertText({3, 0}, u"d");
        buffer.Undo();
        EXPECT_THROW(buffer.ExecuteOp(ThereAndBack(body)), Error);
        EXPECT_EQ(buffer.GetText(), u"abc");
        EXPECT_TRUE(buffer.CanRedo());
        // And on the way back, where the step itself is on the stack.
        bool armed = false;
        buffer.ExecuteOp(ThereAndBack([&](SourceDocument& d) {
            if (armed) body(d);
        }));
        armed = true;
        EXPECT_THROW(buffer.Undo(), Error);
        EXPECT_EQ(buffer.GetText(), u"op\r\nabc");
        armed = false;
        buffer.Undo();
        EXPECT_EQ(buffer.GetText(), u"abc");
    }
}

/// Does the same thing in every call.
struct CallListener : BufferListener {
    explicit CallListener(std::function<void()> body) : body_(std::move(body)) {}
    void TextChanged(const TextChange&) override { body_(); }
    void TextReset() override { body_(); }
    void LinesRepaint(int32_t, int32_t) override { body_(); }
    void CaretRequested(Position) override { body_(); }
    void ModifiedChanged(bool) override { body_(); }

private:
    std::function<void()> body_;
};

TEST(Listeners, EditsFromWithinACallAreRefused)
{
    SourceDocument buffer;
    buffer.InsertText({0, 0}, u"abc");
    int32_t refused = 0;
    CallListener listener([&] {
        EXPECT_THROW(buffer.InsertText({0, 0}, u"no"), Error);
        EXPECT_THROW(buffer.DeleteRange({0, 0}, {1, 0}), Error);
        EXPECT_THROW(buffer.SetText(u"no"), Error);
        EXPECT_THROW(buffer.ExecuteOp(AppendOp()), Error);
        if (buffer.CanUndo()) {
            EXPECT_THROW(buffer.Undo(), Error);
        }
        ++refused;
    });
    buffer.AddListener(&listener);
    buffer.InsertText({3, 0}, u"d");
    buffer.NotifyChange(70, 0, 0, {1, 0});
    buffer.SetModified(false);
    buffer.Undo();
    EXPECT_GE(refused, 6);
    EXPECT_EQ(buffer.GetText(), u"");
    buffer.RemoveListener(&listener);
    buffer.InsertText({0, 0}, u"free again");
    EXPECT_EQ(buffer.GetText(), u"free again");
}

TEST(Listeners, OneThatThrowsHarmsNeitherTheTextNorTheOthers)
{
    SourceDocument buffer;
    int32_t told = 0;
    CallListener bad([] { throw Error{5, u"bad listener"}; });
    CallListener good([&] { ++told; });
    buffer.AddListener(&bad);
    buffer.AddListener(&good);
    EXPECT_NO_THROW(buffer.InsertText({0, 0}, u"a"));
    EXPECT_GE(told, 1);
    buffer.RemoveListener(&bad);
    EXPECT_NO_THROW(buffer.InsertText({1, 0}, u"b"));
    EXPECT_EQ(buffer.GetText(), u"ab");
    EXPECT_TRUE(buffer.Modified());
    buffer.Undo();
    EXPECT_EQ(buffer.GetText(), u"");
}

} // namespace nib::test::undo_test
