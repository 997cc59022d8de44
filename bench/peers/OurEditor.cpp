#include "Editor.h"
#include "documents/DocumentSettings.h"
#include "documents/StoredLines.h"
#include "editing/LexClass.h"
#include "editing/MvEdit.h"
#include "editing/operations/OpFormat.h"
#include "hosts/StoredText.h"
#include "language/Dialects.h"
#include "platform/qt/QtDesktop.h"
#include "search/OpReplaceAll.h"
#include "text/SourceView.h"
#include "text/widget/SourceViewWidget.h"

#include <algorithm>
#include <stdexcept>

namespace nib::bench {
namespace {

class OurEditor final : public Editor {
public:
    OurEditor()
    {
        settings_.CollapseBlocks = true;
        settings_.Dialect = kCommonDialect;
        UseDialect(settings_, &dialects_);
        document_.SetLexer(&lexer_);
        ApplyViewSettings(widget_.Model(), settings_, &lexer_);
        usual_ = widget_.Model().Marks();
        Show(Marks::None);
        bench::Show(widget_);
    }
    ~OurEditor() override { document_.SetLexer(nullptr); }

    QAbstractScrollArea& Widget() override { return widget_; }
    void Open(const std::string& path) override
    {
        FileItem item(FromUtf8(path), false, FileSaver({}));
        const auto tabs = document_.SetText(std::get<ByteText>(item.ReadWhole()), kTabSize);
        int32_t identity = 0;
        stored_.Read(tabs, item.Form()->OddEnds(), kTabSize, document_, identity);
        widget_.Model().SetMarginWidth(MarginWidthFor(widget_.Model()));
    }
    void ColourAll() override { document_.EnsureScanned(); }
    void Show(Marks marks) override
    {
        ViewMarks shown;
        shown.currentLine = shown.matches = shown.changeBars = shown.indentGuides = shown.visibleBlanks = true;
        widget_.Model().SetMarks(marks == Marks::All ? shown : marks == Marks::Usual ? usual_ : ViewMarks());
    }
    void PutCaret(int32_t line) override { widget_.Model().SetCaret({0, line}); }
    size_t FindAll(const char* text, bool matchCase) override
    {
        found_ = FromUtf8(text);
        hits_.clear();
        FindHit hit;
        for (Position from{0, 0}; document_.Find(found_, from, {false, matchCase, false}, hit);) {
            hits_.push_back(hit.at);
            from = {hit.at.col + hit.length, hit.at.line};
        }
        return hits_.size();
    }
    void ReplaceHits(const char* text) override
    {
        auto pass = std::make_shared<ReplacePass>(hits_, found_, true, FromUtf8(text), std::make_shared<const int>());
        for (size_t hit = 0; hit < hits_.size(); ++hit) document_.ExecuteOp(std::make_unique<OpReplaceHit>(pass, hit));
    }
    void UndoReplace() override { document_.UndoSweep(); }
    void FoldAll(bool fold) override { fold ? document_.CollapseAll() : document_.ExpandAll(); }
    /// It finds out for itself what is to be changed.
    void Reindent(const std::vector<BlankChange>&) override { Format(); }
    void Paste() override { widget_.Model().Paste(); }
    void Undo() override { widget_.Model().Undo(); }
    void Redo() override { widget_.Model().Redo(); }
    std::string Line(int32_t line) override { return ToUtf8(document_.GetLine(line)); }

    void Format() { document_.ExecuteOp(std::make_unique<OpFormat>(widget_.Model(), settings_, OpFormat::ShowWait())); }
    const SourceDocument& Document() const { return document_; }

private:
    static constexpr int32_t kTabSize = 3;

    SourceDocument document_;
    LexClass lexer_;
    QtClipboard clipboard_;
    Dialects dialects_;
    MvEdit settings_;
    ViewMarks usual_;
    SourceViewWidget widget_{document_, clipboard_};
    StoredLines stored_;
    Text found_;
    std::vector<Position> hits_;
};

} // namespace

std::unique_ptr<Editor> MakeOurs()
{
    return std::make_unique<OurEditor>();
}

std::vector<BlankChange> BlankChanges(const std::string& path)
{
    OurEditor before;
    OurEditor after;
    before.Open(path);
    after.Open(path);
    after.Format();
    std::vector<BlankChange> changes;
    for (int32_t line = 0; line < before.Document().LineCount(); ++line) {
        const Text from = before.Document().GetLine(line);
        const Text to = after.Document().GetLine(line);
        if (from == to) continue;
        const auto [at, put] = std::mismatch(from.begin(), from.end(), to.begin(), to.end());
        const auto [back, putBack] =
            std::mismatch(from.rbegin(), std::make_reverse_iterator(at), to.rbegin(), std::make_reverse_iterator(put));
        if (std::any_of(put, putBack.base(), [](char16_t unit) { return unit != u' '; }))
            throw std::runtime_error("the formatter puts more than blanks");
        changes.push_back({line, static_cast<int32_t>(at - from.begin()), static_cast<int32_t>(back.base() - at),
                           static_cast<int32_t>(putBack.base() - put)});
    }
    return changes;
}

} // namespace nib::bench
