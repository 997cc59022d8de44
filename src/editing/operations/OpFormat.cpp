#include "editing/operations/OpFormat.h"

#include "base/Text.h"
#include "editing/BlockEffect.h"
#include "editing/LexClass.h"
#include "editing/MvEdit.h"
#include "text/TextSearch.h"
#include "text/Units.h"

#include <algorithm>

namespace nib {

namespace {

/// A text that is no program can open a block on each of a million lines; its indent must not outgrow the memory.
constexpr int64_t kDeepestIndent = 1000;

int32_t Length(TextView text)
{
    return static_cast<int32_t>(text.size());
}

int32_t TrailingBlanks(TextView line)
{
    return Length(line) - static_cast<int32_t>(line.find_last_not_of(u' ') + 1);
}

/// Where comment lines that begin with this character stand. A remark spelled out, or one behind a mark, is like code.
int32_t CommentPlace(char16_t first, const FormatRules& rules)
{
    if (first == u'*') return rules.indentStar;
    if (first == u'!') return rules.indentBang;
    bool prefix = !units::IsLetter(first) && first != kValueMark && first != kSubValueMark;
    return prefix ? rules.indentUserComment : comment_place::kLikeCode;
}

int32_t PlaceOf(char16_t first, uint32_t flags, int32_t level, const FormatRules& rules)
{
    int32_t place = flags & line_flag::kComment ? CommentPlace(first, rules) : comment_place::kLikeCode;
    if (place == comment_place::kAtColumn0) return 0;
    if (place != comment_place::kLikeCode) return rules.margin;
    return static_cast<int32_t>(std::min(int64_t{level} * rules.tabSize, kDeepestIndent)) + rules.margin;
}

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

FormatRules::FormatRules(const MvEdit& settings)
    : tabSize(std::max<int32_t>(settings.TabSize, 0)), margin(std::max<int32_t>(settings.Margin, 0)),
      indentStar(settings.IndentStar), indentBang(settings.IndentBang), indentUserComment(settings.IndentUserComment)
{
}

BlankEdit LayOutLine(TextView line, uint32_t lineFlags, int32_t level, const FormatRules& rules)
{
    BlankEdit edit;
    edit.trailing = TrailingBlanks(line);
    TextView text = line.substr(0, line.size() - static_cast<size_t>(edit.trailing));
    if (text.empty()) return edit;

    int32_t existing = IndentOf(text);
    text.remove_prefix(static_cast<size_t>(existing));
    if (lineFlags & line_flag::kLabel) edit.label = LabelLength(text, lineFlags);
    if (edit.label > 0) {
        edit.leading = existing;
        text.remove_prefix(static_cast<size_t>(edit.label));
        existing = IndentOf(text);
        text.remove_prefix(static_cast<size_t>(existing));
    }
    if (text.empty()) return edit; // a label alone

    int32_t indent = PlaceOf(text.front(), lineFlags, level, rules);
    if (edit.label > 0) indent = std::max(indent - edit.label, 1);
    edit.delta = indent - existing;
    return edit;
}

BlankEdit FormatWalk::Next(TextView line, uint32_t lineFlags)
{
    const BlockEffect effect = BlockEffectOf(lineFlags);
    level_ = std::max(level_ - effect.decrement, 0);
    const int32_t level = level_;
    level_ += effect.increment;
    if (lineFlags & line_flag::kDirective && IndentOf(line) == 0) return {.trailing = TrailingBlanks(line)};
    BlankEdit edit = LayOutLine(line, lineFlags, level, rules_);
    if (!(lineFlags & line_flag::kContinues)) {
        shift_ = edit.delta - edit.leading;
    } else if (!(lineFlags & line_flag::kComment) && edit.trailing < Length(line)) {
        edit.delta = std::max(shift_, -IndentOf(line)); // as far from its first line as before
    }
    return edit;
}

OpFormat::OpFormat(SourceView& view, const MvEdit& settings, ShowWait showWait)
    : view_(view), rules_(settings), showWait_(std::move(showWait))
{
}

void OpFormat::DoFormat(SourceDocument& document)
{
    Text scratch;
    LineEdits edits;
    FormatWalk walk(rules_);
    for (int32_t line = 0; line < document.LineCount(); ++line) {
        const uint32_t flags = document.GetLineData(line, LineWord::Lexer);
        const TextView text = document.LineText(line, scratch);
        const LineEdit edit{line, walk.Next(text, flags)};
        if (edit.blanks.IsEmpty()) continue;
        Apply(edits, edit, Length(text));
        edits_.push_back(edit);
    }
    document.EditLines(std::move(edits));
    edits_.shrink_to_fit();
    laidOut_ = true;
}

void OpFormat::Apply(LineEdits& edits, const LineEdit& edit, int32_t length)
{
    auto [leading, label, delta, trailing] = edit.blanks;
    edits.Remove(edit.line, length - trailing, trailing);
    edits.Remove(edit.line, 0, leading);
    if (delta < 0) edits.Remove(edit.line, label, -delta);
    if (delta > 0) edits.Insert(edit.line, label, blanks_(delta));
}

void OpFormat::TakeBack(LineEdits& edits, const LineEdit& edit, int32_t length)
{
    auto [leading, label, delta, trailing] = edit.blanks;
    if (delta > 0) edits.Remove(edit.line, label, delta);
    if (delta < 0) edits.Insert(edit.line, label, blanks_(-delta));
    edits.Insert(edit.line, 0, blanks_(leading));
    edits.Insert(edit.line, length - delta + leading, blanks_(trailing));
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
        LineEdits edits;
        for (const LineEdit& edit : edits_) Apply(edits, edit, document.LineLength(edit.line));
        document.EditLines(std::move(edits));
    });
}

void OpFormat::UndoOp(SourceDocument& document)
{
    Run(document, [&] {
        LineEdits edits;
        for (const LineEdit& edit : edits_) TakeBack(edits, edit, document.LineLength(edit.line));
        document.EditLines(std::move(edits));
    });
}

} // namespace nib
