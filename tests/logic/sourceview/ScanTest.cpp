#include "ToyLexer.h"

#include "base/Error.h"
#include "text/SourceDocument.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace nib::test {
namespace {

TEST(Scan, CallBacksComeInOrder)
{
    class Recorder : public ToyLexer {
    public:
        void BeginLineScan(SourceDocument& d, int32_t line, TextView text, int32_t flags) override
        {
            log += "B" + std::to_string(line);
            ToyLexer::BeginLineScan(d, line, text, flags);
        }
        void ScanToken(Token& token) override
        {
            ToyLexer::ScanToken(token);
            log += token.type ? "t" : "0";
        }
        int16_t EndLineScan(SourceDocument& d) override
        {
            log += "E ";
            return ToyLexer::EndLineScan(d);
        }
        std::string log;
    };
    SourceDocument buffer;
    Recorder lexer;
    buffer.SetText(u"a{b\n\nc,\nd\ne");
    buffer.SetLexer(&lexer);
    EXPECT_EQ(lexer.log, "") << "nothing is scanned before it is needed";
    std::vector<Token> tokens;
    buffer.ScanLine(2, tokens);
    EXPECT_EQ(lexer.log, "B0ttt0E B10E B2t0E ") << "the lines before come first";
    buffer.EnsureScanned();
    lexer.log.clear();
    EXPECT_EQ(buffer.UpdateLines(0, 1), 1);
    EXPECT_EQ(lexer.log, "B0ttt0E B10E ");
    lexer.log.clear();
    buffer.DeleteRange({1, 2}, {2, 2});
    EXPECT_EQ(lexer.log, "B2t0E B3t0E ") << "on below while the state changes";
}

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
    const Hostile rows[] = {
        {"no token at all", [](Token& t, int32_t) { t = {}; }},
        {"zero length",
         [](Token& t, int32_t) {
             t = {1, 0, 0, 0};
         }},
        {"negative length",
         [](Token& t, int32_t) {
             t = {1, 0, -5, 0};
         }},
        {"a gap",
         [](Token& t, int32_t call) {
             t = {1, call * 3, 2, 0};
         }},
        {"backward",
         [](Token& t, int32_t call) {
             t = {1, 2 - call, 2, 0};
         }},
        {"past the end",
         [](Token& t, int32_t) {
             t = {1, 0, 1000, 0};
         }},
        {"past every number",
         [](Token& t, int32_t call) {
             t = {1, call, call ? INT32_MAX : 1, 0};
         }},
        {"endless",
         [](Token& t, int32_t call) {
             t = {1, call, 1, 1};
         }},
        {"throws at once",
         [](Token&, int32_t) {
             throw Error{5, u"no"};
         }},
        {"throws in the middle",
         [](Token& t, int32_t call) {
             if (call == 2) throw Error{5, u"no"};
             t = {1, call, 1, 0};
         }},
        {"throws a stranger", [](Token&, int32_t) { throw 42; }},
    };
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
    buffer.InsertText({0, 0}, u"abc");
    int32_t refused = 0;
    HostileLexer lexer([&](Token& token, int32_t) {
        EXPECT_THROW(buffer.InsertText({0, 0}, u"no"), Error);
        EXPECT_THROW(buffer.DeleteRange({0, 0}, {1, 0}), Error);
        EXPECT_THROW(buffer.SetText(u"no"), Error);
        EXPECT_THROW(buffer.Undo(), Error);
        ++refused;
        token = {};
    });
    buffer.SetLexer(&lexer);
    buffer.EnsureScanned();
    EXPECT_GE(refused, 1);
    EXPECT_EQ(buffer.GetText(), u"abc");
}

TEST(Scan, PlainTextIsOneTokenALine)
{
    SourceDocument buffer;
    buffer.SetText(u"abc\n");
    std::vector<Token> tokens;
    buffer.ScanLine(0, tokens);
    ASSERT_EQ(tokens.size(), 1u);
    EXPECT_EQ(tokens[0].type, 8);
    EXPECT_EQ(tokens[0].length, 3);
    buffer.ScanLine(1, tokens);
    EXPECT_TRUE(tokens.empty());
    EXPECT_EQ(buffer.UpdateLines(0, 1), 1);
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
