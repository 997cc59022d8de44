// Comments and strings, and what marks leave of them; part of LexClass.

#include "editing/LexClass.h"

#include "editing/BlockStyles.h"
#include "text/Units.h"

namespace nib {

using namespace unit_class;

namespace {

/// False does not mean that they are equal. Spares most comparisons of comments with comment keywords.
bool DifferEarly(TextView a, TextView b)
{
    return b.size() > 1 && a[0] == b[0] && a[1] < 0x80 && b[1] < 0x80 &&
           units::FoldAscii(a[1]) != units::FoldAscii(b[1]);
}

} // namespace

/// A mark, or the text up to the next one: plain, or the rest of the string or comment that one interrupted.
LexClass::Kind LexClass::Uncoloured(Extent& extent) const
{
    char16_t c = text_[position_];
    extent.end = position_ + 1;
    if (c == kValueMark) return Kind::Value;
    if (c == kSubValueMark) return Kind::SubValue;
    if (highlight_) return previous_ == Kind::CutString ? String(position_, extent) : Comment(extent);
    extent.end = text_.MarkFrom(position_);
    return Kind::Blank;
}

LexClass::Kind LexClass::Comment(Extent& extent) const
{
    extent.end = text_.MarkFrom(position_);
    return extent.end < text_.Length() ? Kind::CutComment : Kind::Comment;
}

LexClass::Kind LexClass::String(int32_t from, Extent& extent) const
{
    int32_t at = text_.MarkOr(quote_, from);
    bool closed = at < text_.Length() && text_[at] == quote_;
    extent.end = closed ? at + 1 : at;
    return closed || at >= text_.Length() ? Kind::String : Kind::CutString;
}

bool LexClass::FindComment(const KeywordTables& tables, Extent& extent, Kind& kind)
{
    bool prefix = tables.Of(text_[position_]) & kPrefix;
    if (!prefix && !WordAt(position_, u"REM ") && !WordAt(position_, u"REMARK ")) return false;
    kind = Comment(extent);
    commentAt_ = position_;
    if (previous_ != Kind::Separator) extent.flags = line_flag::kComment;
    if (prefix && !tables.Comments().empty())
        extent.flags |= FlagsOfComment(tables, text_.Piece(position_, extent.end));
    return true;
}

int32_t LexClass::FlagsOfComment(const KeywordTables& tables, TextView comment) const
{
    bool exact = keywords_->CaseSensitive();
    for (const clsKeyword* keyword : tables.Comments()) {
        TextView word = keyword->Word;
        if (word.size() > comment.size() || DifferEarly(comment, word)) continue;
        if (exact ? !comment.starts_with(word) : !StartsWithNoCase(comment, word)) continue;
        constexpr int32_t kBeginsRegion = block::kUserBegin | block::kUserBeginFirst | block::kUserBeginLast;
        if (keyword->Block & kBeginsRegion) return block::kUserBegin;
        return keyword->Block & block::kUserEnd;
    }
    return 0;
}

/// `upper` is ASCII.
bool LexClass::WordAt(int32_t at, TextView upper) const
{
    if (text_.Length() - at < static_cast<int32_t>(upper.size())) return false;
    TextView piece = text_.Piece(at, at + static_cast<int32_t>(upper.size()));
    if (keywords_->CaseSensitive()) return piece == upper;
    for (size_t i = 0; i < upper.size(); ++i) {
        if (piece[i] >= 0x80) return EqualsNoCase(piece, upper);
        if (units::FoldAscii(piece[i]) != units::FoldAscii(upper[i])) return false;
    }
    return true;
}

} // namespace nib
