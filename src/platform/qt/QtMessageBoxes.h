#pragma once
#include "platform/MessageBoxes.h"

#include <QPointer>
#include <QWidget>

namespace nib {

class QtMessageBoxes : public MessageBoxes {
public:
    /// The boxes stand over `owner`; null until there is a window.
    void SetOwner(QWidget* owner) { owner_ = owner; }
    /// Answers 0 at once while a box is up.
    int32_t Show(TextView text, int32_t flags, TextView title) override;

private:
    QPointer<QWidget> owner_;
    bool up_ = false;
};

} // namespace nib
