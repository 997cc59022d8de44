// Searching and the program's own edits on a million lines, and the same work done by public text components: as many
// searches, as many edits, in one step of undo where ours is one. The peers are told where to edit and what to put
// there; ours finds that out itself, and scans each line that it has changed.

#include "Peers.h"
#include "editing/MvEdit.h"
#include "editing/operations/BlockOps.h"
#include "editing/operations/OpFormat.h"
#include "search/OpReplaceAll.h"
#include "text/SourceView.h"
#include "text/widget/SourceViewWidget.h"

#include <QAccessible>
#include <QApplication>
#include <QPlainTextDocumentLayout>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include <benchmark/benchmark.h>

#include <cstring>
#include <functional>

namespace nib::bench {
namespace {

using Sci = QsciScintillaBase;

// A name that stands in every third line.
constexpr char16_t kFrequent[] = u"ORDER.REC";
constexpr char kFrequentBytes[] = "ORDER.REC";
constexpr char kReplacement[] = "INVOICE.REC";
constexpr int32_t kReplaced = 10000;
constexpr int32_t kBlock = 100000;

struct OurEditor : Ours {
    using Ours::Ours;
    NoClipboard clipboard;
    SourceView view{buffer, clipboard};
    MvEdit settings;
};

/// With a window on the text; if need be with a screen reader that hears of each edit.
struct ShownEditor : OurEditor {
    SourceViewWidget widget{buffer, clipboard};

    explicit ShownEditor(bool read)
    {
        QAccessible::setActive(read);
        widget.resize(800, 600);
        widget.show();
        QApplication::processEvents();
    }
    ~ShownEditor() { QAccessible::setActive(false); }
};

struct TextDocument {
    QTextDocument document;

    explicit TextDocument(const std::string& bytes = Bytes())
    {
        document.setDocumentLayout(new QPlainTextDocumentLayout(&document));
        document.setUndoRedoEnabled(false);
        document.setPlainText(QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size())));
        document.setUndoRedoEnabled(true);
    }
};

// Find all

std::vector<Position> Hits(const SourceDocument& buffer, TextView text, size_t most)
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

/// Looks for the bytes from `from` to the end; answers where they begin, or -1.
long FindFrom(Sci& view, long from, const char* bytes)
{
    view.SendScintilla(Sci::SCI_SETTARGETSTART, static_cast<unsigned long>(from));
    view.SendScintilla(Sci::SCI_SETTARGETEND, static_cast<unsigned long>(view.SendScintilla(Sci::SCI_GETLENGTH)));
    return view.SendScintilla(Sci::SCI_SEARCHINTARGET, static_cast<unsigned long>(strlen(bytes)), bytes);
}

void FindAllScintilla(benchmark::State& state)
{
    Scintilla peer;
    peer.view.SendScintilla(Sci::SCI_SETSEARCHFLAGS, static_cast<unsigned long>(Sci::SCFIND_MATCHCASE));
    for (auto _ : state) {
        int32_t hits = 0;
        for (long at = FindFrom(peer.view, 0, kFrequentBytes); at >= 0;
             at = FindFrom(peer.view, at + 9, kFrequentBytes))
            ++hits;
        state.counters["hits"] = hits;
    }
}

void FindAllTextDocument(benchmark::State& state)
{
    TextDocument peer;
    const QString text = QString::fromLatin1(kFrequentBytes);
    for (auto _ : state) {
        int32_t hits = 0;
        for (QTextCursor at = peer.document.find(text, 0, QTextDocument::FindCaseSensitively); !at.isNull();
             at = peer.document.find(text, at, QTextDocument::FindCaseSensitively))
            ++hits;
        state.counters["hits"] = hits;
    }
}

// Replace all

void ReplaceAllOurs(benchmark::State& state)
{
    Ours ours;
    for (auto _ : state) {
        auto pass = std::make_shared<ReplacePass>(Hits(ours.buffer, kFrequent, kReplaced), Text(kFrequent), true,
                                                  u"INVOICE.REC", std::make_shared<const int>());
        for (size_t hit = 0; hit < pass->Count(); ++hit)
            ours.buffer.ExecuteOp(std::make_unique<OpReplaceHit>(pass, hit));
        state.PauseTiming();
        for (size_t hit = 0; hit < pass->Count(); ++hit) ours.buffer.Undo();
        state.ResumeTiming();
    }
}

void ReplaceAllScintilla(benchmark::State& state)
{
    Scintilla peer;
    peer.view.SendScintilla(Sci::SCI_SETSEARCHFLAGS, static_cast<unsigned long>(Sci::SCFIND_MATCHCASE));
    for (auto _ : state) {
        long at = 0;
        for (int32_t done = 0; done < kReplaced; ++done) {
            at = FindFrom(peer.view, at, kFrequentBytes);
            peer.view.SendScintilla(Sci::SCI_REPLACETARGET, 11UL, kReplacement);
            at += 11;
        }
        peer.view.SendScintilla(Sci::SCI_COLOURISE, 0UL, at);
    }
}

void ReplaceAllTextDocument(benchmark::State& state)
{
    TextDocument peer;
    const QString text = QString::fromLatin1(kFrequentBytes);
    for (auto _ : state) {
        QTextCursor at(&peer.document);
        for (int32_t done = 0; done < kReplaced; ++done) {
            at = peer.document.find(text, at, QTextDocument::FindCaseSensitively);
            at.insertText(QString::fromLatin1(kReplacement));
        }
    }
}

// Edits of many lines in one step of undo

struct LineEdit {
    int32_t line;
    int32_t column;
    std::string text;
};

std::vector<LineEdit> IndentEdits()
{
    std::vector<LineEdit> edits;
    for (int32_t line = 0; line < kBlock; ++line) edits.push_back({line, 0, "   "});
    return edits;
}

std::vector<LineEdit> CommentEdits()
{
    std::vector<LineEdit> edits;
    const char* at = Bytes().c_str();
    for (int32_t line = 0; line < kBlock; ++line, at = strchr(at, '\n') + 1)
        edits.push_back({line, static_cast<int32_t>(strspn(at, " ")), "*"});
    return edits;
}

std::unique_ptr<ISourceOp> MakeFormat(OurEditor& editor)
{
    return std::make_unique<OpFormat>(editor.view, editor.settings, OpFormat::ShowWait());
}

/// What the formatter puts in front of each line of a flat program.
std::vector<LineEdit> FormatEdits()
{
    OurEditor editor(FlatBytes());
    editor.buffer.ExecuteOp(MakeFormat(editor));
    std::vector<LineEdit> edits;
    for (int32_t line = 0; line < editor.buffer.LineCount(); ++line) {
        const Text after = editor.buffer.GetLine(line);
        const size_t blanks = std::min(after.find_first_not_of(u' '), after.size());
        if (blanks > 0) edits.push_back({line, 0, std::string(blanks, ' ')});
    }
    return edits;
}

void EditOurs(benchmark::State& state, const std::string& (*text)(), bool timeUndo,
              std::unique_ptr<ISourceOp> (*make)(OurEditor&))
{
    OurEditor editor(text());
    editor.view.SetSelection({0, 0}, {0, kBlock});
    for (auto _ : state) {
        if (timeUndo) state.PauseTiming();
        editor.buffer.ExecuteOp(make(editor));
        timeUndo ? state.ResumeTiming() : state.PauseTiming();
        editor.buffer.Undo();
        if (!timeUndo) state.ResumeTiming();
    }
}

void EditOursShown(benchmark::State& state, bool read, std::unique_ptr<ISourceOp> (*make)(OurEditor&))
{
    ShownEditor editor(read);
    editor.view.SetSelection({0, 0}, {0, kBlock});
    for (auto _ : state) {
        editor.buffer.ExecuteOp(make(editor));
        QApplication::processEvents();
        state.PauseTiming();
        editor.buffer.Undo();
        QApplication::processEvents();
        state.ResumeTiming();
    }
}

void EditScintilla(benchmark::State& state, const std::string& (*text)(), bool timeUndo,
                   std::vector<LineEdit> (*make)())
{
    Scintilla peer(text());
    const std::vector<LineEdit> edits = make();
    auto send = [&](unsigned message) { return peer.view.SendScintilla(message); };
    auto colour = [&] {
        const auto behind = static_cast<unsigned long>(edits.back().line + 1);
        peer.view.SendScintilla(Sci::SCI_COLOURISE, 0UL, peer.view.SendScintilla(Sci::SCI_POSITIONFROMLINE, behind));
    };
    for (auto _ : state) {
        if (timeUndo) state.PauseTiming();
        send(Sci::SCI_BEGINUNDOACTION);
        for (const LineEdit& edit : edits) {
            const long line = peer.view.SendScintilla(Sci::SCI_POSITIONFROMLINE, static_cast<unsigned long>(edit.line));
            peer.view.SendScintilla(Sci::SCI_INSERTTEXT, static_cast<unsigned long>(line + edit.column),
                                    edit.text.c_str());
        }
        send(Sci::SCI_ENDUNDOACTION);
        colour();
        timeUndo ? state.ResumeTiming() : state.PauseTiming();
        send(Sci::SCI_UNDO);
        colour();
        if (!timeUndo) state.ResumeTiming();
    }
}

/// Without any colouring.
void EditTextDocument(benchmark::State& state, const std::string& (*text)(), bool timeUndo,
                      std::vector<LineEdit> (*make)())
{
    TextDocument peer(text());
    const std::vector<LineEdit> edits = make();
    for (auto _ : state) {
        if (timeUndo) state.PauseTiming();
        QTextCursor cursor(&peer.document);
        cursor.beginEditBlock();
        QTextBlock block = peer.document.begin();
        for (const LineEdit& edit : edits) {
            while (block.blockNumber() < edit.line) block = block.next();
            cursor.setPosition(block.position() + edit.column);
            cursor.insertText(QString::fromStdString(edit.text));
        }
        cursor.endEditBlock();
        timeUndo ? state.ResumeTiming() : state.PauseTiming();
        peer.document.undo();
        if (!timeUndo) state.ResumeTiming();
    }
}

std::unique_ptr<ISourceOp> MakeIndent(OurEditor& editor)
{
    return std::make_unique<OpIndentBlock>(true, editor.view);
}

std::unique_ptr<ISourceOp> MakeComment(OurEditor& editor)
{
    return std::make_unique<OpCommentBlock>(true, editor.view, editor.settings);
}

// clang-format off
#define NIB_MS ->Unit(benchmark::kMillisecond)
BENCHMARK(FindAllOurs) NIB_MS;
BENCHMARK(FindAllScintilla) NIB_MS;
BENCHMARK(FindAllTextDocument) NIB_MS->Iterations(1);
BENCHMARK(ReplaceAllOurs) NIB_MS->Iterations(5);
BENCHMARK(ReplaceAllScintilla) NIB_MS->Iterations(1);
BENCHMARK(ReplaceAllTextDocument) NIB_MS->Iterations(1);
BENCHMARK_CAPTURE(EditOurs, indent, Bytes, false, MakeIndent) NIB_MS->Iterations(5);
BENCHMARK_CAPTURE(EditOursShown, indent, false, MakeIndent) NIB_MS->Iterations(5);
BENCHMARK_CAPTURE(EditOursShown, indent_read, true, MakeIndent) NIB_MS->Iterations(1);
BENCHMARK_CAPTURE(EditScintilla, indent, Bytes, false, IndentEdits) NIB_MS->Iterations(1);
BENCHMARK_CAPTURE(EditTextDocument, indent, Bytes, false, IndentEdits) NIB_MS->Iterations(1);
BENCHMARK_CAPTURE(EditOurs, comment, Bytes, false, MakeComment) NIB_MS->Iterations(5);
BENCHMARK_CAPTURE(EditScintilla, comment, Bytes, false, CommentEdits) NIB_MS->Iterations(1);
BENCHMARK_CAPTURE(EditTextDocument, comment, Bytes, false, CommentEdits) NIB_MS->Iterations(1);
BENCHMARK_CAPTURE(EditOurs, format, FlatBytes, false, MakeFormat) NIB_MS->Iterations(2);
BENCHMARK_CAPTURE(EditScintilla, format, FlatBytes, false, FormatEdits) NIB_MS->Iterations(1);
BENCHMARK_CAPTURE(EditTextDocument, format, FlatBytes, false, FormatEdits) NIB_MS->Iterations(1);
BENCHMARK_CAPTURE(EditOurs, format_undo, FlatBytes, true, MakeFormat) NIB_MS->Iterations(2);
BENCHMARK_CAPTURE(EditScintilla, format_undo, FlatBytes, true, FormatEdits) NIB_MS->Iterations(1);
BENCHMARK_CAPTURE(EditTextDocument, format_undo, FlatBytes, true, FormatEdits) NIB_MS->Iterations(1);
#undef NIB_MS
// clang-format on

} // namespace
} // namespace nib::bench
