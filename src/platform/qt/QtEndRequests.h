#pragma once
#include "platform/posix/FileContent.h"

#include <QObject>
#include <QSocketNotifier>

#include <csignal>
#include <functional>
#include <optional>

namespace nib {

/// Holds back the signals that ask a program to end, until there is a loop that can be told of them. To be made before
/// anything starts a thread. A pipe or file that takes no more ends nothing from here on: its write tells.
class EndSignals {
public:
    EndSignals();
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;

    /// Readable when one came.
    int Handle() const { return file_.Get(); }
    /// Takes it; a further one ends the process at once.
    void Take();

private:
    sigset_t signals_{};
    Descriptor file_;
};

/// Tells the program, in its loop, that it is to end: by a signal or because the user's session does.
class QtEndRequests : public QObject {
public:
    /// `keep` brings to safety what the user would miss; after it the session may go on. `end` does so too, and ends.
    QtEndRequests(EndSignals& caught, std::function<void()> keep, std::function<void()> end);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    EndSignals& signals_;
    std::function<void()> end_;
    std::optional<QSocketNotifier> notifier_;
};

} // namespace nib
