#include "fakes/TestShell.h"
#include "search/OpReplaceAll.h"
#include "shell/menus/MenuTable.h"

namespace nib::test::command_test {

using Keys = std::set<Text>;

Keys operator+(Keys keys, const Keys& more)
{
    keys.insert(more.begin(), more.end());
    return keys;
}

const Keys kDesign{
    u"New",           u"Open",       u"Exit",           u"Settings",      u"Results",         u"ViewToolbar",
    u"ViewStatusbar", u"HelpTopics", u"HelpAbout",      u"FindInAccount", u"IndentByBlocks",  u"CurrentLine",
    u"Matches",       u"ChangeBars", u"IndentGuides",   u"VisibleBlanks", u"SmoothScrolling", u"Problems",
    u"Outline",       u"QuickOpen",  u"CheckAsYouType", u"CompleteWords", u"History",         u"Authors"};
const Keys kWithDocument{u"Close",          u"Print",          u"Properties",     u"DeleteLine",
                         u"SelectAll",      u"IndentBlock",    u"OutdentBlock",   u"CommentBlock",
                         u"UncommentBlock", u"Find",           u"FindBar",        u"FindNext",
                         u"Replace",        u"Goto",           u"ToggleBookmark", u"ClearAllBookmarks",
                         u"ValueMark",      u"SubValueMark",   u"Highlight",      u"ToggleCase",
                         u"SaveAs",         u"TileHorizontal", u"TileVertical",   u"Cascade",
                         u"Maximize",       u"CloseAll",       u"CompareItem"};
const Keys kBlocks{u"CollapseBlock", u"ExpandBlock", u"CollapseAll", u"ExpandAll"};
const Keys kLines{u"MoveLinesUp",  u"MoveLinesDown", u"DuplicateLines", u"JoinLines", u"SplitView",
                  u"MatchingWord", u"NextProblem",   u"PrevProblem",    u"QuickMend", u"CompleteWord",
                  u"Definition",   u"References",    u"Rename",         u"RecordGrid"};
const Keys kCarets{u"AddCaretAbove", u"AddCaretBelow", u"SelectNextOccurrence", u"SelectAllOccurrences"};
const Keys kReadOnly = kDesign + kLines + kCarets + kWithDocument + Keys{u"LineWrap"};
const Keys kWithoutCompiler = kReadOnly + Keys{u"SaveAll", u"Format"};
const Keys kCompared{u"CompareStored", u"CompareOpened", u"CompareCommitted"};
const Keys kEdited = kWithoutCompiler + kCompared + Keys{u"Compile", u"Save"};
const Keys kStored = kCompared + Keys{u"ReadOnly"};
const Keys kWritable = kWithoutCompiler + kStored + Keys{u"Compile"};

const Keys kOfText =
    kCarets + Keys{u"Format",         u"DeleteLine",    u"SelectAll",      u"IndentBlock", u"OutdentBlock",
                   u"MoveLinesUp",    u"MoveLinesDown", u"DuplicateLines", u"JoinLines",   u"CommentBlock",
                   u"UncommentBlock", u"ValueMark",     u"SubValueMark",   u"ToggleCase",  u"Rename",
                   u"CompleteWord",   u"QuickMend"};

Keys operator-(Keys keys, const Keys& less)
{
    for (const Text& key : less) keys.erase(key);
    return keys;
}

Keys EnabledOn(const MenuModel& menus)
{
    Keys keys;
    for (const MenuToolRow& row : kMainMenu)
        if (menus.Tool(Band::MainMenu, row.key).enabled) keys.insert(row.key);
    return keys;
}

struct Row {
    const char* why;
    std::function<void(TestShell&)> prepare;
    Keys enabled;
};

mvDocument& Writable(TestShell& t)
{
    return *t.StoreAndOpen(kMain, u"one\r\ntwo");
}

mvDocument& ReadOnly(TestShell& t)
{
    t.Store(kOther, u"o", true);
    return *t.Open(kOther, true);
}

const Row kRows[] = {
    {"no document", [](TestShell&) {}, kDesign},
    {"a clean one", [](TestShell& t) { Writable(t); }, kWritable},
    {"the only one is read-only", [](TestShell& t) { ReadOnly(t); }, kReadOnly + kStored},
    {"a second one is open",
     [](TestShell& t) {
         Writable(t);
         ReadOnly(t);
     },
     kReadOnly + kStored + Keys{u"SaveAll", u"CompareDocument"}},
    {"edited", [](TestShell& t) { Writable(t).InsValue(); }, kEdited + Keys{u"Undo"}},
    {"undone",
     [](TestShell& t) {
         mvDocument& document = Writable(t);
         document.InsValue();
         document.Undo();
     },
     kWritable + Keys{u"Redo"}},
    {"replaced",
     [](TestShell& t) {
         const auto sweep = std::make_shared<const int>();
         auto pass = std::make_shared<ReplacePass>(std::vector<Position>{{0, 0}}, u"o", true, u"0", sweep);
         t.ViewOf(Writable(t)).Document().ExecuteOp(std::make_unique<OpReplaceHit>(std::move(pass), 0));
     },
     kEdited + Keys{u"Undo", u"UndoReplacements"}},
    {"selected", [](TestShell& t) { Writable(t).SelectAll(); }, kWritable + Keys{u"Cut", u"Copy", u"Clear"}},
    {"something to paste",
     [](TestShell& t) {
         Writable(t);
         t.clipboard.text = u"x";
     },
     kWritable + Keys{u"Paste"}},
    {"a bookmark", [](TestShell& t) { t.ViewOf(Writable(t)).Document().ToggleBookmark(0); },
     kWritable + Keys{u"NextBookmark", u"PrevBookmark", u"ClearBookmarks"}},
    {"a history",
     [](TestShell& t) {
         mvDocument& document = Writable(t);
         for (int i = 0; i < 2; ++i) t.program.History().RecordPosition(&document, false);
         t.program.History().NavigateBack(&document);
     },
     kWritable + Keys{u"NavBack", u"NavForward"}},
    {"in tables, with something selected behind them",
     [](TestShell& t) {
         mvDocument& document = Writable(t);
         document.SelectAll();
         t.clipboard.text = u"x";
         t.View(document).grid = true;
     },
     kWritable - kOfText},
    {"no compiler",
     [](TestShell& t) {
         t.Store().session.executes = false;
         Writable(t);
     },
     kWithoutCompiler + kStored}};

TEST(CommandTest, EnablingRules)
{
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.why);
        TestShell t;
        row.prepare(t);
        t.dispatcher.UpdateToolBar();
        EXPECT_EQ(EnabledOn(t.menus), row.enabled);
        for (const ToolBarRow& tool : kToolBar)
            EXPECT_EQ(t.menus.Tool(Band::ToolBar, tool.key).enabled, t.menus.Tool(Band::MainMenu, tool.key).enabled);
        t.program.EditorSettings().CollapseBlocks = true;
        t.dispatcher.UpdateToolBar();
        Keys folding = row.enabled;
        if (folding.erase(u"LineWrap")) folding = folding + kBlocks;
        EXPECT_EQ(EnabledOn(t.menus), folding);
    }
}

TEST(CommandTest, F1BelongsToTheTextWhileThereIsOne)
{
    TestShell t;
    auto shortcut = [&] {
        return (t.dispatcher.UpdateToolBar(), t.menus.Tool(Band::MainMenu, u"HelpTopics").shortcut);
    };
    EXPECT_EQ(shortcut(), u"F1");
    auto document = t.New();
    EXPECT_EQ(shortcut(), u"");
    document->FileClose(false);
    EXPECT_EQ(shortcut(), u"F1");
}

TEST(CommandTest, AnUpdateThatChangesNothingTellsNothing)
{
    TestShell t;
    t.menus.SetListener(&t.bar);
    auto document = t.New();
    t.dispatcher.UpdateToolBar();
    t.Drawn();
    t.bar.batches = 0;
    t.dispatcher.UpdateToolBar();
    EXPECT_EQ(t.Drawn(), std::vector<Text>{});
    document->InsValue();
    t.dispatcher.UpdateToolBar();
    EXPECT_EQ(t.Drawn(), (std::vector<Text>{u"~Save 4", u"~Save 4", u"~Undo 4", u"~Undo 4"}));
    EXPECT_EQ(t.bar.batches, 1);
    t.menus.SetListener(nullptr);
}

using Lines = std::vector<Text>;

TEST(CommandTest, EveryToolIsACommand)
{
    std::set<Text> shortcuts;
    for (const MenuToolRow& row : kMainMenu) {
        EXPECT_TRUE(IsCommand(row.key)) << ToUtf8(row.key);
        EXPECT_TRUE(!*row.shortcut || shortcuts.insert(row.shortcut).second) << ToUtf8(row.shortcut);
    }
    for (const ToolBarRow& row : kToolBar) EXPECT_TRUE(IsCommand(row.key)) << ToUtf8(row.key);
    for (auto rows : {kPopup, kTabContext})
        for (const MenuToolRow& row : rows) EXPECT_TRUE(IsCommand(row.key)) << ToUtf8(row.key);
    for (TextView key : {u"new", u"NEW", u"", u"Tile"}) EXPECT_FALSE(IsCommand(key)) << ToUtf8(key);
}

TEST(CommandTest, FormsAndWindows)
{
    // A few with something of their own; the others are in the same tables.
    const std::pair<TextView, Text> rows[] = {{u"FindNext", u"find next"},       {u"ctxGoto", u"goto 'L1'"},
                                              {u"Results", u"results"},          {u"Print", u"print"},
                                              {u"TileHorizontal", u"arrange 1"}, {u"TileVertical", u"arrange 2"},
                                              {u"Cascade", u"arrange 0"},        {u"HelpTopics", u"help"}};
    TestShell t;
    t.New();
    t.program.Target().Target = u"L1";
    for (auto& [key, line] : rows) {
        EXPECT_TRUE(t.Run(key)) << ToUtf8(key);
        EXPECT_EQ(t.Ran(), Lines{line}) << ToUtf8(key);
    }
}

TEST(CommandTest, TextCommands)
{
    struct Row {
        TextView key, text;
    };
    const Row rows[] = {{u"Copy", u"ab\r\ncd"},     {u"Cut", u"\r\ncd"},       {u"Undo", u"ab\r\ncd"},
                        {u"Redo", u"\r\ncd"},       {u"Paste", u"ab\r\ncd"},   {u"DeleteLine", u"cd"},
                        {u"SelectAll", u"cd"},      {u"CommentBlock", u"*cd"}, {u"UncommentBlock", u"cd"},
                        {u"IndentBlock", u"   cd"}, {u"OutdentBlock", u"cd"},  {u"ToggleCase", u"Cd"}};
    TestShell t;
    auto document = t.New();
    document->SetText(u"ab\r\ncd");
    t.ViewOf(*document).SetSelection({0, 0}, {2, 0});
    for (auto [key, text] : rows) {
        EXPECT_TRUE(t.Run(key)) << ToUtf8(key);
        EXPECT_EQ(document->GetText(), text) << ToUtf8(key);
    }
    EXPECT_TRUE(t.Run(u"Clear"));
    EXPECT_EQ(document->GetText(), u"");
    EXPECT_TRUE(t.Run(u"ValueMark") && t.Run(u"SubValueMark"));
    EXPECT_EQ(document->GetText(), u"\uF8FD\uF8FC");
    document->SetText(u"X = 1");
    EXPECT_TRUE(t.Run(u"Format"));
    EXPECT_EQ(document->GetText(), u"      X = 1");
}

TEST(CommandTest, WaitForWorkToEnd)
{
    TestShell t;
    t.StoreAndOpen(kMain, u"text");
    t.window.awaiting = true;
    EXPECT_FALSE(t.Run(u"Close"));
    EXPECT_EQ(t.Documents().Count(), 1);
    t.window.awaiting = false;
    for (const auto& what : t.window.postponed) what();
    EXPECT_EQ(t.Documents().Count(), 0);
}

TEST(CommandTest, CompileAsksForASave)
{
    const Text question = u"Program has not been saved. Do you want\nto save the file, then compile the program?";
    TestShell t;
    auto document = t.StoreAndOpen(kMain, u"a");
    document->SetText(u"b");
    t.boxes.Answer({message_box::kAnswerCancel, message_box::kAnswerOk});
    t.Run(u"Compile");
    EXPECT_EQ(t.Store().session.commands, Lines{});
    t.Run(u"Compile");
    EXPECT_EQ(t.Store().session.commands.size(), 1U);
    EXPECT_EQ(t.Stored(kMain), u"b");
    EXPECT_EQ(t.boxes.Take(), (Boxes(2, {question, 33})));
}

TEST(CommandTest, Bookmarks)
{
    TestShell t;
    auto other = t.New();
    t.Run(u"ToggleBookmark");
    auto document = t.New();
    document->SetText(u"a\r\nb\r\nc");
    SourceView& view = t.ViewOf(*document);
    for (int32_t line : {0, 2}) {
        view.SetCaret({0, line});
        t.Run(u"ToggleBookmark");
    }
    const std::pair<TextView, int32_t> moves[] = {{u"NextBookmark", 0}, {u"NextBookmark", 2}, {u"PrevBookmark", 0}};
    for (auto [key, line] : moves) {
        EXPECT_TRUE(t.Run(key));
        EXPECT_EQ(view.CaretLine(), line);
    }
    EXPECT_TRUE(t.Run(u"ClearBookmarks"));
    EXPECT_FALSE(t.Run(u"ClearBookmarks"));
    EXPECT_EQ(t.ViewOf(*other).Document().BookmarkCount(), 1);
    EXPECT_TRUE(t.Run(u"ClearAllBookmarks"));
    EXPECT_EQ(t.ViewOf(*other).Document().BookmarkCount(), 0);
}

TEST(CommandTest, CheckMarks)
{
    TestShell t;
    auto document = t.New();
    t.dispatcher.UpdateToolBar();
    for (Band band : {Band::MainMenu, Band::ToolBar, Band::Popup}) {
        bool before = document->Highlight();
        t.dispatcher.ShowContextMenu(HitKind::None);
        t.Click(band, u"Highlight");
        EXPECT_EQ(document->Highlight(), !before);
        for (Band shown : {Band::MainMenu, Band::ToolBar})
            EXPECT_EQ(t.menus.Tool(shown, u"Highlight").checked, !before);
    }
    t.Click(Band::MainMenu, u"LineWrap");
    EXPECT_TRUE(t.ViewOf(*document).LineWrap() && t.menus.Tool(Band::MainMenu, u"linewrap").checked);
    for (auto [key, band] : {std::pair{u"ViewToolbar", Band::ToolBar}, {u"ViewStatusbar", Band::StatusBar}}) {
        EXPECT_TRUE(t.menus.Tool(Band::MainMenu, key).checked);
        t.Click(Band::MainMenu, key);
        EXPECT_FALSE(t.menus.State(band).visible || t.menus.Tool(Band::MainMenu, key).checked);
        t.Run(key);
        EXPECT_TRUE(t.menus.State(band).visible && t.menus.Tool(Band::MainMenu, key).checked);
    }
}

TEST(CommandTest, WindowsAndTabs)
{
    TestShell t;
    EXPECT_FALSE(t.Run(u"Maximize") || t.Run(u"TileHorizontal") || t.Run(u"tab_close"));
    auto first = t.New();
    auto second = t.New();
    for (int32_t state : {2, 0}) {
        EXPECT_TRUE(t.Run(u"Maximize"));
        EXPECT_EQ(second->View()->WindowState(), state);
    }
    t.menus.SetTag(Band::TabContext, Decimal(first->DocumentID()));
    const std::pair<TextView, int32_t> rows[] = {{u"tab_max", 2}, {u"tab_max", 0}, {u"tab_min", 1}, {u"tab_min", 0}};
    for (auto [key, state] : rows) {
        EXPECT_TRUE(t.Run(key));
        EXPECT_EQ(first->View()->WindowState(), state) << ToUtf8(key);
    }
    EXPECT_TRUE(t.Run(u"tab_activate"));
    EXPECT_EQ(t.window.activeDocument, first->DocumentID());
    t.Run(u"tab_close");
    EXPECT_EQ(t.View(*first).closes, 1);
}

TEST(CommandTest, ExtendedCommandsAndFailures)
{
    TestShell t;
    const Lines names{u"Deploy", u"file_upload", u"miWListing"};
    for (const Text& name : names) t.program.ClientCommands().AddCommand(name, name, 0);
    EXPECT_FALSE(t.Run(u"Deploy")) << "no document whose client could be told";
    auto document = t.New();
    for (const Text& name : names) {
        EXPECT_TRUE(t.Run(name)) << "also one that begins like an entry of a list";
        EXPECT_EQ(t.Ran(), Lines{u"Custom " + name});
    }
    EXPECT_FALSE(t.Run(u"Nothing"));

    t.program.EditorSettings().NoGotoDialog = true;
    t.program.Target().Target = u"NOWHERE";
    EXPECT_FALSE(t.Run(u"ctxGoto"));
    EXPECT_EQ(t.boxes.Take().size(), 1u);
    EXPECT_EQ(t.trace.Take().size(), 1u);
}

} // namespace nib::test::command_test
