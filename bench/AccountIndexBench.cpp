// What is known of all programs of an account: 94,000 lines in 500 items, read for the first time, and found again on
// disk by the next start; names found by their letters.

#include "BasicText.h"
#include "hosts/HostLinks.h"
#include "hosts/accounts/AccountLink.h"
#include "language/Dialects.h"
#include "language/service/LanguageService.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>

#include <unistd.h>

namespace nib::bench {
namespace {

constexpr int kItems = 500;
constexpr int32_t kLinesAnItem = 188;

class IndexedAccount {
public:
    IndexedAccount()
    {
        std::filesystem::create_directories(root_ + "/DEMO/BP");
        const std::string bytes = BasicBytes(kLinesAnItem);
        for (int i = 0; i < kItems; ++i) {
            const std::string name = "SALES.REPORT" + std::to_string(i);
            std::ofstream(root_ + "/DEMO/BP/" + name, std::ios::binary) << "SUBROUTINE " << name << "(A, B)\n" << bytes;
        }
    }
    IndexedAccount(const IndexedAccount&) = delete;
    IndexedAccount& operator=(const IndexedAccount&) = delete;
    ~IndexedAccount() { std::filesystem::remove_all(root_); }

    /// Until all is known.
    std::unique_ptr<LanguageService> Read()
    {
        HostSettings settings;
        settings.root = root_;
        AccountAccess access;
        access.reader = AccountLinks({}).at(u"accounts")(settings, FileSaver(root_))->Reader({{}, {}, u"DEMO", {}, {}});
        auto service = std::make_unique<LanguageService>(ServiceOptions{dialects_.Find(u"common"), Index()});
        service->AddAccount(u"mvdb:*/DEMO", std::move(access));
        while (service->Work()) continue;
        return service;
    }
    std::string Index() const { return root_ + "/index"; }

private:
    const std::string root_ = std::filesystem::temp_directory_path() / ("nib-bench-index-" + std::to_string(getpid()));
    Dialects dialects_;
};

IndexedAccount& Sample()
{
    static IndexedAccount account;
    return account;
}

void ColdIndex(benchmark::State& state)
{
    Sample();
    for (auto _ : state) {
        state.PauseTiming();
        std::filesystem::remove_all(Sample().Index());
        state.ResumeTiming();
        benchmark::DoNotOptimize(Sample().Read());
    }
    state.counters["lines"] = kItems * kLinesAnItem;
}

void WarmIndex(benchmark::State& state)
{
    Sample().Read();
    for (auto _ : state) benchmark::DoNotOptimize(Sample().Read());
}

void FindName(benchmark::State& state)
{
    const auto service = Sample().Read();
    for (auto _ : state) benchmark::DoNotOptimize(service->Find(u"srep42", 50));
}

BENCHMARK(ColdIndex)->Name("account_index/cold")->Unit(benchmark::kMillisecond);
BENCHMARK(WarmIndex)->Name("account_index/warm")->Unit(benchmark::kMillisecond);
BENCHMARK(FindName)->Name("account_index/find")->Unit(benchmark::kMillisecond);

} // namespace
} // namespace nib::bench
