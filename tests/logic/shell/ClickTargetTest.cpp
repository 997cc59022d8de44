#include "shell/ClickTarget.h"
#include "editing/LexClass.h"
#include "fakes/TestShell.h"
#include "fakes/WordLexer.h"

namespace nib::test::click_target_test {

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
    const std::tuple<int32_t, bool, bool, TextView> rows[] = {
        {7, true, false, u"........"},  {3, true, false, u"...xx..."}, {2, true, false, u"...xx..."},
        {2, false, false, u"........"}, {5, true, false, u".xxxxxx."}, {0, false, false, u"........"},
        {0, true, true, u".xxxxxx."},   {0, false, true, u"........"}};
    for (const auto& [line, collapse, all, hidden] : rows) {
        view.SetCaret({0, line});
        HandleBlockCollapse(document.get(), collapse, all);
        EXPECT_EQ(Hidden(*document), hidden) << line << collapse << all;
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

TEST_F(ContextHandlersTest, ACallOpensWhatTheCatalogueNames)
{
    t.Store(u"mvdb:*/DEMO/LIB/SRC", u"found");
    auto document = t.StoreAndOpen(kMain, u"CALL SUB1(X)");
    auto& record = t.Store().session.configuration;
    const struct {
        std::map<int32_t, Text> record;
        HitKind kind;
        bool opens;
    } rows[] = {{{{1, u"V"}, {2, u"CS"}, {3, u"/srv/ACC/LIB.OUT/SRC"}}, HitKind::Call, true},
                {{{1, u"Vcat"}, {2, u"CA"}, {3, u"LIB SRC"}}, HitKind::Call, true},
                {{{1, u"V"}, {2, u"CS"}, {3, u"LIB"}, {4, u"SRC"}}, HitKind::Call, true},
                {{{1, u"V"}, {2, u"CS"}, {3, u"/srv/ACC/LIB.OUT/SRC"}}, HitKind::Include, false},
                {{{1, u"V"}, {2, u"CS"}, {3, u"/srv/ACC/cat/SRC"}}, HitKind::Call, false},
                {{{1, u"V"}, {2, u"CS"}, {3, u"/srv/ACC/LIB.OUT/NONE"}}, HitKind::Call, false},
                {{{1, u"PA"}, {2, u"CS"}, {3, u"LIB SRC"}}, HitKind::Call, false},
                {{{1, u"V"}, {2, u"ls LIB"}, {3, u"LIB SRC"}}, HitKind::Call, false},
                {{}, HitKind::Call, false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        record = row.record;
        target = {row.kind, u"SUB1", 1};
        t.connection.requests.clear();
        HandleOpen(t.program, document.get());
        const auto opened = t.Documents().Item(2);
        EXPECT_EQ(opened ? opened->Path() : Text(), row.opens ? u"mvdb:*/DEMO/LIB/SRC" : u"");
        EXPECT_EQ(t.connection.requests.size(), row.opens ? 0U : 1U) << "the picker asks for what nobody knows";
        if (opened) opened->FileClose(false);
    }
}

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
    using enum HitKind;
    std::vector<Row> rows = {{u"  GOSUB ^DONE", Label, u"DONE"},
                             {u"  GOSUB DON^E", Label, u"DONE"},
                             {u"  GOTO ^DONE ; X = 1", Label, u"DONE"},
                             {u"  IF A THEN GOSUB ^DONE.1", Label, u"DONE.1"},
                             {u"DONE: CALL ^SUB1(A)", Call, u"SUB1"},
                             {u"  CALL ^SUB1(A, B)", Call, u"SUB1"},
                             {u"  CALL S^UB.2(A, B)", Call, u"SUB.2"},
                             {u"  call ^SUB1(A) ;* CALL", Call, u"SUB1"},
                             {u"  call ^SUB1(A)", Call, u"SUB1"},
                             {u"$include bp ^defs", Include, u"bp defs"},
                             {u"  CALL @^SUB1", Call, u"@SUB1"},
                             {u"  CALL ^SUB1;PRINT", Call, u"SUB1"},
                             {u"  X=1;CALL ^SUB1", Call, u"SUB1"},
                             {u"  CALL SUB1^", Call, u"SUB1"},
                             {u"$INCLUDE BP ^COMMON", Include, u"BP COMMON"},
                             {u"$INCLUDE ^BP COMMON", Include, u"BP"},
                             {u"$INCLUDE BP   ^COMMON ;* X", Include, u"BP COMMON"},
                             {u"  INCLUDE ^DEFS", Include, u"DEFS"},
                             {u"$INSERT ^DEFS.H", Include, u"DEFS.H"}};
    for (const char16_t* nothing : {u"  ^GOSUB DONE", u"^DONE:", u"  ^DONE: CALL SUB1(A)", u"  CALL SUB1(^A, B)",
                                    u"  CALL SUB1(A, ^B)", u"  ^CALL SUB1(A)", u"  X = ^RECALL", u"* CALL ^SUB1(A)",
                                    u"$INSERT A B ^C", u"^$INCLUDE BP COMMON", u"  PRINT ^INCLUDED", u"^"})
        rows.push_back({nothing, None});
    for (const Row& row : rows) {
        SCOPED_TRACE(ToUtf8(row.line));
        Hit hit = Click(row.line);
        EXPECT_EQ(hit.kind, row.kind);
        EXPECT_EQ(ToUtf8(hit.Target), ToUtf8(row.target));
        EXPECT_EQ(hit.TargetLine, 2);
    }
}

TEST(HitTestTest, ColoursNeedNotBeOn)
{
    ClickedText text(u"  GOSUB DONE\n  CALL SUB1(A)\nDONE: X = 1");
    text.lexer.SetHighlight(false);
    text.buffer.UpdateLines(0, 2);
    EXPECT_EQ(HitTest(text.view, {9, 0}, &text.lexer).kind, HitKind::Label);
    EXPECT_EQ(HitTest(text.view, {8, 1}, &text.lexer).kind, HitKind::Call);
    EXPECT_FALSE(text.lexer.Highlight());
}

TEST(HitTestTest, BlocksWhereNothingElseIs)
{
    ClickedText text(u"PRINT\nIF A THEN\n  CALL X\n  GOSUB L\nEND");
    const std::tuple<Position, HitKind, const char16_t*> open[] = {
        {{0, 0}, HitKind::None, u""},   {{0, 1}, HitKind::OpenBlock, u""}, {{7, 2}, HitKind::Call, u"X"},
        {{8, 3}, HitKind::Label, u"L"}, {{2, 3}, HitKind::OpenBlock, u""}, {{0, 99}, HitKind::OpenBlock, u""}};
    for (const auto& [at, kind, target] : open) {
        Hit hit = HitTest(text.view, at);
        EXPECT_EQ(hit.kind, kind) << at.line;
        EXPECT_EQ(ToUtf8(hit.Target), ToUtf8(target));
    }
    text.buffer.CollapseBlock(1);
    Hit hit = HitTest(text.view, {0, 1});
    EXPECT_EQ(hit.kind, HitKind::ClosedBlock);
    EXPECT_EQ(hit.TargetLine, 2);
}

} // namespace nib::test::click_target_test
