#include "editing/operations/OpFormat.h"

#include <algorithm>

namespace nib {

namespace {

class WaitShown {
public:
    explicit WaitShown(const OpFormat::ShowWait& show) : show_(show)
    {
        if (show_) show_(true);
    }
    ~WaitShown()
    {
        if (show_) show_(false);
    }
    WaitShown(const WaitShown&) = delete;
    WaitShown& operator=(const WaitShown&) = delete;

private:
    const OpFormat::ShowWait& show_;
};

} // namespace

OpFormat::OpFormat(SourceView& view, const MvEdit& settings, ShowWait showWait)
    : view_(view), rules_(settings), showWait_(std::move(showWait))
{
}

void OpFormat::DoFormat(SourceDocument& document)
{
    Text scratch;
    int32_t level = 0;
    for (int32_t line = 0; line < document.LineCount(); ++line) {
        uint32_t flags = document.GetLineData(line, LineWord::Lexer);
        BlockEffect effect = BlockEffectOf(flags);
        level = std::max(level - effect.decrement, 0);
        LineEdit edit{line, LayOutLine(document.LineText(line, scratch), flags, level, rules_)};
        level += effect.increment;
        if (edit.blanks.IsEmpty()) continue;
        Apply(document, edit);
        edits_.push_back(edit);
    }
    edits_.shrink_to_fit();
    laidOut_ = true;
}

void OpFormat::Apply(SourceDocument& document, const LineEdit& edit)
{
    auto [leading, label, delta, trailing] = edit.blanks;
    int32_t line = edit.line;
    if (trailing > 0) {
        int32_t length = document.LineLength(line);
        document.DeleteRange({length - trailing, line}, {length, line});
    }
    if (leading > 0) document.DeleteRange({0, line}, {leading, line});
    if (delta < 0) document.DeleteRange({label, line}, {label - delta, line});
    if (delta > 0) document.InsertText({label, line}, blanks_(delta));
}

void OpFormat::TakeBack(SourceDocument& document, const LineEdit& edit)
{
    auto [leading, label, delta, trailing] = edit.blanks;
    int32_t line = edit.line;
    if (delta > 0) document.DeleteRange({label, line}, {label + delta, line});
    if (delta < 0) document.InsertText({label, line}, blanks_(-delta));
    if (leading > 0) document.InsertText({0, line}, blanks_(leading));
    if (trailing > 0) document.InsertText({document.LineLength(line), line}, blanks_(trailing));
}

template <typename Body>
void OpFormat::Run(SourceDocument& document, Body&& body)
{
    WaitShown wait(showWait_);
    Position caret = view_.Caret(); // by its column, not by the text that stands there
    body();
    caret.col = std::min(caret.col, document.LineLength(caret.line));
    if (!edits_.empty()) document.UpdateLines(edits_.front().line, edits_.back().line);
    document.NotifyChange(kLinesChanged, 0, document.LineCount() - 1, caret);
}

void OpFormat::DoOp(SourceDocument& document)
{
    Run(document, [&] {
        if (!laidOut_) return DoFormat(document);
        for (const LineEdit& edit : edits_) Apply(document, edit);
    });
}

void OpFormat::UndoOp(SourceDocument& document)
{
    Run(document, [&] {
        for (const LineEdit& edit : edits_) TakeBack(document, edit);
    });
}

} // namespace nib
