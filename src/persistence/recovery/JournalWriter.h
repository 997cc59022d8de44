#pragma once
#include "base/Text.h"
#include "platform/posix/FileContent.h"

#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace nib {

/// Writes and syncs the files of a folder on a thread of its own. Calls hand over and return at once, in the order in
/// which they are to be done; what is handed over is on disk `kQuiet` after the last call or, in a long burst,
/// `kLongest` after the first. The folder is made when it is first needed, for the user alone.
class JournalWriter {
public:
    static constexpr std::chrono::milliseconds kQuiet{400};
    static constexpr std::chrono::milliseconds kLongest{1500};

    explicit JournalWriter(std::string folder);
    /// Writes what is left.
    ~JournalWriter();
    JournalWriter(const JournalWriter&) = delete;
    JournalWriter& operator=(const JournalWriter&) = delete;

    /// A new file. It has its name, in the place of an old one of that name, from Commit on.
    void Begin(const std::string& name);
    void Append(const std::string& name, std::string bytes);
    void Commit(const std::string& name);
    void Remove(const std::string& name);
    /// Only if the file `newer` is whole by then.
    void RemoveAfter(const std::string& newer, const std::string& name);
    /// Waits until all that was handed over has been tried.
    void Flush();

    /// The file could not be written since it was last begun: only a new beginning helps, all else is dropped.
    bool IsBroken(const std::string& name) const;
    /// As the system says it, while any file is broken; else empty.
    Text Fault() const;

private:
    enum class What { Begin, Append, Commit, Remove };
    struct Order {
        What what;
        std::string name;
        std::string bytes; ///< of Remove: the name of the file that must be whole
    };
    struct OpenFile {
        Descriptor file;
        std::string path; ///< with the ending of one that is not yet complete
        int64_t size = 0;
        bool dirty = false;
    };
    using Clock = std::chrono::steady_clock;

    void HandOver(Order order);
    void Run();
    void WaitForQuiet(std::unique_lock<std::mutex>& lock);
    void Carry(const std::vector<Order>& orders);
    // All answer 0 or the system's error.
    int CarryOut(const Order& order);
    int Begin(const Order& order);
    int Commit(OpenFile& open, const std::string& name);
    int Remove(const Order& order);
    static int Sync(OpenFile& open);
    void Break(const std::string& name, int error);
    void BreakAll();
    std::string PathOf(const std::string& name) const { return folder_ + "/" + name; }

    const std::string folder_;
    std::map<std::string, OpenFile> open_; ///< the thread's own

    mutable std::mutex mutex_; ///< of all that follows
    std::condition_variable wake_;
    std::condition_variable idle_;
    std::vector<Order> orders_;
    std::map<std::string, Text> broken_;
    Clock::time_point first_;
    Clock::time_point last_;
    bool busy_ = false;
    bool hurry_ = false;
    bool stop_ = false;

    std::thread thread_; ///< uses all the others
};

} // namespace nib
