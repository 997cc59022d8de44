// What a click on a place of a text points at.

#include "editing/LexClass.h"
#include "fakes/MemoryClipboard.h"
#include "shell/ClickTarget.h"
#include "text/SourceView.h"

#include <gtest/gtest.h>

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
                        {u"  IF A THEN GOSUB ^DONE.1", HitKind::Label, u"DONE.1"},
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

} // namespace
} // namespace nib::test
