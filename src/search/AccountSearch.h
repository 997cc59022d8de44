#pragma once
#include "hosts/ItemReader.h"
#include "search/ItemSearch.h"

#include <atomic>
#include <chrono>
#include <map>
#include <memory>
#include <mutex>
#include <thread>

namespace nib {

/// File and id within an account.
using ItemKey = std::pair<Text, Text>;

/// What is searched for, and where.
struct AccountQuery {
    Text text;
    bool matchCase = false;
    bool wholeWord = false;
    bool regex = false;
    int32_t tabSize = 1;
    std::vector<Text> files;
    Text pattern; ///< of ids
    /// Of items that are open in a window: searched instead of what is stored.
    std::map<ItemKey, Text> open;

    TextPattern Prepared() const { return {text, {.matchCase = matchCase, .wholeWord = wholeWord, .regex = regex}}; }
};

/// An item with hits, or with the reason why it could not be read. Without an id it is a whole file that could not be.
struct FoundItem {
    ItemKey key;
    TextHits found;
    Text fault;
};

struct SearchCounts {
    int32_t files = 0; ///< through with them
    int32_t items = 0; ///< looked into
    int32_t itemsWithHits = 0;
    int64_t hits = 0;
    int32_t skipped = 0; ///< because they are no texts
    int32_t failed = 0;
    std::chrono::milliseconds time{};
};

/// What there is since it was asked for last.
struct SearchNews {
    std::vector<FoundItem> items;
    SearchCounts counts;
    bool ended = false;
    bool cut = false; ///< there are more lines with hits than are handed on
    Text fault;       ///< why it ended before its time
};

/// Searches items on a thread of its own, from its beginning to its end.
class AccountSearch {
public:
    static constexpr size_t kMostLines = 10'000;
    static constexpr int32_t kMostFaults = 100;

    AccountSearch(std::unique_ptr<ItemReader> reader, AccountQuery query);
    /// Stops it.
    ~AccountSearch();
    AccountSearch(const AccountSearch&) = delete;
    AccountSearch& operator=(const AccountSearch&) = delete;

    SearchNews Take();

private:
    void Run();
    void SearchFile(const Text& file);
    void SearchItem(const ItemKey& key);
    /// A failure of `body` is that of one file or item, unless the host is lost.
    template <typename Body>
    void Attempt(const ItemKey& key, Body&& body);
    void Tell(FoundItem item);

    const std::unique_ptr<ItemReader> reader_;
    AccountQuery query_;        ///< the thread's own
    const TextPattern pattern_; ///< the thread's own
    const std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    std::atomic<bool> stop_ = false;
    size_t linesLeft_ = kMostLines; ///< the thread's own

    std::mutex mutex_; ///< of all that follows
    SearchNews news_;

    std::thread thread_; ///< uses all the others
};

} // namespace nib
