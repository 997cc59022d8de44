// What a click on a place of a text points at.

#include "editing/LexClass.h"
#include "fakes/MemoryClipboard.h"
#include "shell/ClickTarget.h"
#include "text/SourceView.h"

#include <gtest/gtest.h>

#include <fstream>

namespace nib::test {
namespace {

struct Row {
    /// The click is on the character behind "^".
    const char16_t* line;
    HitKind kind;
    const char16_t* target = u"";
};

struct ClickedText {
    LexClass lexer;
    SourceDocument buffer;
    MemoryClipboard clipboard;
    SourceView view{buffer, clipboard};

    explicit ClickedText(TextView text)
    {
        buffer.SetLexer(&lexer);
        view.SetText(text);
        buffer.EnsureScanned();
    }
};

Hit Click(TextView marked)
{
    size_t at = marked.find(u'^');
    ClickedText text(u"FIRST LINE\n" + Text(marked.substr(0, at)) + Text(marked.substr(at + 1)));
    return HitTest(text.view, {static_cast<int32_t>(at), 1});
}

TEST(HitTestTest, LabelsCallsAndIncludes)
{
    const Row rows[] = {{u"  GOSUB ^DONE", HitKind::Label, u"DONE"},
                        {u"  GOSUB DON^E", HitKind::Label, u"DONE"},
                        {u"  GOTO ^DONE ; X = 1", HitKind::Label, u"DONE"},
                        {u"  ^GOSUB DONE", HitKind::None},
                        {u"^DONE:", HitKind::None},
                        {u"  ^DONE: CALL SUB1(A)", HitKind::None},
                        {u"DONE: CALL ^SUB1(A)", HitKind::Call, u"SUB1"},
                        {u"  CALL ^SUB1(A, B)", HitKind::Call, u"SUB1"},
                        {u"  CALL S^UB.2(A, B)", HitKind::Call, u"SUB.2"},
                        {u"  call ^SUB1(A) ;* CALL", HitKind::Call, u"SUB1"},
                        {u"  call ^SUB1(A)", HitKind::None},
                        {u"  CALL SUB1(^A, B)", HitKind::None},
                        {u"  CALL SUB1(A, ^B)", HitKind::None},
                        {u"  ^CALL SUB1(A)", HitKind::None},
                        {u"  CALL @^SUB1", HitKind::Call, u"@SUB1"},
                        {u"  CALL ^SUB1;PRINT", HitKind::Call, u"SUB1"},
                        {u"  X=1;CALL ^SUB1", HitKind::Call, u"SUB1"},
                        {u"  CALL SUB1^", HitKind::Call, u"SUB1"},
                        {u"  X = ^RECALL", HitKind::None},
                        {u"* CALL ^SUB1(A)", HitKind::None},
                        {u"$INCLUDE BP ^COMMON", HitKind::Include, u"BP COMMON"},
                        {u"$INCLUDE ^BP COMMON", HitKind::Include, u"BP"},
                        {u"$INCLUDE BP   ^COMMON ;* X", HitKind::Include, u"BP COMMON"},
                        {u"  INCLUDE ^DEFS", HitKind::Include, u"DEFS"},
                        {u"$INSERT ^DEFS.H", HitKind::Include, u"DEFS.H"},
                        {u"$INSERT A B ^C", HitKind::None},
                        {u"^$INCLUDE BP COMMON", HitKind::None},
                        {u"  PRINT ^INCLUDED", HitKind::None},
                        {u"^", HitKind::None}};
    for (const Row& row : rows) {
        SCOPED_TRACE(ToUtf8(row.line));
        Hit hit = Click(row.line);
        EXPECT_EQ(hit.kind, row.kind);
        EXPECT_EQ(ToUtf8(hit.Target), ToUtf8(row.target));
        EXPECT_EQ(hit.TargetLine, 2);
    }
}

TEST(HitTestTest, BlocksWhereNothingElseIs)
{
    ClickedText text(u"PRINT\nIF A THEN\n  CALL X\n  GOSUB L\nEND");
    struct {
        Position at;
        HitKind kind;
        const char16_t* target;
    } const open[] = {{{0, 0}, HitKind::None, u""},      {{0, 1}, HitKind::OpenBlock, u""},
                      {{7, 2}, HitKind::Call, u"X"},     {{8, 3}, HitKind::Label, u"L"},
                      {{2, 3}, HitKind::OpenBlock, u""}, {{0, 99}, HitKind::OpenBlock, u""}};
    for (const auto& row : open) {
        Hit hit = HitTest(text.view, row.at);
        EXPECT_EQ(hit.kind, row.kind) << row.at.line;
        EXPECT_EQ(ToUtf8(hit.Target), ToUtf8(row.target));
    }
    text.buffer.CollapseBlock(1);
    Hit hit = HitTest(text.view, {0, 1});
    EXPECT_EQ(hit.kind, HitKind::ClosedBlock);
    EXPECT_EQ(hit.TargetLine, 2);
}

/// Where every label, item and block of a program of the sample account stands.
TEST(HitTestTest, ASampleProgram)
{
    std::ifstream file(NIB_SOURCE_DIR "/resources/accounts/DEMO/BP/INVOICE", std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(file), {}};
    ClickedText program(FromUtf8(bytes));
    ASSERT_GT(program.buffer.LineCount(), 100);
    const struct {
        TextView words; ///< stand in one line of the program
        TextView click; ///< where in them
        HitKind kind;
        TextView target;
    } rows[] = {{u"$INCLUDE BP COMMON.INC", u"COMMON", HitKind::Include, u"BP COMMON.INC"},
                {u"GOSUB CHECK.ORDER", u"CHECK", HitKind::Label, u"CHECK.ORDER"},
                {u"THEN GOSUB PRINT.HEAD", u"HEAD", HitKind::Label, u"PRINT.HEAD"},
                {u"CALL PRICE.CALC(", u"PRICE", HitKind::Call, u"PRICE.CALC"},
                {u"CALL PRICE.CALC(PROD.ID", u"PROD", HitKind::None, u""},
                {u"TODAY = DATE()", u"TODAY", HitKind::None, u""}};
    for (const auto& row : rows) {
        SCOPED_TRACE(ToUtf8(row.words));
        FindHit found;
        ASSERT_TRUE(program.buffer.Find(row.words, {0, 0}, {false, true, false}, found));
        Position at{found.at.col + static_cast<int32_t>(row.words.find(row.click)), found.at.line};
        Hit hit = HitTest(program.view, at);
        if (row.kind == HitKind::None) {
            EXPECT_TRUE(hit.kind == HitKind::None || hit.kind == HitKind::OpenBlock);
            continue;
        }
        EXPECT_EQ(hit.kind, row.kind);
        EXPECT_EQ(hit.Target, row.target);
        EXPECT_EQ(hit.TargetLine, at.line + 1);
    }
    FindHit opener;
    ASSERT_TRUE(program.buffer.Find(u"OPEN \"DATA\"", {0, 0}, {}, opener));
    EXPECT_EQ(HitTest(program.view, opener.at).kind, HitKind::OpenBlock);
    program.buffer.CollapseBlock(opener.at.line);
    EXPECT_EQ(HitTest(program.view, opener.at).kind, HitKind::ClosedBlock);
}

} // namespace
} // namespace nib::test
