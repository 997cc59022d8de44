#include "SettingsFixture.h"

#include <gtest/gtest.h>

namespace nib {

using namespace test;

namespace {
const Text kDejaVu = u"DejaVu Sans Mono";
}

TEST(SettingsMigration, ThisVersionAsksAndWritesNothing)
{
    for (TextView version : {u"7.1", u"7.2", u"8", u"1e99"}) {
        Loading loading({{u"FontName", u"MVW Lucida Console"}}, Text(version));
        loading.defaultFont = kDejaVu;
        EXPECT_EQ(loading.Load().FontName, u"MVW Lucida Console");
        EXPECT_TRUE(loading.asked.empty());
        EXPECT_TRUE(loading.store.written.empty()) << ToUtf8(version);
    }
}

TEST(SettingsMigration, TheFontIsAskedForOnce)
{
    const struct {
        TextView version, stored, defaultFont;
        int32_t answer;
        bool asks;
        TextView font;
    } kRows[] = {
        {u"7.0", u"MVW Lucida Console", u"DejaVu Sans Mono", message_box::kAnswerYes, true, u"DejaVu Sans Mono"},
        {u"7.0", u"MV Lucida console", u"DejaVu Sans Mono", message_box::kAnswerYes, true, u"DejaVu Sans Mono"},
        {u"7.0", u"MVW LUCIDA Console", u"DejaVu Sans Mono", message_box::kAnswerNo, true, u"MVW LUCIDA Console"},
        {u"7.05", u"MVW Lucida Console", u"DejaVu Sans Mono", message_box::kAnswerCancel, true, u"MVW Lucida Console"},
        {u"7", u"MVW Lucida Console", u"Courier New", message_box::kAnswerYes, false, u"MVW Lucida Console"},
        {u"7.0", u"Hack", u"DejaVu Sans Mono", message_box::kAnswerYes, false, u"Hack"},
        {u"7.0", u"", u"DejaVu Sans Mono", message_box::kAnswerYes, false, u"DejaVu Sans Mono"},
    };
    for (auto& row : kRows) {
        Loading loading({{u"FontName", Text(row.stored)}, {u"TabSize", u"5"}}, Text(row.version));
        loading.defaultFont = row.defaultFont;
        loading.answer = row.answer;
        MvEdit settings = loading.Load();
        EXPECT_EQ(settings.FontName, row.font);
        EXPECT_EQ(settings.TabSize, 5) << "the other settings load as ever";
        EXPECT_EQ(loading.asked.size(), row.asks ? 1U : 0U);
        EXPECT_EQ(loading.store.values[u""], u"7.1");
        EXPECT_EQ(loading.Load().FontName, row.font);
        EXPECT_EQ(loading.asked.size(), row.asks ? 1U : 0U) << "asked again";
    }
}

TEST(SettingsMigration, TheQuestionHasTheseWords)
{
    Loading loading({{u"FontName", u"MVW Lucida Console"}}, u"7");
    loading.defaultFont = kDejaVu;
    loading.Load();
    std::vector<std::pair<Text, int32_t>> expected{
        {u"This version of Nib includes a new monospaced font called DejaVu Sans Mono. Your current editor font is MVW "
         u"Lucida Console. Would you like to change your editor font to the new font (recommended)?\r\n\r\n(this "
         u"prompt will not be shown again, but you can always change the font by selecting Preferences from the View "
         u"menu)",
         message_box::kYesNoCancel | message_box::kQuestion}};
    EXPECT_EQ(loading.asked, expected);
}

TEST(SettingsMigration, SettingsOfOlderReleasesMoveOver)
{
    Loading loading({{u"SearchEOD", u"2"}}, u"6.9");
    loading.defaultFont = kDejaVu;
    loading.answer = message_box::kAnswerYes;
    loading.older.values = {{u"MainState", u"2"},          {u"MainLeft", u"-10000"},
                            {u"ToolbarVisible", u"False"}, {u"FontName", u"MV Lucida Console"},
                            {u"TabSize", u"-4"},           {u"IndentUserComment", u"1"},
                            {u"UserKeywords", u"A,B C+"},  {u"CommentColor", u"255"},
                            {u"RecentListSize", u"2"},     {u"RecentFileCount", u"2"},
                            {u"RecentFile_1", u"x"},       {u"RecentFile_2", u"y"},
                            {u"RecentSearchCount", u"1"},  {u"RecentSearch_1", u"z"},
                            {u"MinMaxClose", u"True"}};
    MvEdit settings = loading.Load();
    StoredValues expected = Saved(MvEdit());
    for (auto& [key, value] : std::initializer_list<std::pair<Text, Text>>{{u"MainState", u"2"},
                                                                           {u"ToolbarVisible", u"False"},
                                                                           {u"FontName", kDejaVu},
                                                                           {u"TabSize", u"0"},
                                                                           {u"KeywordColor", u"-2147483640"},
                                                                           {u"StringColor", u"8388736"},
                                                                           {u"LabelColor", u"8388608"},
                                                                           {u"ReservedColor", u"-2147483640"},
                                                                           {u"CommentColor", u"255"},
                                                                           {u"RecentListSize", u"2"},
                                                                           {u"RecentFileCount", u"2"},
                                                                           {u"RecentFile_1", u"x"},
                                                                           {u"RecentFile_2", u"y"},
                                                                           {u"UserKeywords", u"C+"}})
        expected[key] = value;
    EXPECT_EQ(loading.store.values, expected);
    EXPECT_EQ(loading.asked.size(), 1U);
    loading.older.values.clear();
    expected.erase(u"MainState");
    expected.erase(u"ToolbarVisible");
    EXPECT_EQ(Saved(settings), expected);
    EXPECT_EQ(Saved(loading.Load()), expected) << "moved once";
}

TEST(SettingsMigration, WhereNoOlderReleaseRanTheDefaultsAreThoseOfToday)
{
    Loading fresh({{u"TabSize", u"8"}}, u"");
    fresh.hasOlder = false;
    MvEdit settings = fresh.Load();
    EXPECT_EQ(settings.ReservedColor, MvEdit().ReservedColor);
    EXPECT_EQ(settings.FontName, u"Courier New");
    EXPECT_EQ(settings.TabSize, 8) << "a store without its stamp keeps what it holds";
    EXPECT_EQ(fresh.store.values[u""], u"7.1");
    EXPECT_FALSE(fresh.store.values.contains(u"MainLeft"));
}

} // namespace nib
