#include "platform/qt/QtText.h"
#include "shell/menus/FrameKeys.h"
#include "shell/menus/MenuModel.h"
#include "shell/menus/MenuTable.h"
#include "shell/menus/QtMenuBar.h"
#include "shell/menus/QtStatusPanels.h"
#include "shell/menus/QtToolActions.h"

#include <QtTest>
#include <QtWidgets>

#include <gtest/gtest.h>

#include <algorithm>

namespace nib::widget_menu_bar_test {

struct RecordingEvents final : MenuEvents {
    QStringList lines;

    void ToolClick(Band band, const MenuTool& tool) override
    {
        Add("click", tool.key);
        lines.back() += QString::number(static_cast<int>(band)) + (tool.checked ? QStringLiteral("x") : QString());
    }
    void MenuOpening(const MenuTool& menu) override { Add("opening", menu.key); }
    void TabActivate(int32_t tab) override { Add("activate", Decimal(tab)); }
    void TabClose(int32_t tab) override { Add("close", Decimal(tab)); }
    void TabContextMenu(int32_t tab, ScreenPoint) override { Add("menu", Decimal(tab)); }

    void Add(const char* what, TextView which) { lines += QLatin1String(what) + QLatin1Char(' ') + ToQString(which); }
    QStringList Take() { return std::exchange(lines, {}); }
};

struct MenuBarTest : testing::Test {
    MenuModel model;
    RecordingEvents events;
    QMainWindow window;
    QtMenuBar bar{window, model};

    MenuBarTest()
    {
        bar.SetEvents(&events);
        bar.SetCentral(new QWidget);
        window.show();
    }
    QMenu* Menu(const QString& key)
    {
        auto* action = window.findChild<QAction*>(key);
        if (action) return action->menu();
        for (QMenu* menu : window.findChildren<QMenu*>())
            if (menu->menuAction()->objectName() == key) return menu;
        return nullptr;
    }
    static QAction* Tool(const QWidget& holder, TextView key)
    {
        for (QAction* action : holder.actions())
            if (action->objectName() == ToQString(key)) return action;
        ADD_FAILURE() << "no tool " << ToUtf8(key);
        return nullptr;
    }
    /// What stands on a bar: "-" for a separator, else the tool's key.
    static QStringList Drawn(const QWidget& holder)
    {
        QStringList keys;
        for (QAction* action : holder.actions())
            if (action->isVisible()) keys += action->isSeparator() ? QStringLiteral("-") : action->objectName();
        return keys;
    }
    template <typename Rows>
    static QStringList Expected(const Rows& rows, TextView menu)
    {
        QStringList keys;
        for (auto& row : rows) {
            if constexpr (requires { row.menu; })
                if (row.menu != menu) continue;
            if (row.beginsGroup) keys += QStringLiteral("-");
            keys += ToQString(row.key);
        }
        return keys;
    }
};

TEST_F(MenuBarTest, EachBandIsDrawnAsItsRowsSay)
{
    for (const MenuRow& row : kMenus) {
        QStringList expected = Expected(kMainMenu, row.key);
        for (const MenuRow& inner : kMenus) {
            if (TextView(inner.menu) != row.key) continue;
            qsizetype at = inner.before[0] ? expected.indexOf(ToQString(inner.before)) : expected.size();
            if (inner.before[0] && expected[at - 1] == QLatin1String("-")) --at;
            if (inner.beginsGroup) expected.insert(at++, QStringLiteral("-"));
            expected.insert(at, ToQString(inner.key));
        }
        EXPECT_EQ(Drawn(*Menu(ToQString(row.key))), expected) << ToUtf8(row.key);
    }
    QAction* replace = Tool(*Menu(QStringLiteral("Search")), u"Replace");
    EXPECT_EQ(replace->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_H));
    EXPECT_TRUE(Tool(*Menu(QStringLiteral("View")), u"Highlight")->isCheckable());
    QToolBar& tools = *bar.ToolBar();
    EXPECT_EQ(Drawn(tools), Expected(kToolBar, u""));
    for (const ToolBarRow& row : kToolBar) EXPECT_FALSE(Tool(tools, row.key)->icon().isNull()) << ToUtf8(row.key);
    QAction* find = Tool(tools, u"Find");
    EXPECT_EQ(find->text(), QStringLiteral("&Fine"));
    EXPECT_EQ(find->toolTip(), tools.widgetForAction(find)->accessibleName() + QStringLiteral(" (Ctrl+F)"));
    EXPECT_TRUE(find->shortcut().isEmpty()) << "live in the menu alone";
    for (auto [band, rows] : {std::pair{Band::Popup, kPopup}, {Band::TabContext, kTabContext}})
        EXPECT_EQ(Drawn(*bar.PopUpMenu(band)), Expected(rows, u""));
    EXPECT_TRUE(Tool(*bar.PopUpMenu(Band::Popup), u"Cut")->text().endsWith(QStringLiteral("\tCtrl+X")));
    bar.PopUp(Band::Popup, ScreenPoint{10, 10});
    EXPECT_TRUE(bar.PopUpMenu(Band::Popup)->isVisible());
    bar.PopUpMenu(Band::Popup)->close();
}

TEST_F(MenuBarTest, StatusPanels)
{
    auto panel = [&](TextView key) { return window.statusBar()->findChild<QtStatusPanel*>(ToQString(key)); };
    for (const PanelRow& row : kStatusBar) {
        EXPECT_EQ(panel(row.key)->toolTip(), ToQString(row.tip));
        EXPECT_EQ(panel(row.key)->Shown(), row.fixedWidth ? QString() : ToQString(row.text));
    }
    EXPECT_TRUE(panel(u"Panel1")->isVisible());
    EXPECT_FALSE(panel(u"Panel2")->isVisible() || panel(u"Panel4")->isVisible());
    int width = window.width();
    model.ShowPanel(2, true);
    model.SetPanelText(2, u"Ln 3, Col 7");
    model.SetPanelText(1, Text(2000, u'm'));
    model.SetPanelText(4, u"four");
    QCoreApplication::processEvents();
    EXPECT_TRUE(panel(u"Panel2")->isVisible() && panel(u"Panel4")->isVisible());
    EXPECT_GE(panel(u"Panel2")->width(), window.fontMetrics().horizontalAdvance(QStringLiteral("Ln 1000, Col 100")));
    EXPECT_EQ(window.width(), width) << "a long text makes no wide window";
    model.SetPanelText(1, u"");
    EXPECT_EQ(panel(u"Panel1")->accessibleName(), QStringLiteral("Server status"));
}

TEST_F(MenuBarTest, APanelOpensWhatChangesIt)
{
    auto panel = [&](const char* key) { return window.statusBar()->findChild<QtStatusPanel*>(QLatin1String(key)); };
    model.SetCaption(Band::StatusBar, u"Place", Text(200, u'W'));
    model.SetColor(Band::StatusBar, u"Place", u"red");
    model.SetCaption(Band::StatusBar, u"Ends", u"LF");
    QCoreApplication::processEvents();
    EXPECT_LT(panel("Place")->width(), 400);
    EXPECT_GT(QColor(panel("Place")->grab().toImage().pixel(1, 1)).red(), 150);
    EXPECT_EQ(panel("Ends")->accessibleName(), QStringLiteral("Line ends: LF"));
    QTest::mouseClick(panel("Place"), Qt::LeftButton);
    EXPECT_EQ(events.Take(), QStringList{QStringLiteral("click Properties0")});
    panel("Ends")->setFocus();
    QTest::keyClick(panel("Ends"), Qt::Key_Space);
    QMenu* menu = Menu(QStringLiteral("LineEnds"));
    EXPECT_TRUE(menu->isVisible());
    EXPECT_LE(menu->geometry().bottom(), panel("Ends")->mapToGlobal(QPoint(0, 0)).y());
    menu->close();
    EXPECT_TRUE(events.Take().contains(QStringLiteral("opening LineEnds")));
}

TEST_F(MenuBarTest, TheTabRowHasColoursAndAListOfAll)
{
    auto* button = window.findChild<QToolButton*>(QStringLiteral("AllDocuments"));
    for (int32_t tab : {3, 5}) model.SetTab(tab, u"T" + Decimal(tab), u"title " + Decimal(tab));
    model.SetActiveTab(5);
    const auto line = [&] { return bar.Tabs()->parentWidget()->grab().toImage(); };
    const int plain = line().height();
    model.SetTabColor(5, u"#ff0000");
    QCoreApplication::processEvents();
    EXPECT_GT(line().height(), plain);
    EXPECT_EQ(line().pixelColor(line().width() / 2, line().height() - 1), QColor(Qt::red));
    model.SetActiveTab(3);
    EXPECT_NE(line().pixelColor(line().width() / 2, line().height() - 1), QColor(Qt::red));
    emit button->menu()->aboutToShow();
    ASSERT_EQ(button->menu()->actions().size(), 2);
    EXPECT_EQ(button->menu()->actions()[1]->text(), QStringLiteral("title 5"));
    button->menu()->actions()[1]->trigger();
    EXPECT_EQ(events.Take(), QStringList{QStringLiteral("activate 5")});
}

TEST_F(MenuBarTest, ClicksAndChanges)
{
    QAction* highlight = Tool(*bar.ToolBar(), u"Highlight");
    bar.ToolBar()->widgetForAction(highlight)->setFocus();
    QTest::mouseClick(bar.ToolBar()->widgetForAction(highlight), Qt::LeftButton);
    EXPECT_EQ(events.Take(), QStringList{QStringLiteral("click Highlight1x")});
    EXPECT_TRUE(model.Tool(Band::ToolBar, u"Highlight").checked);
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(&window, Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(events.Take(), QStringList{QStringLiteral("click SaveAll0")});
    model.SetEnabled(Band::MainMenu, u"SaveAll", false);
    QTest::keyClick(&window, Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(events.Take(), QStringList{});
    emit Menu(QStringLiteral("File"))->aboutToShow();
    EXPECT_EQ(events.Take(), QStringList{QStringLiteral("opening File")});

    QAction* help = Tool(*Menu(QStringLiteral("Help")), u"HelpTopics");
    model.SetShortcut(Band::MainMenu, u"HelpTopics", u"");
    EXPECT_TRUE(help->shortcut().isEmpty());
    model.SetBeginGroup(Band::TabContext, u"tab_max", false);
    model.SetVisible(Band::TabContext, u"tab_min", false);
    EXPECT_FALSE(Drawn(*bar.PopUpMenu(Band::TabContext)).contains(QStringLiteral("-")));
    model.ShowBand(Band::ToolBar, false);
    model.ShowBand(Band::StatusBar, false);
    EXPECT_FALSE(bar.ToolBar()->isVisible() || window.statusBar()->isVisible());
    int small = bar.ToolBar()->iconSize().width();
    model.SetIconSize(Band::ToolBar, kLargeIcons);
    EXPECT_GT(bar.ToolBar()->iconSize().width(), small);
    auto* button = qobject_cast<QToolButton*>(bar.ToolBar()->widgetForAction(highlight));
    EXPECT_TRUE(button->autoRaise());
    model.SetHotTrack(Band::ToolBar, false);
    EXPECT_FALSE(button->autoRaise());
}

TEST_F(MenuBarTest, AKeyThatIsTakenIsOnlyShown)
{
    MenuTool client;
    client.key = client.caption = u"Deploy";
    client.shortcut = ShortcutName(6);
    model.Add(Band::MainMenu, u"Tools", std::move(client));
    QAction* deploy = Tool(*Menu(QStringLiteral("Tools")), u"Deploy");
    EXPECT_EQ(deploy->text(), QStringLiteral("Deploy\tCtrl+F"));
    EXPECT_TRUE(deploy->shortcut().isEmpty()) << "the key is taken; with two owners it would serve neither";
}

TEST_F(MenuBarTest, DocumentTabs)
{
    QTabBar& tabs = *bar.Tabs();
    EXPECT_FALSE(tabs.isVisible());
    for (int32_t tab : {3, 5, 9}) model.SetTab(tab, u"A & " + Decimal(tab), u"path " + Decimal(tab));
    model.SetActiveTab(5);
    EXPECT_TRUE(tabs.isVisible());
    EXPECT_EQ(events.Take(), QStringList{}) << "only the user's own changes are told";
    EXPECT_EQ(tabs.currentIndex(), 1);
    EXPECT_EQ(tabs.tabText(2), QStringLiteral("A && 9"));
    EXPECT_EQ(tabs.tabToolTip(2), QStringLiteral("path 9"));
    QCoreApplication::processEvents();
    auto click = [&](int index, Qt::MouseButton button) {
        QTest::mouseClick(&tabs, button, {}, tabs.tabRect(index).center() - QPoint(10, 0));
    };
    click(2, Qt::LeftButton);
    EXPECT_EQ(events.Take(), QStringList{QStringLiteral("activate 9")});
    click(0, Qt::MiddleButton);
    EXPECT_EQ(events.Take(), QStringList{QStringLiteral("close 3")});
    tabs.moveTab(0, 2);
    emit tabs.tabCloseRequested(2);
    EXPECT_EQ(events.Take(), QStringList{QStringLiteral("close 3")}) << "a tab keeps its document when it moves";
    model.SetTab(3, Text(200, u'm'), u"");
    EXPECT_LT(tabs.tabRect(2).width(), 600);
    EXPECT_EQ(model.Tabs(), (std::vector<int32_t>{5, 9, 3})) << "as the user has put them";
    const std::tuple<Text, Text, const char*> names[] = {
        {u"BP ", u"INVOICE", "BP INVOICE"},
        {u"*STOCK.REPORT.PROGRAMS ", u"INVOICE", "*STOCK.REP"},
        {u"*STOCK ", u"MONTHLY.INVOICE.SUMMARY.OLD", "*S\xE2\x80\xA6 MONTHLY."},
    };
    for (const auto& [file, item, shown] : names) {
        model.SetTab(9, file + item, u"", file.size());
        EXPECT_TRUE(tabs.tabText(1).startsWith(QString::fromUtf8(shown))) << tabs.tabText(1).toStdString();
        EXPECT_TRUE(tabs.tabText(1).endsWith(ToQString(item).right(4)));
    }
    for (int32_t tab = 10; tab < 200; ++tab) model.SetTab(tab, u"BP PROGRAM." + Decimal(tab), u"");
    QCoreApplication::processEvents();
    EXPECT_GE(tabs.tabRect(150).width(), tabs.fontMetrics().horizontalAdvance(tabs.tabText(150))) << "can be read";
    for (int32_t tab = 10; tab < 200; ++tab) model.RemoveTab(tab);
    for (int32_t tab : {3, 5, 9}) model.RemoveTab(tab);
    EXPECT_FALSE(tabs.isVisible());
    EXPECT_EQ(events.Take(), QStringList{});
}

} // namespace nib::widget_menu_bar_test
