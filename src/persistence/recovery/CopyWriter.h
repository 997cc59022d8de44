#pragma once
#include "base/LinewiseText.h"
#include "platform/posix/FileSaver.h"
#include "text/TextSnapshot.h"

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace nib {

// What a recovery copy holds: the item id, a line end, and the text of the document.

/// Throws Error when it cannot be written; an earlier copy is then still whole.
void WriteAutoSaveCopy(const FileSaver& saver, TextView path, TextView itemId, const LinewiseText& text);
/// The whole of the file, exactly as it was written; nothing when it cannot be read.
std::optional<Text> ReadAutoSaveCopy(TextView path);

/// Writes recovery copies on a thread of its own, one after the other. The time of a copy is that of its order, since
/// what was typed later is not in it.
class CopyWriter {
public:
    /// What became of the order of a number.
    struct Outcome {
        int64_t number = 0;
        FileStamp stamp;
        Text fault; ///< why there is no such copy; empty when there is one
    };

    explicit CopyWriter(FileSaver saver);
    /// Writes what is left.
    ~CopyWriter();
    CopyWriter(const CopyWriter&) = delete;
    CopyWriter& operator=(const CopyWriter&) = delete;

    /// After `patience`, in the place of an order for the same file that was not begun. Answers the order's number.
    int64_t Write(TextView path, TextView itemId, std::shared_ptr<const TextSnapshot> text,
                  std::chrono::milliseconds patience);
    /// The file goes, and what was ordered to be written to it before.
    void Remove(TextView path);
    /// Drops what was not begun, and waits for the rest.
    void Cancel();
    /// Waits until all that was ordered has been tried.
    void Flush();
    /// Of all copies that were tried since the last call.
    std::vector<Outcome> TakeOutcomes();

private:
    using Clock = std::chrono::steady_clock;
    struct Order {
        int64_t number = 0;
        Text path;
        Text itemId;
        std::shared_ptr<const TextSnapshot> text; ///< null: the file goes
        timespec taken{};
        Clock::time_point due{};
    };

    int64_t HandOver(Order order);
    void WaitIdle(std::unique_lock<std::mutex>& lock);
    void Run();
    Outcome CarryOut(const Order& order) const;

    const FileSaver saver_;

    std::mutex mutex_; ///< of all that follows
    std::condition_variable wake_;
    std::condition_variable idle_;
    std::vector<Order> orders_;
    std::vector<Outcome> outcomes_;
    int64_t lastNumber_ = 0;
    bool busy_ = false;
    bool hurry_ = false;
    bool stop_ = false;

    std::thread thread_; ///< uses all the others
};

} // namespace nib
