// What a user waits for before the window of a merge comes up, with texts of a million lines.

#include "compare/MergeModel.h"

#include <benchmark/benchmark.h>

#include <random>

namespace nib::bench {
namespace {

constexpr int32_t kLines = 1'000'000;

/// Every thousandth line or so becomes another one, and as many go.
Text Edited(const Text& text, uint32_t seed)
{
    std::mt19937 dice(seed);
    Text edited;
    for (size_t at = 0; at < text.size();) {
        const size_t end = text.find(u'\n', at) + 1;
        const uint32_t what = dice() % 1000;
        if (what == 0) edited += u"* changed\r\n";
        if (what > 1) edited.append(text, at, end - at);
        at = end;
    }
    return edited;
}

/// Lines of which each stands in the text many times over, in no order.
Text OfFewKinds(uint32_t seed)
{
    std::mt19937 dice(seed);
    Text text;
    for (int32_t line = 0; line < kLines; ++line) text += u"X = " + Decimal(dice() % 50) + u"\r\n";
    return text;
}

Text Program()
{
    Text text;
    for (int32_t line = 0; line < kLines; ++line) text += u"   X(" + Decimal(line) + u") = LINE.OF.A.PROGRAM\r\n";
    return text;
}

void Merge(benchmark::State& state, const Text& base, const Text& theirs, const Text& mine)
{
    for (auto _ : state) {
        const MergeModel merge(base, theirs, mine);
        state.counters["conflicts"] = merge.Conflicts();
        state.counters["coarse"] = merge.IsCoarse();
    }
}

void FewChanges(benchmark::State& state)
{
    const Text base = Program();
    Merge(state, base, Edited(base, 1), Edited(base, 2));
}

void NothingInCommon(benchmark::State& state)
{
    const Text base = Program();
    Merge(state, base, Replace(base, u"X(", u"Y("), Replace(base, u"X(", u"Z("));
}

void FewKinds(benchmark::State& state)
{
    Merge(state, OfFewKinds(1), OfFewKinds(2), OfFewKinds(3));
}

BENCHMARK(FewChanges)->Name("merge/few changes")->Unit(benchmark::kMillisecond);
BENCHMARK(NothingInCommon)->Name("merge/nothing in common")->Unit(benchmark::kMillisecond);
BENCHMARK(FewKinds)->Name("merge/few kinds of lines")->Unit(benchmark::kMillisecond);

} // namespace
} // namespace nib::bench
