// The buffer among callers that misbehave: listeners and lexers that throw or call back in, operations that nest.

#include "base/Error.h"
#include "text/SourceDocument.h"

#include <gtest/gtest.h>

#include <functional>

namespace nib {
namespace {

/// "{" begins a block, "}" ends one; a line that ends in "," makes the next one begin as type 4, and empty ones below
/// it too. `onToken` and `onEnd` come between, to do what a lexer must not.
class BraceLexer final : public ISourceLex4 {
public:
    std::function<void(Token&)> onToken;
    std::function<void()> onBegin;
    std::function<void()> onEnd;
    SourceDocument* document = nullptr;
    int32_t line = 0;

    void BeginLineScan(SourceDocument& scanned, int32_t scannedLine, TextView text, int32_t) override
    {
        document = &scanned;
        line = scannedLine;
        text_ = text;
        at_ = 0;
        continued_ = line > 0 && scanned.GetLineData(line - 1, LineWord::Lexer) == 1;
        if (onBegin) onBegin();
    }
    void ScanToken(Token& token) override
    {
        token = {};
        if (at_ < static_cast<int32_t>(text_.size())) {
            char16_t c = text_[static_cast<size_t>(at_)];
            token = {continued_ ? 4 : 8, at_++, 1, c == u'{' ? 1 : c == u'}' ? 2 : 0};
        }
        if (onToken) onToken(token);
    }
    int16_t EndLineScan(SourceDocument& scanned) override
    {
        scanned.SetLineData(line, LineWord::Lexer, text_.ends_with(u',') || (continued_ && text_.empty()) ? 1 : 0);
        if (onEnd) onEnd();
        return 0;
    }
    int32_t GetDesiredCase() override { return 0; }
    int32_t GetLineIndex() override { return at_; }
    void SetLineIndex(int32_t index) override { at_ = index; }
    int32_t GetProperties() override { return 0; }

private:
    TextView text_;
    int32_t at_ = 0;
    bool continued_ = false;
};

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

TEST(BufferRobustness, AListenerThatThrowsStopsNothing)
{
    SourceDocument buffer;
    Listener bad;
    Listener good;
    int heard = 0;
    bad.onText = [] { throw Error{5, u"bad"}; };
    good.onText = [&] { ++heard; };
    buffer.AddListener(&bad);
    buffer.AddListener(&good);
    buffer.BeginGroup();
    buffer.InsertText({0, 0}, u"one\ntwo");
    buffer.InsertText({0, 0}, u"zero\n");
    buffer.EndGroup();
    EXPECT_EQ(buffer.GetText(), u"zero\r\none\r\ntwo");
    buffer.Undo();
    EXPECT_EQ(buffer.GetText(), u"");
    buffer.Redo();
    buffer.InsertText({0, 0}, u"x");
    EXPECT_EQ(buffer.GetText(), u"xzero\r\none\r\ntwo");
    EXPECT_EQ(heard, 7);
}

TEST(BufferRobustness, TheUndoStackStandsStillWhileAStepIsMade)
{
    SourceDocument buffer;
    buffer.InsertText({0, 0}, u"text");
    for (auto call : {&SourceDocument::Undo, &SourceDocument::Redo, &SourceDocument::ClearUndo}) {
        auto operation = std::make_unique<Op>(
            [&](SourceDocument& d) {
                d.InsertText({0, 0}, u"half ");
                (buffer.*call)();
            },
            [](SourceDocument&) {});
        EXPECT_THROW(buffer.ExecuteOp(std::move(operation)), Error);
        EXPECT_EQ(buffer.GetText(), u"text");
    }
    buffer.BeginGroup();
    buffer.InsertText({0, 0}, u"more ");
    EXPECT_THROW(buffer.Undo(), Error);
    buffer.EndGroup();
    buffer.EndGroup(); // one too many
    buffer.Undo();
    EXPECT_EQ(buffer.GetText(), u"text");
    buffer.Undo();
    EXPECT_EQ(buffer.GetText(), u"");
    EXPECT_FALSE(buffer.Modified());
}

TEST(BufferRobustness, AGroupWithOperationsInItIsOneStep)
{
    SourceDocument buffer;
    buffer.InsertText({0, 0}, u"x");
    buffer.BeginGroup();
    buffer.InsertText({1, 0}, u"1");
    buffer.ExecuteOp(InsertAtFront(u"<<"));
    buffer.ExecuteOp(InsertAtFront(u"["));
    buffer.InsertText({0, 0}, u"2");
    buffer.EndGroup();
    EXPECT_EQ(buffer.GetText(), u"2[<<x1");
    buffer.Undo();
    EXPECT_EQ(buffer.GetText(), u"x");
    buffer.Redo();
    EXPECT_EQ(buffer.GetText(), u"2[<<x1");
    EXPECT_FALSE(buffer.CanRedo());
    buffer.Undo();
    buffer.Undo();
    EXPECT_EQ(buffer.GetText(), u"");
    EXPECT_FALSE(buffer.CanUndo());
}

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

TEST(BufferRobustness, TextOfTheBufferItselfCanBeInserted)
{
    SourceDocument buffer;
    Text expected(100, u'\u4E2D');
    buffer.SetText(expected);
    Text scratch;
    for (int i = 0; i < 4; ++i) {
        TextView line = buffer.LineText(0, scratch);
        expected += expected;
        buffer.InsertText({3, 0}, line);
    }
    EXPECT_EQ(buffer.GetText(), expected);
    buffer.Undo();
    EXPECT_EQ(buffer.LineLength(0), 800);
}

TEST(BufferRobustness, WhateverALexerDoesItsLinesAreCoveredByTokens)
{
    struct Row {
        const char* name;
        std::function<void(BraceLexer&, SourceDocument&)> arm;
    };
    int calls = 0;
    const Row rows[] = {
        {"token throws",
         [&](auto& l, auto&) {
             l.onToken = [&](Token&) {
                 if (++calls % 3 == 2) throw Error{5, u""};
             };
         }},
        {"begin throws", [](auto& l, auto&) { l.onBegin = [] {
                                                  throw Error{5, u""};
                                              }; }},
        {"end throws", [](auto& l, auto&) { l.onEnd = [] {
                                                throw Error{5, u""};
                                            }; }},
        {"stands still", [](auto& l, auto&) { l.onToken = [](Token& t) { t.type = 8, t.length = 0; }; }},
        {"overlaps", [](auto& l, auto&) { l.onToken = [](Token& t) { t.start = 0; }; }},
        {"leaves a gap", [](auto& l, auto&) { l.onToken = [](Token& t) { ++t.start; }; }},
        {"past the end", [](auto& l, auto&) { l.onToken = [](Token& t) { t.length = 0x7FFFFFFF; }; }},
        {"negative", [](auto& l, auto&) { l.onToken = [](Token& t) {
                                              t = {8, -5, -1, 7};
                                          }; }},
        {"edits", [](auto& l, auto& b) { l.onToken = [&b](Token&) {
                                             b.InsertText({0, 0}, u"x");
                                         }; }},
        {"calls back in",
         [](auto& l, auto& b) {
             l.onToken = [&b](Token&) {
                 std::vector<Token> tokens;
                 b.UpdateLines(0, 99);
                 b.ScanLine(1, tokens);
                 b.ScanSlice(10);
                 b.CollapseAll();
             };
         }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        BraceLexer lexer;
        SourceDocument buffer;
        buffer.SetText(u"a {\n\n  b\n}\n\u4E2D}{");
        Text before = buffer.GetText();
        row.arm(lexer, buffer);
        buffer.SetLexer(&lexer);
        buffer.UpdateLines(0, 4);
        for (int32_t line = 0; line < buffer.LineCount(); ++line) {
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
        EXPECT_EQ(buffer.GetText(), before);
        buffer.InsertText({0, 0}, u"{");
        buffer.CollapseAll();
        buffer.ExpandAll();
        buffer.Undo();
        EXPECT_EQ(buffer.GetText(), before);
    }
}

TEST(BufferRobustness, LooksAtTheTextDuringAGroupDoNotEndTheRescanEarly)
{
    BraceLexer lexer;
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

TEST(BufferRobustness, UpdateLinesScansThem)
{
    BraceLexer lexer;
    SourceDocument buffer;
    buffer.SetText(u"a,\nb,\nc");
    buffer.SetLexer(&lexer);
    buffer.UpdateLines(1, 1);
    EXPECT_EQ(buffer.GetLineData(1, LineWord::Lexer), 1u);
}

TEST(BufferRobustness, ABeginWithoutAnEndEnclosesNothing)
{
    BraceLexer lexer;
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
    BraceLexer lexer;
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

TEST(BufferRobustness, FindFoldsLettersBeyondTheFirstPlane)
{
    SourceDocument buffer;
    buffer.SetText(u"x \U00010400\U00010428 y");
    FindHit hit;
    EXPECT_TRUE(buffer.Find(u"\U00010428\U00010400", {}, {}, hit));
    EXPECT_FALSE(buffer.Find(u"\U00010428\U00010400", {}, {.matchCase = true}, hit));
}

} // namespace
} // namespace nib
