// Comparing two texts of a million lines: what the editor does, and the library that it hands lines to alone.

#include "BasicText.h"
#include "compare/GitLibrary.h"
#include "compare/TextDifferences.h"
#include "hosts/ItemText.h"

#include <benchmark/benchmark.h>

namespace nib::bench {
namespace {

constexpr int32_t kLines = 1'000'000;

/// The text with every so-manieth line changed; 0 for none that is the same.
std::string Changed(const std::string& bytes, int32_t every)
{
    std::string out;
    out.reserve(bytes.size() + bytes.size() / 8);
    int32_t line = 0;
    bool begins = true;
    for (char c : bytes) {
        if (std::exchange(begins, c == '\n') && (every == 0 || ++line % every == 0)) out += every ? "!" : "~ ";
        out += c;
    }
    return out;
}

void Compare(benchmark::State& state, int32_t every)
{
    const GitLibrary kept;
    const std::string bytes = BasicBytes(kLines);
    const Text left = FromUtf8(bytes);
    const Text right = FromUtf8(Changed(bytes, every));
    for (auto _ : state) {
        const auto found = CompareLines(LinesIn(left), LinesIn(right));
        state.counters["changes"] = found->ChangeCount();
        state.counters["coarse"] = found->coarse;
    }
}

void Library(benchmark::State& state)
{
    const GitLibrary git;
    const std::string left = BasicBytes(kLines);
    const std::string right = Changed(left, 1000);
    for (auto _ : state) {
        int64_t changes = 0;
        git.ForEachHunk(left, right, [&](const GitHunk&) { ++changes; });
        state.counters["changes"] = static_cast<double>(changes);
    }
}

BENCHMARK_CAPTURE(Compare, thousand_changes, 1000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Compare, nothing_in_common, 0)->Unit(benchmark::kMillisecond);
BENCHMARK(Library)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace nib::bench
