// From a file on disk to its first painted page in a window, and to all of it coloured: what a person waits for, and
// the memory that it takes. What is done while nobody waits is left out. Every two hundredth line holds a TAB, as many
// an accented letter.

#include "Peers.h"
#include "documents/StoredLines.h"
#include "hosts/StoredText.h"
#include "text/SourceView.h"
#include "text/TextSearch.h"
#include "text/widget/SourceViewWidget.h"

#include <QApplication>
#include <QPlainTextEdit>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

#include <malloc.h>
#include <unistd.h>

namespace nib::bench {
namespace {

class SourceFile {
public:
    explicit SourceFile(const std::string& bytes) { std::ofstream(path_, std::ios::binary) << bytes; }
    explicit SourceFile(int64_t lines)
    {
        const std::string bytes = BasicBytes(static_cast<int32_t>(lines));
        std::ofstream file(path_, std::ios::binary);
        size_t at = 0;
        for (int64_t line = 0; line < lines; ++line) {
            const size_t end = bytes.find('\n', at);
            file.write(bytes.data() + at, static_cast<std::streamsize>(end - at));
            if (line % 200 == 50) file << "\t;* one";
            if (line % 200 == 150)
                file << " ;* Stra\xC3\x9F"
                        "e";
            file.put('\n');
            at = end + 1;
        }
    }
    ~SourceFile() { std::remove(path_.c_str()); }
    const std::string& Path() const { return path_; }

private:
    std::string path_ = "/tmp/nib_bench_" + std::to_string(getpid());
};

/// A line of the kernel's account of this process, in MiB.
double StatusMiB(const std::string& key)
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with(key)) return std::strtod(line.c_str() + key.size() + 1, nullptr) / 1024;
    return 0;
}

/// What one load adds, after it and at most meanwhile.
class MemoryWatch {
public:
    MemoryWatch()
    {
        malloc_trim(0);
        std::ofstream("/proc/self/clear_refs") << "5";
        before_ = StatusMiB("VmRSS");
    }
    void Tell(benchmark::State& state) const
    {
        state.counters["MiB"] = StatusMiB("VmRSS") - before_;
        state.counters["peak"] = StatusMiB("VmHWM") - before_;
    }

private:
    double before_ = 0;
};

struct ShownOurs {
    SourceDocument buffer;
    LexClass lexer;
    NoClipboard clipboard;
    SourceViewWidget widget{buffer, clipboard};
    StoredLines stored;

    ShownOurs()
    {
        buffer.SetLexer(&lexer);
        widget.resize(800, 600);
        widget.show();
        QApplication::processEvents();
    }
    ~ShownOurs() { buffer.SetLexer(nullptr); }

    void Open(const std::string& path)
    {
        constexpr int32_t kTabSize = 3;
        FileItem item(FromUtf8(path), false, FileSaver({}));
        const auto tabs = buffer.SetText(std::get<ByteText>(item.ReadWhole()), kTabSize);
        int32_t identity = 0;
        stored.Read(tabs, item.Form()->OddEnds(), kTabSize, buffer, identity);
    }
    void Paint() { widget.viewport()->repaint(); }
    void ColourAll() { buffer.EnsureScanned(); }
};

std::string WholeFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string bytes(std::filesystem::file_size(path), '\0');
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return bytes;
}

struct ShownScintilla {
    Scintilla peer{std::string()};

    ShownScintilla()
    {
        peer.view.resize(800, 600);
        peer.view.show();
        QApplication::processEvents();
    }
    void Open(const std::string& path)
    {
        const std::string bytes = WholeFile(path);
        peer.view.SendScintilla(QsciScintillaBase::SCI_SETUNDOCOLLECTION, 0UL);
        peer.view.SendScintilla(QsciScintillaBase::SCI_CLEARALL);
        peer.view.SendScintilla(QsciScintillaBase::SCI_ADDTEXT, static_cast<unsigned long>(bytes.size()), bytes.data());
        peer.view.SendScintilla(QsciScintillaBase::SCI_GOTOPOS, 0UL);
    }
    void Paint() { peer.view.viewport()->repaint(); }
    void ColourAll() { peer.view.SendScintilla(QsciScintillaBase::SCI_COLOURISE, 0UL, -1L); }
};

struct ShownPlainText {
    QPlainTextEdit view;

    ShownPlainText()
    {
        view.resize(800, 600);
        view.show();
        QApplication::processEvents();
    }
    void Open(const std::string& path)
    {
        const std::string bytes = WholeFile(path);
        view.setPlainText(QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size())));
    }
    void Paint() { view.viewport()->repaint(); }
};

template <typename Editor>
void Opens(benchmark::State& state, bool allColoured)
{
    const SourceFile file(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        auto editor = std::make_unique<Editor>();
        const MemoryWatch memory;
        state.ResumeTiming();
        editor->Open(file.Path());
        editor->Paint();
        if constexpr (requires { editor->ColourAll(); })
            if (allColoured) editor->ColourAll();
        state.PauseTiming();
        memory.Tell(state);
        editor.reset();
        state.ResumeTiming();
    }
}

template <typename Editor>
void FirstPaint(benchmark::State& state)
{
    Opens<Editor>(state, false);
}

template <typename Editor>
void AllColoured(benchmark::State& state)
{
    Opens<Editor>(state, true);
}

/// One line of 200 MB, and a key in the middle of it.
template <bool kKey>
void OneLine(benchmark::State& state)
{
    const SourceFile file(std::string(200'000'000, 'x'));
    for (auto _ : state) {
        state.PauseTiming();
        auto editor = std::make_unique<ShownOurs>();
        const MemoryWatch memory;
        if (!kKey) state.ResumeTiming();
        editor->Open(file.Path());
        editor->Paint();
        if (kKey) {
            state.ResumeTiming();
            editor->buffer.InsertText({100'000'000, 0}, u"k");
            editor->Paint();
        }
        state.PauseTiming();
        memory.Tell(state);
        editor.reset();
        state.ResumeTiming();
    }
}

// clang-format off
#define NIB_SIZES ->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->Arg(10000)->Arg(100000)->Arg(1000000)
BENCHMARK_TEMPLATE(FirstPaint, ShownOurs) NIB_SIZES;
BENCHMARK_TEMPLATE(FirstPaint, ShownScintilla) NIB_SIZES;
BENCHMARK_TEMPLATE(FirstPaint, ShownPlainText)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->Arg(100000)->Iterations(1);
BENCHMARK_TEMPLATE(AllColoured, ShownOurs) NIB_SIZES;
BENCHMARK_TEMPLATE(AllColoured, ShownScintilla)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->Arg(10000)->Arg(100000)->Arg(1000000)->Iterations(1);
BENCHMARK_TEMPLATE(OneLine, false)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->Iterations(1);
BENCHMARK_TEMPLATE(OneLine, true)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->Iterations(1);
#undef NIB_SIZES
// clang-format on

} // namespace
} // namespace nib::bench
