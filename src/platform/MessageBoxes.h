#pragma once
#include "base/Text.h"

namespace nib {

/// Flags of a message box: one of the button sets, one of the icons.
namespace message_box {
inline constexpr int32_t kOk = 0;
inline constexpr int32_t kOkCancel = 1;
inline constexpr int32_t kYesNoCancel = 3;
inline constexpr int32_t kYesNo = 4;
inline constexpr int32_t kError = 16;
inline constexpr int32_t kQuestion = 32;
inline constexpr int32_t kWarning = 48;
inline constexpr int32_t kInformation = 64;
inline constexpr int32_t kExtended = 0x40000000;

// Answers.
inline constexpr int32_t kAnswerOk = 1;
inline constexpr int32_t kAnswerCancel = 2;
inline constexpr int32_t kAnswerYes = 6;
inline constexpr int32_t kAnswerNo = 7;
inline constexpr int32_t kAnswerYesToAll = 14;
} // namespace message_box

/// Shows a modal box over the main window and answers the button pressed; closing the box counts as its Cancel button,
/// or No where there is none.
class MessageBoxes {
public:
    virtual ~MessageBoxes() = default;
    virtual int32_t Show(TextView text, int32_t flags, TextView title) = 0;
};

} // namespace nib
