#pragma once
#include "platform/MessageBoxes.h"

#include <QPointer>
#include <QWidget>

namespace nib {

class QtMessageBoxes : public MessageBoxes {
public:
    /// The boxes stand over `owner`.
    explicit QtMessageBoxes(QWidget* owner = nullptr) : owner_(owner) {}
    /// The answer survives the end of the owner.
    int32_t Show(TextView text, int32_t flags, TextView title) override;
    void Beep() override;

private:
    QPointer<QWidget> owner_;
    bool up_ = false;
};

} // namespace nib
