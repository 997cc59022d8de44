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
        {u"7.0", u"", u"DejaVu Sans Mono", message_box::kAnswerYes, false, u"DejaVu Sans Mono"}};
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

TEST(SettingsMigration, AStoreWithoutItsStampKeepsWhatItHolds)
{
    Loading fresh({{u"TabSize", u"8"}}, u"");
    MvEdit settings = fresh.Load();
    EXPECT_EQ(settings.ReservedColor, MvEdit().ReservedColor);
    EXPECT_EQ(settings.FontName, u"Courier New");
    EXPECT_EQ(settings.TabSize, 8);
    EXPECT_EQ(fresh.store.values[u""], u"7.1");
}

} // namespace nib
