#include "shell/MessageBoxPlan.h"

#include <gtest/gtest.h>

namespace nib {
namespace {

using namespace message_box;

TEST(MessageBoxExTest, ButtonsDefaultAndEscape)
{
    struct {
        int32_t flags;
        Text captions; ///< the default one in brackets
        std::vector<int32_t> answers;
        int32_t escape;
    } const rows[] = {
        {kOk, u"[OK]", {1}, 1},
        {kOkCancel | kWarning, u"[OK] Cancel", {1, 2}, 2},
        {kOkCancel | kSecondDefault, u"OK [Cancel]", {1, 2}, 2},
        {kAbortRetryIgnore, u"[&Abort] &Retry &Ignore", {3, 4, 5}, 3},
        {kYesNoCancel | kThirdDefault, u"&Yes &No [Cancel]", {6, 7, 2}, 2},
        {kYesNo | kSecondDefault, u"&Yes [&No]", {6, 7}, 7},
        {kYesNo | kThirdDefault, u"[&Yes] &No", {6, 7}, 7}, // no such button
        {kRetryCancel, u"[&Retry] Cancel", {4, 2}, 2},
        {kCancelTryContinue, u"[Cancel] &Try Again &Continue", {2, 10, 11}, 2},
        {kExtended | kYesAllNo, u"[&Yes] Yes to &All &No", {6, 14, 7}, 7},
        {kExtended | kYesAllNo | kSecondDefault, u"&Yes [Yes to &All] &No", {6, 14, 7}, 7},
        {kExtended | kYesAllNoCancel, u"[&Yes] Yes to &All &No Cancel", {6, 14, 7, 2}, 2},
        {kExtended | kYesAllNoCancel | kSecondDefault, u"&Yes Yes to &All &No [Cancel]", {6, 14, 7, 2}, 2},
        {kExtended | kYesAllNoCancel | kDefaultMask, u"&Yes Yes to &All &No [Cancel]", {6, 14, 7, 2}, 2},
        {kYesAllNo, u"[OK]", {1}, 1}, // needs the extended bit
        {kExtended | 0xF, u"[OK]", {1}, 1},
    };
    for (auto& row : rows) {
        MessageBoxPlan plan = PlanMessageBox(row.flags, u"");
        Text captions;
        std::vector<int32_t> answers;
        for (size_t i = 0; i < plan.buttons.size(); ++i) {
            Text caption = plan.buttons[i].caption;
            captions += (i ? u" " : u"") + (i == plan.defaultButton ? u"[" + caption + u"]" : caption);
            answers.push_back(plan.buttons[i].answer);
        }
        EXPECT_EQ(captions, row.captions) << ToUtf8(captions);
        EXPECT_EQ(answers, row.answers) << ToUtf8(captions);
        EXPECT_EQ(plan.escapeAnswer, row.escape) << ToUtf8(captions);
    }
}

TEST(MessageBoxExTest, TitleIconCheckBoxAndSound)
{
    struct {
        int32_t flags;
        Text title;
        Text caption;
        MessageBoxPlan wanted;
    } const rows[] = {
        {kOk, u"", u"", {u"Nib", {}, 0, 0, 0, u"", false}},
        {kError, u"Title", u"", {u"Title", {}, 0, 0, kError, u"", false}},
        {kExtended | kQuestion, u"", u"&Never", {u"Nib", {}, 0, 0, kQuestion, u"", true}},
        {kCheckBox | kWarning, u"", u"&Never", {u"Nib", {}, 0, 0, kWarning, u"", false}},
        {kExtended | kCheckBox | kInformation,
         u"",
         u"",
         {u"Nib", {}, 0, 0, kInformation, u"Do not show this &warning again", true}},
        {kExtended | kCheckBox | 0x4000, u"", u"&Never", {u"Nib", {}, 0, 0, 0, u"&Never", true}},
        {kExtended | 0x70, u"", u"", {u"Nib", {}, 0, 0, 0, u"", true}},
    };
    for (auto& row : rows) {
        MessageBoxPlan plan = PlanMessageBox(row.flags, row.title, row.caption);
        EXPECT_EQ(plan.title, row.wanted.title) << row.flags;
        EXPECT_EQ(plan.icon, row.wanted.icon) << row.flags;
        EXPECT_EQ(plan.checkCaption, row.wanted.checkCaption) << row.flags;
        EXPECT_EQ(plan.sounds, row.wanted.sounds) << row.flags;
    }
    EXPECT_EQ(MessageBoxAnswer(kAnswerYes, true), 6 + 128);
    EXPECT_EQ(MessageBoxAnswer(kAnswerYesToAll, false), 14);
}

} // namespace
} // namespace nib
