// The buffer among callers that misbehave: listeners and lexers that throw or call back in, operations that nest.

#include "ToyLexer.h"
#include "base/Error.h"
#include "text/SourceDocument.h"

#include <gtest/gtest.h>

#include <functional>

namespace nib::test {
namespace {

class Op final : public ISourceOp {
public:
    using Step = std::function<void(SourceDocument&)>;
    Op(Step doIt, Step undoIt) : do_(std::move(doIt)), undo_(std::move(undoIt)) {}
    void DoOp(SourceDocument& document) override { do_(document); }
    void UndoOp(SourceDocument& document) override { undo_(document); }

private:
    Step do_;
    Step undo_;
};

std::unique_ptr<ISourceOp> InsertAtFront(Text text)
{
    auto size = static_cast<int32_t>(text.size());
    return std::make_unique<Op>(
        [text](SourceDocument& d) {
            d.InsertText({0, 0}, text);
        },
        [size](SourceDocument& d) {
            d.DeleteRange({0, 0}, {size, 0});
        });
}

struct Listener final : BufferListener {
    std::function<void()> onText;
    std::vector<Position> carets;
    void TextChanged(const TextChange&) override
    {
        if (onText) onText();
    }
    void CaretRequested(Position caret) override { carets.push_back(caret); }
};

TEST(BufferRobustness, AnOperationTakenBackLeavesTheCaretWhereItChangedTheText)
{
    SourceDocument buffer;
    Listener listener;
    buffer.AddListener(&listener);
    buffer.ExecuteOp(InsertAtFront(u"abc"));
    buffer.Undo();
    buffer.Redo();
    EXPECT_EQ(listener.carets, (std::vector<Position>{{0, 0}, {3, 0}}));
    buffer.ClearUndo();
    buffer.ExecuteOp(std::make_unique<Op>([](SourceDocument&) {},
                                          [](SourceDocument& d) {
                                              d.InsertText({0, 0}, u"x");
                                              d.NotifyChange(70, 0, 99, {2, 0});
                                          }));
    buffer.Undo();
    EXPECT_EQ(listener.carets.back(), (Position{2, 0}));
    EXPECT_EQ(listener.carets.size(), 3u);
}

TEST(BufferRobustness, BookmarksSetBetweenUndoAndRedoStay)
{
    SourceDocument buffer;
    buffer.SetText(u"a\nb\nc\nd");
    buffer.DeleteRange({0, 1}, {1, 2});
    buffer.Undo();
    buffer.ToggleBookmark(2);
    buffer.Redo();
    EXPECT_EQ(buffer.BookmarkCount(), 0);
    buffer.Undo();
    EXPECT_EQ(buffer.FindBookmark(0, false), 2);
    EXPECT_EQ(buffer.BookmarkCount(), 1);
}

TEST(BufferRobustness, LooksAtTheTextDuringAGroupDoNotEndTheRescanEarly)
{
    ToyLexer lexer;
    SourceDocument buffer;
    buffer.SetLexer(&lexer);
    buffer.SetText(u"a\n\nc");
    buffer.EnsureScanned();
    std::vector<Token> tokens;
    buffer.BeginGroup();
    buffer.InsertText({1, 0}, u",");
    buffer.ScanLine(0, tokens);
    buffer.EndGroup();
    EXPECT_EQ(buffer.GetLineData(1, LineWord::Lexer), 1u);
}

TEST(BufferRobustness, ABeginWithoutAnEndEnclosesNothing)
{
    ToyLexer lexer;
    SourceDocument buffer;
    buffer.SetText(u"{\na\n{\nb\n}\nc");
    buffer.SetLexer(&lexer);
    buffer.EnsureScanned();
    using namespace line_bits;
    const uint32_t expected[] = {0, 0, kBlockHead, kBlockInside, kBlockEnd, 0};
    for (int32_t line = 0; line < 6; ++line)
        EXPECT_EQ(buffer.GetLineData(line, LineWord::Control) & kBlockMask, expected[line]) << line;
}

TEST(BufferRobustness, VisibleLinesCanBeAskedForWhileAHeadGoes)
{
    ToyLexer lexer;
    SourceDocument buffer;
    buffer.SetText(u"{\na\n}");
    buffer.SetLexer(&lexer);
    buffer.CollapseAll();
    ASSERT_EQ(buffer.VisibleCount(), 1);
    Listener listener;
    listener.onText = [&] {
        int32_t line = buffer.VisibleLine(buffer.VisibleIndex(0));
        EXPECT_TRUE(line >= 0 && line < buffer.LineCount());
    };
    buffer.AddListener(&listener);
    buffer.DeleteRange({0, 0}, {0, 1});
    EXPECT_EQ(buffer.VisibleCount(), 2);
}

} // namespace
} // namespace nib::test
