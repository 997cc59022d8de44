#pragma once
#include "language/service/LanguageService.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

namespace nib {

/// Brings a call to the thread of the windows, from any thread, and does not wait for it.
using ToWindows = std::function<void(std::function<void()>)>;

/// The language service on a thread of its own: calls hand over and return at once, and are done in their order.
/// Between them the service reads accounts.
class LanguageWorker {
public:
    using Make = std::function<std::unique_ptr<LanguageService>()>;

    /// `make` is called on the thread. `news` is called on that of the windows when answers may be others without a
    /// text having changed.
    LanguageWorker(Make make, ToWindows toWindows, std::function<void()> news);
    /// Waits for the call that is under way, and forgets the others.
    ~LanguageWorker();
    LanguageWorker(const LanguageWorker&) = delete;
    LanguageWorker& operator=(const LanguageWorker&) = delete;

    void Post(std::function<void(LanguageService&)> job);
    /// `take` gets the answer on the thread of the windows, unless this object is gone by then. A question that fails
    /// is never answered.
    template <typename Question, typename Take>
    void Ask(Question question, Take take)
    {
        Post([this, question = std::move(question), take = std::move(take)](LanguageService& service) {
            auto answer = std::make_shared<decltype(question(service))>(question(service));
            Deliver([answer, take] { take(*answer); });
        });
    }
    /// What went wrong since the last call; empty when nothing did.
    Text TakeFault();

private:
    void Run();
    void RunJobs(LanguageService& service, std::unique_lock<std::mutex>& lock);
    void Work(LanguageService& service, std::unique_lock<std::mutex>& lock);
    void Deliver(std::function<void()> call);
    void Keep(const Text& fault);

    const Make make_;
    const ToWindows toWindows_;
    const std::function<void()> news_;
    const std::shared_ptr<bool> alive_ = std::make_shared<bool>(true); ///< of the thread of the windows
    uint64_t revision_ = 0;                                            ///< the thread's own

    std::mutex mutex_; ///< of all that follows
    std::condition_variable wake_;
    std::deque<std::function<void(LanguageService&)>> jobs_;
    Text fault_;
    bool stop_ = false;
    bool restless_ = true; ///< there is work to be done at once

    std::thread thread_; ///< uses all the others
};

} // namespace nib
