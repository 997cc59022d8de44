// What a view shows beside its text, beside the same view without it: pages of a program that was changed here and
// there, painted whole, and keys in its middle. Without peers: the first of each pair is the measure of the second.

#include "Peers.h"
#include "text/widget/SourceViewWidget.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScrollBar>

#include <benchmark/benchmark.h>

namespace nib::bench {
namespace {

constexpr int32_t kPages = 60;
constexpr int32_t kKeys = 200;

struct Marked : Ours {
    NoClipboard clipboard;
    SourceViewWidget widget{buffer, clipboard};

    Marked(int64_t lines, bool marks) : Ours(BasicBytes(static_cast<int32_t>(lines)))
    {
        SourceView& model = widget.Model();
        model.SetShowBlocks(true);
        if (marks) model.SetMarks({true, true, true, true, true, false, 6});
        buffer.SetModified(false);
        for (int32_t line = 0; line < buffer.LineCount(); line += 5) buffer.InsertText({0, line}, u" ");
        for (int32_t line = 0; line < buffer.LineCount(); line += 1000) buffer.ToggleBookmark(line);
        widget.resize(800, 600);
        widget.show();
        widget.setFocus();
        FindHit hit; // a name and a block, both with places all over the pages
        if (buffer.Find(u"LOOP", {0, 0}, {}, hit)) model.SetCaret(hit.at);
        Rest();
    }
    void Rest()
    {
        for (int turn = 0; turn < 40; ++turn) {
            QApplication::processEvents();
            usleep(20000);
        }
    }
    void Press(Qt::Key key, const QString& text)
    {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
        QApplication::sendEvent(&widget, &event);
        QApplication::processEvents();
    }
};

/// Divide by kPages.
void PaintPages(benchmark::State& state, bool marks)
{
    Marked marked(state.range(0), marks);
    if (marks) marked.widget.Model().SetCaret({static_cast<int32_t>(state.range(1)), 0}), marked.Rest();
    for (auto _ : state)
        for (int32_t page = 0; page < kPages; ++page) {
            marked.widget.verticalScrollBar()->setValue(page * 40);
            QApplication::processEvents();
        }
}

/// Divide by kKeys.
void TypeAmongThem(benchmark::State& state, bool marks)
{
    Marked marked(state.range(0), marks);
    marked.widget.Model().SetCaret({0, static_cast<int32_t>(state.range(0) / 2)});
    QApplication::processEvents();
    for (auto _ : state)
        for (int32_t key = 0; key < kKeys; ++key) marked.Press(Qt::Key_X, QStringLiteral("x"));
}

// clang-format off
#define NIB_SIZES ->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->Iterations(1)
BENCHMARK_CAPTURE(PaintPages, without, false) NIB_SIZES->Args({100000, 0});
BENCHMARK_CAPTURE(PaintPages, with, true) NIB_SIZES->Args({100000, 0})->Args({100000, 9});
BENCHMARK_CAPTURE(TypeAmongThem, without, false) NIB_SIZES->Arg(1000000);
BENCHMARK_CAPTURE(TypeAmongThem, with, true) NIB_SIZES->Arg(1000000);
#undef NIB_SIZES
// clang-format on

} // namespace
} // namespace nib::bench
