#include "shell/menus/MenuModel.h"

#include "base/Error.h"
#include "fakes/RecordingMenuBar.h"
#include "shell/menus/FrameKeys.h"

#include <gtest/gtest.h>

namespace nib::test {
namespace {

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

int32_t FailureOf(const std::function<void()>& body)
{
    try {
        body();
        return 0;
    } catch (const Error& error) {
        return error.number;
    }
}

TEST(MenuModelTest, LooksUpKeysWhateverTheirCase)
{
    MenuModel model;
    EXPECT_EQ(model.Find(Band::MainMenu, u"LINEWRAP"), &model.Tool(Band::MainMenu, u"LineWrap"));
    EXPECT_EQ(model.Tool(Band::MainMenu, u"togglebookmark").menu->key, u"Bookmarks");
    EXPECT_EQ(model.Find(Band::ToolBar, u"LineWrap"), nullptr);
    model.Add(Band::MainMenu, u"tools", Named(u"\u00C4ndern"));
    EXPECT_TRUE(model.Find(Band::MainMenu, u"\u00E4NDERN"));
    EXPECT_EQ(FailureOf([&] { model.SetEnabled(Band::MainMenu, u"Nothing", true); }), error_number::kBadIndex);
    EXPECT_EQ(FailureOf([&] { model.Add(Band::MainMenu, u"Tools", Named(u"SETTINGS")); }), error_number::kKeyInUse);
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
              (Lines{u"*Find", u"FindNext", u"Replace", u"*Goto", u"NavBack", u"NavForward", u"*Bookmarks"}));
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

} // namespace
} // namespace nib::test
