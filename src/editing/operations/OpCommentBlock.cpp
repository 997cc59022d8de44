#include "editing/operations/OpCommentBlock.h"

#include "editing/MvEdit.h"
#include "editing/operations/Blanks.h"

#include <algorithm>
#include <cstdlib>

namespace nib {

namespace {
// Values of the comment settings
constexpr int32_t kAtMargin = 0;
constexpr int32_t kLikeCode = 1;
} // namespace

OpCommentBlock::OpCommentBlock(bool comment, SourceView& view, const MvEdit& settings)
    : comment_(comment), view_(view), indentStar_(settings.IndentStar), indentBang_(settings.IndentBang)
{
    if (indentStar_ == kAtMargin) marker_.assign(static_cast<size_t>(std::max<int32_t>(settings.Margin, 0)), u' ');
    marker_ += u'*';
}

OpCommentBlock::LineChange OpCommentBlock::Plan(TextView line) const
{
    size_t indent = std::min(line.find_first_not_of(u' '), line.size());
    auto column = static_cast<int32_t>(indent);
    if (comment_) return {indentStar_ == kLikeCode ? column : 0, static_cast<int32_t>(marker_.size())};

    char16_t first = indent < line.size() ? line[indent] : u'\0';
    if (first != u'*' && first != u'!') return {};
    int32_t count = 1;
    // A comment of the margin kind has its original indent behind the marker, as wide as the margin before it.
    if ((first == u'*' ? indentStar_ : indentBang_) == kAtMargin)
        count = std::min(column + 1, static_cast<int32_t>(line.size()) - column);
    return {column, first == u'*' ? count : -count};
}

void OpCommentBlock::Apply(SourceDocument& document, int32_t line, LineChange change, BlockRectangle& block) const
{
    if (comment_) {
        document.InsertText({change.column, line}, marker_);
        block.Shift(line, 0, 1);
    } else if (change.count != 0) {
        document.DeleteRange({change.column, line}, {change.column + std::abs(change.count), line});
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
    if (!planned) changes_.reserve(static_cast<size_t>(last - first + 1));
    Text scratch;
    for (int32_t line = first; line <= last; ++line) {
        if (!planned) changes_.push_back(Plan(document.LineText(line, scratch)));
        Apply(document, line, changes_[static_cast<size_t>(line - first)], block);
    }
    FinishBlock(document, view_, block);
}

void OpCommentBlock::UndoOp(SourceDocument& document)
{
    Blanks blanks;
    Text marker;
    int32_t line = block_->FirstLine();
    for (auto [column, count] : changes_) {
        if (comment_) {
            document.DeleteRange({column, line}, {column + count, line});
        } else if (count != 0) {
            // The blanks come back in front of the marker, whatever was taken off behind it.
            marker = blanks(std::abs(count) - 1);
            marker += count < 0 ? u'!' : u'*';
            document.InsertText({column, line}, marker);
        }
        ++line;
    }
    FinishBlock(document, view_, *block_);
}

} // namespace nib
