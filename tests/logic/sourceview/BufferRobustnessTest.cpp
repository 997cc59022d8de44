// The buffer among callers that misbehave: listeners and lexers that throw or call back in, operations that nest.

#include "BufferModel.h"
#include "ToyLexer.h"

#include <gtest/gtest.h>

#include <functional>

namespace nib::test::buffer_robustness_test {

std::unique_ptr<ISourceOp> InsertAtFront(Text text)
{
    auto size = static_cast<int32_t>(text.size());
    return std::make_unique<CallOp>(
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
    buffer.ExecuteOp(std::make_unique<CallOp>([](SourceDocument&) {},
                                              [](SourceDocument& d) {
                                                  d.InsertText({0, 0}, u"x");
                                                  d.NotifyChange(70, 0, 99, {2, 0});
                                              }));
    buffer.Undo();
    EXPECT_EQ(listener.carets.back(), (Position{2, 0}));
    EXPECT_EQ(listener.carets.size(), 3u);
}

TEST(BufferRobustness, ABookmarkOutlivesTheUndoOfBreaksBehindIt)
{
    for (TextView text : {u"\r\n\r\n", u"\r\nx", u"x\r\n"}) {
        SourceDocument buffer;
        buffer.SetText(u"a\n\nb");
        buffer.ToggleBookmark(1);
        buffer.InsertText({0, 1}, text);
        for (int round = 0; round < 2; ++round) {
            buffer.Undo();
            EXPECT_EQ(buffer.BookmarkedLines(), std::vector<int32_t>{1}) << ToUtf8(text);
            buffer.Redo();
            EXPECT_EQ(buffer.BookmarkCount(), 1) << ToUtf8(text);
        }
    }
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

struct Hostile {
    const char* name;
    std::function<void(Token&, int32_t call)> scan;
};

/// Answers tokens as it is told, whatever the line.
struct HostileLexer : ToyLexer {
    explicit HostileLexer(std::function<void(Token&, int32_t)> scan) : scan_(std::move(scan)) {}
    void BeginLineScan(SourceDocument&, int32_t, TextView, int32_t) override { call_ = 0; }
    void ScanToken(Token& token) override { scan_(token, call_++); }
    int16_t EndLineScan(SourceDocument&) override
    {
        ++ended;
        return 0;
    }
    int32_t ended = 0;

private:
    std::function<void(Token&, int32_t)> scan_;
    int32_t call_ = 0;
};

TEST(Scan, AHostileLexerLeavesEveryLineCovered)
{
    const auto every = [](int32_t from, int32_t step, int32_t length, int32_t attributes = 0) {
        return [=](Token& t, int32_t call) { t = {1, from + step * call, length, attributes}; };
    };
    const Hostile rows[] = {{"no token at all", [](Token& t, int32_t) { t = {}; }},
                            {"zero length", every(0, 0, 0)},
                            {"negative length", every(0, 0, -5)},
                            {"a gap", every(0, 3, 2)},
                            {"backward", every(2, -1, 2)},
                            {"past the end", every(0, 0, 1000)},
                            {"past every number", every(0, 1, INT32_MAX)},
                            {"endless", every(0, 1, 1, 1)},
                            {"throws at once", [](Token&, int32_t) { throw Error(5, u"no"); }},
                            {"throws in the middle",
                             [every](Token& t, int32_t call) {
                                 if (call == 2) throw Error(5, u"no");
                                 every(0, 1, 1)(t, call);
                             }},
                            {"throws a stranger", [](Token&, int32_t) { throw 42; }}};
    for (const Hostile& row : rows) {
        SCOPED_TRACE(row.name);
        SourceDocument buffer;
        HostileLexer lexer(row.scan);
        buffer.SetText(u"first line\n\nthird line");
        buffer.SetLexer(&lexer);
        for (int32_t line = 0; line < 3; ++line) {
            std::vector<Token> tokens;
            buffer.ScanLine(line, tokens);
            int32_t at = 0;
            for (const Token& token : tokens) {
                EXPECT_EQ(token.start, at);
                EXPECT_GT(token.length, 0);
                at += token.length;
            }
            EXPECT_EQ(at, buffer.LineLength(line));
        }
        EXPECT_GE(lexer.ended, 3) << "every line that was begun is ended";
        buffer.InsertText({3, 0}, u"{\n}");
        buffer.CollapseAll();
        buffer.Undo();
        EXPECT_EQ(buffer.GetText(), u"first line\r\n\r\nthird line");
    }
}

TEST(Scan, ALexerIsRefusedEdits)
{
    SourceDocument buffer;
    buffer.InsertText({0, 0}, u"abc\nd\ne");
    int32_t refused = 0;
    HostileLexer lexer([&](Token& token, int32_t) {
        EXPECT_THROW(buffer.InsertText({0, 0}, u"no"), Error);
        EXPECT_THROW(buffer.DeleteRange({0, 0}, {1, 0}), Error);
        EXPECT_THROW(buffer.SetText(u"no"), Error);
        EXPECT_THROW(buffer.Undo(), Error);
        std::vector<Token> tokens;
        buffer.ScanLine(0, tokens); // may be asked, and answers what it has
        buffer.UpdateLines(0, 9);
        buffer.CollapseAll();
        ++refused;
        token = {};
    });
    buffer.SetLexer(&lexer);
    buffer.EnsureScanned();
    EXPECT_GE(refused, 1);
    EXPECT_EQ(buffer.GetText(), u"abc\r\nd\r\ne");
}

TEST(Scan, SlicesGetToTheEnd)
{
    SourceDocument buffer;
    ToyLexer lexer;
    buffer.SetText(Text(999, u'\n'));
    buffer.SetLexer(&lexer);
    int32_t slices = 1;
    while (buffer.ScanSlice(0)) ++slices;
    EXPECT_GT(slices, 3);
    EXPECT_EQ(lexer.linesScanned, 1000);
}

} // namespace nib::test::buffer_robustness_test
