#include "persistence/settings/SettingsModel.h"
#include "fakes/FakeSettingsApplied.h"
#include "fakes/TestProgram.h"
#include "hosts/StoredText.h"
#include "language/Dialects.h"
#include "logic/storage/TempFolder.h"
#include "persistence/settings/ColorTable.h"

namespace nib::test::settings_model_test {

using namespace message_box;

constexpr int32_t kUser = keyword_class::kUser;
constexpr int32_t kLanguage = keyword_class::kLanguage;
const Text kFile = u"file:/home/x/words.txt";

struct SettingsModelTest : testing::Test {
    TestProgram test;
    MemorySettings store;
    FakeSettingsApplied applied;
    MvEdit& live = test.program.EditorSettings();

    SettingsModel Model() { return {test.program.Services(), store, applied}; }
    void Pick(const Text& path) { test.connection.picks.push_back({{test.Item(path)}}); }
    /// What an import makes of a text, "|" between the lines of both; the answers come from the user.
    bool Import(SettingsModel& model, Text text, std::initializer_list<int32_t> answers = {})
    {
        test.Store(kFile, std::move(text));
        Pick(kFile);
        test.boxes.Answer(answers);
        return model.ImportKeywords(kUser);
    }
    static Text UserWords(SettingsModel& model) { return model.Clone().Keywords.GetKeywordList(kUser, u"|"); }
};

TEST(SettingsNumbers, AreHeldInTheirLimits)
{
    const std::tuple<TextView, int32_t, int32_t> rows[] = {{u"-1", 30, 0},  {u"", 30, 0},   {u"31", 30, 30},
                                                           {u"30", 30, 30}, {u"7x", 30, 7}, {u"abc", 30, 0}};
    for (const auto& [typed, most, number] : rows) EXPECT_EQ(LimitedNumber(typed, most), number) << ToUtf8(typed);
    EXPECT_EQ(LimitedNumber(u"99999999999", kMostInField), kMostInField);
}

TEST_F(SettingsModelTest, WhatAHostFixedHasADaggerAndItsPagesANote)
{
    const std::tuple<bool MvEdit::*, std::vector<TextView>, std::vector<SettingsPage>> rows[] = {
        {&MvEdit::HostKeywords,
         {u"chkCaseSensitive", u"lstKeywords"},
         {SettingsPage::General, SettingsPage::LanguageKeywords, SettingsPage::UserKeywords}},
        {&MvEdit::HostCompile, {u"txtCommand", u"txtOptions"}, {SettingsPage::Tools}},
        {&MvEdit::HostFormat,
         {u"txtTabSize", u"txtMargin", u"optIndentStar", u"optIndentBang", u"optIndentUser"},
         {SettingsPage::Tools}},
        {&MvEdit::HostComment, {u"txtUserPrefix"}, {SettingsPage::Tools}},
        {&MvEdit::HostDialect, {u"cboDialect"}, {SettingsPage::General}}};
    for (const auto& [flag, controls, pages] : rows) {
        live.*flag = true;
        SettingsModel model = Model();
        live.*flag = false;
        std::vector<TextView> daggers;
        for (const SettingCaption& caption : kSettingCaptions) {
            Text shown = model.Caption(caption.name);
            if (shown == Text(caption.caption) + u" \u2020")
                daggers.push_back(caption.name);
            else
                EXPECT_EQ(shown, caption.caption);
        }
        EXPECT_EQ(daggers, controls);
        for (size_t page = 0; page < std::size(kSettingsTabs); ++page) {
            auto which = static_cast<SettingsPage>(page);
            EXPECT_EQ(model.ShowsHostNote(which), std::count(pages.begin(), pages.end(), which) > 0);
        }
    }
}

TEST_F(SettingsModelTest, TheHostSwitchAsksFirst)
{
    const ShownBox question{u"You must restart Nib for he new \"host Nib configuration\" setting to take effect.",
                            kOkCancel | kInformation};
    for (bool agreed : {false, true}) {
        SettingsModel model = Model();
        test.boxes.Answer({agreed ? kAnswerOk : kAnswerCancel});
        EXPECT_EQ(model.ChangeHostConfig(false), !agreed);
        EXPECT_EQ(model.Clone().DisableHostConfig, agreed);
        EXPECT_EQ(test.boxes.Take(), Boxes{question});
    }
}

TEST_F(SettingsModelTest, TheWindowsButtonsChangeWithNoDocumentAlone)
{
    SettingsModel model = Model();
    EXPECT_TRUE(model.ChangeMinMaxClose(true));
    EXPECT_TRUE(model.Clone().MinMaxClose);
    test.New();
    EXPECT_FALSE(model.ChangeMinMaxClose(true)) << "the live value";
    EXPECT_EQ(test.boxes.Take(),
              (Boxes{{u"The \"min, max, close\" setting cannot be changed while any documents are open. Please close "
                      u"all documents and try again.",
                      kInformation}}));
    EXPECT_TRUE(model.Accept());
    EXPECT_FALSE(live.MinMaxClose) << "put back for the documents that opened meanwhile";
}

TEST_F(SettingsModelTest, OkStoresAndApplies)
{
    auto document = test.New();
    live.RecentFiles.AddItem(u"a");
    SettingsModel model = Model();
    model.Clone().TabSize = 7;
    model.Clone().ToolbarLargeIcons = true;
    EXPECT_TRUE(model.AddKeyword(u"FOO", kUser, {block_style::kEnd, BlockPlace::Anywhere}));
    live.RecentFiles.AddItem(u"b"); // opened by another program meanwhile
    model.SetRecentCapacity(1);
    EXPECT_TRUE(model.Accept());
    EXPECT_EQ(live.TabSize, 7);
    EXPECT_EQ(live.Keywords.GetKeywordList(kUser, u"|"), u"FOO-");
    EXPECT_EQ(test.Recent(), (std::vector<Text>{u"b"}));
    EXPECT_EQ(store.values[u"TabSize"], u"7");
    EXPECT_EQ(store.values[u"RecentListSize"], u"1");
    EXPECT_EQ(test.View(*document).txtText().TabSize(), 7);
    EXPECT_EQ(applied.iconsLarge, std::vector<bool>{true});
    EXPECT_EQ(applied.fontChanges, 1);

    live.HostFormat = true;
    live.TabSize = 2;
    SettingsModel none = Model();
    none.SetRecentCapacity(0);
    EXPECT_TRUE(none.Accept());
    EXPECT_TRUE(test.Recent().empty());
    EXPECT_EQ(live.TabSize, 2);
    EXPECT_EQ(store.values[u"TabSize"], u"7") << "the host's word is not stored";
}

TEST(SettingsBlocks, ChoicesAndStyles)
{
    struct Row {
        BlockChoice choice;
        int32_t block;
    };
    for (const Row& row : {Row{{block_style::kNone, BlockPlace::Anywhere}, 0},
                           {{block_style::kBegin, BlockPlace::Anywhere}, 2048},
                           {{block_style::kBegin, BlockPlace::StatementStart}, 16384},
                           {{block_style::kBegin, BlockPlace::LineEnd}, 32768},
                           {{block_style::kEnd, BlockPlace::Anywhere}, 4096},
                           {{block_style::kMiddle, BlockPlace::Anywhere}, 8192}}) {
        EXPECT_EQ(BlockOfChoice(row.choice), row.block);
        EXPECT_EQ(ChoiceOfBlock(row.block), row.choice);
    }
    EXPECT_EQ(BlockOfChoice({block_style::kEnd, BlockPlace::LineEnd}), 4096) << "a place is for beginnings";
    EXPECT_EQ(ChoiceOfBlock(128), (BlockChoice{block_style::kBegin, BlockPlace::LineEnd})) << "of THEN";
}

TEST_F(SettingsModelTest, AddingAKeyword)
{
    const ShownBox bad{u"Keyword may not contain a comma, semicolon or parenthesis!", kWarning};
    struct Row {
        TextView word;
        Text unexpected; ///< empty: no question
        bool valid = true;
    };
    const Row rows[] = {{u"FOO", u""},         {u" foo_Bar% ", u""}, {u"@ME", u""},
                        {u"A.B", u""},         {u"A B C", u"space"}, {u"A1B1", u"'1'"},
                        {u"A#1#", u"'#' '1'"}, {u"Ä", u"'Ä'"},       {u"X\U0001F600", u"'\U0001F600'"},
                        {u"A,B", u"", false},  {u"A(", u"", false},  {u"A;B)", u"", false},
                        {u"", u"", false},     {u"+", u"", false}};
    for (const Row& row : rows) {
        for (int32_t answer : {kAnswerNo, kAnswerYes}) {
            SettingsModel model = Model();
            Boxes expected;
            if (!row.valid) expected = {bad};
            if (!row.unexpected.empty()) {
                test.boxes.Answer({answer});
                expected = {{u"Keyword '" + Text(Trim(row.word)) + u"' contains an unexpected character: " +
                                 row.unexpected + u"\r\nAre you sure you want to add this keyword?",
                             kYesNo | kWarning}};
            }
            bool added = row.valid && (row.unexpected.empty() || answer == kAnswerYes);
            EXPECT_EQ(model.AddKeyword(row.word, kUser, {}), added) << ToUtf8(row.word);
            EXPECT_EQ(test.boxes.Take(), expected);
            EXPECT_EQ(UserWords(model), added ? Text(Trim(row.word)) : Text());
        }
    }
}

TEST_F(SettingsModelTest, StatesOfKeywords)
{
    SettingsModel model = Model();
    EXPECT_TRUE(model.AddKeyword(u"FOO", kUser, {block_style::kMiddle, BlockPlace::Anywhere}));
    EXPECT_TRUE(model.AddKeyword(u"THEN", kUser, {block_style::kEnd, BlockPlace::Anywhere}));
    KeywordState state = model.StateOf(u" then ", kUser);
    EXPECT_TRUE(state.listed && state.reserved);
    EXPECT_EQ(state.choice, (BlockChoice{block_style::kBegin, BlockPlace::LineEnd})) << "its own, whatever was chosen";
    EXPECT_EQ(model.StateOf(u"foo", kUser).choice.style, block_style::kMiddle);
    EXPECT_FALSE(model.StateOf(u"foo", kLanguage).listed);
    EXPECT_TRUE(model.AddKeyword(u"foo", kUser, {})) << "a listed word gets another style";
    EXPECT_EQ(UserWords(model), u"THEN+|FOO");
    EXPECT_FALSE(model.RemoveKeyword(u"BAR", kUser));
    EXPECT_TRUE(model.RemoveKeyword(u"then", kUser));
    EXPECT_TRUE(model.StateOf(u"THEN", kUser).reserved) << "reserved words stay known";
    EXPECT_EQ(UserWords(model), u"FOO");
}

TEST_F(SettingsModelTest, Export)
{
    SettingsModel model = Model();
    EXPECT_TRUE(model.AddKeyword(u"ONE", kUser, {block_style::kBegin, BlockPlace::LineEnd}));
    EXPECT_TRUE(model.AddKeyword(u"TWO", kUser, {}));
    model.ExportKeywords(kUser); // cancelled
    Pick(kFile);
    model.ExportKeywords(kUser);
    EXPECT_EQ(test.Stored(kFile), u"ONE]\r\nTWO");
    EXPECT_EQ(test.Store().commits, 1);
    EXPECT_TRUE(test.Store().locks.empty());
    const ShownBox asked = Question(u"Item 'words.txt' exists. Overwrite?");
    test.Store(kFile, u"PRECIOUS");
    test.boxes.Answer({kAnswerNo});
    Pick(kFile);
    model.ExportKeywords(kUser);
    EXPECT_EQ(test.boxes.Take(), Boxes{asked});
    test.LockByStranger(kFile);
    test.boxes.Answer({kAnswerYes});
    Pick(kFile);
    model.ExportKeywords(kUser);
    EXPECT_EQ(test.boxes.Take(),
              (Boxes{asked, Warning(u"Item 'words.txt' is currently locked and cannot be updated!")}));
    EXPECT_EQ(test.Stored(kFile), u"PRECIOUS");
    test.Store().locks.clear();
    test.Store().writeFailure = Error(error_number::kDiskFull, u"Disk full");
    test.boxes.Answer({kAnswerYes});
    Pick(kFile);
    model.ExportKeywords(kUser);
    EXPECT_EQ(test.boxes.Take(), (Boxes{asked, Warning(u"Error exporting keyword list: Disk full")}));
    EXPECT_TRUE(test.Store().locks.empty());
    EXPECT_EQ(test.connection.requests[0].first.mode, u"Export");
    EXPECT_EQ(test.connection.requests[0].first.extension, u"txt");
    EXPECT_EQ(test.connection.requests[2].second, kFile) << "begins at the last file";
}

TEST_F(SettingsModelTest, Import)
{
    struct Row {
        Text text, words;
        std::vector<Text> asked; ///< keyword, kind of character, corrected word: three a question
        std::vector<int32_t> answers;
    };
    const Row rows[] = {
        {u"ONE+\r\nTWO-\r\nTHREE", u"ONE+|TWO-|THREE", {}, {}},
        {u"ONE\nTWO\rTHREE\n\n", u"ONE|TWO|THREE", {}, {}},
        {u"\uFEFF  ONE[ \r\n\t\r\n   ;x\r\n; case\r\nTWO]\t", u"ONE[|TWO]", {}, {}},
        {u"; only\r\n;remarks", u"", {}, {}},
        {u"", u"", {}, {}},
        {u"A(B\r\nC", u"AB|C", {u"A(B", u"parentheses", u"AB"}, {kAnswerYes}},
        {u"A,B\r\nC", u"C", {u"A,B", u"comma", u"AB"}, {kAnswerNo}},
        {u"C\r\nA;B", u"OLD", {u"A;B", u"semicolon", u"AB"}, {kAnswerCancel}},
        {u"X,\r\nY)\r\nZ", u"Y|Z", {u"X,", u"comma", u"X", u"Y)", u"parentheses", u"Y"}, {kAnswerNo, kAnswerYes}},
        {u"+\r\nZ", u"Z", {u"+", u"", u""}, {kAnswerYes}},
        {u"*WHAT(EVER)", u"*WHAT(EVER)", {}, {}},
        {u"caf\u00E9\r\n\uFFFD", u"caf\u00E9|\uFFFD", {}, {}}};
    for (const Row& row : rows) {
        SettingsModel model = Model();
        model.Clone().Keywords.SetKeywordList(kUser, u" ", u"OLD");
        Boxes expected;
        for (size_t i = 0; i < row.asked.size(); i += 3)
            expected.push_back({u"Keyword '" + row.asked[i] + u"' contains an invalid character: " + row.asked[i + 1] +
                                    u". Import as '" + row.asked[i + 2] +
                                    u"'?\r\n\r\nClick 'Yes' to import corrected keyword, 'No' to skip this keyword, or "
                                    u"Cancel to cancel the import operation.",
                                kYesNoCancel | kWarning});
        for (int32_t answer : row.answers) test.boxes.Answer({answer});
        bool cancelled = !row.answers.empty() && row.answers.back() == kAnswerCancel;
        EXPECT_EQ(Import(model, row.text), !cancelled);
        EXPECT_EQ(test.boxes.Take(), expected);
        EXPECT_EQ(UserWords(model), row.words) << ToUtf8(row.text);
    }
}

TEST_F(SettingsModelTest, ImportThatFails)
{
    SettingsModel model = Model();
    EXPECT_FALSE(model.ImportKeywords(kUser)) << "cancelled";
    test.Store().readFailure = Error(error_number::kStorage, u"No such charset");
    EXPECT_FALSE(Import(model, u"ONE"));
    EXPECT_EQ(test.boxes.Take(), Boxes{Warning(u"Error importing keyword list: No such charset")});
    test.Store().readFailure.reset();
    EXPECT_FALSE(Import(model, Text(1'000'000, u'('), {kAnswerCancel}));
    EXPECT_LT(test.boxes.Take().at(0).text.size(), 400U) << "a question stays readable";
}

TEST(KeywordRowsTest, InTheOrderOfTheAlphabet)
{
    clsKeywords keywords;
    keywords.SetKeywordList(kUser, u" ", u"Zoo apple Mango");
    KeywordRows rows;
    rows.Fill(keywords, kUser);
    KeywordRows::Place place = rows.Find(u"BANANA");
    EXPECT_FALSE(place.held);
    rows.Insert(place.row, u"BANANA");
    rows.Remove(rows.Find(u"ZOO").row);
    std::vector<Text> words;
    for (size_t i = 0; i < rows.Count(); ++i) words.push_back(rows.Word(i));
    EXPECT_EQ(words, (std::vector<Text>{u"apple", u"BANANA", u"Mango"}));
}

TEST_F(SettingsModelTest, DialectsToChooseFrom)
{
    Dialects dialects;
    test.program.Services().dialects = &dialects;
    live.Dialect = u"mine";
    SettingsModel model = Model();
    EXPECT_EQ(model.DialectNames(), (std::vector<Text>{u"none", u"common", u"server", u"mine"}));
    model.SetDialect(u"common");
    EXPECT_EQ(live.Keywords.Rules(), nullptr);
    EXPECT_TRUE(model.Accept());
    EXPECT_EQ(live.Keywords.Rules(), dialects.Rules(u"common"));
    EXPECT_EQ(store.values[u"Dialect"], u"common");
}

/// All that there are but the last.
std::optional<int32_t> SomeColors(int32_t index)
{
    if (index < 0 || index > 29) return std::nullopt;
    return index == 5 ? 0x030201 : 0;
}

TEST(ColorTableTest, RowsAndTips)
{
    const SystemColors system = SomeColors;
    std::vector<ColorRow> rows = ColorRows(system);
    ASSERT_EQ(rows.size(), 1U + 16 + 1 + 30 + 1) << "without what the desktop does not know";
    EXPECT_EQ(rows[0].value, color_row::kStandardHeading);
    EXPECT_EQ(rows[17].value, color_row::kSystemHeading);
    EXPECT_EQ(rows.back().value, color_row::kCustom);
    EXPECT_EQ(rows[RowOfColor(rows, 0x000080)].name, u"Dark Red");
    EXPECT_EQ(rows[RowOfColor(rows, system_color::kWindow)].name, u"Window Background");
    EXPECT_EQ(rows[RowOfColor(rows, 0x123456)].value, color_row::kCustom);
    struct Tip {
        uint32_t value;
        TextView text;
    };
    for (const Tip& tip : {Tip{0x000080, u"Dark Red (standard color) R=128 G=0 B=0"},
                           {0x80000005U, u"Window Background (system color) R=1 G=2 B=3"},
                           {0x1515A3, u"custom color: R=163 G=21 B=21"},
                           {0x80000063U, u"unknown system color 99 R=0 G=0 B=0"}})
        EXPECT_EQ(ColorTip(static_cast<int32_t>(tip.value), system), tip.text);
}

} // namespace nib::test::settings_model_test
