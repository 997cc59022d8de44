#include "shell/MessageBoxPlan.h"

#include <gtest/gtest.h>

namespace nib::message_box_ex_test {

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
        {kExtended | 0xF, u"[OK]", {1}, 1}};
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
    const int32_t checked = kExtended | kCheckBox | kWarning;
    EXPECT_EQ(PlanMessageBox(checked, u"").title, u"Nib");
    EXPECT_EQ(PlanMessageBox(checked, u"").icon, kWarning);
    EXPECT_EQ(PlanMessageBox(checked, u"").checkCaption, u"Do not show this &warning again");
    EXPECT_EQ(PlanMessageBox(checked, u"Title", u"&Never").checkCaption, u"&Never");
    EXPECT_EQ(PlanMessageBox(kCheckBox | kWarning, u"", u"&Never").checkCaption, u"") << "needs the extended bit";
    EXPECT_TRUE(PlanMessageBox(kExtended, u"").sounds && !PlanMessageBox(kOk, u"").sounds);
    EXPECT_EQ(MessageBoxAnswer(kAnswerYes, true), 6 + 128);
}

} // namespace nib::message_box_ex_test
