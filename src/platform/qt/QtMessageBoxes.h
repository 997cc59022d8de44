#pragma once
#include "platform/MessageBoxes.h"

class QWidget;

namespace nib {

class QtMessageBoxes final : public MessageBoxes {
public:
    /// The window that owns the boxes; null before there is one.
    void SetOwner(QWidget* owner) { owner_ = owner; }
    /// Answers 0 at once while another box is up.
    int32_t Show(TextView text, int32_t flags, TextView title) override;

private:
    QWidget* owner_ = nullptr;
    bool showing_ = false;
};

} // namespace nib
