#include "shell/assist/LanguageWorker.h"

#include "diagnostics/Guarded.h"

#include <chrono>
#include <utility>

namespace nib {

namespace {

/// Between two looks at accounts that nothing has to be read of.
constexpr std::chrono::milliseconds kRest{300};

} // namespace

LanguageWorker::LanguageWorker(Make make, ToWindows toWindows, std::function<void()> news)
    : make_(std::move(make)), toWindows_(std::move(toWindows)), news_(std::move(news)), thread_([this] { Run(); })
{
}

LanguageWorker::~LanguageWorker()
{
    *alive_ = false;
    {
        const std::lock_guard lock(mutex_);
        stop_ = true;
        jobs_.clear();
    }
    wake_.notify_one();
    thread_.join();
}

void LanguageWorker::Post(std::function<void(LanguageService&)> job)
{
    {
        const std::lock_guard lock(mutex_);
        jobs_.push_back(std::move(job));
    }
    wake_.notify_one();
}

Text LanguageWorker::TakeFault()
{
    const std::lock_guard lock(mutex_);
    return std::exchange(fault_, {});
}

void LanguageWorker::Keep(const Text& fault)
{
    const std::lock_guard lock(mutex_);
    fault_ = fault;
}

void LanguageWorker::Deliver(std::function<void()> call)
{
    toWindows_([this, alive = alive_, call = std::move(call)] {
        if (!*alive) return;
        const auto failure = FailureOf(call);
        if (failure && *alive) Keep(failure->description); // the call may have ended the program
    });
}

void LanguageWorker::Run()
{
    std::unique_ptr<LanguageService> service;
    if (const auto failure = FailureOf([&] { service = make_(); })) Keep(failure->description);
    if (!service) return;
    std::unique_lock lock(mutex_);
    while (!stop_) {
        RunJobs(*service, lock);
        if (stop_) break;
        Work(*service, lock);
        const auto woken = [this] { return stop_ || !jobs_.empty(); };
        if (!restless_) wake_.wait_for(lock, kRest, woken);
    }
    lock.unlock();
    service.reset();
}

void LanguageWorker::RunJobs(LanguageService& service, std::unique_lock<std::mutex>& lock)
{
    while (!stop_ && !jobs_.empty()) {
        const auto job = std::move(jobs_.front());
        jobs_.pop_front();
        lock.unlock();
        if (const auto failure = FailureOf([&] { job(service); })) Keep(failure->description);
        lock.lock();
    }
}

void LanguageWorker::Work(LanguageService& service, std::unique_lock<std::mutex>& lock)
{
    lock.unlock();
    const uint64_t before = service.Revision();
    bool more = false;
    if (const auto failure = FailureOf([&] { more = service.Work(); })) Keep(failure->description);
    // Not at each piece of a long way: the answers of one account are worth having when it is through.
    if (service.Revision() != before) revision_ = UINT64_MAX;
    if (!more && std::exchange(revision_, 0) != 0) Deliver(news_);
    lock.lock();
    restless_ = more;
}

} // namespace nib
