#include "fakes/Failure.h"
#include "fakes/TestShell.h"
#include "shell/menus/FrameKeys.h"

namespace nib::test::menus_test {

using Lines = std::vector<Text>;

Lines Keys(const MenuTool& menu)
{
    Lines keys;
    for (auto& tool : menu.tools) keys.push_back((tool->beginGroup ? u"*" : u"") + tool->key);
    return keys;
}

MenuTool Named(TextView key)
{
    MenuTool tool;
    tool.key = key;
    return tool;
}

TEST(MenuModelTest, LooksUpKeysWhateverTheirCase)
{
    MenuModel model;
    EXPECT_EQ(model.Find(Band::MainMenu, u"LINEWRAP"), &model.Tool(Band::MainMenu, u"LineWrap"));
    EXPECT_EQ(model.Tool(Band::MainMenu, u"togglebookmark").menu->key, u"Bookmarks");
    EXPECT_EQ(model.Find(Band::ToolBar, u"LineWrap"), nullptr);
    model.Add(Band::MainMenu, u"tools", Named(u"\u00C4ndern"));
    EXPECT_TRUE(model.Find(Band::MainMenu, u"\u00E4NDERN"));
    EXPECT_EQ(ErrorOf([&] { model.SetEnabled(Band::MainMenu, u"Nothing", true); }).number, error_number::kBadIndex);
    EXPECT_EQ(ErrorOf([&] { model.Add(Band::MainMenu, u"Tools", Named(u"SETTINGS")); }).number,
              error_number::kKeyInUse);
}

TEST(MenuModelTest, TellsChangesOnceABatch)
{
    MenuModel model;
    RecordingMenuBar bar;
    model.SetListener(&bar);
    {
        MenuBatch batch(model);
        for (bool enabled : {false, true, false}) model.SetEnabled(Band::MainMenu, u"Save", enabled);
        model.SetCaption(Band::MainMenu, u"Save", u"S");
        model.SetEnabled(Band::MainMenu, u"Open", true);
        EXPECT_EQ(bar.journal.Take(), Lines{});
    }
    EXPECT_EQ(bar.journal.Take(), Lines{u"~Save 5"});
    model.SetVisible(Band::Popup, u"Undo", false);
    EXPECT_EQ(bar.journal.Take(), Lines{u"~Undo 16"});
    {
        MenuBatch batch(model);
        model.Add(Band::MainMenu, u"File", Named(u"file_1"), u"Exit");
        model.SetChecked(Band::MainMenu, u"file_1", true);
        model.RemoveBeginning(Band::MainMenu, u"file", u"FILE_");
    }
    EXPECT_EQ(bar.journal.Take(), (Lines{u"+file_1", u"-file_1"})) << "what has gone is not told of";
    model.SetIconSize(Band::ToolBar, kSmallIcons);
    model.SetIconSize(Band::ToolBar, kLargeIcons);
    model.SetHotTrack(Band::ToolBar, false);
    model.ShowBand(Band::StatusBar, false);
    EXPECT_EQ(bar.journal.Take(), (Lines{u"band 1", u"band 1", u"band 2", u"~ViewStatusbar 8"}));
}

TEST(MenuModelTest, AddedToolsStandWhereTheyShould)
{
    MenuModel model;
    for (TextView key : {u"file_1", u"file_2"}) model.Add(Band::MainMenu, u"File", Named(key), u"exit");
    Lines keys = Keys(model.Tool(Band::MainMenu, u"File"));
    EXPECT_EQ(Lines(keys.end() - 4, keys.end()), (Lines{u"Properties", u"file_1", u"file_2", u"*Exit"}));
    model.Remove(Band::MainMenu, u"FILE_1");
    EXPECT_EQ(model.Find(Band::MainMenu, u"file_1"), nullptr);
    EXPECT_EQ(Keys(model.Tool(Band::MainMenu, u"Search")),
              (Lines{u"*Find", u"FindNext", u"FindBar", u"Replace", u"FindInAccount", u"*Goto", u"MatchingWord",
                     u"NavBack", u"NavForward", u"*Code", u"*Bookmarks"}));
}

TEST(MenuModelTest, NumberedShortcuts)
{
    const std::pair<int32_t, Text> rows[] = {
        {-1, u""},          {0, u""},           {1, u"Ctrl+A"},         {26, u"Ctrl+Z"},
        {27, u"F1"},        {38, u"F12"},       {39, u"Ctrl+F1"},       {50, u"Ctrl+F12"},
        {51, u"Shift+F1"},  {62, u"Shift+F12"}, {63, u"Ctrl+Shift+F1"}, {74, u"Ctrl+Shift+F12"},
        {75, u"Ctrl+Ins"},  {76, u"Shift+Ins"}, {77, u"Del"},           {78, u"Shift+Del"},
        {79, u"Alt+Bkspc"}, {80, u""}};
    for (auto& [number, name] : rows) EXPECT_EQ(ShortcutName(number), name) << number;
}

struct MenuDispatcherTest : testing::Test {
    TestShell t;

    /// Tools of a menu behind those that it was designed with: group, check mark and caption.
    Lines Entries(TextView menu, TextView prefix)
    {
        t.dispatcher.MenuOpening(t.menus.Tool(Band::MainMenu, menu));
        Lines entries;
        for (auto& tool : t.menus.Tool(Band::MainMenu, menu).tools)
            if (tool->key.starts_with(prefix))
                entries.push_back((tool->beginGroup ? u"*" : u"") + Text(tool->checked ? u"x " : u"") + tool->caption);
        return entries;
    }
    /// What the pop-up shows: a mark for each state that is not the plain one.
    Text State(Band band, TextView key)
    {
        const MenuTool& tool = t.menus.Tool(band, key);
        if (!tool.visible) return u"hidden";
        return Text(tool.enabled ? u"on" : u"off") + (tool.checked ? u" checked" : u"") +
               (tool.beginGroup ? u" group" : u"");
    }
};

TEST_F(MenuDispatcherTest, RecentFiles)
{
    EXPECT_EQ(Entries(u"File", u"file_"), Lines{});
    t.program.RecentFiles().AddItem(u"mvdb:*/*/BP/A");
    t.program.RecentFiles().AddItem(u"file:/home/x & y");
    EXPECT_EQ(Entries(u"File", u"file_"), (Lines{u"*&1 /home/x && y", u"&2 BP A"}));
    EXPECT_EQ(t.menus.Tool(Band::MainMenu, u"File").tools.back()->key, u"Exit");
    t.program.RecentFiles().AddItem(u"file:/" + Text(200, u'm') + u"\U0001F600" + Text(38, u'n'));
    EXPECT_EQ(Entries(u"File", u"file_")[0], u"*&1 /" + Text(39, u'm') + u"\u2026\U0001F600" + Text(38, u'n'));
    t.program.RecentFiles().AddItem(u"file:/" + Text(200, u'm') + u"\U0001F600" + Text(39, u'n'));
    EXPECT_EQ(Entries(u"File", u"file_")[0], u"*&1 /" + Text(39, u'm') + u"\u2026" + Text(39, u'n'));
}

TEST_F(MenuDispatcherTest, WindowList)
{
    EXPECT_EQ(Entries(u"Window", u"miWList"), Lines{});
    EXPECT_FALSE(t.menus.Tool(Band::MainMenu, u"Cascade").enabled);
    t.StoreAndOpen(kMain, u"");
    auto second = t.New();
    second->View()->SetWindowState(2);
    EXPECT_EQ(Entries(u"Window", u"miWList"), (Lines{u"*&1 BP MAIN", u"x &2 NewItem1"}));
    EXPECT_EQ(State(Band::MainMenu, u"Maximize"), u"on checked group");
    t.Click(Band::MainMenu, u"miWList1");
    EXPECT_EQ(Entries(u"Window", u"miWList"), (Lines{u"*x &1 BP MAIN", u"&2 NewItem1"}));
    EXPECT_EQ(State(Band::MainMenu, u"Maximize"), u"on group");
    t.StoreAndOpen(u"mvdb:*/LIVE/BP/MAIN", u"");
    for (int i = 0; i < 8; ++i) t.New();
    const Lines entries = Entries(u"Window", u"miWList");
    EXPECT_EQ(entries[0], u"*&1 BP MAIN\tDEMO on server1");
    EXPECT_EQ(entries[2], u"&3 BP MAIN\tLIVE on server1");
    EXPECT_EQ(Lines(entries.end() - 2, entries.end()), (Lines{u"1&0 NewItem8", u"x 11 NewItem9"}));
}

TEST_F(MenuDispatcherTest, TabMenu)
{
    auto first = t.New();
    auto second = t.New();
    first->View()->SetWindowState(1);
    second->View()->SetWindowState(2);
    const std::tuple<bool, int32_t, Text, Text> rows[] = {{false, second->DocumentID(), u"hidden", u"on checked group"},
                                                          {true, second->DocumentID(), u"on group", u"on checked"},
                                                          {true, first->DocumentID(), u"off checked group", u"off"}};
    for (const auto& [buttons, tab, min, max] : rows) {
        t.program.EditorSettings().MinMaxClose = buttons;
        t.dispatcher.TabContextMenu(tab, {5, 6});
        EXPECT_EQ(t.Drawn(), Lines{u"pop 4 at 5"});
        EXPECT_EQ(t.menus.Root(Band::TabContext).tag, Decimal(tab));
        EXPECT_EQ(State(Band::TabContext, u"tab_min"), min);
        EXPECT_EQ(State(Band::TabContext, u"tab_max"), max);
    }
    t.dispatcher.TabContextMenu(99, {5, 6});
    EXPECT_EQ(t.Drawn(), Lines{}) << "no such window";
}

TEST_F(MenuDispatcherTest, ContextMenuByWhatWasHit)
{
    auto document = t.New();
    t.program.EditorSettings().CollapseBlocks = true;
    const std::tuple<HitKind, bool, bool, bool, Text> rows[] = {
        {HitKind::None, false, false, false, u"Collapse block"},
        {HitKind::Label, true, false, false, u"Collapse block"},
        {HitKind::Call, false, true, false, u"Collapse block"},
        {HitKind::Include, false, true, false, u"Collapse block"},
        {HitKind::OpenBlock, false, false, true, u"Collapse block"},
        {HitKind::ClosedBlock, false, false, true, u"Expand block"}};
    auto tool = [&](TextView key) -> const MenuTool& { return t.menus.Tool(Band::Popup, key); };
    for (const auto& [kind, canGoto, canOpen, canFold, caption] : rows) {
        t.dispatcher.ShowContextMenu(kind);
        EXPECT_EQ(t.Drawn(), Lines{u"pop 3"});
        EXPECT_EQ(tool(u"ctxGoto").enabled, canGoto);
        EXPECT_EQ(tool(u"ctxOpen").enabled, canOpen);
        EXPECT_EQ(tool(u"ctxToggleBlock").enabled, canFold);
        EXPECT_EQ(tool(u"ctxToggleBlock").caption, caption);
        EXPECT_TRUE(tool(u"ctxToggleBlock").visible);
        for (TextView key : {u"Cut", u"Copy", u"Clear", u"Paste", u"Undo"}) EXPECT_FALSE(tool(key).enabled);
    }
    document->SetText(u"x");
    document->InsValue();
    document->SelectAll();
    t.clipboard.text = u"x";
    t.program.EditorSettings().CollapseBlocks = false;
    t.dispatcher.ShowContextMenu(HitKind::OpenBlock, ScreenPoint{3, 4});
    EXPECT_EQ(t.Drawn(), Lines{u"pop 3 at 3"});
    for (TextView key : {u"Cut", u"Copy", u"Clear", u"Paste", u"Undo"}) EXPECT_TRUE(tool(key).enabled);
    EXPECT_TRUE(t.menus.Tool(Band::ToolBar, u"Undo").enabled);
    EXPECT_FALSE(tool(u"ctxToggleBlock").visible);
}

constexpr FrameKey kTab = FrameKey::Tab;
constexpr FrameKey kF6 = FrameKey::F6;
constexpr FrameKey kOther = FrameKey::Other;

// Where the keys go.
constexpr KeyboardState kElsewhere{false, true, true};
constexpr KeyboardState kToolBar{true, false, false};
constexpr KeyboardState kText{true, true, false};
constexpr KeyboardState kLines{true, true, true};

struct Row {
    FrameKey key;
    bool shift, ctrl, alt;
    KeyboardState state;
    KeyAction action = KeyAction::Pass;
};

TEST(KeyboardFilterTest, KeysAndPlaces)
{
    using A = KeyAction;
    std::vector<Row> rows = {
        {kTab, false, true, false, kText, A::NextDocument},     {kTab, false, true, true, kToolBar, A::NextDocument},
        {kTab, true, true, false, kLines, A::PreviousDocument}, {kTab, false, false, false, kLines, A::IndentBlock},
        {kTab, true, false, false, kLines, A::OutdentBlock},    {kF6, false, true, false, kText, A::NextDocument},
        {kF6, false, true, false, kToolBar, A::NextDocument}};
    const Row passed[] = {{kTab, true, true, false, kElsewhere},   {kTab, false, false, false, kText},
                          {kTab, true, false, false, kText},       {kTab, true, false, false, kToolBar},
                          {kTab, false, false, true, kLines},      {kTab, true, false, true, kText},
                          {kTab, false, false, false, kElsewhere}, {kF6, true, true, false, kText},
                          {kF6, false, true, true, kText},         {kF6, false, false, false, kText},
                          {kF6, false, true, false, kElsewhere},   {kOther, false, true, false, kText}};
    rows.insert(rows.end(), std::begin(passed), std::end(passed));
    for (const Row& row : rows) {
        SCOPED_TRACE(&row - rows.data());
        EXPECT_EQ(FilterKey({row.key, true, row.shift, row.ctrl, row.alt}, row.state), row.action);
        // What was taken going down is not seen going up either.
        EXPECT_EQ(FilterKey({row.key, false, row.shift, row.ctrl, row.alt}, row.state),
                  row.action == A::Pass ? A::Pass : A::Swallow);
    }
}

} // namespace nib::test::menus_test
