#include "shell/ClickTarget.h"

#include "fakes/TestShell.h"
#include "fakes/WordLexer.h"

namespace nib::test {
namespace {

using Lines = std::vector<Text>;

struct ContextHandlersTest : testing::Test {
    TestShell t;
    WordLexer lexer;
    Hit& target = t.program.Target();

    /// 0 IF, 1 a, 2 IF, 3 b, 4 END, 5 c, 6 END, 7 d
    std::shared_ptr<mvDocument> Blocks()
    {
        auto document = t.New();
        document->SetText(u"IF\r\na\r\nIF\r\nb\r\nEND\r\nc\r\nEND\r\nd");
        SourceDocument& text = t.ViewOf(*document).Document();
        text.SetLexer(&lexer);
        text.CollapseAll();
        text.ExpandAll();
        return document;
    }
    /// Which lines are hidden, as "01...": one mark a line.
    Text Hidden(mvDocument& document)
    {
        SourceDocument& text = t.ViewOf(document).Document();
        Text lines;
        for (int32_t i = 0; i < text.LineCount(); ++i) lines += text.IsHidden(i) ? u'x' : u'.';
        return lines;
    }
};

TEST_F(ContextHandlersTest, BookmarkOfTheClickedLine)
{
    auto document = t.New();
    document->SetText(u"a\r\nb");
    HandleBookmarkToggle(t.program, document.get());
    t.program.Target().TargetLine = 2;
    HandleBookmarkToggle(t.program, nullptr);
    SourceDocument& text = t.ViewOf(*document).Document();
    EXPECT_EQ(text.BookmarkCount(), 0);
    HandleBookmarkToggle(t.program, document.get());
    EXPECT_EQ(text.FindBookmark(0, false), 1);
}

TEST_F(ContextHandlersTest, BlockOfTheClickedLine)
{
    auto document = Blocks();
    using enum HitKind;
    const std::tuple<HitKind, int32_t, TextView> rows[] = {
        {None, 0, u"........"},        {Label, 3, u"........"},      {OpenBlock, 8, u"...xx..."},
        {ClosedBlock, 3, u"........"}, {OpenBlock, 4, u"...xx..."},  {OpenBlock, 2, u".xxxxxx."},
        {ClosedBlock, 1, u"...xx..."}, {OpenBlock, 100, u".xxxxxx."}};
    for (auto [kind, line, hidden] : rows) {
        target = {kind, {}, line};
        HandleBlockToggle(t.program, document.get());
        EXPECT_EQ(Hidden(*document), hidden) << line;
    }
    HandleBlockToggle(t.program, nullptr);
}

TEST_F(ContextHandlersTest, BlockRoundTheCaret)
{
    auto document = Blocks();
    SourceView& view = t.ViewOf(*document);
    struct Row {
        int32_t line;
        bool collapse, all;
        TextView hidden;
    };
    const Row rows[] = {{7, true, false, u"........"},  {3, true, false, u"...xx..."}, {2, true, false, u"...xx..."},
                        {2, false, false, u"........"}, {5, true, false, u".xxxxxx."}, {0, false, false, u"........"},
                        {0, true, true, u".xxxxxx."},   {0, false, true, u"........"}};
    for (const Row& row : rows) {
        view.SetCaret({0, row.line});
        HandleBlockCollapse(document.get(), row.collapse, row.all);
        EXPECT_EQ(Hidden(*document), row.hidden) << row.line << row.collapse << row.all;
    }
    HandleBlockCollapse(nullptr, true, true);
}

TEST_F(ContextHandlersTest, GotoAsksUnlessToldNotTo)
{
    auto document = t.New();
    document->SetText(u"a\r\nb\r\nL1:");
    struct Row {
        TextView target;
        bool alwaysAsk, noDialog;
        Lines asked;
    };
    const Row rows[] = {
        {u"", false, true, {u"goto ''"}}, {u"L1", true, true, {u"goto 'L1'"}}, {u"L1", false, false, {u"goto 'L1'"}}};
    for (const Row& row : rows) {
        target.Target = row.target;
        t.program.EditorSettings().NoGotoDialog = row.noDialog;
        HandleGoto(t.program, document.get(), row.alwaysAsk);
        EXPECT_EQ(t.Ran(), row.asked);
    }
    t.program.EditorSettings().NoGotoDialog = true;
    EXPECT_THROW((target.Target = u"NOWHERE", HandleGoto(t.program, document.get(), false)), Error);
}

TEST_F(ContextHandlersTest, OpensWhatAStatementNames)
{
    struct Row {
        Text from; ///< path of the document; empty: a new one
        TextView target;
        Text path;
    };
    const Row rows[] = {
        {kMain, u" SUB1 ", u"mvdb:*/DEMO/BP/SUB1"},      {kMain, u"INC  COMMON", u"mvdb:*/DEMO/INC/COMMON"},
        {u"", u"INC COMMON", u"mvdb:*/LOC/INC/COMMON"},  {kLocal, u"b.bas", u"file:/home/x/b.bas"},
        {kLocal, u"INC b.bas", u"file:/home/INC/b.bas"}, {kLocal, u"/tmp b.bas", u"file:/tmp/b.bas"}};
    t.program.Place().host.Database = u"LOC";
    for (const Row& row : rows) {
        SCOPED_TRACE(ToUtf8(row.path));
        if (!row.from.empty()) t.Store(row.from, u"");
        t.Store(row.path, u"found");
        auto document = row.from.empty() ? t.New() : t.Open(row.from);
        t.program.Place().GoTo({u"mvdb", u"*", u"LOC", u""});
        int32_t count = t.Documents().Count();
        target.Target = row.target;
        t.connection.requests.clear();
        t.connection.whilePicking = [&] { EXPECT_TRUE(t.program.AutoSaveHeld()); };
        t.connection.picks = {{{t.Item(row.path)}}};
        HandleOpen(t.program, document.get());
        ASSERT_EQ(t.connection.requests.size(), 1u);
        auto& [request, start] = t.connection.requests.front();
        EXPECT_EQ(start, row.path);
        EXPECT_TRUE(request.startNamed && request.mode == u"Open");
        EXPECT_EQ(t.Documents().Count(), count + 1);
        EXPECT_EQ(t.Documents().Item(count + 1)->GetText(), u"found");
        t.window.activeDocument = 0;
        HandleOpen(t.program, document.get());
        EXPECT_EQ(t.connection.requests.size(), 1u) << "it is open";
        EXPECT_EQ(t.window.activeDocument, t.Documents().Item(count + 1)->DocumentID());
        for (auto& open : t.Documents().All()) open->FileClose(false);
    }
    HandleOpen(t.program, nullptr);
    t.ExpectCalm();
}

} // namespace
} // namespace nib::test
