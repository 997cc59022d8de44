#include "platform/qt/QtBackground.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QScopedValueRollback>

#include <chrono>
#include <exception>
#include <future>
#include <thread>
#include <utility>

namespace nib {

namespace {

/// Most work has ended by then, and nobody sees a wait.
constexpr std::chrono::milliseconds kUnseen{5};

/// Work on a thread, which is joined whatever happens to whoever waits for it.
class Worker {
public:
    /// `ended` is called on the thread.
    Worker(const std::function<void()>& work, std::function<void()> ended)
        : result_(done_.get_future()), thread_([this, &work, ended = std::move(ended)] {
              try {
                  work();
                  done_.set_value();
              } catch (...) {
                  done_.set_exception(std::current_exception());
              }
              ended();
          })
    {
    }
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;
    ~Worker() { thread_.join(); }

    bool HasEnded(std::chrono::milliseconds within = {}) const
    {
        return result_.wait_for(within) == std::future_status::ready;
    }
    /// Throws what the work threw.
    void Finish() { result_.get(); }

private:
    std::promise<void> done_;
    std::future<void> result_;
    std::thread thread_;
};

} // namespace

void QtBackground::Run(const std::function<void()>& work, bool typing)
{
    if (busy_) return work();
    QEventLoop loop;
    Worker worker(work, [&loop] { QCoreApplication::postEvent(&loop, new QEvent(QEvent::User)); });
    if (!worker.HasEnded(kUnseen)) {
        const QScopedValueRollback<bool> whileBusy(busy_, true);
        while (!worker.HasEnded()) {
            const bool all = typing && postponed_.empty();
            loop.processEvents(QEventLoop::WaitForMoreEvents |
                               (all ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents));
        }
    }
    for (auto& what : std::exchange(postponed_, {}))
        QMetaObject::invokeMethod(qApp, std::move(what), Qt::QueuedConnection);
    worker.Finish();
}

bool QtBackground::Postpone(std::function<void()> what)
{
    if (busy_) postponed_.push_back(std::move(what));
    return busy_;
}

} // namespace nib
