#include "ToyLexer.h"

#include "base/Error.h"
#include "text/SourceDocument.h"

#include <gtest/gtest.h>

#include <functional>

namespace nib::test {
namespace {

struct Hostile {
    const char* name;
    std::function<void(Token&, int32_t call)> scan;
};

/// Answers tokens as it is told, whatever the line.
class HostileLexer : public ToyLexer {
public:
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

} // namespace
} // namespace nib::test
