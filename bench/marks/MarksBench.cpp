// What a view shows beside its text, beside the same view without it: pages of a program that was changed here and
// there, painted whole, and keys in its middle. The first of each pair is the measure of the second.

#include "BasicText.h"
#include "editing/LexClass.h"
#include "fakes/MemoryClipboard.h"
#include "text/widget/SourceViewWidget.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScrollBar>

#include <benchmark/benchmark.h>

#include <unistd.h>

namespace nib::bench {
namespace {

constexpr int32_t kPages = 60;
constexpr int32_t kKeys = 200;

struct Marked {
    SourceDocument buffer;
    LexClass lexer;
    MemoryClipboard clipboard;
    SourceViewWidget widget{buffer, clipboard};

    ~Marked() { buffer.SetLexer(nullptr); }
    Marked(int64_t lines, bool marks)
    {
        buffer.SetText(FromUtf8(BasicBytes(static_cast<int32_t>(lines))));
        buffer.SetLexer(&lexer);
        buffer.EnsureScanned();
        SourceView& model = widget.Model();
        model.SetShowBlocks(true);
        if (marks) model.SetMarks({true, true, true, true, true, false, 6});
        buffer.SetModified(false);
        for (int32_t line = 0; line < buffer.LineCount(); line += 5) buffer.InsertText({0, line}, u" ");
        for (int32_t line = 0; line < buffer.LineCount(); line += 1000) buffer.ToggleBookmark(line);
        widget.resize(800, 600);
        widget.show();
        widget.setFocus();
        FindHit hit; // a name with places all over the pages
        if (buffer.Find(u"ORDER.REC", {0, 0}, {}, hit)) model.SetCaret(hit.at);
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
BENCHMARK_CAPTURE(PaintPages, without, false) NIB_SIZES->Arg(100000);
BENCHMARK_CAPTURE(PaintPages, with, true) NIB_SIZES->Arg(100000);
BENCHMARK_CAPTURE(TypeAmongThem, without, false) NIB_SIZES->Arg(1000000);
BENCHMARK_CAPTURE(TypeAmongThem, with, true) NIB_SIZES->Arg(1000000);
#undef NIB_SIZES
// clang-format on

} // namespace
} // namespace nib::bench

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
