#include "compare/history/VersionKeeper.h"

#include "compare/history/VersionText.h"
#include "diagnostics/Guarded.h"

#include <ctime>
#include <utility>

#include <sys/resource.h>
#include <unistd.h>

namespace nib {

namespace {

constexpr int kNiceness = 10; ///< below the windows' thread, which a key waits for
constexpr std::chrono::seconds kLongestEnd{10};
constexpr int kStepsAtOnce = 16;

} // namespace

VersionKeeper::VersionKeeper(ToWindows toWindows, Told told, std::chrono::milliseconds rest)
    : toWindows_(std::move(toWindows)), told_(std::move(told)), rest_(rest), thread_([this] { Run(); })
{
}

VersionKeeper::~VersionKeeper()
{
    *alive_ = false;
    {
        const std::lock_guard lock(mutex_);
        stop_ = true;
        patience_ = Clock::now() + kLongestEnd;
    }
    wake_.notify_one();
    thread_.join();
}

void VersionKeeper::Keep(KeptSave save)
{
    {
        const std::lock_guard lock(mutex_);
        saves_.push_back(std::move(save));
    }
    wake_.notify_one();
}

void VersionKeeper::SetBounds(HistoryBounds bounds)
{
    const std::lock_guard lock(mutex_);
    bounds_ = bounds;
}

void VersionKeeper::AskAuthors(HistoryPlace place, LinewiseText text, std::function<void(const AuthoredText&)> take)
{
    {
        const std::lock_guard lock(mutex_);
        question_ = Question{std::move(place), std::move(text), std::move(take)};
    }
    wake_.notify_one();
}

void VersionKeeper::Deliver(std::function<void()> call)
{
    toWindows_([alive = alive_, call = std::move(call)] {
        if (*alive) IgnoringErrors(call);
    });
}

void VersionKeeper::KeepNext(std::unique_lock<std::mutex>& lock)
{
    KeptSave save = std::move(saves_.front());
    saves_.pop_front();
    lock.unlock();
    Text fault;
    const auto failure = FailureOf([&] {
        auto repository = VersionRepository::Make(save.place.repository);
        // One after the other, and each is let go: of a huge text both would not have room.
        const auto add = [&](LinewiseText text, NewVersion version) {
            version.bytes = VersionBytes(std::exchange(text, {}));
            repository.Add(save.place, version);
        };
        if (save.before) add(*std::exchange(save.before, {}), std::move(save.beforeIs));
        add(std::exchange(save.text, {}), std::move(save.textIs));
        touched_.insert(save.place.repository);
    });
    if (failure) fault = failure->description;
    Deliver([this, place = save.place, fault] { told_(place, fault); });
    save = {};
    lock.lock();
}

bool VersionKeeper::Pause()
{
    std::unique_lock lock(mutex_);
    while (!saves_.empty() && !stop_) KeepNext(lock);
    return !stop_;
}

/// True when the question has its answer, or never gets one.
bool VersionKeeper::SearchOn(const Question& question)
{
    if (!search_ || search_->place != question.place) {
        search_ = std::make_unique<Search>();
        search_->place = question.place;
    }
    Search& search = *search_;
    if (!search.repository) search.repository = VersionRepository::Open(question.place.repository);
    const std::string tip = search.repository ? search.repository->Last(question.place) : std::string();
    if (tip.empty()) {
        search_.reset();
        Deliver([take = question.take] { take({}); });
        return true;
    }
    if (!search.authors || search.tip != tip) {
        search.tip = tip;
        search.authors.emplace(*search.repository, tip);
        search.more = true;
    }
    for (int i = 0; i < kStepsAtOnce && search.more; ++i) search.more = search.authors->Step();
    if (search.more) return false;
    AuthoredText found{search.authors->Versions(), search.authors->LinesOf(VersionBytes(question.text))};
    Deliver([take = question.take, found = std::move(found)] { take(found); });
    return true;
}

void VersionKeeper::Tidy(const std::string& folder)
{
    // What fails here is tried again another day, and harms nobody before.
    IgnoringErrors([&] {
        const auto repository = VersionRepository::Open(folder);
        if (!repository) return;
        RepositoryUpkeep upkeep(*repository, [this] { return Pause(); });
        const bool due = upkeep.IsDue();
        HistoryBounds bounds;
        {
            const std::lock_guard lock(mutex_);
            bounds = bounds_;
        }
        const bool look = bounded_.insert(folder).second || due;
        if (look) upkeep.Drop(bounds, std::time(nullptr));
        if (due && upkeep.IsDue()) upkeep.Pack();
    });
}

void VersionKeeper::Work(std::unique_lock<std::mutex>& lock)
{
    if (question_) {
        Question question = *std::exchange(question_, {});
        lock.unlock();
        bool done = true;
        if (FailureOf([&] { done = SearchOn(question); })) search_.reset();
        lock.lock();
        if (!done && !question_) question_ = std::move(question);
        return;
    }
    const auto woken = [this] { return stop_ || !saves_.empty() || question_; };
    if (touched_.empty()) return wake_.wait(lock, woken);
    if (wake_.wait_for(lock, rest_, woken)) return;
    lock.unlock();
    search_.reset(); // it knows packs that may go
    for (const std::string& folder : std::exchange(touched_, {})) Tidy(folder);
    lock.lock();
}

void VersionKeeper::Run()
{
    // A version that a power cut tears would leave its item without a way back.
    git_libgit2_opts(GIT_OPT_ENABLE_FSYNC_GITDIR, 1);
    setpriority(PRIO_PROCESS, static_cast<id_t>(gettid()), kNiceness);
    std::unique_lock lock(mutex_);
    for (;;) {
        if (!saves_.empty() && Clock::now() < patience_)
            KeepNext(lock);
        else if (stop_)
            break;
        else
            Work(lock);
    }
    saves_.clear();
}

} // namespace nib
