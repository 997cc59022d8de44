#pragma once
#include "base/LinewiseText.h"
#include "compare/history/LineAuthors.h"
#include "compare/history/RepositoryUpkeep.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <thread>

namespace nib {

/// What is kept of a save. The versions come without their bytes.
struct KeptSave {
    HistoryPlace place;
    std::optional<LinewiseText> before;
    NewVersion beforeIs;
    LinewiseText text;
    NewVersion textIs;
};

/// Who last changed the lines of a text.
struct AuthoredText {
    std::vector<Version> versions;
    std::vector<int32_t> lines; ///< by line, which version; -1 for none
};

/// Writes versions on a thread of its own, in the order of the saves. In between it looks for authors, and when nothing
/// has been asked of it for a while it packs.
class VersionKeeper {
public:
    /// Brings a call to the thread of the windows, from any thread, and does not wait for it.
    using ToWindows = std::function<void(std::function<void()>)>;
    /// Told there of each save: why it was not kept, or nothing.
    using Told = std::function<void(const HistoryPlace& place, const Text& fault)>;

    VersionKeeper(ToWindows toWindows, Told told, std::chrono::milliseconds rest = std::chrono::seconds(3));
    /// Keeps what is left, as far as that does not take long.
    ~VersionKeeper();
    VersionKeeper(const VersionKeeper&) = delete;
    VersionKeeper& operator=(const VersionKeeper&) = delete;

    void Keep(KeptSave save);
    void SetBounds(HistoryBounds bounds);
    /// `take` gets the answer on the thread of the windows, unless another question comes before it is found.
    void AskAuthors(HistoryPlace place, LinewiseText text, std::function<void(const AuthoredText&)> take);

private:
    using Clock = std::chrono::steady_clock;
    struct Question {
        HistoryPlace place;
        LinewiseText text;
        std::function<void(const AuthoredText&)> take;
    };
    /// The way back of the item that was asked about last.
    struct Search {
        HistoryPlace place;
        std::string tip;
        std::optional<VersionRepository> repository;
        std::optional<LineAuthors> authors;
        bool more = true;
    };

    void Run();
    void KeepNext(std::unique_lock<std::mutex>& lock);
    void Work(std::unique_lock<std::mutex>& lock);
    bool SearchOn(const Question& question);
    void Tidy(const std::string& folder);
    /// From within other work of the thread: saves do not wait for its end. False when it is to end.
    bool Pause();
    void Deliver(std::function<void()> call);

    const ToWindows toWindows_;
    const Told told_;
    const std::chrono::milliseconds rest_;
    const GitLibrary library_;
    const std::shared_ptr<bool> alive_ = std::make_shared<bool>(true); ///< of the thread of the windows

    // The thread's own
    std::unique_ptr<Search> search_;
    std::set<std::string> touched_; ///< repositories that were written to since they were tidied
    std::set<std::string> bounded_; ///< those in which old versions were looked for

    std::mutex mutex_; ///< of all that follows
    std::condition_variable wake_;
    std::deque<KeptSave> saves_;
    std::optional<Question> question_;
    HistoryBounds bounds_;
    bool stop_ = false;
    Clock::time_point patience_ = Clock::time_point::max(); ///< until when what is left is kept

    std::thread thread_; ///< uses all the others
};

} // namespace nib
