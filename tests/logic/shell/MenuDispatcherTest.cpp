#include "shell/MenuDispatcher.h"

#include "fakes/TestShell.h"

namespace nib::test {
namespace {

using Lines = std::vector<Text>;

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
}

TEST_F(MenuDispatcherTest, WindowList)
{
    EXPECT_EQ(Entries(u"Window", u"miWList"), Lines{});
    EXPECT_FALSE(t.menus.Tool(Band::MainMenu, u"Cascade").enabled);
    t.Store(kMain, u"");
    t.Open(kMain);
    auto second = t.New();
    second->View()->SetWindowState(2);
    EXPECT_EQ(Entries(u"Window", u"miWList"), (Lines{u"*&1 BP MAIN", u"x &2 NewItem1"}));
    EXPECT_EQ(State(Band::MainMenu, u"Maximize"), u"on checked group");
    t.Click(Band::MainMenu, u"miWList1");
    EXPECT_EQ(Entries(u"Window", u"miWList"), (Lines{u"*x &1 BP MAIN", u"&2 NewItem1"}));
    EXPECT_EQ(State(Band::MainMenu, u"Maximize"), u"on group");
}

TEST_F(MenuDispatcherTest, TabMenu)
{
    auto first = t.New();
    auto second = t.New();
    first->View()->SetWindowState(1);
    second->View()->SetWindowState(2);
    struct Row {
        bool buttons;
        int32_t tab;
        Text min, max;
    };
    const Row rows[] = {{false, second->DocumentID(), u"hidden", u"on checked group"},
                        {true, second->DocumentID(), u"on group", u"on checked"},
                        {true, first->DocumentID(), u"off checked group", u"off"}};
    for (const Row& row : rows) {
        t.program.EditorSettings().MinMaxClose = row.buttons;
        t.dispatcher.TabContextMenu(row.tab, {5, 6});
        EXPECT_EQ(t.Drawn(), Lines{u"pop 4 at 5"});
        EXPECT_EQ(t.menus.Root(Band::TabContext).tag, Decimal(row.tab));
        EXPECT_EQ(State(Band::TabContext, u"tab_min"), row.min);
        EXPECT_EQ(State(Band::TabContext, u"tab_max"), row.max);
    }
    t.dispatcher.TabContextMenu(99, {5, 6});
    EXPECT_EQ(t.Drawn(), Lines{}) << "no such window";
}

TEST_F(MenuDispatcherTest, ContextMenuByWhatWasHit)
{
    auto document = t.New();
    t.program.EditorSettings().CollapseBlocks = true;
    struct Row {
        HitKind kind;
        bool canGoto, canOpen, canFold;
        Text caption;
    };
    const Row rows[] = {{HitKind::None, false, false, false, u"Collapse block"},
                        {HitKind::Label, true, false, false, u"Collapse block"},
                        {HitKind::Call, false, true, false, u"Collapse block"},
                        {HitKind::Include, false, true, false, u"Collapse block"},
                        {HitKind::OpenBlock, false, false, true, u"Collapse block"},
                        {HitKind::ClosedBlock, false, false, true, u"Expand block"}};
    auto tool = [&](TextView key) -> const MenuTool& { return t.menus.Tool(Band::Popup, key); };
    for (const Row& row : rows) {
        t.dispatcher.ShowContextMenu(row.kind);
        EXPECT_EQ(t.Drawn(), Lines{u"pop 3"});
        EXPECT_EQ(tool(u"ctxGoto").enabled, row.canGoto);
        EXPECT_EQ(tool(u"ctxOpen").enabled, row.canOpen);
        EXPECT_EQ(tool(u"ctxToggleBlock").enabled, row.canFold);
        EXPECT_EQ(tool(u"ctxToggleBlock").caption, row.caption);
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

} // namespace
} // namespace nib::test
