#pragma once
#include "platform/MessageBoxes.h"

#include <QPointer>
#include <QWidget>

namespace nib {

class QtMessageBoxes : public MessageBoxes {
public:
    /// The boxes stand over `owner`.
    explicit QtMessageBoxes(QWidget* owner = nullptr) : owner_(owner) {}
    int32_t Show(TextView text, int32_t flags, TextView title) override;
    /// The same with a caption for the check box, and another owner; the answer survives the owner's end.
    int32_t MsgBoxEx(TextView text, int32_t flags, TextView title, TextView checkCaption, QWidget* owner);

private:
    QPointer<QWidget> owner_;
    bool up_ = false;
};

} // namespace nib
