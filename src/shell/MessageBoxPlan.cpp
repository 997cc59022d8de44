#include "shell/MessageBoxPlan.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace nib {

namespace {

using namespace message_box;
using enum ButtonMeaning;

constexpr int32_t kDefaultUnit = 0x100;
constexpr TextView kProgramTitle = u"Nib";
constexpr TextView kUsualCheckCaption = u"Do not show this &warning again";

// Own captions: those of the desktop's theme have no access keys everywhere.
constexpr MessageBoxButton kButtons[] = {
    {kAnswerOk, u"OK", Agree},
    {kAnswerCancel, u"Cancel", Leave},
    {kAnswerAbort, u"&Abort", Leave},
    {kAnswerRetry, u"&Retry", Agree},
    {kAnswerIgnore, u"&Ignore", Agree},
    {kAnswerYes, u"&Yes", Agree},
    {kAnswerNo, u"&No", Refuse},
    {kAnswerTryAgain, u"&Try Again", Agree},
    {kAnswerContinue, u"&Continue", Agree},
    {kAnswerYesToAll, u"Yes to &All", Agree},
    {kAnswerReload, u"&Reload", Agree},
    {kAnswerKeep, u"&Keep", Agree},
    {kAnswerCompare, u"C&ompare", Agree},
    {kAnswerClose, u"C&lose", Refuse},
    {kAnswerMerge, u"&Merge", Agree},
};

struct SetRow {
    int32_t set;
    std::array<int32_t, 5> answers; ///< in the order that the default-button flags count; 0 ends the list
    int32_t escape;
    bool isExtended = false; ///< known to boxes with extended handling only
};

constexpr SetRow kSets[] = {
    {kOk, {kAnswerOk}, kAnswerOk},
    {kOkCancel, {kAnswerOk, kAnswerCancel}, kAnswerCancel},
    {kAbortRetryIgnore, {kAnswerAbort, kAnswerRetry, kAnswerIgnore}, kAnswerAbort},
    {kYesNoCancel, {kAnswerYes, kAnswerNo, kAnswerCancel}, kAnswerCancel},
    {kYesNo, {kAnswerYes, kAnswerNo}, kAnswerNo},
    {kRetryCancel, {kAnswerRetry, kAnswerCancel}, kAnswerCancel},
    {kCancelTryContinue, {kAnswerCancel, kAnswerTryAgain, kAnswerContinue}, kAnswerCancel},
    {kYesAllNo, {kAnswerYes, kAnswerYesToAll, kAnswerNo}, kAnswerNo, true},
    {kYesAllNoCancel, {kAnswerYes, kAnswerYesToAll, kAnswerNo, kAnswerCancel}, kAnswerCancel, true},
    {kReloadKeepCompareCancel, {kAnswerReload, kAnswerKeep, kAnswerCompare, kAnswerCancel}, kAnswerCancel, true},
    {kMergeReloadKeepCompareCancel,
     {kAnswerMerge, kAnswerReload, kAnswerKeep, kAnswerCompare, kAnswerCancel},
     kAnswerCancel,
     true},
    {kKeepClose, {kAnswerKeep, kAnswerClose}, kAnswerKeep, true},
};

const SetRow& SetOf(int32_t flags)
{
    bool extended = flags & kExtended;
    auto row = std::find_if(std::begin(kSets), std::end(kSets), [&](const SetRow& r) {
        return r.set == (flags & kButtonMask) && (extended || !r.isExtended);
    });
    return row == std::end(kSets) ? kSets[0] : *row;
}

std::vector<MessageBoxButton> ButtonsOf(const SetRow& set)
{
    std::vector<MessageBoxButton> buttons;
    for (int32_t answer : set.answers) {
        auto row = std::find_if(std::begin(kButtons), std::end(kButtons), [&](auto& b) { return b.answer == answer; });
        if (row != std::end(kButtons)) buttons.push_back(*row);
    }
    return buttons;
}

size_t DefaultOf(const SetRow& set, int32_t flags, size_t count)
{
    auto wanted = static_cast<size_t>((flags & kDefaultMask) / kDefaultUnit);
    // Four buttons know two defaults only: Yes, and with any default flag the one that changes nothing.
    if (set.set == kYesAllNoCancel) return wanted == 0 ? 0 : count - 1;
    return wanted < count ? wanted : 0;
}

int32_t IconOf(int32_t flags)
{
    int32_t icon = flags & kIconMask;
    return icon <= kInformation && icon % kError == 0 ? icon : 0;
}

} // namespace

MessageBoxPlan PlanMessageBox(int32_t flags, TextView title, TextView checkCaption)
{
    const SetRow& set = SetOf(flags);
    MessageBoxPlan plan;
    plan.title = title.empty() ? kProgramTitle : title;
    plan.buttons = ButtonsOf(set);
    plan.defaultButton = DefaultOf(set, flags, plan.buttons.size());
    plan.escapeAnswer = set.escape;
    plan.icon = IconOf(flags);
    plan.sounds = flags & kExtended;
    if ((flags & kExtended) && (flags & kCheckBox))
        plan.checkCaption = checkCaption.empty() ? kUsualCheckCaption : checkCaption;
    return plan;
}

int32_t MessageBoxAnswer(int32_t pressed, bool isChecked)
{
    return pressed + (isChecked ? kChecked : 0);
}

} // namespace nib
