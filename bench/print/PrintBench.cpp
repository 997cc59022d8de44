// Ten thousand lines of a program as a PDF file: by the listing of this house (header, numbers, colours) and by Qt's
// own text document, plain. One run, so that the ratio holds on any machine.

#include "BasicText.h"
#include "diagnostics/DebugLog.h"
#include "editing/LexClass.h"
#include "platform/Desktop.h"
#include "platform/posix/FileSaver.h"
#include "platform/qt/QtText.h"
#include "printing/QtPrinting.h"
#include "printing/QtPrintingSurface.h"
#include "text/SourceView.h"

#include <QApplication>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTextDocument>

#include <benchmark/benchmark.h>

namespace nib::bench {
namespace {

constexpr int32_t kLines = 10000;

struct NoClipboard final : Clipboard {
    bool HasText() const override { return false; }
    Text GetText() const override { return {}; }
    void SetText(TextView) override {}
    Text GetPrimary() const override { return {}; }
    void SetPrimary(TextView) override {}
};

void ToPdf(benchmark::State& state, const std::function<void(const Paper&)>& draw)
{
    const QTemporaryDir folder;
    const FileWriter save = [saver = FileSaver(folder.path().toStdString())](
                                const std::string& path, std::string_view bytes) { saver.Save(path, bytes); };
    const QPageLayout sheet(QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF(15, 15, 15, 15),
                            QPageLayout::Millimeter);
    const QString path = folder.filePath(QStringLiteral("out.pdf"));
    for (auto _ : state) {
        WritePdf({path, QStringLiteral("BP SAMPLE"), sheet, {}}, save,
                 [&](QPagedPaintDevice& device) { draw({device}); });
    }
    state.counters["bytes"] = static_cast<double>(QFileInfo(path).size());
}

void PrintListing(benchmark::State& state)
{
    SourceDocument buffer;
    LexClass lexer;
    NoClipboard clipboard;
    buffer.SetLexer(&lexer);
    SourceView view(buffer, clipboard);
    const DebugLog log;
    view.SetFont({u"DejaVu Sans Mono", 10});
    view.PrintTokenStyles().SetColor(6, 0x008000);
    view.PrintTokenStyles().SetStyle(6, token_style::kItalic);
    view.PrintTokenStyles().SetColor(4, 0xFF0000);
    view.PrintTokenStyles().SetStyle(4, token_style::kBold);
    view.SetText(FromUtf8(BasicBytes(kLines)));
    ToPdf(state, [&](const Paper& paper) { DrawPages(view, log, u"File: BP     Item: SAMPLE", paper); });
}
BENCHMARK(PrintListing)->Unit(benchmark::kMillisecond);

void PrintTextDocument(benchmark::State& state)
{
    QTextDocument document;
    document.setDefaultFont(QFont(QStringLiteral("DejaVu Sans Mono"), 10));
    document.setPlainText(QString::fromStdString(BasicBytes(kLines)));
    ToPdf(state, [&](const Paper& paper) { DrawTextPages(document, paper); });
}
BENCHMARK(PrintTextDocument)->Unit(benchmark::kMillisecond);

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
