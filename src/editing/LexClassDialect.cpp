// What a dialect adds to the tokens of a line; part of LexClass.

#include "editing/LexClass.h"

#include "editing/BlockStyles.h"

namespace nib {

using namespace unit_class;

void LexClass::BeginInDialect(uint32_t above)
{
    stringAt_ = commentAt_ = -1;
    if (above & line_flag::kGoesOn) {
        lineFlags_ = line_flag::kContinues;
        if (previous_ == Kind::None) previous_ = Kind::Continued;
        return;
    }
    const int32_t first = text_.BlanksEnd(0);
    if (first < text_.Length() && rules_->directives.find(text_[first]) != Text::npos)
        lineFlags_ = line_flag::kDirective;
}

/// Behind the semicolon here, which stands in parentheses that are closed in a later line.
bool LexClass::CommentFollows() const
{
    const int32_t at = text_.BlanksEnd(position_ + 1);
    return at < text_.Length() && keywords_->Tables().Of(text_[at]) & kPrefix;
}

/// Whether the statement goes on in the next line: at the line's end.
int32_t LexClass::FlagsOfEnd() const
{
    if (lineFlags_ & line_flag::kDirective) return 0;
    const bool comment = previous_ == Kind::Comment;
    int32_t end = comment ? commentAt_ : text_.Length();
    while (end > 0 && (text_[end - 1] == u' ' || (comment && text_[end - 1] == u';'))) --end;
    // Comments and blank lines may stand between.
    if (end == 0) return lineFlags_ & line_flag::kContinues ? line_flag::kGoesOn : 0;
    const char16_t last = text_[end - 1];
    if (rules_->continuations.find(last) == Text::npos) return 0;
    // A lone backslash at the end begins a string for those who know no better; what it closes is one.
    const bool ofString = previous_ == Kind::String || previous_ == Kind::CutString || last == u'\\';
    return ofString && stringAt_ != end - 1 ? 0 : line_flag::kGoesOn;
}

int32_t LexClass::FlagsOfDialect(int32_t block, int32_t end, const KeywordTables& tables) const
{
    if (lineFlags_ & line_flag::kDirective) return 0;
    const bool lineEnds = LineEndsAt(end, tables);
    if (block & block_condition::kLast && !lineEnds) return 0;
    if (block & block_condition::kFirst) {
        using enum Kind;
        if (previous_ != None && previous_ != Label && previous_ != Separator) return 0;
        const char16_t next = text_[text_.BlanksEnd(end)];
        if (!lineEnds && next != u';' && !(tables.Of(next) & kFirst)) return 0;
    }
    return block & block::kAny;
}

bool LexClass::FindApartLabel(int32_t nameEnd, Extent& extent) const
{
    const int32_t colon = text_.BlanksEnd(nameEnd);
    if (!rules_->blankBeforeColon || colon == nameEnd || text_[colon] != u':') return false;
    if (colon + 1 < text_.Length() && text_[colon + 1] != u' ') return false;
    const TextView name = text_.Piece(position_, nameEnd);
    const clsKeyword* known = rules_->looks.Find(name);
    if (keywords_->Item(name) || (known && known->Block & word_look::kStatement)) return false;
    extent.end = colon + 1;
    extent.flags = line_flag::kApartLabel;
    return true;
}

} // namespace nib
