#include "shell/Commands.h"
#include "fakes/TestProgram.h"
#include "shell/MenuTable.h"

#include <gtest/gtest.h>

#include <set>

namespace nib::test {
namespace {

using Keys = std::set<Text>;

struct FakeChildWindows final : ChildWindows {
    std::vector<int32_t> arranged;
    bool maximized = false;

    void Arrange(int32_t mode) override { arranged.push_back(mode); }
    void ToggleMaximized() override { maximized = !maximized; }
    bool ActiveMaximized() const override { return maximized; }
};

struct CommandsTest : testing::Test {
    TestProgram t;
    FakeChildWindows windows;
    std::shared_ptr<mvDocument> document;

    CommandContext Context() { return {t.program, windows, document}; }
    bool Enabled(TextView key) { return StateOfCommand(key, Context()).enabled; }
    bool Run(TextView key)
    {
        auto context = Context();
        return RunCommand(key, context);
    }
    Keys EnabledKeys()
    {
        Keys keys;
        for (const MenuRow& row : kMainMenu)
            if (Enabled(row.key)) keys.insert(row.key);
        return keys;
    }
};

TEST_F(CommandsTest, EveryMenuRowIsACommandWithOneShortcut)
{
    Keys shortcuts;
    for (const MenuRow& row : kMainMenu) {
        EXPECT_TRUE(IsCommand(row.key)) << ToUtf8(row.key);
        EXPECT_TRUE(*row.shortcut == 0 || shortcuts.insert(row.shortcut).second) << ToUtf8(row.shortcut);
    }
    for (TextView key : {u"new", u"NEW", u"", u"file_1"}) EXPECT_FALSE(IsCommand(key) || Run(key) || Enabled(key));
}

TEST_F(CommandsTest, EnabledRules)
{
    const Keys always{u"New", u"Open", u"Exit"};
    EXPECT_EQ(EnabledKeys(), always);
    t.Store(kMain, u"one\r\ntwo");
    document = t.Open(kMain, true);
    Keys readOnly = always;
    for (const char16_t* key : {u"Close", u"SaveAs", u"DeleteLine", u"SelectAll", u"ToggleBookmark", u"ValueMark",
                                u"SubValueMark", u"LineWrap", u"Tile", u"Cascade", u"Maximize"})
        readOnly.insert(key);
    EXPECT_EQ(EnabledKeys(), readOnly);

    auto first = document;
    document = t.New();
    Keys clean = readOnly;
    clean.insert(u"SaveAll");
    EXPECT_EQ(EnabledKeys(), clean);
    EXPECT_EQ((document = first, EnabledKeys()), clean) << "a second document is open";

    document = t.Documents().Item(2);
    t.clipboard.text = u"x";
    Run(u"Paste");
    Run(u"ToggleBookmark");
    Run(u"SelectAll");
    Keys edited = clean;
    for (const char16_t* key :
         {u"Save", u"Undo", u"Cut", u"Copy", u"Paste", u"Clear", u"NextBookmark", u"PrevBookmark", u"ClearBookmarks"})
        edited.insert(key);
    EXPECT_EQ(EnabledKeys(), edited);
    Run(u"Undo");
    EXPECT_TRUE(Enabled(u"Redo"));
    EXPECT_FALSE(Enabled(u"Undo"));
    t.program.EditorSettings().CollapseBlocks = true;
    EXPECT_FALSE(Enabled(u"LineWrap"));
}

TEST_F(CommandsTest, EditAndBookmarks)
{
    document = t.New();
    document->SetText(u"a\r\nb\r\nc");
    SourceView& view = t.View(*document).txtText();
    Run(u"ToggleBookmark");
    view.SetCaret({0, 2});
    Run(u"ToggleBookmark");
    const std::pair<TextView, int32_t> moves[] = {{u"NextBookmark", 0}, {u"NextBookmark", 2}, {u"PrevBookmark", 0}};
    for (auto [key, line] : moves) {
        EXPECT_TRUE(Run(key));
        EXPECT_EQ(view.CaretLine(), line);
    }
    Run(u"ValueMark");
    Run(u"SubValueMark");
    Run(u"DeleteLine");
    EXPECT_EQ(document->GetText(), u"b\r\nc");
    EXPECT_EQ(StateOfCommand(u"LineWrap", Context()).checked, false);
    Run(u"LineWrap");
    EXPECT_TRUE(StateOfCommand(u"LineWrap", Context()).checked);
}

TEST_F(CommandsTest, WindowsAndRefusals)
{
    EXPECT_FALSE(Run(u"Tile") || Run(u"Save") || Run(u"Close"));
    document = t.New();
    EXPECT_TRUE(Run(u"Tile") && Run(u"Cascade") && Run(u"Maximize"));
    EXPECT_EQ(windows.arranged, (std::vector<int32_t>{1, 0}));
    EXPECT_TRUE(StateOfCommand(u"Maximize", Context()).checked);
    document->SetText(u"x");
    t.boxes.Answer({message_box::kAnswerNo});
    EXPECT_TRUE(Run(u"Close"));
    t.boxes.Take();
    EXPECT_EQ(t.Documents().Count(), 0);
}

TEST_F(CommandsTest, AFailureIsLoggedAndReported)
{
    document = t.NewObject();
    t.views.failure = Error{5, u"No window"};
    EXPECT_FALSE(Run(u"ValueMark"));
    EXPECT_EQ(t.boxes.Take(), (Boxes{{u"The following error has occurred:\nNo window"}}));
    EXPECT_EQ(t.trace.Take(), (TraceLines{{1, u"frmMain.qkMenuBar_ToolClick: error=0x5 No window"}}));
}

} // namespace
} // namespace nib::test
