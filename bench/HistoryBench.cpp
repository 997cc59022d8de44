// What a save leaves behind in a history of a hundred thousand versions: of one item, and of as many items.

#include "compare/GitLibrary.h"
#include "compare/history/RepositoryUpkeep.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>

#include <unistd.h>

namespace nib::bench {
namespace {

constexpr int kVersions = 100'000;
constexpr int kLines = 300;

std::string TextOf(int version)
{
    std::string text;
    for (int line = 0; line < kLines; ++line)
        text += "      LINE." + std::to_string(line) + " = " +
                std::to_string(line == version % kLines ? version : line) + "\n";
    return text;
}

HistoryPlace PlaceOf(const std::string& folder, int item)
{
    return HistoryPlace::Of({Text(kHostProvider), u"*", u"DEMO", u"BP", u"ITEM" + Decimal(item)}, folder);
}

/// By git's own import, which takes seconds where a hundred thousand saves would take minutes.
void Fill(const std::string& repository, int items)
{
    FILE* git = popen(("git -C '" + repository + "' fast-import --quiet").c_str(), "w");
    for (int i = 0; i < kVersions; ++i) {
        const std::string item = "ITEM" + std::to_string(i % items);
        const std::string text = TextOf(i);
        std::fprintf(git,
                     "commit refs/heads/BP/%s\ncommitter anna <anna@host> %d +0000\ndata 5\nSaved\n"
                     "M 100644 inline %s\ndata %zu\n%s\n",
                     item.c_str(), i, item.c_str(), text.size(), text.c_str());
    }
    pclose(git);
}

void SaveInto(benchmark::State& state, int items)
{
    const GitLibrary library;
    git_libgit2_opts(GIT_OPT_ENABLE_FSYNC_GITDIR, 1); // as the program does
    const std::string folder = std::filesystem::temp_directory_path() / ("nib-history-" + std::to_string(getpid()));
    const std::string repository = PlaceOf(folder, 0).repository;
    VersionRepository::Make(repository);
    Fill(repository, items);
    std::vector<double> milliseconds;
    int save = 0;
    for (auto _ : state) {
        const HistoryPlace place = PlaceOf(folder, save % items);
        NewVersion version{TextOf(kVersions + save), save, u"anna", u"BP ITEM", u"host", u"DEMO", false};
        const auto start = std::chrono::steady_clock::now();
        VersionRepository::Make(repository).Add(place, version);
        milliseconds.push_back(
            std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
        ++save;
    }
    std::sort(milliseconds.begin(), milliseconds.end());
    state.counters["median ms"] = milliseconds[milliseconds.size() / 2];
    state.counters["worst ms"] = milliseconds.back();

    const auto opened = VersionRepository::Open(repository);
    const auto start = std::chrono::steady_clock::now();
    benchmark::DoNotOptimize(opened->List(opened->Last(PlaceOf(folder, 0)), 200));
    state.counters["first 200 listed, ms"] =
        std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    std::filesystem::remove_all(folder);
}

void SaveIntoOneLongHistory(benchmark::State& state)
{
    SaveInto(state, 1);
}
void SaveAmongManyItems(benchmark::State& state)
{
    SaveInto(state, kVersions);
}
BENCHMARK(SaveIntoOneLongHistory)->Iterations(300)->Unit(benchmark::kMillisecond);
BENCHMARK(SaveAmongManyItems)->Iterations(300)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace nib::bench
