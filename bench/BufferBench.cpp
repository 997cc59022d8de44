// The text buffer on a million lines, each row beside the least that the same work can cost on this machine.

#include "BasicText.h"
#include "base/Text.h"
#include "text/SourceDocument.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <malloc.h>
#include <unistd.h>

namespace nib::bench {
namespace {

constexpr int32_t kMillion = 1000000;

const std::string& Bytes()
{
    static const std::string bytes = BasicBytes(kMillion);
    return bytes;
}

/// The same text on disk, as good as in memory after the first reading.
const std::string& FileName()
{
    static const std::string name = [] {
        std::string path = "/tmp/nib-bench-" + std::to_string(getpid());
        std::ofstream(path, std::ios::binary) << Bytes();
        static struct Remover {
            std::string path;
            ~Remover() { std::remove(path.c_str()); }
        } remover{path};
        return path;
    }();
    return name;
}

std::string ReadFile(const std::string& path)
{
    std::FILE* file = std::fopen(path.c_str(), "rb");
    std::fseek(file, 0, SEEK_END);
    std::string bytes(static_cast<size_t>(std::ftell(file)), '\0');
    std::rewind(file);
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file));
    std::fclose(file);
    return bytes;
}

SourceDocument& Loaded()
{
    static SourceDocument buffer;
    static const bool loaded = (buffer.SetText(FromUtf8(Bytes())), true);
    benchmark::DoNotOptimize(loaded);
    return buffer;
}

double Resident()
{
    std::ifstream statm("/proc/self/statm");
    size_t size = 0;
    size_t resident = 0;
    statm >> size >> resident;
    return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE));
}

void LoadLimit(benchmark::State& state)
{
    FileName();
    for (auto _ : state) {
        std::string bytes = ReadFile(FileName());
        std::vector<uint32_t> starts;
        starts.reserve(kMillion + 1);
        const char* at = bytes.data();
        const char* end = at + bytes.size();
        while (auto* feed = static_cast<const char*>(std::memchr(at, '\n', static_cast<size_t>(end - at)))) {
            at = feed + 1;
            starts.push_back(static_cast<uint32_t>(at - bytes.data()));
        }
        Text wide(bytes.begin(), bytes.end());
        benchmark::DoNotOptimize(starts.data());
        benchmark::DoNotOptimize(wide.data());
    }
}

void Load(benchmark::State& state)
{
    FileName();
    for (auto _ : state) {
        SourceDocument buffer;
        buffer.SetText(FromUtf8(ReadFile(FileName())));
        benchmark::DoNotOptimize(buffer.LineCount());
    }
}

void MemoryAfterLoad(benchmark::State& state)
{
    for (auto _ : state) {
        Text text = FromUtf8(Bytes());
        malloc_trim(0);
        double before = Resident();
        SourceDocument buffer;
        buffer.SetText(text);
        double grown = Resident() - before;
        auto characters = static_cast<double>(Bytes().size() - kMillion);
        state.counters["bytes/char"] = grown / characters;
        state.counters["bytes/line over 1/char"] = (grown - characters) / kMillion;
        state.counters["own count, bytes/line"] = (static_cast<double>(buffer.MemoryUse()) - characters) / kMillion;
    }
}

void InsertCharacters(benchmark::State& state)
{
    auto lines = static_cast<int32_t>(state.range(0));
    SourceDocument buffer;
    buffer.SetText(FromUtf8(BasicBytes(lines)));
    for (auto _ : state) {
        for (int32_t i = 0; i < 1000; ++i) buffer.InsertText({10, lines / 2 + i % 7}, u"x");
        state.PauseTiming();
        while (buffer.CanUndo()) buffer.Undo();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * 1000);
}

void InsertLineAtFront(benchmark::State& state)
{
    SourceDocument buffer;
    buffer.SetText(FromUtf8(BasicBytes(static_cast<int32_t>(state.range(0)))));
    for (auto _ : state) {
        buffer.InsertText({0, 0}, u"      NEW = 1\r\n");
        state.PauseTiming();
        buffer.Undo();
        state.ResumeTiming();
    }
}

int32_t CountHits(const SourceDocument& buffer, TextView text, bool matchCase)
{
    int32_t hits = 0;
    FindHit hit;
    Position at;
    while (buffer.Find(text, at, {.matchCase = matchCase}, hit)) {
        ++hits;
        at = {hit.at.col + hit.length, hit.at.line};
    }
    return hits;
}

constexpr TextView kFrequent = u"ORDER.REC<7>"; // one line in fourteen
constexpr TextView kAbsent = u"NOT.THERE.AT.ALL";

void FindAll(benchmark::State& state, TextView text, bool matchCase)
{
    SourceDocument& buffer = Loaded();
    int32_t hits = 0;
    for (auto _ : state) benchmark::DoNotOptimize(hits = CountHits(buffer, text, matchCase));
    state.counters["hits"] = hits;
}

void FindAllRegex(benchmark::State& state, TextView expression)
{
    SourceDocument& buffer = Loaded();
    int32_t hits = 0;
    for (auto _ : state) {
        const TextPattern pattern(expression, {.regex = true});
        FindHit hit;
        hits = 0;
        for (Position at; buffer.Find(pattern, at, false, hit); at = {hit.at.col + hit.length, hit.at.line}) ++hits;
    }
    state.counters["hits"] = hits;
}

void FindAllLimit(benchmark::State& state, TextView text)
{
    std::string needle = ToUtf8(text);
    const std::string& bytes = Bytes();
    int32_t hits = 0;
    for (auto _ : state) {
        hits = 0;
        const char* at = bytes.data();
        const char* end = at + bytes.size();
        while (auto* hit =
                   static_cast<const char*>(memmem(at, static_cast<size_t>(end - at), needle.data(), needle.size()))) {
            ++hits;
            at = hit + needle.size();
        }
        benchmark::DoNotOptimize(hits);
    }
    state.counters["hits"] = hits;
}

void UndoEdits(benchmark::State& state)
{
    constexpr int32_t kEdits = 100000;
    SourceDocument buffer;
    buffer.SetText(FromUtf8(Bytes()));
    for (auto _ : state) {
        state.PauseTiming();
        for (int32_t i = 0; i < kEdits; ++i) {
            buffer.InsertText({3, static_cast<int32_t>(int64_t{i} * 7919 % kMillion)}, u"x");
            buffer.BreakTyping();
        }
        state.ResumeTiming();
        while (buffer.CanUndo()) buffer.Undo();
    }
    state.SetItemsProcessed(state.iterations() * kEdits);
}

void WholeText(benchmark::State& state)
{
    SourceDocument& buffer = Loaded();
    for (auto _ : state) benchmark::DoNotOptimize(buffer.GetText().data());
}

BENCHMARK(MemoryAfterLoad)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadLimit)->Unit(benchmark::kMillisecond);
BENCHMARK(Load)->Unit(benchmark::kMillisecond);
BENCHMARK(InsertCharacters)->Arg(10000)->Arg(kMillion)->Iterations(200);
BENCHMARK(InsertLineAtFront)->Arg(10000)->Arg(kMillion)->Iterations(2000);
BENCHMARK_CAPTURE(FindAllLimit, frequent, kFrequent)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FindAll, frequent, kFrequent, true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FindAll, frequent_any_case, kFrequent, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FindAllRegex, frequent, u"ORDER\\.REC<\\d+>")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FindAllRegex, absent, u"NOT\\.THERE\\w+")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FindAllLimit, absent, kAbsent)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FindAll, absent, kAbsent, true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FindAll, absent_any_case, kAbsent, false)->Unit(benchmark::kMillisecond);
BENCHMARK(UndoEdits)->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK(WholeText)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace nib::bench
