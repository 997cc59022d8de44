#pragma once
#include "base/Text.h"

#include <chrono>

namespace nib {

/// Flags of a message box: one of the button sets, one of the icons, and the default button.
namespace message_box {
inline constexpr int32_t kOk = 0;
inline constexpr int32_t kOkCancel = 1;
inline constexpr int32_t kAbortRetryIgnore = 2;
inline constexpr int32_t kYesNoCancel = 3;
inline constexpr int32_t kYesNo = 4;
inline constexpr int32_t kRetryCancel = 5;
inline constexpr int32_t kCancelTryContinue = 6;
inline constexpr int32_t kButtonMask = 0xF;
inline constexpr int32_t kError = 16;
inline constexpr int32_t kQuestion = 32;
inline constexpr int32_t kWarning = 48;
inline constexpr int32_t kInformation = 64;
inline constexpr int32_t kIconMask = 0x70;
/// The first button is the default one, unless one of these is given.
inline constexpr int32_t kSecondDefault = 0x100;
inline constexpr int32_t kThirdDefault = 0x200;
inline constexpr int32_t kDefaultMask = 0x300;

// With extended handling a box may have more: the sets with Yes to All, those about what changed outside, a check box.
inline constexpr int32_t kExtended = 0x40000000;
inline constexpr int32_t kYesAllNo = 9;
inline constexpr int32_t kYesAllNoCancel = 10;
inline constexpr int32_t kReloadKeepCompareCancel = 11;
inline constexpr int32_t kKeepClose = 12;
inline constexpr int32_t kMergeReloadKeepCompareCancel = 13;
inline constexpr int32_t kCheckBox = 0x80;

// Answers.
inline constexpr int32_t kAnswerOk = 1;
inline constexpr int32_t kAnswerCancel = 2;
inline constexpr int32_t kAnswerAbort = 3;
inline constexpr int32_t kAnswerRetry = 4;
inline constexpr int32_t kAnswerIgnore = 5;
inline constexpr int32_t kAnswerYes = 6;
inline constexpr int32_t kAnswerNo = 7;
inline constexpr int32_t kAnswerTryAgain = 10;
inline constexpr int32_t kAnswerContinue = 11;
inline constexpr int32_t kAnswerYesToAll = 14;
inline constexpr int32_t kAnswerReload = 20;
inline constexpr int32_t kAnswerKeep = 21;
inline constexpr int32_t kAnswerCompare = 22;
inline constexpr int32_t kAnswerClose = 23;
inline constexpr int32_t kAnswerMerge = 24;
/// Added to the answer when the check box was checked.
inline constexpr int32_t kChecked = 128;
} // namespace message_box

class MessageBoxes {
public:
    virtual ~MessageBoxes() = default;
    /// A modal box over the main window and answers the button pressed; closing the box counts as its Cancel button,
    /// or No where there is none. While a box is up, a further call answers 0 and shows nothing.
    virtual int32_t Show(TextView text, int32_t flags, TextView title) = 0;
    /// The sound alone.
    virtual void Beep() = 0;
};

/// What a host is waited for to do: run a command, take a connection, answer a request.
enum class WaitStage : uint8_t { Command, Busy, Pending };

/// Told while a host is waited for: keeps the windows alive and lets the user stop it.
class WaitNotice {
public:
    virtual ~WaitNotice() = default;
    /// `what` is the command, or says what is done. False when something is waited for already: this must not start.
    virtual bool Started(TextView what) = 0;
    /// `percent` of what is sent, -1 when that is not known.
    virtual void Tell(WaitStage /*stage*/, int32_t /*percent*/) {}
    /// Called about every 50 ms; false stops it.
    virtual bool GoOn(std::chrono::milliseconds elapsed) = 0;
    /// With that answer: the connection is to be dropped as well.
    virtual bool ResetWanted() const { return false; }
    /// Called once for each Started that answered true.
    virtual void Ended() {}
};

} // namespace nib
