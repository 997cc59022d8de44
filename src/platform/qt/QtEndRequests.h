#pragma once
#include <QObject>

#include <functional>

namespace nib {

/// Tells the program, in its loop, that it is to end: by a signal or because the user's session does.
class QtEndRequests : public QObject {
public:
    /// `signalled` becomes readable when a signal came; below 0 there is none. `keep` brings to safety what the user
    /// would miss; after it the session may go on. `end` does so too, and ends.
    QtEndRequests(int signalled, std::function<void()> keep, std::function<void()> end);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::function<void()> end_;
};

} // namespace nib
