#include "editing/LexClass.h"

#include "base/Text.h"
#include "diagnostics/Guarded.h"
#include "editing/BlockEffect.h"
#include "editing/BlockStyles.h"
#include "text/SourceDocument.h"
#include "text/Units.h"

#include <algorithm>

namespace nib {

using namespace unit_class;

namespace {

/// Traits of a kind of token.
constexpr uint8_t kLookedAt = 1;       ///< tests look back at it; they look through the others
constexpr uint8_t kStatementStart = 2; ///< a statement begins behind it
constexpr uint8_t kLabelPosition = 4;  ///< a label or a number may stand behind it
constexpr uint8_t kGoesOn = 8;         ///< the token behind it is its continuation

} // namespace

struct LexClass::KindRow {
    int32_t type;
    int32_t flags;
    int32_t depth;
    uint8_t traits;
};

constexpr LexClass::KindRow LexClass::kKinds[] = {
    {token_type::kEndOfLine, 0, 0, kLookedAt | kStatementStart | kLabelPosition}, // None
    {token_type::kEndOfLine, 0, 0, kLookedAt | kStatementStart},                  // Continued
    {token_type::kBlank, 0, 0, 0},                                                // Blank
    {token_type::kValueMark, 0, 0, 0},                                            // Value
    {token_type::kSubValueMark, 0, 0, 0},                                         // SubValue
    {token_type::kLabel, line_flag::kLabel, 0, kLookedAt | kStatementStart},      // Label
    {token_type::kLabel, 0, 0, kLookedAt},                                        // LabelReference
    {token_type::kNumber, 0, 0, kLookedAt},                                       // Number
    {token_type::kReserved, 0, 0, kLookedAt | kLabelPosition},                    // Branch
    {token_type::kSeparator, 0, 0, kLookedAt | kStatementStart},                  // Separator
    {token_type::kNormal, 0, 0, kLookedAt | kLabelPosition},                      // ListComma
    {token_type::kComment, 0, 0, kLookedAt},                                      // Comment
    {token_type::kComment, 0, 0, kLookedAt | kGoesOn},                            // CutComment
    {token_type::kString, 0, 0, kLookedAt},                                       // String
    {token_type::kString, 0, 0, kLookedAt | kGoesOn},                             // CutString
    {token_type::kNormal, 0, 1, kLookedAt},                                       // Open
    {token_type::kNormal, 0, -1, kLookedAt},                                      // Close
    {token_type::kNormal, 0, 0, kLookedAt},                                       // Normal
    {token_type::kUserKeyword, 0, 0, kLookedAt},                                  // UserKeyword
    {token_type::kReserved, 0, 0, kLookedAt},                                     // Reserved
};

namespace {

constexpr TextView kWhere = u"LexClass.ScanToken";

constexpr int32_t AttributesOf(int32_t flags)
{
    if (flags & kBeginBlocks) return token_attribute::kBeginsBlock;
    return flags & kEndBlocks ? token_attribute::kEndsBlock : 0;
}

} // namespace

void LexClass::SetKeywords(const clsKeywords& keywords)
{
    keywords_ = &keywords;
    own_.reset();
}

void LexClass::BeginLineScan(SourceDocument& document, int32_t line, TextView lineText, int32_t /*flags*/)
{
    line_ = line;
    text_.Take(lineText.substr(0, static_cast<size_t>(std::max(document.LineLength(line), 0))));
    Begin(line > 0 ? document.GetLineData(line - 1, LineWord::Lexer) : 0);
}

void LexClass::Begin(uint32_t above)
{
    position_ = 0;
    depth_ = 0;
    lineFlags_ = 0;
    previous_ = above & line_flag::kListContinues ? Kind::ListComma : Kind::None;
    rules_ = highlight_ ? keywords_->Rules() : nullptr;
    if (rules_) BeginInDialect(above);
    traced_ = log_->Wants(trace::kTokens);
    quick_ = highlight_ && !traced_;
}

int16_t LexClass::EndLineScan(SourceDocument& document)
{
    document.SetLineData(line_, LineWord::Lexer, static_cast<uint32_t>(lineFlags_));
    return 0;
}

/// The end of a name of which `at` is not the first character.
inline int32_t LexClass::NameFrom(int32_t at, const uint8_t* classes) const
{
    for (;;) {
        at = text_.NameEnd(at);
        if (at >= text_.Length() || !(classes[text_[at]] & kNext)) return at;
        ++at; // a character that a keyword brought in
    }
}

inline uint8_t LexClass::TraitsBefore() const
{
    return kKinds[static_cast<size_t>(previous_)].traits;
}

/// Behind a token of this kind.
inline void LexClass::Pass(const KindRow& row, Kind kind, int32_t end, int32_t flags)
{
    depth_ += row.depth;
    lineFlags_ |= flags;
    position_ = end;
    if (!(row.traits & kLookedAt)) return;
    previous_ = kind;
    quick_ = highlight_ && !traced_ && !(row.traits & kGoesOn);
}

/// Whether the token that begins with `c`, which is no blank, is an operator or a name that is no keyword: the most
/// frequent ones need no search through the rules.
inline bool LexClass::IsQuick(const KeywordTables& tables, char16_t c, int32_t& end) const
{
    const uint8_t* classes = tables.Classes();
    const uint8_t is = classes[c];
    if (is & kSyntax || (c | 0x20) == u'g' || TraitsBefore() & (kStatementStart | kLabelPosition)) return false;
    end = position_ + 1;
    if (!(is & kFirst)) return true;
    const int32_t nameEnd = NameFrom(end, classes);
    if (tables.Hint(text_.Piece(position_, nameEnd)) != 0) return false;
    if (!(is & kFirstExact)) end = nameEnd;
    return true;
}

inline bool LexClass::QuickStep(Token& token)
{
    if (!quick_) return false;
    int32_t at = position_;
    if (at >= text_.Length()) {
        if (previous_ == Kind::ListComma) return false;
        if (rules_) lineFlags_ |= FlagsOfEnd();
        token = {token_type::kEndOfLine, at, 0, 0};
        previous_ = Kind::None;
        return true;
    }
    int32_t end = 0;
    const bool blank = text_[at] == u' ';
    if (blank)
        end = text_.BlanksEnd(at + 1);
    else if (IsQuick(keywords_->Tables(), text_[at], end))
        previous_ = Kind::Normal;
    else
        return false;
    token = {blank ? token_type::kBlank : token_type::kNormal, at, end - at, 0};
    position_ = end;
    return true;
}

/// To the next token that may be more than a blank, an operator or a name.
inline void LexClass::SkipQuick(const KeywordTables& tables)
{
    while (position_ < text_.Length()) {
        const char16_t c = text_[position_];
        int32_t end = 0;
        if (c == u' ')
            end = text_.BlanksEnd(position_ + 1);
        else if (IsQuick(tables, c, end))
            previous_ = Kind::Normal;
        else
            return;
        position_ = end;
    }
}

void LexClass::ScanToken(Token& token)
{
    if (!QuickStep(token)) GuardedStep(token);
}

void LexClass::GuardedStep(Token& token)
{
    Guarded(
        *log_, kWhere, [&] { Step(token); },
        [&](const Error&) {
            token = {token_type::kEndOfLine, position_, 0, 0};
        });
}

/// False for what has no part of its own here: it may still begin a keyword.
inline bool LexClass::FindSyntax(char16_t c, Extent& extent, Kind& kind)
{
    switch (c) {
    case u';': kind = depth_ == 0 || (rules_ && CommentFollows()) ? Kind::Separator : Kind::Normal; break;
    case u',': kind = previous_ == Kind::LabelReference ? Kind::ListComma : Kind::Normal; break;
    case u'(': kind = Kind::Open; break;
    case u')': kind = Kind::Close; break;
    default:
        quote_ = c;
        stringAt_ = position_;
        kind = String(position_ + 1, extent);
    }
    return kind != Kind::Normal;
}

inline LexClass::Kind LexClass::FindKeyword(const KeywordTables& tables, Extent& extent) const
{
    const uint8_t* classes = tables.Classes();
    int32_t start = position_;
    extent.end = NameFrom(start + 1, classes);
    uint8_t hint = tables.Hint(text_.Piece(start, extent.end));
    if (hint != 0) {
        if (const clsKeyword* keyword = MatchKeyword(tables, hint, extent.end)) {
            extent.flags = FlagsOfKeyword(keyword->Block, extent.end, tables);
            constexpr int32_t kOfTheLanguage = keyword_class::kReserved | keyword_class::kLanguage;
            return keyword->Class & kOfTheLanguage ? Kind::Reserved : Kind::UserKeyword;
        }
    }
    if (classes[text_[start]] & kFirstExact) extent.end = start + 1;
    return Kind::Normal;
}

[[gnu::always_inline]] inline LexClass::Kind LexClass::Next(const KeywordTables& tables, Extent& extent)
{
    int32_t at = position_;
    if (at >= text_.Length()) {
        if (previous_ == Kind::ListComma) extent.flags = line_flag::kListContinues;
        if (rules_) extent.flags |= FlagsOfEnd();
        return Kind::None;
    }
    char16_t c = text_[at];
    uint8_t before = TraitsBefore();
    if (!highlight_ || before & kGoesOn) return Uncoloured(extent);
    if (c == u' ') {
        extent.end = text_.BlanksEnd(at + 1);
        return Kind::Blank;
    }
    extent.end = at + 1;
    uint8_t is = tables.Of(c);
    Kind kind = Kind::Normal;
    if (is & kSyntax && LexLine::IsBreak(c)) return c == kValueMark ? Kind::Value : Kind::SubValue;
    if (before & kStatementStart && (is & kPrefix || (c | 0x20) == u'r') && FindComment(tables, extent, kind))
        return kind;
    if (is & kSyntax && FindSyntax(c, extent, kind)) return kind;
    if (before & kLabelPosition && is & (kLetter | kDigit) && FindLabel(tables, extent, kind)) return kind;
    if ((c | 0x20) == u'g' && FindBranch(extent)) return Kind::Branch;
    return is & kFirst ? FindKeyword(tables, extent) : Kind::Normal;
}

inline WordRole LexClass::RoleOf(Kind kind, const Extent& extent) const
{
    if (kind != Kind::Reserved && kind != Kind::UserKeyword && kind != Kind::Branch) return WordRole::None;
    if (extent.flags & kMiddleBlocks) return WordRole::Continues;
    return extent.end - position_ == 2 && WordAt(position_, u"IF") ? WordRole::Leads : WordRole::Keyword;
}

void LexClass::Step(Token& token)
{
    Extent extent{position_, 0};
    Kind kind = Next(keywords_->Tables(), extent);
    const KindRow& row = kKinds[static_cast<size_t>(kind)];
    int32_t flags = extent.flags | row.flags;
    token.type = row.type;
    token.start = position_;
    token.length = extent.end - position_;
    token.attributes = AttributesOf(flags);
    token.role = RoleOf(kind, extent);
    if (traced_) Trace(token, flags);
    Pass(row, kind, extent.end, flags);
}

bool LexClass::ScanLine(UnitSpan text, uint32_t above, LineScan& scan)
{
    if (text.wide)
        text_.Take(TextView(text.Wide(), text.length));
    else
        text_.Take(std::span(text.Narrow(), text.length));
    Begin(above);
    if (traced_) return false; // which tells of each token
    const KeywordTables& tables = keywords_->Tables();
    for (Kind kind = Kind::Blank; kind != Kind::None;) {
        if (quick_) SkipQuick(tables);
        Extent extent{position_, 0};
        kind = Next(tables, extent);
        const KindRow& row = kKinds[static_cast<size_t>(kind)];
        const int32_t flags = extent.flags | row.flags;
        if (flags & (kBeginBlocks | kEndBlocks))
            scan.nesting.Follow(flags & kBeginBlocks ? Nesting{0, 1} : Nesting{1, 0});
        Pass(row, kind, extent.end, flags);
    }
    scan.data = static_cast<uint32_t>(lineFlags_);
    return true;
}

bool LexClass::IndentOf(TextView text, uint32_t above, LineIndent& indent)
{
    LineScan scan;
    if (!highlight_ || !ScanLine({text.data(), text.size(), true}, above, scan)) return false;
    indent = IndentOfLine(text, scan.data);
    return true;
}

void LexClass::Trace(const Token& token, int32_t flags) const
{
    log_->Write(
        [&] {
            return (Text(kWhere) + u": token=")
                .append(text_.Piece(token.start, token.start + token.length))
                .append(u" type=" + Decimal(token.type))
                .append(u" atts=" + Decimal(token.attributes))
                .append(u" flags=0x" + Hex(flags));
        },
        trace::kTokens);
}

bool LexClass::FindLabel(const KeywordTables& tables, Extent& extent, Kind& kind) const
{
    const uint8_t* classes = tables.Classes();
    bool first = previous_ == Kind::None;
    int32_t end = position_ + 1;
    if (classes[text_[position_]] & kDigit) {
        while (end < text_.Length() && (classes[text_[end]] & kDigit || text_[end] == u'.')) ++end;
        extent.end = end < text_.Length() && text_[end] == u':' ? end + 1 : end;
        kind = first ? Kind::Label : Kind::Number;
        return true;
    }
    while (end < text_.Length() && classes[text_[end]] & kLabel) ++end;
    bool colon = end < text_.Length() && text_[end] == u':';
    if (first && !colon && rules_ && FindApartLabel(end, extent)) {
        kind = Kind::Label;
        return true;
    }
    if (first && (!colon || (end + 1 < text_.Length() && text_[end + 1] == u'='))) return false;
    if (first && rules_) extent.flags = line_flag::kApartLabel;
    extent.end = colon ? end + 1 : end;
    kind = first ? Kind::Label : Kind::LabelReference;
    return true;
}

bool LexClass::FindBranch(Extent& extent) const
{
    if (!WordAt(position_, u"GO")) return false;
    int32_t at = text_.BlanksEnd(position_ + 2);
    if (WordAt(at, u"TO "))
        at += 3;
    else if (WordAt(at, u"SUB "))
        at += 4;
    else if (text_[at - 1] != u' ')
        return false;
    extent.end = at;
    return true;
}

/// The longest keyword at the position; `end` is that of the first word and becomes that of the keyword.
const clsKeyword* LexClass::MatchKeyword(const KeywordTables& tables, uint8_t hint, int32_t& end) const
{
    const uint8_t* classes = tables.Classes();
    int32_t most = std::min<int32_t>(hint >> KeywordTables::kWordsShift, tables.CompoundSize());
    int32_t ends[KeywordTables::kMostWords];
    int32_t words = 0;
    for (int32_t last = end; words < most - 1 && last < text_.Length() && text_[last] == u' ';) {
        int32_t at = text_.BlanksEnd(last);
        if (at >= text_.Length() || !(classes[text_[at]] & kFirst)) break;
        last = NameFrom(at + 1, classes);
        ends[words++] = last;
    }
    while (words-- > 0) {
        TextView piece = text_.Piece(position_, ends[words]);
        const clsKeyword* keyword = keywords_->Item(piece, tables.Hint(piece));
        if (!keyword) continue;
        end = ends[words];
        return keyword;
    }
    return keywords_->Item(text_.Piece(position_, end), hint);
}

int32_t LexClass::FlagsOfKeyword(int32_t block, int32_t end, const KeywordTables& tables) const
{
    if (rules_ && (block & ~block::kAny || lineFlags_ & line_flag::kDirective))
        return FlagsOfDialect(block, end, tables);
    if (block & kStatementStartBlocks) return TraitsBefore() & kStatementStart ? block : 0;
    if (block & kLineEndBlocks) return LineEndsAt(end, tables) ? block : 0;
    return block;
}

/// Nothing follows but blanks and semicolons, or behind a semicolon a comment.
bool LexClass::LineEndsAt(int32_t at, const KeywordTables& tables) const
{
    bool separator = false;
    for (; at < text_.Length() && (text_[at] == u' ' || text_[at] == u';'); ++at) separator |= text_[at] == u';';
    return at >= text_.Length() || (separator && tables.Of(text_[at]) & kPrefix);
}

} // namespace nib
