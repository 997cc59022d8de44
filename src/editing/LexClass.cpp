#include "editing/LexClass.h"

#include "base/Marks.h"
#include "diagnostics/Guarded.h"
#include "editing/BlockStyles.h"
#include "editing/Units.h"

#include <algorithm>

namespace nib {

using namespace unit_class;

struct LexClass::KindRow {
    int32_t type;
    bool remembered;     ///< tests look back at this kind; they look through the others
    bool statementStart; ///< a statement begins behind it
    bool labelPosition;  ///< a label or a number may stand behind it
    bool goesOn;         ///< the token behind it is its continuation
    int8_t depth;
    int32_t flags;
};

constexpr LexClass::KindRow LexClass::kKinds[] = {
    {token_type::kEndOfLine, true, true, true, false, 0, 0},              // None
    {token_type::kBlank, false, false, false, false, 0, 0},               // Blank
    {token_type::kValueMark, false, false, false, false, 0, 0},           // ValueMark
    {token_type::kSubValueMark, false, false, false, false, 0, 0},        // SubValueMark
    {token_type::kLabel, true, true, false, false, 0, line_flag::kLabel}, // Label
    {token_type::kLabel, true, false, false, false, 0, 0},                // LabelReference
    {token_type::kNumber, true, false, false, false, 0, 0},               // Number
    {token_type::kReserved, true, false, true, false, 0, 0},              // Branch
    {token_type::kSeparator, true, true, false, false, 0, 0},             // Separator
    {token_type::kNormal, true, false, true, false, 0, 0},                // ListComma
    {token_type::kComment, true, false, false, false, 0, 0},              // Comment
    {token_type::kComment, true, false, false, true, 0, 0},               // CutComment
    {token_type::kString, true, false, false, false, 0, 0},               // String
    {token_type::kString, true, false, false, true, 0, 0},                // CutString
    {token_type::kNormal, true, false, false, false, 1, 0},               // Open
    {token_type::kNormal, true, false, false, false, -1, 0},              // Close
    {token_type::kNormal, true, false, false, false, 0, 0},               // Normal
    {token_type::kUserKeyword, true, false, false, false, 0, 0},          // UserKeyword
    {token_type::kReserved, true, false, false, false, 0, 0},             // Reserved
};

namespace {

constexpr int32_t kBegins = 1;
constexpr int32_t kEnds = 2;

constexpr bool IsBreak(char16_t c)
{
    return c == kValueMark || c == kSubValueMark;
}

constexpr int32_t AttributesOf(int32_t flags)
{
    if (flags & kBeginBlocks) return kBegins;
    return flags & kEndBlocks ? kEnds : 0;
}

} // namespace

void LexClass::SetKeywords(const clsKeywords& keywords)
{
    keywords_ = &keywords;
    own_.reset();
}

void LexClass::BeginLineScan(SourceDocument& document, int32_t line, TextView lineText, int32_t /*flags*/)
{
    text_ = lineText.data();
    line_ = line;
    length_ = std::clamp(document.LineLength(line), 0, static_cast<int32_t>(lineText.size()));
    position_ = 0;
    depth_ = 0;
    lineFlags_ = 0;
    previous_ = Kind::None;
    if (line > 0 && document.GetLineData(line - 1, LineWord::Lexer) & line_flag::kListContinues)
        previous_ = Kind::ListComma;
    traced_ = log_ && log_->Wants(trace::kTokens);
}

int16_t LexClass::EndLineScan(SourceDocument& document)
{
    document.SetLineData(line_, LineWord::Lexer, static_cast<uint32_t>(lineFlags_));
    return 0;
}

void LexClass::ScanToken(Token& token)
{
    Guarded(
        log_ ? *log_ : DebugLog(), u"LexClass.ScanToken", [&] { Step(token); },
        [&](const Error&) {
            token = {token_type::kEndOfLine, position_, 0, 0};
        });
}

void LexClass::Step(Token& token)
{
    Found found = Next(keywords_->Tables());
    const KindRow& row = kKinds[static_cast<size_t>(found.kind)];
    int32_t flags = found.flags | row.flags;
    token = {row.type, position_, found.end - position_, AttributesOf(flags)};
    if (traced_) Trace(token, flags);
    if (row.remembered) previous_ = found.kind;
    depth_ += row.depth;
    lineFlags_ |= flags;
    position_ = found.end;
}

void LexClass::Trace(const Token& token, int32_t flags) const
{
    log_->Write(
        [&] {
            return Text(u"LexClass.ScanToken: token=")
                .append(Piece(token.start, token.start + token.length))
                .append(u" type=" + Decimal(token.type))
                .append(u" atts=" + Decimal(token.attributes))
                .append(u" flags=0x" + Hex(flags));
        },
        trace::kTokens);
}

LexClass::Found LexClass::Next(const KeywordTables& tables)
{
    if (position_ >= length_)
        return {position_, Kind::None, previous_ == Kind::ListComma ? line_flag::kListContinues : 0};
    const KindRow& before = kKinds[static_cast<size_t>(previous_)];
    char16_t c = text_[position_];
    if (!highlight_ || before.goesOn) return IsBreak(c) || !highlight_ ? Uncoloured() : GoOn();
    if (c == u' ') return {SkipBlanks(position_ + 1), Kind::Blank};
    if (IsBreak(c)) return Uncoloured();

    uint8_t is = tables.Of(c);
    Found found{position_ + 1, Kind::Normal};
    if (before.statementStart && FindComment(tables, found)) return found;
    if (is & kSyntax && FindSyntax(c, found)) return found;
    if (before.labelPosition && is & (kLetter | kDigit) && FindLabel(tables, found)) return found;
    if ((c | 0x20) == u'g' && FindBranch(found)) return found;
    return is & kFirst ? FindKeyword(tables) : found;
}

/// A mark, or with highlighting off the text up to the next one.
LexClass::Found LexClass::Uncoloured() const
{
    char16_t c = text_[position_];
    if (c == kValueMark) return {position_ + 1, Kind::ValueMark};
    if (c == kSubValueMark) return {position_ + 1, Kind::SubValueMark};
    return {MarkFrom(position_), Kind::Blank};
}

/// The string or comment that a mark interrupted.
LexClass::Found LexClass::GoOn() const
{
    return previous_ == Kind::CutString ? String(position_) : CommentTo(MarkFrom(position_));
}

LexClass::Found LexClass::CommentTo(int32_t end) const
{
    return {end, end < length_ ? Kind::CutComment : Kind::Comment};
}

LexClass::Found LexClass::String(int32_t from) const
{
    for (int32_t at = from; at < length_; ++at) {
        if (text_[at] == quote_) return {at + 1, Kind::String};
        if (IsBreak(text_[at])) return {at, Kind::CutString};
    }
    return {length_, Kind::String};
}

bool LexClass::FindComment(const KeywordTables& tables, Found& found) const
{
    char16_t c = text_[position_];
    bool prefix = tables.Of(c) & kPrefix;
    bool remark = (c | 0x20) == u'r' && (WordAt(position_, u"REMARK ") || WordAt(position_, u"REM "));
    if (!prefix && !remark) return false;
    found = CommentTo(MarkFrom(position_));
    if (previous_ != Kind::Separator) found.flags = line_flag::kComment;
    if (prefix && !tables.Comments().empty()) found.flags |= FlagsOfComment(tables, Piece(position_, found.end));
    return true;
}

int32_t LexClass::FlagsOfComment(const KeywordTables& tables, TextView comment) const
{
    bool exact = keywords_->CaseSensitive();
    for (const clsKeyword* keyword : tables.Comments()) {
        TextView word = keyword->Word;
        if (word.size() > comment.size()) continue;
        if (exact ? !comment.starts_with(word) : !StartsWithNoCase(comment, word)) continue;
        constexpr int32_t kBeginsRegion = user_block::kBegin | user_block::kBeginFirst | user_block::kBeginLast;
        if (keyword->Block & kBeginsRegion) return user_block::kBegin;
        return keyword->Block & user_block::kEnd;
    }
    return 0;
}

bool LexClass::FindSyntax(char16_t c, Found& found)
{
    switch (c) {
    case u';': found.kind = depth_ == 0 ? Kind::Separator : Kind::Normal; break;
    case u',': found.kind = previous_ == Kind::LabelReference ? Kind::ListComma : Kind::Normal; break;
    case u'(': found.kind = Kind::Open; break;
    case u')': found.kind = Kind::Close; break;
    default: quote_ = c; found = String(position_ + 1);
    }
    // What has no part of its own here may still belong to a keyword.
    return found.kind != Kind::Normal;
}

bool LexClass::FindLabel(const KeywordTables& tables, Found& found) const
{
    const uint8_t* classes = tables.Classes();
    bool first = previous_ == Kind::None;
    int32_t end = position_ + 1;
    if (classes[text_[position_]] & kDigit) {
        while (end < length_ && (classes[text_[end]] & kDigit || text_[end] == u'.')) ++end;
        if (end < length_ && text_[end] == u':') ++end;
        found = {end, first ? Kind::Label : Kind::Number};
        return true;
    }
    while (end < length_ && classes[text_[end]] & kLabel) ++end;
    bool colon = end < length_ && text_[end] == u':';
    if (first && (!colon || (end + 1 < length_ && text_[end + 1] == u'='))) return false;
    found = {colon ? end + 1 : end, first ? Kind::Label : Kind::LabelReference};
    return true;
}

bool LexClass::FindBranch(Found& found) const
{
    if (!WordAt(position_, u"GO")) return false;
    int32_t at = SkipBlanks(position_ + 2);
    if (WordAt(at, u"TO "))
        found = {at + 3, Kind::Branch};
    else if (WordAt(at, u"SUB "))
        found = {at + 4, Kind::Branch};
    else if (text_[at - 1] == u' ')
        found = {at, Kind::Branch};
    else
        return false;
    return true;
}

LexClass::Found LexClass::FindKeyword(const KeywordTables& tables) const
{
    const uint8_t* classes = tables.Classes();
    int32_t end = position_ + 1;
    while (end < length_ && classes[text_[end]] & kNext) ++end;

    uint8_t hint = tables.Hint(text_[position_], text_[end - 1], static_cast<size_t>(end - position_));
    const clsKeyword* keyword = nullptr;
    int32_t keywordEnd = end;
    if (hint > KeywordTables::kWhole && end < length_ && text_[end] == u' ')
        keyword = MatchCompound(tables, hint >> KeywordTables::kWordsShift, keywordEnd);
    if (!keyword && hint & KeywordTables::kWhole) keyword = keywords_->Item(Piece(position_, end));
    if (!keyword) return {classes[text_[position_]] & kFirstExact ? position_ + 1 : end, Kind::Normal};

    constexpr int32_t kOfTheLanguage = keyword_class::kReserved | keyword_class::kLanguage;
    return {keywordEnd, keyword->Class & kOfTheLanguage ? Kind::Reserved : Kind::UserKeyword,
            FlagsOfKeyword(keyword->Block, keywordEnd, tables)};
}

/// The longest keyword of two words at least that begins at the position; `end` is that of the first word.
const clsKeyword* LexClass::MatchCompound(const KeywordTables& tables, int32_t most, int32_t& end) const
{
    const uint8_t* classes = tables.Classes();
    most = std::min<int32_t>(most, tables.CompoundSize());
    int32_t ends[KeywordTables::kMostWords];
    int32_t words = 0;
    int32_t last = end;
    for (int32_t word = 2; word <= most; ++word) {
        if (last >= length_ || text_[last] != u' ') break;
        int32_t at = SkipBlanks(last);
        if (at >= length_ || !(classes[text_[at]] & kFirst)) break;
        last = at + 1;
        while (last < length_ && classes[text_[last]] & kNext) ++last;
        ends[words++] = last;
    }
    while (words-- > 0) {
        TextView piece = Piece(position_, ends[words]);
        if (!(tables.Hint(piece.front(), piece.back(), piece.size()) & KeywordTables::kWhole)) continue;
        if (const clsKeyword* keyword = keywords_->Item(piece)) {
            end = ends[words];
            return keyword;
        }
    }
    return nullptr;
}

int32_t LexClass::FlagsOfKeyword(int32_t block, int32_t end, const KeywordTables& tables) const
{
    if (block & kStatementStartBlocks) return kKinds[static_cast<size_t>(previous_)].statementStart ? block : 0;
    if (block & kLineEndBlocks) return LineEndsAt(end, tables) ? block : 0;
    return block;
}

/// Nothing follows but blanks and semicolons, or behind a semicolon a comment.
bool LexClass::LineEndsAt(int32_t at, const KeywordTables& tables) const
{
    bool separator = false;
    for (; at < length_ && (text_[at] == u' ' || text_[at] == u';'); ++at) separator |= text_[at] == u';';
    return at >= length_ || (separator && tables.Of(text_[at]) & kPrefix);
}

/// `upper` is ASCII.
bool LexClass::WordAt(int32_t at, TextView upper) const
{
    if (length_ - at < static_cast<int32_t>(upper.size())) return false;
    TextView piece(text_ + at, upper.size());
    if (keywords_->CaseSensitive()) return piece == upper;
    for (size_t i = 0; i < upper.size(); ++i) {
        if (piece[i] >= 0x80) return EqualsNoCase(piece, upper);
        if (units::FoldAscii(piece[i]) != units::FoldAscii(upper[i])) return false;
    }
    return true;
}

int32_t LexClass::SkipBlanks(int32_t at) const
{
    for (; at + 4 <= length_ && units::Load4(text_ + at) == units::kEach * u' '; at += 4) {
    }
    while (at < length_ && text_[at] == u' ') ++at;
    return at;
}

int32_t LexClass::MarkFrom(int32_t at) const
{
    for (; at + 4 <= length_; at += 4) {
        uint64_t four = units::Load4(text_ + at);
        if (units::Holds4(four, kValueMark) || units::Holds4(four, kSubValueMark)) break;
    }
    while (at < length_ && !IsBreak(text_[at])) ++at;
    return at;
}

} // namespace nib
