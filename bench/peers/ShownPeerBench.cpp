// Edits of many lines, folding, typing and paging in a widget that is shown and painted, at three sizes, after the user
// has paged through the text: what a listener on the screen costs grows with what it keeps. To be run with
// --benchmark_enable_random_interleaving --benchmark_repetitions=5; the CPU column is that of the whole process.

#include "Peers.h"
#include "editing/MvEdit.h"
#include "editing/operations/OpFormat.h"
#include "search/OpReplaceAll.h"
#include "text/SourceView.h"
#include "text/widget/SourceViewWidget.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScrollBar>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <map>

namespace nib::bench {
namespace {

using Sci = QsciScintillaBase;

constexpr char16_t kFound[] = u"ORDER.REC";
constexpr char kPut[] = "INVOICE.REC";
constexpr size_t kMostHits = 10000;
constexpr int32_t kPages = 60;
constexpr int32_t kKeys = 100;

const std::string& Program(int64_t lines)
{
    static std::map<int64_t, std::string> programs;
    std::string& bytes = programs[lines];
    if (bytes.empty()) bytes = BasicBytes(static_cast<int32_t>(lines));
    return bytes;
}

void Show(QWidget& widget)
{
    widget.resize(800, 600);
    widget.show();
    widget.setFocus();
    QApplication::processEvents();
}

void Press(QWidget& widget, Qt::Key key, const QString& text = {})
{
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
    QApplication::sendEvent(&widget, &event);
    QApplication::processEvents();
}

void Page(QAbstractScrollArea& widget)
{
    for (int32_t page = 0; page < kPages; ++page) {
        widget.verticalScrollBar()->triggerAction(QAbstractSlider::SliderPageStepAdd);
        QApplication::processEvents();
    }
}

struct ShownOurs : Ours {
    NoClipboard clipboard;
    SourceViewWidget widget{buffer, clipboard};
    MvEdit settings;

    explicit ShownOurs(const std::string& bytes) : Ours(bytes)
    {
        widget.Model().SetShowBlocks(true);
        Show(widget);
    }
};

struct ShownScintilla : Scintilla {
    explicit ShownScintilla(const std::string& bytes) : Scintilla(bytes) { Show(view); }
    unsigned long At(Position p)
    {
        const long line = view.SendScintilla(Sci::SCI_POSITIONFROMLINE, static_cast<unsigned long>(p.line));
        return static_cast<unsigned long>(line + p.col);
    }
    void Colour(int32_t lastLine)
    {
        view.SendScintilla(Sci::SCI_COLOURISE, 0UL, static_cast<long>(At({0, lastLine + 1})));
        QApplication::processEvents();
    }
};

/// Spread over the whole text.
std::vector<Position> SomeHits(const SourceDocument& buffer)
{
    std::vector<Position> hits;
    FindHit hit;
    for (Position from{0, 0}; buffer.Find(kFound, from, {false, true, false}, hit);) {
        hits.push_back(hit.at);
        from = {hit.at.col + hit.length, hit.at.line};
    }
    const size_t stride = hits.size() / kMostHits + 1;
    for (size_t i = 0; i * stride < hits.size(); ++i) hits[i] = hits[i * stride];
    hits.resize((hits.size() + stride - 1) / stride);
    return hits;
}

enum class Part { Do, UndoSteps, UndoSweep };

/// Runs one part of the work under the clock, what leads to it not.
template <typename Do, typename Undo>
void Timed(benchmark::State& state, bool undo, Do&& doIt, Undo&& undoIt)
{
    for (auto _ : state) {
        if (undo) state.PauseTiming();
        doIt();
        if (!undo) continue;
        state.ResumeTiming();
        undoIt();
    }
}

void ReplaceOurs(benchmark::State& state, Part part)
{
    ShownOurs ours(Program(state.range(0)));
    Page(ours.widget);
    size_t count = 0;
    const std::vector<Position> hits = SomeHits(ours.buffer);
    const auto doIt = [&] {
        auto pass =
            std::make_shared<ReplacePass>(hits, Text(kFound), true, u"INVOICE.REC", std::make_shared<const int>());
        count = pass->Count();
        for (size_t hit = 0; hit < count; ++hit) ours.buffer.ExecuteOp(std::make_unique<OpReplaceHit>(pass, hit));
        QApplication::processEvents();
    };
    Timed(state, part != Part::Do, doIt, [&] {
        if (part == Part::UndoSweep) ours.buffer.UndoSweep();
        for (size_t hit = 0; part == Part::UndoSteps && hit < count; ++hit) ours.buffer.Undo();
        QApplication::processEvents();
    });
    state.counters["hits"] = static_cast<double>(count);
}

void ReplaceScintilla(benchmark::State& state, bool undo)
{
    ShownScintilla peer(Program(state.range(0)));
    Page(peer.view);
    const std::vector<Position> hits = SomeHits(Ours(Program(state.range(0))).buffer);
    const auto doIt = [&] {
        peer.view.SendScintilla(Sci::SCI_BEGINUNDOACTION);
        for (auto hit = hits.rbegin(); hit != hits.rend(); ++hit) {
            const unsigned long at = peer.At(*hit);
            peer.view.SendScintilla(Sci::SCI_SETTARGETSTART, at);
            peer.view.SendScintilla(Sci::SCI_SETTARGETEND, at + std::size(kFound) - 1);
            peer.view.SendScintilla(Sci::SCI_REPLACETARGET, 11UL, kPut);
        }
        peer.view.SendScintilla(Sci::SCI_ENDUNDOACTION);
        QApplication::processEvents();
    };
    Timed(state, undo, doIt, [&] {
        peer.view.SendScintilla(Sci::SCI_UNDO);
        QApplication::processEvents();
    });
}

/// A program with every line at the left.
const std::string& Flat(int64_t lines)
{
    static std::map<int64_t, std::string> programs;
    std::string& flat = programs[lines];
    if (!flat.empty()) return flat;
    const std::string& bytes = Program(lines);
    for (size_t at = 0; at < bytes.size();) {
        at = bytes.find_first_not_of(' ', at);
        const size_t end = bytes.find('\n', at) + 1;
        flat.append(bytes, at, end - at);
        at = end;
    }
    return flat;
}

void Format(ShownOurs& ours)
{
    ours.buffer.ExecuteOp(std::make_unique<OpFormat>(ours.widget.Model(), ours.settings, OpFormat::ShowWait()));
    QApplication::processEvents();
}

void FormatOurs(benchmark::State& state, bool undo)
{
    ShownOurs ours(Flat(state.range(0)));
    Page(ours.widget);
    Timed(
        state, undo, [&] { Format(ours); },
        [&] {
            ours.buffer.Undo();
            QApplication::processEvents();
        });
}

/// Told where the formatter puts how many blanks.
void FormatScintilla(benchmark::State& state, bool undo)
{
    ShownScintilla peer(Flat(state.range(0)));
    Page(peer.view);
    std::vector<size_t> indents;
    {
        ShownOurs ours(Flat(state.range(0)));
        Format(ours);
        for (int32_t line = 0; line < ours.buffer.LineCount(); ++line)
            indents.push_back(std::min(ours.buffer.GetLine(line).find_first_not_of(u' '), size_t{1000}) % 1000);
    }
    const auto last = static_cast<int32_t>(indents.size()) - 1;
    const auto doIt = [&] {
        peer.view.SendScintilla(Sci::SCI_BEGINUNDOACTION);
        for (int32_t line = 0; line <= last; ++line)
            if (const size_t blanks = indents[static_cast<size_t>(line)])
                peer.view.SendScintilla(Sci::SCI_INSERTTEXT, peer.At({0, line}), std::string(blanks, ' ').c_str());
        peer.view.SendScintilla(Sci::SCI_ENDUNDOACTION);
        peer.Colour(last);
    };
    Timed(state, undo, doIt, [&] {
        peer.view.SendScintilla(Sci::SCI_UNDO);
        peer.Colour(last);
    });
}

void FoldOurs(benchmark::State& state, bool unfold)
{
    ShownOurs ours(Program(state.range(0)));
    Page(ours.widget);
    const auto paint = [] { QApplication::processEvents(); };
    Timed(
        state, unfold, [&] { ours.buffer.CollapseAll(), paint(); }, [&] { ours.buffer.ExpandAll(), paint(); });
}

void FoldScintilla(benchmark::State& state, bool unfold)
{
    ShownScintilla peer(Program(state.range(0)));
    Page(peer.view);
    const auto fold = [&](int action) {
        peer.view.SendScintilla(Sci::SCI_FOLDALL, static_cast<unsigned long>(action));
        QApplication::processEvents();
    };
    Timed(
        state, unfold, [&] { fold(Sci::SC_FOLDACTION_CONTRACT); }, [&] { fold(Sci::SC_FOLDACTION_EXPAND); });
}

template <typename Shown>
QAbstractScrollArea& WidgetOf(Shown& shown)
{
    if constexpr (requires { shown.widget; })
        return shown.widget;
    else
        return shown.view;
}

void PutCaret(ShownOurs& ours, int32_t line)
{
    ours.widget.Model().SetCaret({0, line});
}

void PutCaret(ShownScintilla& peer, int32_t line)
{
    peer.view.SendScintilla(Sci::SCI_GOTOLINE, static_cast<unsigned long>(line));
}

/// So many keys, one line broken among them; divide by kKeys.
template <typename Shown>
void KeysInTheMiddle(benchmark::State& state)
{
    Shown shown(Program(state.range(0)));
    PutCaret(shown, static_cast<int32_t>(state.range(0) / 2));
    QApplication::processEvents();
    for (auto _ : state)
        for (int32_t key = 0; key < kKeys; ++key)
            key == kKeys / 2 ? Press(WidgetOf(shown), Qt::Key_Return, QStringLiteral("\r"))
                             : Press(WidgetOf(shown), Qt::Key_X, QStringLiteral("x"));
}

/// Divide by kPages.
template <typename Shown>
void Pages(benchmark::State& state)
{
    Shown shown(Program(state.range(0)));
    QApplication::processEvents();
    for (auto _ : state) Page(WidgetOf(shown));
}

// clang-format off
#define NIB_SIZES ->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->Iterations(1)\
    ->Arg(10000)->Arg(100000)->Arg(1000000)
BENCHMARK_CAPTURE(ReplaceOurs, all, Part::Do) NIB_SIZES;
BENCHMARK_CAPTURE(ReplaceScintilla, all, false) NIB_SIZES;
BENCHMARK_CAPTURE(ReplaceOurs, undo_by_steps, Part::UndoSteps) NIB_SIZES;
BENCHMARK_CAPTURE(ReplaceOurs, undo, Part::UndoSweep) NIB_SIZES;
BENCHMARK_CAPTURE(ReplaceScintilla, undo, true) NIB_SIZES;
BENCHMARK_CAPTURE(FormatOurs, format, false) NIB_SIZES;
BENCHMARK_CAPTURE(FormatScintilla, format, false) NIB_SIZES;
BENCHMARK_CAPTURE(FormatOurs, undo, true) NIB_SIZES;
BENCHMARK_CAPTURE(FormatScintilla, undo, true) NIB_SIZES;
BENCHMARK_CAPTURE(FoldOurs, fold, false) NIB_SIZES;
BENCHMARK_CAPTURE(FoldScintilla, fold, false) NIB_SIZES;
BENCHMARK_CAPTURE(FoldOurs, unfold, true) NIB_SIZES;
BENCHMARK_CAPTURE(FoldScintilla, unfold, true) NIB_SIZES;
BENCHMARK_TEMPLATE(KeysInTheMiddle, ShownOurs) NIB_SIZES;
BENCHMARK_TEMPLATE(KeysInTheMiddle, ShownScintilla) NIB_SIZES;
BENCHMARK_TEMPLATE(Pages, ShownOurs) NIB_SIZES;
BENCHMARK_TEMPLATE(Pages, ShownScintilla) NIB_SIZES;
#undef NIB_SIZES
// clang-format on

} // namespace
} // namespace nib::bench
