// The same work done by the text component of this house and by public ones: load a program of a million lines until
// all of it is coloured and its blocks are known, fold all blocks, type into the middle. One run, so that the ratios
// hold on any machine.

#include "Peers.h"

#include <QApplication>
#include <QSyntaxHighlighter>
#include <QTextDocument>

#include <benchmark/benchmark.h>

namespace nib::bench {
namespace {

void LoadColouredOurs(benchmark::State& state)
{
    for (auto _ : state) Ours ours;
}
BENCHMARK(LoadColouredOurs)->Unit(benchmark::kMillisecond);

void LoadColouredScintilla(benchmark::State& state)
{
    for (auto _ : state) {
        Scintilla peer;
        if (peer.view.SendScintilla(QsciScintillaBase::SCI_GETLEXER) != kBasic) state.SkipWithError("no BASIC lexer");
    }
}
BENCHMARK(LoadColouredScintilla)->Unit(benchmark::kMillisecond)->Iterations(1);

/// The least that a highlighter of the toolkit can do: one format a line, no words looked at.
class CommentHighlighter : public QSyntaxHighlighter {
public:
    using QSyntaxHighlighter::QSyntaxHighlighter;

protected:
    void highlightBlock(const QString& text) override
    {
        if (text.contains(QLatin1Char('*'))) setFormat(0, static_cast<int>(text.size()), Qt::darkGreen);
    }
};

void LoadColouredTextDocument(benchmark::State& state)
{
    for (auto _ : state) {
        QTextDocument document;
        document.setUndoRedoEnabled(false);
        document.setPlainText(QString::fromUtf8(Bytes().data(), static_cast<qsizetype>(Bytes().size())));
        CommentHighlighter highlighter(&document);
        highlighter.rehighlight();
    }
}
BENCHMARK(LoadColouredTextDocument)->Unit(benchmark::kMillisecond)->Iterations(1);

void FoldAllOurs(benchmark::State& state)
{
    Ours ours;
    for (auto _ : state) {
        ours.buffer.CollapseAll();
        state.PauseTiming();
        state.counters["visible"] = ours.buffer.VisibleCount();
        ours.buffer.ExpandAll();
        state.ResumeTiming();
    }
}
BENCHMARK(FoldAllOurs)->Unit(benchmark::kMillisecond);

void FoldAllScintilla(benchmark::State& state)
{
    Scintilla peer;
    for (auto _ : state)
        peer.view.SendScintilla(QsciScintillaBase::SCI_FOLDALL,
                                static_cast<unsigned long>(QsciScintillaBase::SC_FOLDACTION_CONTRACT));
    state.counters["visible"] = static_cast<double>(
        peer.view.SendScintilla(QsciScintillaBase::SCI_VISIBLEFROMDOCLINE, static_cast<unsigned long>(kLines)));
}
BENCHMARK(FoldAllScintilla)->Unit(benchmark::kMillisecond)->Iterations(1);

void UnfoldAllOurs(benchmark::State& state)
{
    Ours ours;
    for (auto _ : state) {
        state.PauseTiming();
        ours.buffer.CollapseAll();
        state.ResumeTiming();
        ours.buffer.ExpandAll();
    }
}
BENCHMARK(UnfoldAllOurs)->Unit(benchmark::kMillisecond);

void TypeOurs(benchmark::State& state)
{
    Ours ours;
    for (auto _ : state) ours.buffer.InsertText({0, kLines / 2}, u"x");
}
BENCHMARK(TypeOurs)->Iterations(1000)->Unit(benchmark::kMicrosecond);

void TypeScintilla(benchmark::State& state)
{
    Scintilla peer;
    auto at = static_cast<unsigned long>(
        peer.view.SendScintilla(QsciScintillaBase::SCI_POSITIONFROMLINE, static_cast<unsigned long>(kLines / 2)));
    for (auto _ : state) {
        peer.view.SendScintilla(QsciScintillaBase::SCI_INSERTTEXT, at, "x");
        peer.view.SendScintilla(QsciScintillaBase::SCI_COLOURISE, at, static_cast<long>(at + 40));
    }
}
BENCHMARK(TypeScintilla)->Iterations(1000)->Unit(benchmark::kMicrosecond);

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
