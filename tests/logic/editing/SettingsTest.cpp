#include "editing/MvEdit.h"
#include "fakes/MemorySettings.h"
#include "platform/MessageBoxes.h"

#include <gtest/gtest.h>

namespace nib::test::settings_test {

const Text kDejaVu = u"DejaVu Sans Mono";

/// A store, and an editor's settings loaded from it.
struct Loading {
    MemorySettings store;
    Text defaultFont = u"Courier New";
    int32_t answer = message_box::kAnswerNo;
    std::vector<std::pair<Text, int32_t>> asked;

    explicit Loading(std::initializer_list<StoredValues::value_type> stored = {}, Text version = u"7.1")
    {
        store.values = stored;
        store.values[u""] = std::move(version);
    }
    MvEdit Load()
    {
        MvEdit settings;
        settings.LoadSettings({store, defaultFont, [&](TextView text, int32_t flags) {
                                   asked.emplace_back(text, flags);
                                   return answer;
                               }});
        return settings;
    }
};

StoredValues Saved(const MvEdit& settings)
{
    MemorySettings store;
    settings.SaveSettings(store);
    return store.values;
}

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
    EXPECT_EQ(rows,
              u"=7.1; FontName=Courier New; FontSize=10; FontMono=True; BackColor=-2147483643; "
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
              u"RecentSearchCount=0; ReopenDocuments=False; CleanCompileCommand=; IndentByBlocks=True; "
              u"CurrentLine=True; Matches=True; ChangeBars=True; IndentGuides=True; VisibleBlanks=False; "
              u"SmoothScrolling=True; CheckAsYouType=True; CompleteWords=True; ProblemsShown=False; "
              u"OutlineShown=False; HistoryShown=False; AuthorsShown=False; HistoryDays=0; HistoryMegabytes=1024; "
              u"Dialect=; StatementColor=8388736; StatementStyle=0; FunctionColor=8417280; "
              u"FunctionStyle=0; NumberColor=22680; NumberStyle=0; ");
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
                   {u"1e99", u"3"},
                   {u"1e-9999", u"0"},
                   {u"32768", u"3"},
                   {u"-99999999999", u"0"},
                   {kLong, u"3"},
                   {u"&HFFFF", u"0"}}},
                 {u"TabSize", {{Text(u"4\0005", 3), u"4"}, {Text(3, u'\0'), u"0"}}},
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
    const std::tuple<TextView, TextView, int32_t> kRows[] = {
        {u"END CASE,", u"END CASE,", 1}, {u"END CASE", u"END- CASE=", 2},
        {u"A+,B C-", u"A+,B C-", 2},     {u"A,B", u"A B", 2},
        {u"  A   B ", u"A B", 2},        {u"", u"", 0}};
    for (const auto& [stored, saved, words] : kRows) {
        Loading loading({{u"UserKeywords", Text(stored)}});
        MvEdit settings = loading.Load();
        EXPECT_EQ(CountFields(settings.Keywords.GetKeywordList(4, u"\n"), u'\n'), words) << ToUtf8(stored);
        EXPECT_EQ(Saved(settings)[u"UserKeywords"], saved) << ToUtf8(stored);
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
    const std::pair<bool MvEdit::*, std::vector<TextView>> kRows[] = {
        {&MvEdit::HostFormat, {u"TabSize", u"Margin", u"IndentStar", u"IndentBang", u"IndentUserComment"}},
        {&MvEdit::HostComment, {u"CommentPrefixes"}},
        {&MvEdit::HostCompile, {u"CompileCommand", u"CompileOptions"}},
        {&MvEdit::HostKeywords, {u"LanguageKeywords", u"UserKeywords", u"CaseSensitiveKeywords"}}};
    for (const auto& [flag, left] : kRows) {
        MvEdit settings;
        StoredValues expected = Saved(settings);
        for (TextView key : left) expected.erase(expected.find(key));
        settings.*flag = true;
        EXPECT_EQ(Saved(settings), expected);
        EXPECT_EQ(Saved(settings.Clone()), expected);
        MvEdit clone = MvEdit().Clone();
        settings.UpdateFrom(clone);
        EXPECT_TRUE(settings.*flag) << "the host's word stands as long as the session";
    }
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
    const std::tuple<TextView, TextView, TextView, int32_t, bool, TextView> kRows[] = {
        {u"7.0", u"MVW Lucida Console", u"DejaVu Sans Mono", message_box::kAnswerYes, true, u"DejaVu Sans Mono"},
        {u"7.0", u"MV Lucida console", u"DejaVu Sans Mono", message_box::kAnswerYes, true, u"DejaVu Sans Mono"},
        {u"7.0", u"MVW LUCIDA Console", u"DejaVu Sans Mono", message_box::kAnswerNo, true, u"MVW LUCIDA Console"},
        {u"7.05", u"MVW Lucida Console", u"DejaVu Sans Mono", message_box::kAnswerCancel, true, u"MVW Lucida Console"},
        {u"7", u"MVW Lucida Console", u"Courier New", message_box::kAnswerYes, false, u"MVW Lucida Console"},
        {u"7.0", u"Hack", u"DejaVu Sans Mono", message_box::kAnswerYes, false, u"Hack"},
        {u"7.0", u"", u"DejaVu Sans Mono", message_box::kAnswerYes, false, u"DejaVu Sans Mono"}};
    for (const auto& [version, stored, defaultFont, answer, asks, font] : kRows) {
        Loading loading({{u"FontName", Text(stored)}, {u"TabSize", u"5"}}, Text(version));
        loading.defaultFont = defaultFont;
        loading.answer = answer;
        MvEdit settings = loading.Load();
        EXPECT_EQ(settings.FontName, font);
        EXPECT_EQ(settings.TabSize, 5) << "the other settings load as ever";
        EXPECT_EQ(loading.asked.size(), asks ? 1U : 0U);
        EXPECT_EQ(loading.store.values[u""], u"7.1");
        EXPECT_EQ(loading.Load().FontName, font);
        EXPECT_EQ(loading.asked.size(), asks ? 1U : 0U) << "asked again";
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

TEST(SettingsMigration, AStoreWithoutItsStampKeepsWhatItHolds)
{
    Loading fresh({{u"TabSize", u"8"}}, u"");
    MvEdit settings = fresh.Load();
    EXPECT_EQ(settings.ReservedColor, MvEdit().ReservedColor);
    EXPECT_EQ(settings.FontName, u"Courier New");
    EXPECT_EQ(settings.TabSize, 8);
    EXPECT_EQ(fresh.store.values[u""], u"7.1");
}

TEST(SettingsMigration, OnlyAFreshStoreBeginsInADialect)
{
    const std::tuple<StoredValues, Text, Text> kRows[] = {{{}, u"", u"common"},
                                                          {{{u"TabSize", u"8"}}, u"", u""},
                                                          {{}, u"7.1", u""},
                                                          {{{u"Dialect", u"server"}}, u"7.1", u"server"}};
    for (const auto& [stored, version, dialect] : kRows) {
        Loading loading({}, version);
        for (const auto& [name, text] : stored) loading.store.values[name] = text;
        EXPECT_EQ(loading.Load().Dialect, dialect);
        EXPECT_EQ(loading.Load().Dialect, dialect) << "at the next start, after a sudden end";
    }
}

} // namespace nib::test::settings_test
