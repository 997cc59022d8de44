#pragma once
// What a message box looks like and answers, from its flags alone; platform/qt draws it.

#include "platform/MessageBoxes.h"

#include <vector>

namespace nib {

enum class ButtonMeaning { Agree, Refuse, Leave };

struct MessageBoxButton {
    int32_t answer;
    const char16_t* caption;
    ButtonMeaning meaning; ///< decides the place that the desktop gives it
};

struct MessageBoxPlan {
    Text title;
    std::vector<MessageBoxButton> buttons;
    size_t defaultButton = 0;
    int32_t escapeAnswer = 0; ///< that of a box closed by other means than a button; one of the buttons
    int32_t icon = 0;         ///< one of message_box::kError to kInformation; 0 for none
    Text checkCaption;        ///< empty: no check box
    bool sounds = false;
};

/// An empty title becomes the program's, an empty caption the usual one.
MessageBoxPlan PlanMessageBox(int32_t flags, TextView title, TextView checkCaption = {});
/// The answer to the caller: the button's number, and message_box::kChecked with it.
int32_t MessageBoxAnswer(int32_t pressed, bool isChecked);

} // namespace nib
