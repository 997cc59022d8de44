// What is known of a program: whole, and after a key in it.

#include "BasicText.h"
#include "language/Dialects.h"
#include "language/ProgramAnalyser.h"

#include <benchmark/benchmark.h>

namespace nib::bench {
namespace {

struct NoItems final : IncludeSource {
    Answer Find(TextView, TextView, std::shared_ptr<const ProgramText>&) override { return Answer::NoItem; }
};

const Dialect* Common()
{
    static Dialects dialects;
    return dialects.Find(u"common");
}

/// The lines close their blocks, and the names of each hundred are others.
std::vector<Text> ProgramLines(int32_t count)
{
    std::vector<Text> lines;
    for (const Text& line : Split(FromUtf8(BasicBytes(count)), u'\n')) {
        const Text part = Decimal(static_cast<int64_t>(lines.size()) / 100);
        lines.push_back(Replace(Replace(line, u"TOTAL", u"TOTAL." + part), u"9000", u"9" + part));
    }
    return lines;
}

void AnalyseWhole(benchmark::State& state)
{
    const std::vector<Text> lines = ProgramLines(static_cast<int32_t>(state.range(0)));
    NoItems items;
    for (auto _ : state) {
        ProgramAnalyser analyser(Common(), u"BP", u"BIG");
        analyser.Replace(0, 0, lines);
        benchmark::DoNotOptimize(analyser.Analyse(items).symbols.size());
    }
}

void AnalyseKey(benchmark::State& state)
{
    const std::vector<Text> lines = ProgramLines(static_cast<int32_t>(state.range(0)));
    NoItems items;
    ProgramAnalyser analyser(Common(), u"BP", u"BIG");
    analyser.Replace(0, 0, lines);
    const auto middle = static_cast<int32_t>(lines.size() / 2);
    Text line = lines[static_cast<size_t>(middle)];
    for (auto _ : state) {
        line.size() < 80 ? line.push_back(u'X') : line.resize(40);
        analyser.Replace(middle, 1, std::span(&line, 1));
        benchmark::DoNotOptimize(analyser.Analyse(items).symbols.size());
    }
}

BENCHMARK(AnalyseWhole)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(AnalyseKey)->Arg(10000)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace nib::bench
