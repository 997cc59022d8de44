// Every enabling rule.

#include "fakes/TestShell.h"
#include "shell/menus/MenuTable.h"

#include <functional>
#include <set>

namespace nib::test {
namespace {

using Keys = std::set<Text>;

Keys operator+(Keys keys, const Keys& more)
{
    keys.insert(more.begin(), more.end());
    return keys;
}

const Keys kDesign{u"New",         u"Open",          u"Exit",       u"Settings", u"Results",
                   u"ViewToolbar", u"ViewStatusbar", u"HelpTopics", u"HelpAbout"};
const Keys kWithDocument{u"Close",          u"Print",        u"Properties",   u"DeleteLine",     u"SelectAll",
                         u"IndentBlock",    u"OutdentBlock", u"CommentBlock", u"UncommentBlock", u"Find",
                         u"FindNext",       u"Replace",      u"Goto",         u"ToggleBookmark", u"ClearAllBookmarks",
                         u"ValueMark",      u"SubValueMark", u"Highlight",    u"ToggleCase",     u"SaveAs",
                         u"TileHorizontal", u"TileVertical", u"Cascade",      u"Maximize"};
const Keys kBlocks{u"CollapseBlock", u"ExpandBlock", u"CollapseAll", u"ExpandAll"};
const Keys kReadOnly = kDesign + kWithDocument + Keys{u"LineWrap"};
const Keys kWithoutCompiler = kReadOnly + Keys{u"SaveAll", u"Format"};
const Keys kWritable = kWithoutCompiler + Keys{u"Compile"};

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
    t.Store(kMain, u"one\r\ntwo");
    return *t.Open(kMain);
}

mvDocument& ReadOnly(TestShell& t)
{
    t.Store(kOther, u"o", true);
    return *t.Open(kOther, true);
}

const Row kRows[] = {
    {"no document", [](TestShell&) {}, kDesign},
    {"a clean one", [](TestShell& t) { Writable(t); }, kWritable},
    {"the only one is read-only", [](TestShell& t) { ReadOnly(t); }, kReadOnly},
    {"a second one is open",
     [](TestShell& t) {
         Writable(t);
         ReadOnly(t);
     },
     kReadOnly + Keys{u"SaveAll"}},
    {"edited", [](TestShell& t) { Writable(t).InsValue(); }, kWritable + Keys{u"Save", u"Undo"}},
    {"undone",
     [](TestShell& t) {
         mvDocument& document = Writable(t);
         document.InsValue();
         document.Undo();
     },
     kWritable + Keys{u"Redo"}},
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
    {"no compiler",
     [](TestShell& t) {
         t.Store().session.executes = false;
         Writable(t);
     },
     kWithoutCompiler}};

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

} // namespace
} // namespace nib::test
