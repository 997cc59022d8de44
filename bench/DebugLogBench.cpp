// What the debug log costs while nobody reads it: a line that is not wanted, and the lexer that has one for each token.

#include "BasicText.h"
#include "diagnostics/DebugLog.h"
#include "editing/LexClass.h"
#include "platform/posix/PosixTraceMailbox.h"
#include "text/SourceDocument.h"

#include <benchmark/benchmark.h>

namespace nib::bench {
namespace {

/// A block in this process, as it is with a viewer that wants other categories.
struct QuietViewer final : TraceMailbox {
    bool OpenDebugMemory(TextView, int32_t) override { return open = true; }
    bool ReadDebugSlot(int32_t index, uint32_t& value) const override
    {
        value = index == 0 ? 900 : 1;
        return index < 4;
    }
    bool HasDebugMemory() const override { return open; }
    int32_t Register(uint32_t) override { return 3; }
    void Send(uint32_t, int32_t, TextView) override {}

    bool open = false;
};

void WriteUnwanted(benchmark::State& state, TraceMailbox& mailbox)
{
    modDebugLog channel(mailbox);
    const DebugLog log(&channel);
    for (auto _ : state) {
        log.Write([] { return Text(200, u'x'); }, trace::kTokens);
        benchmark::ClobberMemory();
    }
}

/// Or with one that was killed and has left its number.
void NoViewer(benchmark::State& state)
{
    PosixTraceMailbox mailbox(u"nib_bench");
    WriteUnwanted(state, mailbox);
}

void ViewerOfOtherCategories(benchmark::State& state)
{
    QuietViewer mailbox;
    WriteUnwanted(state, mailbox);
}

void NoLog(benchmark::State& state)
{
    const DebugLog log;
    for (auto _ : state) {
        log.Write([] { return Text(200, u'x'); }, trace::kTokens);
        benchmark::ClobberMemory();
    }
}

enum class Log { None, NoViewer, OtherCategories };

/// Scans the lines of a program; with a log the lexer asks it at each token.
void LexWithLog(benchmark::State& state, Log kind)
{
    PosixTraceMailbox real(u"nib_bench");
    QuietViewer quiet;
    modDebugLog channel(kind == Log::OtherCategories ? static_cast<TraceMailbox&>(quiet) : real);
    const DebugLog log(kind == Log::None ? nullptr : &channel);
    SourceDocument buffer;
    buffer.SetText(FromUtf8(BasicBytes(100000)));
    LexClass lexer(&log);
    for (auto _ : state) {
        buffer.SetLexer(&lexer);
        buffer.EnsureScanned();
    }
}

/// A key in the middle of a program and its undoing, and what they scan again.
void TypeWithLog(benchmark::State& state, Log kind)
{
    PosixTraceMailbox real(u"nib_bench");
    QuietViewer quiet;
    modDebugLog channel(kind == Log::OtherCategories ? static_cast<TraceMailbox&>(quiet) : real);
    const DebugLog log(kind == Log::None ? nullptr : &channel);
    SourceDocument buffer;
    buffer.SetText(FromUtf8(BasicBytes(100000)));
    LexClass lexer(&log);
    buffer.SetLexer(&lexer);
    buffer.EnsureScanned();
    for (auto _ : state) {
        buffer.InsertText({0, 50000}, u"x");
        buffer.EnsureScanned();
        buffer.DeleteRange({0, 50000}, {1, 50000});
        buffer.EnsureScanned();
        buffer.ClearUndo();
    }
}

BENCHMARK(NoLog);
BENCHMARK(NoViewer);
BENCHMARK(ViewerOfOtherCategories);
BENCHMARK_CAPTURE(LexWithLog, none, Log::None)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(LexWithLog, no_viewer, Log::NoViewer)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(LexWithLog, other_categories, Log::OtherCategories)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(TypeWithLog, none, Log::None)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(TypeWithLog, no_viewer, Log::NoViewer)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(TypeWithLog, other_categories, Log::OtherCategories)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace nib::bench
