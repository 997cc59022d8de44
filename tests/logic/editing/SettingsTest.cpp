#include "SettingsFixture.h"
#include "editing/MvEdit.h"

#include <gtest/gtest.h>

namespace nib {

using namespace test;

namespace {

StoredValues SavedAfterLoading(StoredValues stored)
{
    Loading loading;
    loading.store.values.merge(stored);
    return Saved(loading.Load());
}

TEST(Settings, DefaultsAreStoredUnderTheseNamesAndTexts)
{
    MemorySettings store;
    Loading().Load().SaveSettings(store);
    Text rows;
    for (const Text& name : store.written) rows += name + u"=" + store.values[name] + u"; ";
    EXPECT_EQ(rows, u"=7.1; FontName=Courier New; FontSize=10; FontMono=True; BackColor=-2147483643; "
                    u"NormalColor=-2147483640; NormalStyle=0; KeywordColor=16711680; KeywordStyle=0; "
                    u"StringColor=1381795; StringStyle=0; LabelColor=6052956; LabelStyle=0; "
                    u"CommentColor=32768; CommentStyle=0; ReservedColor=16711680; ReservedStyle=0; "
                    u"Highlight=True; LineWrap=False; TabSize=3; Margin=6; IndentStar=1; IndentBang=0; "
                    u"IndentUserComment=2; CompileCommand=BASIC; CompileOptions=; CaseSensitiveKeywords=False;"
                    u" LanguageKeywords=IF THEN+ ELSE+ LOCKED+ BEGIN+ END- CASE= FOR+ NEXT- DO LOOP+ UNTIL= "
                    u"WHILE= REPEAT- GO GOTO GOSUB TO SUB SUBROUTINE CALL STEP INCLUDE; UserKeywords=; "
                    u"CommentPrefixes=*,!; RecordLocking=True; ColorPrinting=False; NoGotoDialog=False; "
                    u"GotoLineNumber=False; AutoRecover=True; ToolbarHotTrack=True; ToolbarLargeIcons=False; "
                    u"ResultsFontName=; ResultsFontSize=; RecentListSize=4; RecentFileCount=0; "
                    u"MinMaxClose=False; CollapseBlocks=False; SearchEOD=0; DisableHostConfig=False; "
                    u"RecentSearchCount=0; ReopenDocuments=False; ");
}

TEST(Settings, StoredTextsAreReadByTheRuleOfTheirField)
{
    const Text kLong(1'000'000, u'9');
    const struct {
        Text key;
        std::vector<std::pair<Text, Text>> texts; ///< as stored and as kept
    } kRows[] = {{u"TabSize",
                  {{u"-1", u"0"},
                   {u"8 blanks", u"8"},
                   {u" 2.5", u"2"},
                   {u"wide", u"0"},
                   {u"-", u"0"},
                   {Text(u"4\0005", 3), u"4"},
                   {Text(3, u'\0'), u"0"},
                   {u"1e99", u"3"},
                   {u"1e-9999", u"0"},
                   {u"32768", u"3"},
                   {u"-99999999999", u"0"},
                   {kLong, u"3"},
                   {u"&HFFFF", u"0"}}},
                 {u"Margin", {{u"inf", u"0"}, {u"-7", u"0"}}},
                 {u"IndentStar", {{u"-2", u"2"}, {u"3", u"0"}}},
                 {u"IndentBang", {{u"-1e300", u"0"}}},
                 {u"IndentUserComment", {{u"-32768", u"0"}}},
                 {u"SearchEOD", {{u"-1", u"0"}, {u"2", u"2"}, {u"3", u"0"}}},
                 {u"BackColor",
                  {{u"&H80000005&", u"-2147483643"},
                   {u"&h00ff0000", u"16711680"},
                   {u"2147483653", u"-2147483643"},
                   {u"&HFFFFFFFFFF&", u"-2147483643"},
                   {u"-99999999999", u"-2147483643"},
                   {u"&H", u"0"}}},
                 {u"KeywordColor", {{kLong, u"16711680"}}},
                 {u"KeywordStyle", {{u"3", u"3"}}},
                 {u"Highlight",
                  {{u"false", u"False"}, {u"0", u"False"}, {u"maybe", u"True"}, {u"-", u"True"}, {u"x0", u"True"}}},
                 {u"LineWrap", {{u"-1", u"True"}, {kLong, u"True"}}},
                 {u"FontName", {{u"mv lucida CONSOLE", u"MVW Lucida Console"}, {u"Hack", u"Hack"}}},
                 {u"ResultsFontName", {{u"MV Lucida Console", u"MV Lucida Console"}}},
                 {u"RecentListSize", {{u"31", u"30"}, {u"-1", u"4"}, {u"1e99", u"30"}, {u"0", u"0"}}},
                 {u"RecentFileCount", {{u"-5", u"0"}}}};
    for (auto& row : kRows)
        for (auto& [stored, kept] : row.texts)
            EXPECT_EQ(ToUtf8(SavedAfterLoading({{row.key, stored}})[row.key]), ToUtf8(kept))
                << ToUtf8(row.key) << " = " << ToUtf8(stored.substr(0, 40));
}

TEST(Settings, KeywordListsCarryTheirSeparator)
{
    const struct {
        TextView stored, saved;
        int32_t words;
    } kRows[] = {{u"END CASE,", u"END CASE,", 1}, {u"END CASE", u"END- CASE=", 2},
                 {u"A+,B C-", u"A+,B C-", 2},     {u"A,B", u"A B", 2},
                 {u"  A   B ", u"A B", 2},        {u"", u"", 0}};
    for (auto& row : kRows) {
        Loading loading({{u"UserKeywords", Text(row.stored)}});
        MvEdit settings = loading.Load();
        EXPECT_EQ(CountFields(settings.Keywords.GetKeywordList(4, u"\n"), u'\n'), row.words) << ToUtf8(row.stored);
        EXPECT_EQ(Saved(settings)[u"UserKeywords"], row.saved) << ToUtf8(row.stored);
    }
    MvEdit settings;
    settings.Keywords.SetKeywordList(2, u",", u"MY WORD+");
    EXPECT_EQ(Saved(settings)[u"LanguageKeywords"], u"MY WORD+,");
    EXPECT_EQ(Saved(settings)[u"UserKeywords"], u"") << "no word, no separator";
}

TEST(Settings, RecentEntriesOfTheLowestNumbersWin)
{
    Loading loading({{u"RecentListSize", u"3"},
                     {u"RecentFileCount", u"2000000000"},
                     {u"RecentFile_1", u"a"},
                     {u"RecentFile_3", u"b"},
                     {u"RecentFile_4", u"a"},
                     {u"RecentFile_700", u"c"},
                     {u"RecentFile_701", u"d"},
                     {u"RecentSearchCount", u"99999999999"}});
    MvEdit settings = loading.Load();
    ASSERT_EQ(settings.RecentFiles.ListCount(), 3);
    for (int32_t i = 1; i <= 3; ++i) EXPECT_EQ(settings.RecentFiles.ListItem(i), Text(1, u"?abc"[i]));
    EXPECT_LT(loading.store.reads, 5000);
    EXPECT_EQ(settings.RecentSearches.MaxListSize(), 10);
    EXPECT_EQ(settings.RecentSearches.ListSize(), 4);
}

TEST(Settings, WhatTheHostFixedIsNotWritten)
{
    const struct {
        bool MvEdit::*flag;
        std::vector<TextView> left;
    } kRows[] = {{&MvEdit::HostFormat, {u"TabSize", u"Margin", u"IndentStar", u"IndentBang", u"IndentUserComment"}},
                 {&MvEdit::HostComment, {u"CommentPrefixes"}},
                 {&MvEdit::HostCompile, {u"CompileCommand", u"CompileOptions"}},
                 {&MvEdit::HostKeywords, {u"LanguageKeywords", u"UserKeywords", u"CaseSensitiveKeywords"}}};
    for (auto& row : kRows) {
        MvEdit settings;
        StoredValues expected = Saved(settings);
        for (TextView key : row.left) expected.erase(expected.find(key));
        settings.*row.flag = true;
        EXPECT_EQ(Saved(settings), expected);
        EXPECT_EQ(Saved(settings.Clone()), expected);
        MvEdit clone = MvEdit().Clone();
        settings.UpdateFrom(clone);
        EXPECT_TRUE(settings.*row.flag) << "the host's word stands as long as the session";
    }
}

} // namespace
} // namespace nib
