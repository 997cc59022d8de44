// A search in all items of an account that is a folder: 94,000 lines in 500 items, from the start of its thread to the
// last hit. Beside it what reading the files costs at the least.

#include "BasicText.h"
#include "base/Error.h"
#include "hosts/HostLinks.h"
#include "hosts/accounts/AccountLink.h"
#include "search/AccountSearch.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <thread>

#include <unistd.h>

namespace nib::bench {
namespace {

constexpr int kItems = 500;
constexpr int32_t kLinesAnItem = 188;

/// An account with files BP and INC, 250 items each.
class Account {
public:
    Account()
    {
        const std::string bytes = BasicBytes(kLinesAnItem);
        for (int i = 0; i < kItems; ++i) {
            const std::string folder = root_ + (i % 2 == 0 ? "/DEMO/BP" : "/DEMO/INC");
            std::filesystem::create_directories(folder);
            std::ofstream(folder + "/ITEM" + std::to_string(i), std::ios::binary) << bytes;
        }
    }
    Account(const Account&) = delete;
    Account& operator=(const Account&) = delete;
    ~Account() { std::filesystem::remove_all(root_); }

    const std::string& Root() const { return root_; }
    std::unique_ptr<ItemReader> Reader() const
    {
        HostSettings settings;
        settings.root = root_;
        settings.charset = u"windows-1252";
        return AccountLinks({}).at(u"accounts")(settings, FileSaver(root_))->Reader({{}, {}, u"DEMO", {}, {}});
    }

private:
    const std::string root_ = std::filesystem::temp_directory_path() / ("nib-bench-find-" + std::to_string(getpid()));
};

const Account& Sample()
{
    static const Account account;
    return account;
}

void SearchLimit(benchmark::State& state)
{
    Sample();
    for (auto _ : state) {
        size_t size = 0;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(Sample().Root() + "/DEMO"))
            if (entry.is_regular_file()) size += ReadWholeFile(entry.path()).size;
        benchmark::DoNotOptimize(size);
    }
}

void Search(benchmark::State& state, const char16_t* text, bool matchCase)
{
    Sample();
    SearchNews news;
    for (auto _ : state) {
        AccountQuery query;
        query.text = text;
        query.matchCase = matchCase;
        query.files = {u"BP", u"INC"};
        AccountSearch search(Sample().Reader(), std::move(query));
        for (news = search.Take(); !news.ended; news = search.Take())
            std::this_thread::sleep_for(std::chrono::microseconds(200));
    }
    state.counters["hits"] = static_cast<double>(news.counts.hits);
    state.counters["lines"] = kItems * kLinesAnItem;
}

BENCHMARK(SearchLimit)->Name("account_search/read_alone")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Search, any_case, u"cust.rec", false)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Search, same_case, u"CUST.REC", true)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Search, frequent_letter, u"e", false)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Search, nowhere, u"nowhere at all", false)->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace
} // namespace nib::bench
