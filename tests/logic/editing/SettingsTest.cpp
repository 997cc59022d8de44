#include "SettingsFixture.h"
#include "editing/MvEdit.h"

#include <gtest/gtest.h>

#include <random>
#include <type_traits>

namespace nib {

using namespace test;

namespace {

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
                    u"RecentSearchCount=0; ");
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
        {u"Highlight", u"x0", u"True"},
        {u"LineWrap", u"-1", u"True"},
        {u"LineWrap", kLong, u"True"},
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

} // namespace nib
