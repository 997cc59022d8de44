#include "shell/assist/CompletionModel.h"

#include "editing/LexClass.h"
#include "text/Units.h"

#include <algorithm>

namespace nib {

namespace {

/// Fewer letters are typed faster than a list is read.
constexpr size_t kLeastLetters = 2;

bool IsNameUnit(char16_t c)
{
    return units::IsLetter(c) || units::IsDigit(c) || c == u'.' || c == u'_' || c == u'$' || c == u'%' || c == u'@';
}

} // namespace

Text CompletionModel::WordBeforeCaret() const
{
    const Position caret = view_.Caret();
    const Text line = view_.Document().GetLine(caret.line);
    const auto end = std::min(static_cast<size_t>(caret.col), line.size());
    size_t start = end;
    while (start > 0 && IsNameUnit(line[start - 1])) --start;
    return line.substr(start, end - start);
}

/// False within strings and comments.
bool CompletionModel::InWords()
{
    const Position caret = view_.Caret();
    Token token;
    if (caret.col == 0 || !view_.NextToken(caret.line, caret.col - 1, token)) return true;
    return token.type != token_type::kString && token.type != token_type::kComment;
}

bool CompletionModel::Wants(bool automatic, bool allowed)
{
    if (view_.HasSeveral() || view_.HasSelection() || view_.ReadOnly()) return Close(), false;
    if (automatic) {
        const Text word = WordBeforeCaret();
        const bool named = word.size() >= (open_ ? 1 : kLeastLetters) && !units::IsDigit(word.front()) && InWords();
        if (!named || (!allowed && !open_)) return Close(), false;
    }
    if (!open_) automatic_ = automatic;
    return true;
}

bool CompletionModel::Take(Completions completions, Position askedAt)
{
    const bool here = view_.Caret() == askedAt && !view_.HasSeveral();
    const Text word = here ? WordBeforeCaret() : Text();
    // What stands there already needs no help.
    const bool typed = completions.best.size() == 1 && EqualsNoCase(completions.best.front().label, word);
    if (!here || completions.best.empty() || (automatic_ && typed)) return Close(), false;
    const Text chosen = open_ && chosen_ >= 0 ? Items()[static_cast<size_t>(chosen_)].label : Text();
    completions_ = std::move(completions);
    open_ = true;
    chosen_ = automatic_ ? -1 : 0;
    const auto same = std::find_if(Items().begin(), Items().end(), [&](auto& item) { return item.label == chosen; });
    if (!chosen.empty() && same != Items().end()) chosen_ = static_cast<int32_t>(same - Items().begin());
    return true;
}

bool CompletionModel::TakeCloser(const Text& closer, Position askedAt)
{
    if (view_.Caret() != askedAt || view_.HasSeveral() || open_) return false;
    completions_ = {};
    completions_.replaces = {askedAt, askedAt};
    completions_.best.push_back({closer, Completion::Kind::Closer, closer, {}, {}});
    automatic_ = open_ = true;
    chosen_ = -1;
    return true;
}

void CompletionModel::Close()
{
    open_ = false;
    chosen_ = -1;
    completions_ = {};
}

void CompletionModel::Choose(int32_t item)
{
    if (open_) chosen_ = std::clamp(item, -1, static_cast<int32_t>(Items().size()) - 1);
}

void CompletionModel::Step(int32_t by)
{
    const auto count = static_cast<int32_t>(Items().size());
    if (!open_) return;
    if (chosen_ < 0)
        chosen_ = by > 0 ? 0 : count - 1;
    else if (by == 1 || by == -1)
        chosen_ = (chosen_ + by + count) % count;
    else
        chosen_ = std::clamp(chosen_ + by, 0, count - 1);
}

void CompletionModel::Accept()
{
    if (!open_) return;
    const Completion chosen = Items()[static_cast<size_t>(std::max(chosen_, 0))];
    const Position start = completions_.replaces.start;
    Close();
    if (!view_.MayEdit()) return;
    if (chosen.kind == Completion::Kind::Closer) return InsertCloser(chosen.insert);
    if (view_.Caret().line != start.line || view_.Caret() < start) return;
    view_.SetSelection(start, view_.Caret());
    view_.Insert(chosen.insert);
}

/// Below the caret's line, where the line stands that opens the block; the caret stays.
void CompletionModel::InsertCloser(const Text& closer)
{
    SourceDocument& text = view_.Document();
    const Position caret = view_.Caret();
    const Text opener = caret.line > 0 ? text.GetLine(caret.line - 1) : Text();
    const size_t indent = std::min(opener.find_first_not_of(u' '), opener.size());
    text.BreakTyping();
    text.InsertText({text.LineLength(caret.line), caret.line}, u"\r\n" + Text(indent, u' ') + closer);
    text.BreakTyping();
    view_.SetCaret(caret);
}

} // namespace nib
