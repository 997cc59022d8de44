// What a key waits for in a text of a million lines, without a journal and with one that begins, follows and is synced
// meanwhile. Keys arrive by the clock, as a person's do, whatever the program is at.

#include "BasicText.h"
#include "persistence/recovery/DocumentJournal.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <thread>

#include <unistd.h>

namespace nib::bench {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr int kKeys = 4000;
constexpr auto kBetweenKeys = 1237us;
constexpr auto kBetweenSlices = 5ms;

/// One thread, as the window's is: a key that comes while a slice is copied waits for its end.
void TypeInto(SourceDocument& text, DocumentJournal* journal, std::vector<double>& waits)
{
    const auto start = Clock::now();
    auto nextSlice = start;
    for (int key = 0; key < kKeys; ++key) {
        const auto arrival = start + key * kBetweenKeys;
        while (Clock::now() < arrival) {
            if (journal && journal->IsCopying() && nextSlice <= Clock::now()) {
                journal->CopySlice(250us);
                nextSlice = Clock::now() + kBetweenSlices;
            } else {
                std::this_thread::sleep_until(std::min(arrival, std::max(nextSlice, Clock::now() + 50us)));
            }
        }
        text.InsertText({key % 40, 500'000}, u"x");
        waits.push_back(std::chrono::duration<double, std::micro>(Clock::now() - arrival).count());
    }
}

void Keys(benchmark::State& state, bool withJournal)
{
    const std::string folder = std::filesystem::temp_directory_path() / ("nib-bench-" + std::to_string(getpid()));
    for (auto _ : state) {
        SourceDocument text;
        text.SetText(FromUtf8(BasicBytes(1'000'000)));
        std::vector<double> waits;
        {
            JournalWriter writer(folder);
            std::optional<DocumentJournal> journal;
            if (withJournal) {
                journal.emplace(text, writer, "journal", [] {});
                text.AddListener(&*journal);
                journal->Begin({});
            }
            TypeInto(text, withJournal ? &*journal : nullptr, waits);
            if (journal) text.RemoveListener(&*journal);
        }
        std::sort(waits.begin(), waits.end());
        state.counters["median_us"] = waits[kKeys / 2];
        state.counters["p99_us"] = waits[kKeys * 99 / 100];
        state.counters["most_us"] = waits.back();
    }
    std::filesystem::remove_all(folder);
}

BENCHMARK_CAPTURE(Keys, alone, false)->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK_CAPTURE(Keys, with_journal, true)->Iterations(1)->Unit(benchmark::kSecond);

} // namespace
} // namespace nib::bench
