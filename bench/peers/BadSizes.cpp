// One line of 200 MB, ten million lines, blocks ten thousand deep, a paste of 50 MB.

#include "Measure.h"
#include "Rows.h"

#include <QClipboard>
#include <QGuiApplication>

#include <optional>

namespace nib::bench {
namespace {

/// Tells of each step what it took, and of the whole its memory.
class Patient {
public:
    Patient(const char* name, std::string bytes)
        : name_(name), mib_(static_cast<double>(bytes.size()) / (1 << 20)), file_(bytes)
    {
        bytes = {};
        memory_.emplace();
    }
    ~Patient()
    {
        printf("| %s | memory, MiB (text %.0f) | %.0f, at most %.0f |\n", name_, mib_, memory_->Now(), memory_->Most());
    }
    Patient(const Patient&) = delete;
    Patient& operator=(const Patient&) = delete;

    template <typename Body>
    void Step(const char* what, Body&& body)
    {
        const double before = ProcessorMs();
        body();
        Settle(editor->Widget());
        printf("| %s | %s | %.3g |\n", name_, what, ProcessorMs() - before);
    }
    void Open()
    {
        Step("open", [&] { editor->Open(file_.Path()), editor->Widget().viewport()->repaint(); });
    }
    void Key(const char* what)
    {
        Step(what, [&] { session.Press(Qt::Key_X, QStringLiteral("x")); });
    }

    std::unique_ptr<Editor> editor = MakeOurs();

private:
    const char* name_;
    double mib_;
    SourceFile file_;
    std::optional<MemoryWatch> memory_;
    std::vector<BlankChange> blanks_;

public:
    Session session{*editor, file_.Path(), 0, blanks_};
};

void LongLine()
{
    Patient p("one line of 200 MB", std::string(200'000'000, 'x'));
    p.Open();
    p.Key("first key");
    p.Key("second key");
    p.Step("go to its end", [&] { p.session.Press(Qt::Key_End, {}); });
    p.Key("key at its end");
    p.Step("undo", [&] { p.editor->Undo(); });
}

void ManyLines()
{
    constexpr int32_t kLines = 10'000'000;
    Patient p("10,000,000 lines", MixedBytes(kLines));
    p.Open();
    p.Step("a page", [&] { p.session.Page(); });
    p.Step("all coloured", [&] { p.editor->ColourAll(); });
    p.Step("go to the end", [&] { p.editor->PutCaret(kLines); });
    p.Key("key at the end");
    p.Step("go to the middle", [&] { p.editor->PutCaret(kLines / 2); });
    p.Key("first key in the middle");
    p.Key("second key in the middle");
    p.Step("find all", [&] { p.editor->FindAll(kRare, true); });
    p.Step("replace 100,000", [&] { p.editor->ReplaceHits(kPut); });
    p.Step("undo of that", [&] { p.editor->UndoReplace(); });
    p.Step("fold all", [&] { p.editor->FoldAll(true); });
    p.Step("unfold all", [&] { p.editor->FoldAll(false); });
}

void DeepBlocks()
{
    constexpr int32_t kDeep = 10'000;
    std::string bytes;
    for (int32_t i = 0; i < kDeep; ++i) bytes += "IF A THEN\n";
    for (int32_t i = 0; i < kDeep; ++i) bytes += "END\n";
    Patient p("blocks 10,000 deep", bytes);
    p.Open();
    p.Step("all coloured", [&] { p.editor->ColourAll(); });
    p.Step("fold all", [&] { p.editor->FoldAll(true); });
    p.Key("key at the top, folded");
    p.Step("unfold all", [&] { p.editor->FoldAll(false); });
    p.Step("paint", [&] { p.editor->Widget().viewport()->repaint(); });
    p.Step("go to the middle", [&] { p.editor->PutCaret(kDeep); });
    p.Key("key in the middle");
    p.Step("a page", [&] { p.session.Page(); });
    p.editor->PutCaret(0);
    p.Key("key at the top");
    p.Step("line that opens a block gone", [&] { p.session.Press(Qt::Key_Delete, {}); });
}

void LargePaste()
{
    constexpr int32_t kLines = 1'350'000; // 50 MB
    Patient p("paste of 50 MB", BasicBytes(1000));
    p.Open();
    p.editor->PutCaret(500);
    QGuiApplication::clipboard()->setText(QString::fromStdString(BasicBytes(kLines)));
    p.Step("paste", [&] { p.editor->Paste(); });
    p.Step("undo", [&] { p.editor->Undo(); });
    p.Step("redo", [&] { p.editor->Redo(); });
    p.Key("key");
}

} // namespace

int BadSizes()
{
    printf("| Text | Step | CPU, ms |\n|---|---|---|\n");
    LongLine();
    ManyLines();
    DeepBlocks();
    LargePaste();
    return 0;
}

} // namespace nib::bench
