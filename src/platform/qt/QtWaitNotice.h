#pragma once
#include "platform/MessageBoxes.h"

#include <QPointer>
#include <QWidget>

#include <memory>

namespace nib {

/// A dialog with the elapsed time and Cancel, once a command has run for a second. It stands before all windows of the
/// program, so that nothing can be begun meanwhile, and has them painted.
class QtWaitNotice : public WaitNotice {
public:
    QtWaitNotice();
    ~QtWaitNotice() override;

    /// The dialog stands over `owner`; null until there is a window.
    void SetOwner(QWidget* owner) { owner_ = owner; }

    bool Started(TextView command) override;
    bool GoOn(std::chrono::milliseconds elapsed) override;
    void Ended() override;

private:
    class Dialog;

    QPointer<QWidget> owner_;
    std::unique_ptr<Dialog> dialog_;
    Text command_;
    bool running_ = false;
};

} // namespace nib
