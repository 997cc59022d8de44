#include "editing/operations/BlockOps.h"

#include "editing/MvEdit.h"
#include "text/TextSearch.h"

#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace nib {

namespace {

enum class LetterCase { Open, Upper, Lower, Capitals };

constexpr size_t kTellingLength = 80;

LetterCase CaseAfter(TextView part)
{
    part = part.substr(0, kTellingLength);
    Text upper = ToUpper(part);
    Text lower = ToLower(part);
    if (upper == lower) return LetterCase::Open;
    if (part == upper) return LetterCase::Lower;
    return part == lower ? LetterCase::Capitals : LetterCase::Upper;
}

bool IsWordPart(UChar32 c)
{
    return u_isalnum(c) || (U_GET_GC_MASK(c) & U_GC_M_MASK);
}

Text ToCapitals(TextView part)
{
    Text text;
    text.reserve(part.size());
    Text lower = ToLower(part);
    auto length = static_cast<int32_t>(lower.size());
    bool inWord = false;
    for (int32_t at = 0; at < length;) {
        int32_t from = at;
        UChar32 c = 0;
        U16_NEXT(lower.data(), at, length, c);
        TextView unit = TextView(lower).substr(static_cast<size_t>(from), static_cast<size_t>(at - from));
        bool word = IsWordPart(c);
        if (word && !inWord)
            text += ToUpper(unit);
        else
            text += unit;
        inWord = word;
    }
    return text;
}

Text Converted(TextView part, LetterCase to)
{
    switch (to) {
    case LetterCase::Upper: return ToUpper(part);
    case LetterCase::Lower: return ToLower(part);
    case LetterCase::Capitals: return ToCapitals(part);
    case LetterCase::Open: break;
    }
    return Text(part);
}

/// Behind the closing quote; a string that stays open ends with its line.
size_t QuotedEnd(TextView text, size_t quote)
{
    const char16_t ends[] = {text[quote], u'\r'};
    size_t end = text.find_first_of(TextView(ends, 2), quote + 1);
    if (end == TextView::npos) return text.size();
    return text[end] == u'\r' ? end : end + 1;
}

/// Gives a range a text of as many lines, one by one, so that each line stays the same one. Answers the new end.
Position ReplaceLineByLine(SourceDocument& document, Position start, Position end, TextView text)
{
    Text scratch;
    for (Position from = start;; from = {0, from.line + 1}) {
        size_t cut = std::min(text.find(u'\r'), text.size());
        TextView piece = text.substr(0, cut);
        TextView line = document.LineText(from.line, scratch);
        bool last = from.line == end.line;
        int32_t to = last ? end.col : static_cast<int32_t>(line.size());
        if (line.substr(static_cast<size_t>(from.col), static_cast<size_t>(to - from.col)) != piece) {
            document.DeleteRange(from, {to, from.line});
            document.InsertText(from, piece);
        }
        if (last) return {from.col + static_cast<int32_t>(piece.size()), from.line};
        text.remove_prefix(std::min(cut + 2, text.size()));
    }
}

} // namespace

void BlockRectangle::Shift(int32_t line, int32_t column, int32_t by)
{
    for (Position* place : {&start, &end, &caret})
        if (place->line == line && place->col > column) place->col = std::max(place->col + by, 0);
}

BlockRectangle TakeBlock(const SourceView& view)
{
    auto [start, end] = view.Selection();
    if (!view.HasSelection() && end.col == 0) ++end.line;
    return {start, end, view.Caret(), view.HasSelection(), view.Caret() < view.Anchor()};
}

void FinishBlock(SourceDocument& document, SourceView& view, const BlockRectangle& block)
{
    document.UpdateLines(block.FirstLine(), block.LastLine());
    document.NotifyChange(kLinesChanged, block.FirstLine(), block.LastLine(), block.caret);
    if (!block.selected) return;
    view.SetSelection(block.swapped ? block.end : block.start, block.swapped ? block.start : block.end);
}

void OpIndentBlock::DoOp(SourceDocument& document)
{
    if (!block_) {
        block_ = TakeBlock(view_);
        amount_ = view_.TabSize();
    }
    BlockRectangle block = *block_;
    shortLines_.clear();
    LineEdits edits;
    for (int32_t line = block.FirstLine(), last = block.LastLine(); line <= last; ++line) {
        int32_t moved =
            document.ShiftLine(edits, line, indent_ ? amount_ : -amount_, SourceDocument::EmptyLine::IsPadded);
        if (std::abs(moved) != amount_) shortLines_.push_back({line, -moved});
        block.Shift(line, 0, moved);
    }
    document.EditLines(std::move(edits));
    FinishBlock(document, view_, block);
}

void OpIndentBlock::UndoOp(SourceDocument& document)
{
    Text blanks(static_cast<size_t>(amount_), u' ');
    LineEdits edits;
    auto next = shortLines_.begin();
    int32_t last = block_->LastLine();
    for (int32_t line = block_->FirstLine(); line <= last; ++line) {
        if (indent_) {
            edits.Remove(line, 0, amount_);
            continue;
        }
        bool isShort = next != shortLines_.end() && next->line == line;
        int32_t count = isShort ? next++->blanks : amount_;
        edits.Insert(line, 0, TextView(blanks).substr(0, static_cast<size_t>(count)));
    }
    document.EditLines(std::move(edits));
    FinishBlock(document, view_, *block_);
}

OpCommentBlock::OpCommentBlock(bool comment, SourceView& view, const MvEdit& settings)
    : comment_(comment), view_(view), indentStar_(settings.IndentStar), indentBang_(settings.IndentBang)
{
    if (indentStar_ == comment_place::kAtMargin)
        marker_.assign(static_cast<size_t>(std::max<int32_t>(settings.Margin, 0)), u' ');
    marker_ += u'*';
}

OpCommentBlock::LineChange OpCommentBlock::Plan(TextView line) const
{
    int32_t column = IndentOf(line);
    if (comment_) return {indentStar_ == comment_place::kLikeCode ? column : 0, static_cast<int32_t>(marker_.size())};

    auto indent = static_cast<size_t>(column);
    char16_t first = indent < line.size() ? line[indent] : u'\0';
    if (first != u'*' && first != u'!') return {};
    int32_t count = 1;
    // A comment of the margin kind may have its original indent behind the marker, as wide as the margin before it.
    if ((first == u'*' ? indentStar_ : indentBang_) == comment_place::kAtMargin)
        count += IndentOf(line.substr(indent + 1, indent));
    return {column, first == u'*' ? count : -count};
}

void OpCommentBlock::Apply(LineEdits& edits, int32_t line, LineChange change, BlockRectangle& block) const
{
    if (comment_) {
        edits.Insert(line, change.column, marker_);
        block.Shift(line, 0, 1);
    } else if (change.count != 0) {
        edits.Remove(line, change.column, std::abs(change.count));
        block.Shift(line, change.column, -1);
    }
}

void OpCommentBlock::DoOp(SourceDocument& document)
{
    bool planned = block_.has_value();
    if (!planned) block_ = TakeBlock(view_);
    BlockRectangle block = *block_;
    int32_t first = block.FirstLine();
    int32_t last = block.LastLine();
    if (!planned) changes_.reserve(static_cast<size_t>(last - first) + 1);
    Text scratch;
    LineEdits edits;
    for (int32_t line = first; line <= last; ++line) {
        if (!planned) changes_.push_back(Plan(document.LineText(line, scratch)));
        Apply(edits, line, changes_[static_cast<size_t>(line - first)], block);
    }
    document.EditLines(std::move(edits));
    FinishBlock(document, view_, block);
}

void OpCommentBlock::UndoOp(SourceDocument& document)
{
    Blanks blanks;
    Text marker;
    LineEdits edits;
    int32_t line = block_->FirstLine();
    for (auto [column, count] : changes_) {
        if (comment_) {
            edits.Remove(line, column, count);
        } else if (count != 0) {
            marker = count < 0 ? u'!' : u'*';
            marker += blanks(std::abs(count) - 1);
            edits.Insert(line, column, marker);
        }
        ++line;
    }
    document.EditLines(std::move(edits));
    FinishBlock(document, view_, *block_);
}

std::optional<Text> WithToggledCase(TextView text)
{
    Text result;
    result.reserve(text.size());
    LetterCase to = LetterCase::Open;
    bool changed = false;
    for (size_t at = 0; at < text.size();) {
        size_t quote = std::min(text.find_first_of(u"\"'\\", at), text.size());
        TextView part = text.substr(at, quote - at);
        if (to == LetterCase::Open) to = CaseAfter(part);
        Text converted = Converted(part, to);
        changed = changed || converted != part;
        result += converted;
        at = quote < text.size() ? QuotedEnd(text, quote) : quote;
        result += text.substr(quote, at - quote);
    }
    if (!changed) return std::nullopt;
    return result;
}

void OpToggleCase::DoOp(SourceDocument& document)
{
    if (!std::exchange(taken_, true)) block_ = TakeBlock(view_);
    if (!block_.selected) return;
    oldText_ = document.GetRange(block_.start, block_.end);
    std::optional<Text> newText = WithToggledCase(oldText_);
    if (!newText) {
        oldText_ = {};
        return;
    }
    newEnd_ = ReplaceLineByLine(document, block_.start, block_.end, *newText);
    BlockRectangle block = block_;
    block.end = newEnd_;
    if (!block.swapped) block.caret = newEnd_;
    FinishBlock(document, view_, block);
}

void OpToggleCase::UndoOp(SourceDocument& document)
{
    if (oldText_.empty()) return;
    ReplaceLineByLine(document, block_.start, newEnd_, oldText_);
    FinishBlock(document, view_, block_);
}

void OpReplace::DoOp(SourceDocument& document)
{
    start_ = document.Clamp(start_); // the place must be the same one when the text is longer or shorter
    end_ = document.Clamp(end_);
    oldText_ = document.GetRange(start_, end_);
    document.DeleteRange(start_, end_);
    newEnd_ = document.InsertText(start_, replaceWith_);
    document.NotifyChange(kLinesChanged, start_.line, newEnd_.line, newEnd_);
    document.UpdateLines(start_.line, newEnd_.line);
}

void OpReplace::UndoOp(SourceDocument& document)
{
    document.DeleteRange(start_, newEnd_);
    Position end = document.InsertText(start_, oldText_);
    document.NotifyChange(kLinesChanged, start_.line, end.line, end);
    document.UpdateLines(start_.line, end.line);
}

} // namespace nib
