#include "platform/qt/QtTimers.h"

#include <QTimer>

namespace nib {

namespace {

class RingingTimer final : public Timers::Timer {
public:
    RingingTimer(std::chrono::milliseconds interval, std::function<void()> ring)
    {
        QObject::connect(&timer_, &QTimer::timeout, &timer_, std::move(ring));
        timer_.start(interval);
    }

private:
    QTimer timer_;
};

} // namespace

std::unique_ptr<Timers::Timer> QtTimers::Every(std::chrono::milliseconds interval, std::function<void()> ring)
{
    return std::make_unique<RingingTimer>(interval, std::move(ring));
}

} // namespace nib
