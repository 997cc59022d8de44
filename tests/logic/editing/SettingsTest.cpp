#include "editing/MvEdit.h"
#include "editing/SettingText.h"
#include "editing/SettingsTable.h"
#include "fakes/MemorySettings.h"
#include "platform/MessageBoxes.h"

#include <gtest/gtest.h>

#include <random>
#include <type_traits>

namespace nib {

using namespace test;

namespace {

const Text kDejaVu = u"DejaVu Sans Mono";

/// A store, and an editor's settings loaded from it.
struct Loading {
    MemorySettings store;
    MemoryOldSettings older;
    bool hasOlder = true;
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
        settings.LoadSettings({store, hasOlder ? &older : nullptr, defaultFont, [&](TextView text, int32_t flags) {
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

class Chance {
public:
    explicit Chance(uint32_t seed) : engine_(seed) {}
    int64_t Number(int64_t low, int64_t high) { return std::uniform_int_distribution<int64_t>(low, high)(engine_); }
    Text SomeText()
    {
        Text text;
        for (int64_t left = Number(1, 12); left > 0; --left) text += static_cast<char16_t>(Number(1, 0xD7FF));
        return text;
    }
    Text Word() { return u"W" + Decimal(Number(0, 99999)); }

private:
    std::mt19937 engine_;
};

void Fill(clsRecentList& list, Chance& chance)
{
    for (int64_t left = chance.Number(0, 40); left > 0; --left) list.AddItem(chance.SomeText());
}

void Fill(clsKeywords& keywords, Chance& chance)
{
    keywords.SetCaseSensitive(chance.Number(0, 1));
    keywords.SetCommentPrefixes(chance.Number(0, 1) ? u"#" : u"");
    for (int32_t wordClass : {2, 4}) {
        Text list;
        for (int64_t left = chance.Number(1, 5); left > 0; --left) {
            list += chance.Word();
            if (chance.Number(0, 3) == 0) list += u" " + chance.Word();
            list += Text(u"+-=[]x").substr(static_cast<size_t>(chance.Number(0, 5)), 1) + u",";
        }
        keywords.SetKeywordList(wordClass, u",", list);
    }
}

void Fill(MvEdit& settings, const SettingRow& row, Chance& chance)
{
    auto fill = [&](auto& field) {
        using Field = std::remove_reference_t<decltype(field)>;
        if constexpr (std::is_same_v<Field, Text>)
            field = chance.SomeText();
        else if constexpr (std::is_same_v<Field, bool>)
            field = chance.Number(0, 1);
        else if constexpr (std::is_class_v<Field>)
            Fill(field, chance);
        else if (row.rule == SettingRule::None)
            field =
                static_cast<Field>(chance.Number(std::numeric_limits<Field>::min(), std::numeric_limits<Field>::max()));
        else
            field = static_cast<Field>(chance.Number(0, row.rule == SettingRule::NotNegative ? 32767 : 2));
    };
    std::visit(
        [&](auto member) {
            if constexpr (std::is_same_v<decltype(member), RecentMember>) {
                if (!member.sizeKey.empty())
                    (settings.*member.list).SetListSize(static_cast<int32_t>(chance.Number(0, 30)));
                fill(settings.*member.list);
            } else {
                fill(settings.*member);
            }
        },
        row.member);
}

MvEdit RandomSettings(uint32_t seed)
{
    Chance chance(seed);
    MvEdit settings;
    for (const SettingRow& row : kSettings) Fill(settings, row, chance);
    return settings;
}

} // namespace

TEST(Settings, DefaultsAreStoredUnderTheseNamesAndTexts)
{
    const std::pair<TextView, TextView> kRows[] = {
        {u"", u"7.1"},
        {u"FontName", u"Courier New"},
        {u"FontSize", u"10"},
        {u"FontMono", u"True"},
        {u"BackColor", u"-2147483643"},
        {u"NormalColor", u"-2147483640"},
        {u"NormalStyle", u"0"},
        {u"KeywordColor", u"16711680"},
        {u"KeywordStyle", u"0"},
        {u"StringColor", u"1381795"},
        {u"StringStyle", u"0"},
        {u"LabelColor", u"6052956"},
        {u"LabelStyle", u"0"},
        {u"CommentColor", u"32768"},
        {u"CommentStyle", u"0"},
        {u"ReservedColor", u"16711680"},
        {u"ReservedStyle", u"0"},
        {u"Highlight", u"True"},
        {u"LineWrap", u"False"},
        {u"TabSize", u"3"},
        {u"Margin", u"6"},
        {u"IndentStar", u"1"},
        {u"IndentBang", u"0"},
        {u"IndentUserComment", u"2"},
        {u"CompileCommand", u"BASIC"},
        {u"CompileOptions", u""},
        {u"CaseSensitiveKeywords", u"False"},
        {u"LanguageKeywords", u"IF THEN+ ELSE+ LOCKED+ BEGIN+ END- CASE= FOR+ NEXT- DO LOOP+ UNTIL= WHILE= REPEAT- GO "
                              u"GOTO GOSUB TO SUB SUBROUTINE CALL STEP INCLUDE"},
        {u"UserKeywords", u""},
        {u"CommentPrefixes", u"*,!"},
        {u"RecordLocking", u"True"},
        {u"ColorPrinting", u"False"},
        {u"NoGotoDialog", u"False"},
        {u"GotoLineNumber", u"False"},
        {u"AutoRecover", u"True"},
        {u"ToolbarHotTrack", u"True"},
        {u"ToolbarLargeIcons", u"False"},
        {u"ResultsFontName", u""},
        {u"ResultsFontSize", u""},
        {u"RecentListSize", u"4"},
        {u"RecentFileCount", u"0"},
        {u"MinMaxClose", u"False"},
        {u"CollapseBlocks", u"False"},
        {u"SearchEOD", u"0"},
        {u"DisableHostConfig", u"False"},
        {u"RecentSearchCount", u"0"},
    };
    MemorySettings store;
    Loading().Load().SaveSettings(store);
    ASSERT_EQ(store.written.size(), std::size(kRows));
    for (size_t i = 0; i < std::size(kRows); ++i) {
        EXPECT_EQ(store.written[i], kRows[i].first);
        EXPECT_EQ(store.values[store.written[i]], kRows[i].second) << ToUtf8(kRows[i].first);
    }
}

TEST(Settings, EverythingSurvivesStoreCloneAndUpdate)
{
    for (uint32_t seed = 1; seed <= 100; ++seed) {
        SCOPED_TRACE(seed);
        MvEdit settings = RandomSettings(seed);
        StoredValues saved = Saved(settings);
        EXPECT_EQ(SavedAfterLoading(saved), saved);
        MvEdit clone = settings.Clone();
        EXPECT_EQ(Saved(clone), saved);

        MvEdit other = RandomSettings(seed + 1000);
        settings.UpdateFrom(other);
        EXPECT_EQ(Saved(settings), Saved(other));
        EXPECT_EQ(Saved(clone), saved) << "a clone must not notice";
        settings.UpdateFrom(settings);
        EXPECT_EQ(Saved(settings), Saved(other));
    }
}

TEST(Settings, StoredTextsAreReadByTheRuleOfTheirField)
{
    const Text kLong(1'000'000, u'9');
    const struct {
        Text key, stored, kept;
    } kRows[] = {
        {u"TabSize", u"-1", u"0"},
        {u"TabSize", u"8 blanks", u"8"},
        {u"TabSize", u" 2.5", u"2"},
        {u"TabSize", u"wide", u"0"},
        {u"TabSize", u"-", u"0"},
        {u"TabSize", Text(u"4\0005", 3), u"4"},
        {u"TabSize", Text(3, u'\0'), u"0"},
        {u"TabSize", u"1e99", u"3"},
        {u"TabSize", u"1e-9999", u"0"},
        {u"TabSize", u"32768", u"3"},
        {u"TabSize", u"-99999999999", u"0"},
        {u"TabSize", kLong, u"3"},
        {u"TabSize", u"&HFFFF", u"0"},
        {u"Margin", u"inf", u"0"},
        {u"Margin", u"-7", u"0"},
        {u"IndentStar", u"-2", u"2"},
        {u"IndentStar", u"3", u"0"},
        {u"IndentBang", u"-1e300", u"0"},
        {u"IndentUserComment", u"-32768", u"0"},
        {u"SearchEOD", u"-1", u"0"},
        {u"SearchEOD", u"2", u"2"},
        {u"SearchEOD", u"3", u"0"},
        {u"BackColor", u"&H80000005&", u"-2147483643"},
        {u"BackColor", u"&h00ff0000", u"16711680"},
        {u"BackColor", u"2147483653", u"-2147483643"},
        {u"BackColor", u"&HFFFFFFFFFF&", u"-2147483643"},
        {u"BackColor", u"-99999999999", u"-2147483643"},
        {u"BackColor", u"&H", u"0"},
        {u"KeywordColor", kLong, u"16711680"},
        {u"KeywordStyle", u"3", u"3"},
        {u"Highlight", u"false", u"False"},
        {u"Highlight", u"0", u"False"},
        {u"Highlight", u"maybe", u"True"},
        {u"Highlight", u"-", u"True"},
        {u"LineWrap", u"-1", u"True"},
        {u"LineWrap", kLong, u"False"},
        {u"FontName", u"mv lucida CONSOLE", u"MVW Lucida Console"},
        {u"FontName", u"Hack", u"Hack"},
        {u"ResultsFontName", u"MV Lucida Console", u"MV Lucida Console"},
        {u"RecentListSize", u"31", u"30"},
        {u"RecentListSize", u"-1", u"4"},
        {u"RecentListSize", u"1e99", u"30"},
        {u"RecentListSize", u"0", u"0"},
        {u"RecentFileCount", u"-5", u"0"},
    };
    for (auto& row : kRows)
        EXPECT_EQ(ToUtf8(SavedAfterLoading({{row.key, row.stored}})[row.key]), ToUtf8(row.kept))
            << ToUtf8(row.key) << " = " << ToUtf8(row.stored.substr(0, 40));
}

TEST(Settings, KeywordListsCarryTheirSeparator)
{
    const struct {
        TextView stored, saved;
        int32_t words;
    } kRows[] = {
        {u"END CASE,", u"END CASE,", 1}, {u"END CASE", u"END- CASE=", 2},
        {u"A+,B C-", u"A+,B C-", 2},     {u"A,B", u"A B", 2},
        {u"  A   B ", u"A B", 2},        {u"", u"", 0},
    };
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

TEST(Settings, LongKeywordListsLoad)
{
    Text words;
    for (int32_t i = 0; i < 100'000; ++i) words += u"WORD" + Decimal(i) + u" ";
    MvEdit settings = Loading({{u"UserKeywords", words}}).Load();
    EXPECT_EQ(CountFields(settings.Keywords.GetKeywordList(4, u" "), u' '), 100'000);
}

TEST(Settings, RecentEntriesOfTheLowestNumbersWin)
{
    Loading loading({{u"RecentListSize", u"3"},
                     {u"RecentFileCount", u"2000000000"},
                     {u"RecentFile_1", u"a"},
                     {u"RecentFile_3", u"b"},
                     {u"RecentFile_4", u"A"},
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
    } kRows[] = {
        {&MvEdit::HostFormat, {u"TabSize", u"Margin", u"IndentStar", u"IndentBang", u"IndentUserComment"}},
        {&MvEdit::HostComment, {u"CommentPrefixes"}},
        {&MvEdit::HostCompile, {u"CompileCommand", u"CompileOptions"}},
        {&MvEdit::HostKeywords, {u"LanguageKeywords", u"UserKeywords", u"CaseSensitiveKeywords"}},
    };
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

// Migration

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

TEST(SettingsMigration, NoOlderStoreIsAnEmptyOne)
{
    Loading with({}, u""), without({}, u"");
    without.hasOlder = false;
    with.Load();
    without.Load();
    EXPECT_EQ(with.store.values, without.store.values);
    EXPECT_EQ(without.store.values[u"FontName"], u"Courier New");
    EXPECT_FALSE(without.store.values.contains(u"MainLeft"));
    EXPECT_EQ(without.store.values[u""], u"7.1");
}

} // namespace nib
