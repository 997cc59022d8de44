#include "language/BasicLine.h"

#include "base/Text.h"
#include "text/SourceDocument.h"
#include "text/Units.h"

#include <algorithm>

namespace nib {

namespace {

struct KeyRow {
    TextView word;
    BasicKey key;
};

constexpr KeyRow kKeys[] = {
    {u"IF", BasicKey::If},
    {u"THEN", BasicKey::Then},
    {u"ELSE", BasicKey::Else},
    {u"LOCKED", BasicKey::Locked},
    {u"ON", BasicKey::On},
    {u"ERROR", BasicKey::Error},
    {u"BEGIN", BasicKey::Begin},
    {u"CASE", BasicKey::Case},
    {u"END", BasicKey::End},
    {u"FOR", BasicKey::For},
    {u"NEXT", BasicKey::Next},
    {u"LOOP", BasicKey::Loop},
    {u"REPEAT", BasicKey::Repeat},
    {u"WHILE", BasicKey::While},
    {u"UNTIL", BasicKey::Until},
    {u"DO", BasicKey::Do},
    {u"RETURN", BasicKey::Return},
    {u"STOP", BasicKey::Return},
    {u"REM", BasicKey::Remark},
    {u"REMARK", BasicKey::Remark},
    {u"INCLUDE", BasicKey::Include},
    {u"SUBROUTINE", BasicKey::Routine},
    {u"SUB", BasicKey::Routine},
    {u"FUNCTION", BasicKey::Routine},
    {u"PROGRAM", BasicKey::Routine},
    {u"LOCAL", BasicKey::Nested},
    {u"PUBLIC", BasicKey::Nested},
    {u"PRIVATE", BasicKey::Nested},
    {u"CLASS", BasicKey::Nested},
    {u"TRANSACTION", BasicKey::Transaction},
    {u"WORK", BasicKey::Transaction},
    {u"AND", BasicKey::Operator},
    {u"OR", BasicKey::Operator},
    {u"NOT", BasicKey::Operator},
    {u"EQ", BasicKey::Operator},
    {u"NE", BasicKey::Operator},
    {u"LT", BasicKey::Operator},
    {u"GT", BasicKey::Operator},
    {u"LE", BasicKey::Operator},
    {u"GE", BasicKey::Operator},
    {u"CAT", BasicKey::Operator},
    {u"MATCH", BasicKey::Operator},
    {u"MATCHES", BasicKey::Operator},
    {u"TO", BasicKey::Operator},
    {u"PRINT", BasicKey::Print},
    {u"CRT", BasicKey::Print},
    {u"DISPLAY", BasicKey::Print},
};
using units::IsDigit;
using units::IsLetter;

constexpr size_t kLongestKey = 11;

constexpr TextView kPartsOfNames{u"$@%_."};

/// Stands for marks: no part of the language, and nothing that cuts a string.
constexpr char16_t kNoSyntax = 0xB7;

bool IsBlockKey(BasicKey key)
{
    return key >= BasicKey::If && key <= BasicKey::Do;
}

using Directive = BasicDirective::Kind;

struct DirectiveRow {
    TextView word;
    Directive kind;
};

constexpr DirectiveRow kDirectives[] = {
    {u"INCLUDE", Directive::Include}, {u"INSERT", Directive::Insert}, {u"CHAIN", Directive::Opaque},
    {u"COPY", Directive::Opaque},     {u"IFDEF", Directive::If},      {u"IFNDEF", Directive::If},
    {u"IF", Directive::If},           {u"ELSE", Directive::Else},     {u"ELIF", Directive::Else},
    {u"ENDIF", Directive::EndIf},
};

TextView TakeWord(TextView& text)
{
    const size_t start = std::min(text.find_first_not_of(u" \t"), text.size());
    text.remove_prefix(start);
    const bool quoted = text.starts_with(u'"') || text.starts_with(u'\'');
    size_t end = quoted ? text.find(text.front(), 1) : text.find_first_of(u" \t");
    end = end == TextView::npos ? text.size() : end + (quoted ? 1 : 0);
    TextView word = text.substr(0, end);
    text.remove_prefix(end);
    if (quoted && word.size() > 2) word = word.substr(1, word.size() - 2);
    return word;
}

bool StartsComment(TextView word)
{
    return word.empty() || word.starts_with(u'*') || word.starts_with(u'!') || word.starts_with(u"//");
}

/// A path, or a file of another account.
bool IsFarName(TextView name)
{
    return name.find_first_of(u"/\\,*<>{}()") != TextView::npos;
}

} // namespace

bool IsWord(TextView word, TextView capitals)
{
    if (word.size() != capitals.size()) return false;
    for (size_t i = 0; i < word.size(); ++i) {
        const char16_t c = word[i];
        if ((c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - 0x20) : c) != capitals[i]) return false;
    }
    return true;
}

void BasicLine::Scan(SourceDocument& document, int32_t line)
{
    text_ = document.GetLine(line);
    for (char16_t& c : text_) {
        if (c < u' ') c = u' ';
        if (c == kValueMark || c == kSubValueMark) c = kNoSyntax;
    }
    tokens_.clear();
    openQuote_ = 0;
    hiding_ = Hiding::Nothing;
    unsure_ = false;
    lexer_.BeginLineScan(document, line, text_, 0);
    Token token;
    for (lexer_.ScanToken(token); token.type != token_type::kEndOfLine; lexer_.ScanToken(token)) Take(token);
    lexer_.EndLineScan(document);
}

void BasicLine::Take(const Token& token)
{
    using Kind = BasicToken::Kind;
    if (hiding_ != Hiding::Nothing) {
        const bool counts = hiding_ == Hiding::MaybeComment;
        if (counts && IsBlockKey(KeyOf(token.start, token.start + token.length))) unsure_ = true;
        return;
    }
    switch (token.type) {
    case token_type::kBlank: break;
    case token_type::kComment: hiding_ = Hiding::Comment; break;
    case token_type::kString: TakeString(token); break;
    case token_type::kSeparator: Add(Kind::Separator, token); break;
    case token_type::kNumber: Add(Kind::Number, token); break;
    case token_type::kLabel: TakeLabel(token); break;
    default: TakeOther(token);
    }
}

void BasicLine::TakeLabel(const Token& token)
{
    using Kind = BasicToken::Kind;
    const int32_t end = token.start + token.length;
    const bool colon = At(end - 1) == u':';
    const BasicKey key = KeyOf(token.start, colon ? end - 1 : end);
    if (tokens_.empty() && key == BasicKey::Remark)
        hiding_ = Hiding::Comment;
    else if (tokens_.empty())
        Add(colon || IsDigit(At(token.start)) ? Kind::Label : Kind::Target, token, key);
    else // GO may be a variable: IF GO THEN
        Add(key == BasicKey::None ? Kind::Target : Kind::Word, token, key);
}

void BasicLine::TakeString(const Token& token)
{
    const char16_t quote = At(token.start);
    const int32_t last = token.start + token.length - 1;
    if (token.length >= 2 && At(last) == quote) return Add(BasicToken::Kind::String, token);
    // A backslash at the end of a line continues it in some dialects.
    const bool alone = text_.find_first_not_of(u' ', static_cast<size_t>(token.start) + 1) == Text::npos;
    if (quote == u'\\' && alone) return Add(BasicToken::Kind::Sign, token);
    openQuote_ = quote;
    Add(BasicToken::Kind::String, token);
}

void BasicLine::TakeOther(const Token& token)
{
    using Kind = BasicToken::Kind;
    const int32_t end = token.start + token.length;
    const char16_t c = At(token.start);
    if (IsDigit(c)) {
        if (!tokens_.empty() && tokens_.back().kind == Kind::Number && tokens_.back().end == token.start)
            tokens_.back().end = end;
        else
            Add(Kind::Number, token);
        return;
    }
    if (!IsLetter(c)) return TakeSign(token);
    // Only a branch takes the blank behind it into its token.
    if (token.type == token_type::kReserved && At(end - 1) == u' ') return Add(Kind::Branch, token);
    const BasicKey key = KeyOf(token.start, end);
    if (key == BasicKey::Remark && StartsComment()) return;
    Add(Kind::Word, token, key);
}

void BasicLine::TakeSign(const Token& token)
{
    const char16_t c = At(token.start);
    if ((c == u'*' || c == u'!') && StartsComment()) return;
    if (c == u'/' && At(token.start + 1) == u'/') {
        // A comment in some dialects, a division in others.
        hiding_ = AtStatementStart() ? Hiding::Comment : Hiding::MaybeComment;
        return;
    }
    Add(BasicToken::Kind::Sign, token);
}

bool BasicLine::AtStatementStart() const
{
    using Kind = BasicToken::Kind;
    return tokens_.empty() || tokens_.back().kind == Kind::Separator || tokens_.back().kind == Kind::Label ||
           IsSign(tokens_.back(), u';');
}

/// A comment where the lexer sees none: behind a label or a keyword that no operator can follow.
bool BasicLine::StartsComment()
{
    using enum BasicKey;
    const BasicKey before = tokens_.empty() ? None : tokens_.back().key;
    const bool clause = before == Then || before == Else || before == Locked;
    const bool other = before == Do || before == Loop || before == Repeat || before == End ||
                       (!tokens_.empty() && tokens_.back().kind == BasicToken::Kind::Target);
    if (!clause && !other && !AtStatementStart()) return false;
    hiding_ = Hiding::Comment;
    unsure_ = unsure_ || clause;
    return true;
}

/// None for a word that is only a part of a name, as END in A$END or NEXT in LIST->NEXT.
BasicKey BasicLine::KeyOf(int32_t start, int32_t end) const
{
    if (end - start > static_cast<int32_t>(kLongestKey)) return BasicKey::None;
    const TextView word = Between(start, end);
    const auto* row = std::find_if(std::begin(kKeys), std::end(kKeys),
                                   [word](const KeyRow& candidate) { return IsWord(word, candidate.word); });
    if (row == std::end(kKeys)) return BasicKey::None;
    const char16_t before = At(start - 1);
    const char16_t behind = At(end);
    const bool part = kPartsOfNames.find(before) != TextView::npos || before >= 0x80 || behind >= 0x80 ||
                      (before == u'>' && At(start - 2) == u'-') ||
                      (behind != 0 && kPartsOfNames.find(behind) != TextView::npos && behind != u'@');
    return part ? BasicKey::None : row->key;
}

void BasicLine::Add(BasicToken::Kind kind, const Token& token, BasicKey key)
{
    tokens_.push_back({kind, key, token.start, token.start + token.length});
}

bool BasicLine::Continues() const
{
    constexpr TextView kJoins{u",~|\\"};
    return !tokens_.empty() && tokens_.back().kind == BasicToken::Kind::Sign &&
           kJoins.find(At(tokens_.back().start)) != TextView::npos;
}

bool BasicLine::EndsValue(const BasicToken& token) const
{
    using enum BasicToken::Kind;
    switch (token.kind) {
    case Word: return token.key == BasicKey::None || token.key == BasicKey::Locked;
    case Number:
    case String:
    case Target: return true;
    case Sign: return IsSign(token, u')') || IsSign(token, u']') || IsSign(token, u'>');
    case Label:
    case Branch:
    case Separator: break;
    }
    return false;
}

BasicDirective ReadDirective(TextView line)
{
    const size_t start = line.find_first_not_of(u" \t");
    if (start == TextView::npos || (line[start] != u'$' && line[start] != u'#')) return {};
    line.remove_prefix(start + 1);
    const TextView word = TakeWord(line);
    for (const DirectiveRow& row : kDirectives) {
        if (!IsWord(word, row.word)) continue;
        if (row.kind != Directive::Include && row.kind != Directive::Insert) return {row.kind, {}, {}};
        BasicDirective include = ReadInclude(line);
        if (row.kind == Directive::Insert && include.file.empty() && include.kind == Directive::Include)
            include.kind = Directive::Insert;
        return include;
    }
    return {Directive::Other, {}, {}};
}

BasicDirective ReadInclude(TextView names)
{
    names = names.substr(0, names.find(u';'));
    const TextView first = TakeWord(names);
    const TextView second = TakeWord(names);
    const TextView third = TakeWord(names);
    BasicDirective elsewhere{Directive::Opaque, {}, {}};
    if (first.empty() || IsFarName(first)) return elsewhere;
    if (StartsComment(second)) return {Directive::Include, {}, Text(first)};
    if (IsFarName(second)) return elsewhere;
    if (IsWord(second, u"FROM") && !third.empty()) {
        if (IsFarName(third)) return elsewhere;
        return {Directive::Include, Text(third), Text(first)};
    }
    if (!StartsComment(third)) return elsewhere;
    return {Directive::Include, Text(first), Text(second)};
}

} // namespace nib
