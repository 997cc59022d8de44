// A record with many values as a grid: opened, and after a change of one of them.

#include "records/RecordGrid.h"

#include <benchmark/benchmark.h>

namespace nib::bench {
namespace {

/// Three attributes side by side, each with so many values.
Text Lines(int64_t count)
{
    Text text = u"C1001\r\n21137";
    for (int32_t attribute = 0; attribute < 3; ++attribute) {
        text += u"\r\n";
        for (int64_t i = 0; i < count; ++i) text += Decimal(i * 7919 % 100'000) + Text(ValueMark);
    }
    return text;
}

Dictionary Names()
{
    Dictionary names;
    names.Add(u"DATE", u"D\n2\nD4-\nDate\n10R\nS");
    names.Add(u"PART", u"D\n3\n\nPart\n8L\nM\nLINES");
    names.Add(u"DUE", u"D\n4\nD2/\nDue\n8R\nM\nLINES");
    names.Add(u"PRICE", u"D\n5\nMD2,\nPrice\n8R\nM\nLINES");
    return names;
}

void OpenAsGrid(benchmark::State& state)
{
    SourceDocument document;
    document.SetText(Lines(state.range(0)));
    const Dictionary names = Names();
    for (auto _ : state) {
        RecordGrid grid(document, names);
        benchmark::DoNotOptimize(grid.Tables()[1].Rows());
    }
}

void TypeInGrid(benchmark::State& state)
{
    SourceDocument document;
    document.SetText(Lines(state.range(0)));
    RecordGrid grid(document, Names());
    GridTable& lines = grid.Tables()[1];
    int32_t value = 0;
    for (auto _ : state) {
        grid.Type(lines.At(static_cast<int32_t>(state.range(0) / 2), 2), Decimal(++value % 1000) + u".50");
        grid.Refresh();
        benchmark::DoNotOptimize(lines.Refresh());
    }
}

void SortGrid(benchmark::State& state)
{
    SourceDocument document;
    document.SetText(Lines(state.range(0)));
    RecordGrid grid(document, Names());
    for (auto _ : state) {
        grid.Tables()[1].Sort(2, GridTable::Order::Up);
        grid.Tables()[1].Sort(2, GridTable::Order::Own);
    }
}

BENCHMARK(OpenAsGrid)->Arg(10'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(TypeInGrid)->Arg(10'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(SortGrid)->Arg(10'000)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace nib::bench
