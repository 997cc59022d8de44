// The program's own edits on a million lines, each done and taken back, beside the same number of bare edits.

#include "BasicText.h"
#include "editing/LexClass.h"
#include "editing/MvEdit.h"
#include "editing/operations/BlockOps.h"
#include "editing/operations/OpFormat.h"
#include "text/SourceView.h"

#include <benchmark/benchmark.h>

#include <malloc.h>

namespace nib::bench {
namespace {

constexpr int32_t kMillion = 1000000;

class NoClipboard final : public Clipboard {
public:
    bool HasText() const override { return false; }
    Text GetText() const override { return {}; }
    void SetText(TextView) override {}
    Text GetPrimary() const override { return {}; }
    void SetPrimary(TextView) override {}
};

/// A scanned million lines with all of them selected.
struct Editor {
    explicit Editor(const Text& text)
    {
        buffer.SetText(text);
        buffer.SetLexer(&lexer);
        buffer.EnsureScanned();
        view.SelectAll();
    }

    LexClass lexer;
    MvEdit settings;
    NoClipboard clipboard;
    SourceDocument buffer;
    SourceView view{buffer, clipboard};
};

/// The bench text with every line at the margin's left.
Text Flat()
{
    Text flat;
    for (const Text& line : Split(FromUtf8(BasicBytes(kMillion)), u'\n')) flat.append(Trim(line)).append(u"\n");
    return flat;
}

double Allocated()
{
    struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

template <typename Make>
void DoAndUndo(benchmark::State& state, bool timeUndo, const Text& text, Make&& make)
{
    Editor editor(text);
    double kept = 0;
    for (auto _ : state) {
        if (timeUndo) state.PauseTiming();
        editor.buffer.ExecuteOp(make(editor));
        timeUndo ? state.ResumeTiming() : state.PauseTiming();
        editor.buffer.Undo();
        if (timeUndo) state.PauseTiming();
        double before = Allocated();
        editor.buffer.ClearUndo();
        kept = before - Allocated();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * editor.buffer.LineCount());
    state.counters["bytes/line kept"] = kept / editor.buffer.LineCount();
}

void Format(benchmark::State& state, bool timeUndo)
{
    DoAndUndo(state, timeUndo, Flat(),
              [](Editor& e) { return std::make_unique<OpFormat>(e.view, e.settings, OpFormat::ShowWait()); });
}

void FormatFormatted(benchmark::State& state)
{
    Editor editor(Flat());
    editor.buffer.ExecuteOp(std::make_unique<OpFormat>(editor.view, editor.settings, OpFormat::ShowWait()));
    for (auto _ : state)
        editor.buffer.ExecuteOp(std::make_unique<OpFormat>(editor.view, editor.settings, OpFormat::ShowWait()));
    state.SetItemsProcessed(state.iterations() * kMillion);
}

void Indent(benchmark::State& state, bool indent, bool timeUndo)
{
    DoAndUndo(state, timeUndo, FromUtf8(BasicBytes(kMillion)),
              [&](Editor& e) { return std::make_unique<OpIndentBlock>(indent, e.view); });
}

void Comment(benchmark::State& state, bool comment, bool timeUndo)
{
    DoAndUndo(state, timeUndo, FromUtf8(BasicBytes(kMillion)),
              [&](Editor& e) { return std::make_unique<OpCommentBlock>(comment, e.view, e.settings); });
}

void ToggleCase(benchmark::State& state, bool timeUndo)
{
    DoAndUndo(state, timeUndo, FromUtf8(BasicBytes(kMillion)),
              [](Editor& e) { return std::make_unique<OpToggleCase>(e.view); });
}

/// What any operation on all lines has to pay: one edit and one scan a line.
void BareEdits(benchmark::State& state)
{
    class Bare final : public ISourceOp {
        void DoOp(SourceDocument& document) override
        {
            for (int32_t line = 0; line < kMillion; ++line) document.InsertText({0, line}, u"   ");
        }
        void UndoOp(SourceDocument& document) override
        {
            for (int32_t line = 0; line < kMillion; ++line) document.DeleteRange({0, line}, {3, line});
        }
    };
    DoAndUndo(state, false, FromUtf8(BasicBytes(kMillion)), [](Editor&) { return std::make_unique<Bare>(); });
}

void ScanLimit(benchmark::State& state)
{
    Editor editor(FromUtf8(BasicBytes(kMillion)));
    for (auto _ : state) benchmark::DoNotOptimize(editor.buffer.UpdateLines(0, kMillion));
    state.SetItemsProcessed(state.iterations() * kMillion);
}

BENCHMARK(ScanLimit)->Unit(benchmark::kMillisecond);
BENCHMARK(BareEdits)->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Format, do, false)->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Format, undo, true)->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK(FormatFormatted)->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Indent, do, true, false)->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Indent, undo, true, true)->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Indent, outdent, false, false)->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Comment, do, true, false)->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Comment, undo, true, true)->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Comment, uncomment, false, false)->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ToggleCase, do, false)->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ToggleCase, undo, true)->Iterations(3)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace nib::bench
