// The same work done by the text component of this house and by public ones: load a program of a million lines until
// all of it is coloured and its blocks are known, fold all blocks, type into the middle. One run, so that the ratios
// hold on any machine.

#include "BasicText.h"
#include "editing/LexClass.h"
#include "editing/operations/OpIndentBlock.h"
#include "platform/sourceview/SourceViewModel.h"
#include "search/OpReplaceAll.h"

#include <Qsci/qsciscintillabase.h>

#include <QApplication>
#include <QSyntaxHighlighter>
#include <QTextDocument>

#include <benchmark/benchmark.h>

#include <cstring>

namespace nib::bench {
namespace {

constexpr int32_t kLines = 1000000;
/// Of the peer's own lexers the one for a BASIC that finds blocks in such programs, by their indentation.
constexpr int kBasic = 8;

const std::string& Bytes()
{
    static const std::string bytes = BasicBytes(kLines);
    return bytes;
}

struct Ours {
    SourceBuffer buffer;
    LexClass lexer;

    Ours()
    {
        buffer.SetText(FromUtf8(Bytes()));
        buffer.SetLexer(&lexer);
        buffer.EnsureScanned();
    }
    ~Ours() { buffer.SetLexer(nullptr); }
};

struct Scintilla {
    QsciScintillaBase view;

    Scintilla()
    {
        view.SendScintilla(QsciScintillaBase::SCI_SETUNDOCOLLECTION, 0UL);
        view.SendScintilla(QsciScintillaBase::SCI_SETCODEPAGE,
                           static_cast<unsigned long>(QsciScintillaBase::SC_CP_UTF8));
        view.SendScintilla(QsciScintillaBase::SCI_SETLEXER, static_cast<unsigned long>(kBasic));
        view.SendScintilla(QsciScintillaBase::SCI_SETPROPERTY, "fold", "1");
        view.SendScintilla(QsciScintillaBase::SCI_SETKEYWORDS, 0UL,
                           "if then else end locked begin case go goto gosub to sub subroutine call loop until while "
                           "do repeat for next step include");
        view.SendScintilla(QsciScintillaBase::SCI_ADDTEXT, static_cast<unsigned long>(Bytes().size()), Bytes().data());
        view.SendScintilla(QsciScintillaBase::SCI_COLOURISE, 0UL, -1L);
        view.SendScintilla(QsciScintillaBase::SCI_SETUNDOCOLLECTION, 1UL);
    }
};

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

// Find all, replace all, indent. A name that stands in every seventh line is looked for; the rarer one is replaced.

constexpr char16_t kFrequent[] = u"ORDER.REC";
constexpr int32_t kReplaced = 10000;
constexpr int32_t kIndented = 100000;

std::vector<Position> Hits(const SourceBuffer& buffer, TextView text, size_t most)
{
    std::vector<Position> hits;
    FindHit hit;
    for (Position from{0, 0}; hits.size() < most && buffer.Find(text, from, {false, true, false}, hit);) {
        hits.push_back(hit.at);
        from = {hit.at.col + hit.length, hit.at.line};
    }
    return hits;
}

void FindAllOurs(benchmark::State& state)
{
    Ours ours;
    for (auto _ : state) state.counters["hits"] = static_cast<double>(Hits(ours.buffer, kFrequent, SIZE_MAX).size());
}
BENCHMARK(FindAllOurs)->Unit(benchmark::kMillisecond);

/// Looks for the bytes from `from` to the end; answers where they begin, or -1.
long FindFrom(QsciScintillaBase& view, long from, const char* bytes)
{
    view.SendScintilla(QsciScintillaBase::SCI_SETTARGETSTART, static_cast<unsigned long>(from));
    view.SendScintilla(QsciScintillaBase::SCI_SETTARGETEND,
                       static_cast<unsigned long>(view.SendScintilla(QsciScintillaBase::SCI_GETLENGTH)));
    return view.SendScintilla(QsciScintillaBase::SCI_SEARCHINTARGET, static_cast<unsigned long>(strlen(bytes)), bytes);
}

void FindAllScintilla(benchmark::State& state)
{
    Scintilla peer;
    peer.view.SendScintilla(QsciScintillaBase::SCI_SETSEARCHFLAGS,
                            static_cast<unsigned long>(QsciScintillaBase::SCFIND_MATCHCASE));
    for (auto _ : state) {
        int32_t hits = 0;
        for (long at = FindFrom(peer.view, 0, "ORDER.REC"); at >= 0; at = FindFrom(peer.view, at + 9, "ORDER.REC"))
            ++hits;
        state.counters["hits"] = hits;
    }
}
BENCHMARK(FindAllScintilla)->Unit(benchmark::kMillisecond);

void ReplaceAllOurs(benchmark::State& state)
{
    Ours ours;
    for (auto _ : state) {
        auto pass = std::make_shared<ReplacePass>(Hits(ours.buffer, kFrequent, kReplaced), Text(kFrequent), true,
                                                  u"INVOICE.REC");
        for (size_t hit = 0; hit < pass->Count(); ++hit)
            ours.buffer.ExecuteOp(std::make_unique<OpReplaceHit>(pass, hit));
        state.PauseTiming();
        for (size_t hit = 0; hit < pass->Count(); ++hit) ours.buffer.Undo();
        state.ResumeTiming();
    }
}
BENCHMARK(ReplaceAllOurs)->Unit(benchmark::kMillisecond)->Iterations(5);

void ReplaceAllScintilla(benchmark::State& state)
{
    Scintilla peer;
    for (auto _ : state) {
        long at = 0;
        for (int32_t done = 0; done < kReplaced; ++done) {
            at = FindFrom(peer.view, at, "ORDER.REC");
            peer.view.SendScintilla(QsciScintillaBase::SCI_REPLACETARGET, 11UL, "INVOICE.REC");
            at += 11;
        }
    }
}
BENCHMARK(ReplaceAllScintilla)->Unit(benchmark::kMillisecond)->Iterations(1);

class NoClipboard final : public Clipboard {
public:
    bool HasText() const override { return false; }
    Text GetText() const override { return {}; }
    void SetText(TextView) override {}
    Text GetPrimary() const override { return {}; }
    void SetPrimary(TextView) override {}
};

void IndentOurs(benchmark::State& state)
{
    Ours ours;
    NoClipboard clipboard;
    SourceViewModel view(ours.buffer, clipboard);
    view.SetSelection({0, 0}, {0, kIndented});
    for (auto _ : state) {
        ours.buffer.ExecuteOp(std::make_unique<OpIndentBlock>(true, view));
        state.PauseTiming();
        ours.buffer.Undo();
        state.ResumeTiming();
    }
}
BENCHMARK(IndentOurs)->Unit(benchmark::kMillisecond)->Iterations(5);

void IndentScintilla(benchmark::State& state)
{
    Scintilla peer;
    for (auto _ : state) {
        peer.view.SendScintilla(QsciScintillaBase::SCI_BEGINUNDOACTION);
        for (int32_t line = 0; line < kIndented; ++line) {
            auto at = static_cast<unsigned long>(
                peer.view.SendScintilla(QsciScintillaBase::SCI_POSITIONFROMLINE, static_cast<unsigned long>(line)));
            peer.view.SendScintilla(QsciScintillaBase::SCI_INSERTTEXT, at, "   ");
        }
        peer.view.SendScintilla(QsciScintillaBase::SCI_ENDUNDOACTION);
        peer.view.SendScintilla(QsciScintillaBase::SCI_COLOURISE, 0UL, static_cast<long>(kIndented) * 40);
    }
}
BENCHMARK(IndentScintilla)->Unit(benchmark::kMillisecond)->Iterations(1);

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
