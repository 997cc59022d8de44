#pragma once
#include "platform/MessageBoxes.h"

#include <QPointer>
#include <QWidget>

#include <memory>

namespace nib {

/// A dialog with the elapsed time and Cancel, once a host has been waited for for a second. It stands before all
/// windows of the program, so that nothing can be begun meanwhile, and has them painted.
class QtWaitNotice : public WaitNotice {
public:
    /// The dialog stands over `owner`.
    explicit QtWaitNotice(QWidget* owner = nullptr);
    ~QtWaitNotice() override;

    bool Started(TextView what) override;
    void Tell(WaitStage stage, int32_t percent) override;
    bool GoOn(std::chrono::milliseconds elapsed) override;
    bool ResetWanted() const override;
    void Ended() override;
    /// The program ends: what is waited for now and later is stopped at once.
    void StopAll() { stopped_ = true; }

private:
    class Dialog;

    QPointer<QWidget> owner_;
    std::unique_ptr<Dialog> dialog_;
    Text what_;
    WaitStage stage_ = WaitStage::Command;
    int32_t percent_ = -1;
    bool running_ = false;
    bool stopped_ = false;
};

} // namespace nib
