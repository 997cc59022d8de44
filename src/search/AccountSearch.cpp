#include "search/AccountSearch.h"

#include "base/Error.h"
#include "diagnostics/Guarded.h"

#include <algorithm>

namespace nib {

namespace {

/// The fault is not that of one item.
bool EndsSearch(const Error& error)
{
    return error.number == error_number::kDeviceUnavailable || error.number == error_number::kSearch;
}

} // namespace

AccountSearch::AccountSearch(std::unique_ptr<ItemReader> reader, AccountQuery query)
    : reader_(std::move(reader)), query_(std::move(query)), pattern_(query_.Prepared()), thread_([this] { Run(); })
{
}

AccountSearch::~AccountSearch()
{
    stop_ = true;
    reader_->Stop();
    thread_.join();
}

SearchNews AccountSearch::Take()
{
    const std::lock_guard lock(mutex_);
    if (!news_.ended)
        news_.counts.time =
            std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start_);
    std::vector<FoundItem> items = std::exchange(news_.items, {});
    SearchNews news = news_;
    news.items = std::move(items);
    return news;
}

void AccountSearch::Run()
{
    const std::optional<Error> failure = FailureOf([this] {
        for (const Text& file : query_.files) {
            if (stop_) return;
            SearchFile(file);
            const std::lock_guard lock(mutex_);
            ++news_.counts.files;
        }
    });
    const std::lock_guard lock(mutex_);
    if (failure) news_.fault = failure->description;
    news_.counts.time =
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start_);
    news_.ended = true;
}

template <typename Body>
void AccountSearch::Attempt(const ItemKey& key, Body&& body)
{
    const std::optional<Error> failure = FailureOf(std::forward<Body>(body));
    if (!failure || stop_) return;
    if (EndsSearch(*failure)) throw Error(*failure);
    {
        const std::lock_guard lock(mutex_);
        if (++news_.counts.failed > kMostFaults) return;
    }
    Tell({key, {}, failure->description});
}

void AccountSearch::SearchFile(const Text& file)
{
    std::vector<Text> ids;
    Attempt({file, {}}, [&] { ids = reader_->Ids(file); });
    // What is open need not be stored yet.
    for (auto at = query_.open.lower_bound({file, {}}); at != query_.open.end() && at->first.first == file; ++at)
        if (std::find(ids.begin(), ids.end(), at->first.second) == ids.end()) ids.push_back(at->first.second);
    for (const Text& id : ids) {
        if (stop_) return;
        if (FitsPattern(id, query_.pattern)) SearchItem({file, id});
    }
}

void AccountSearch::SearchItem(const ItemKey& key)
{
    Attempt(key, [&] {
        std::optional<Text> text;
        if (const auto open = query_.open.find(key); open != query_.open.end())
            text = std::move(open->second);
        else
            text = reader_->Read(key.first, key.second);
        TextHits found;
        if (text) found = FindInText(pattern_, *text, query_.tabSize, linesLeft_);
        {
            const std::lock_guard lock(mutex_);
            ++(text ? news_.counts.items : news_.counts.skipped);
            news_.counts.hits += found.hits;
            news_.counts.itemsWithHits += found.hits > 0 ? 1 : 0;
            news_.cut = news_.cut || found.cut;
        }
        linesLeft_ -= found.lines.size();
        if (found.hits > 0) Tell({key, std::move(found), {}});
    });
}

void AccountSearch::Tell(FoundItem item)
{
    const std::lock_guard lock(mutex_);
    news_.items.push_back(std::move(item));
}

} // namespace nib
