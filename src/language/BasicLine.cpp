#include "language/BasicLine.h"

#include "text/Units.h"

#include <algorithm>

namespace nib {

namespace {

using units::IsDigit;
using units::IsLetter;

constexpr TextView kPartsOfNames{u"$%_."};
constexpr TextView kJoins{u",~|\\"};

/// Stands for marks: no part of the language, and nothing that cuts a string.
constexpr char16_t kNoSyntax = 0xB7;

bool IsBlockKey(BasicKey key)
{
    return key >= BasicKey::If && key <= BasicKey::Do;
}

} // namespace

void BasicLine::Scan(TextView text, WordTable& words)
{
    text_ = text;
    for (char16_t& c : text_) {
        if (c < u' ') c = u' ';
        if (c == kValueMark || c == kSubValueMark) c = kNoSyntax;
    }
    tokens_.clear();
    words_ = &words;
    comment_ = Length();
    depth_ = 0;
    doubtful_ = Text::npos;
    openQuote_ = 0;
    unsure_ = false;
    for (int32_t at = 0; at < Length();) at = Take(at);
    words_ = nullptr;
    DropDoubtful();
    const Dialect* dialect = words.Language();
    const size_t count = CodeTokens();
    continues_ = false;
    if (count == 0 || tokens_[count - 1].kind != BasicToken::Kind::Sign) return;
    const char16_t last = At(tokens_[count - 1].start);
    continues_ = kJoins.find(last) != TextView::npos || (dialect && dialect->Continues(last));
}

bool BasicLine::IsInName(int32_t at) const
{
    const char16_t c = At(at);
    if (IsLetter(c) || IsDigit(c) || c >= 0x80) return true;
    if (c == 0) return false;
    return kPartsOfNames.find(c) != TextView::npos || (words_->Language() && words_->Language()->IsInName(c));
}

bool BasicLine::BeginsName(int32_t at) const
{
    const char16_t c = At(at);
    if (IsLetter(c) || c >= 0x80) return true;
    return c != 0 && words_->Language() && words_->Language()->BeginsName(c) && c != u'@';
}

/// Takes what begins at `at`; answers where that ends.
int32_t BasicLine::Take(int32_t at)
{
    const char16_t c = At(at);
    if (c == u' ') return at + 1;
    if (BeginsName(at) || (c == u'@' && IsLetter(At(at + 1)))) return TakeWord(at);
    if (IsDigit(c)) return TakeNumber(at);
    if (c == u'"' || c == u'\'' || c == u'\\') return TakeString(at);
    return TakeSign(at);
}

int32_t BasicLine::Hide(int32_t at)
{
    comment_ = std::min(comment_, at);
    return Length();
}

/// What stands behind a "//" that may begin a comment.
void BasicLine::DropDoubtful()
{
    if (doubtful_ >= tokens_.size()) return;
    const auto first = tokens_.begin() + static_cast<std::ptrdiff_t>(doubtful_);
    unsure_ =
        unsure_ || std::any_of(first, tokens_.end(), [](const BasicToken& token) { return IsBlockKey(token.key); });
    tokens_.erase(first, tokens_.end());
    openQuote_ = 0;
}

int32_t BasicLine::Add(BasicToken::Kind kind, int32_t start, int32_t end, BasicKey key, int32_t word)
{
    tokens_.push_back({kind, key, start, end, word});
    return end;
}

int32_t BasicLine::TakeString(int32_t at)
{
    const char16_t quote = At(at);
    const size_t end = text_.find(quote, static_cast<size_t>(at) + 1);
    if (end != Text::npos) return Add(BasicToken::Kind::String, at, static_cast<int32_t>(end) + 1);
    // A backslash at the end of a line continues it in some dialects.
    const bool alone = text_.find_first_not_of(u' ', static_cast<size_t>(at) + 1) == Text::npos;
    if (quote == u'\\' && alone) return Add(BasicToken::Kind::Sign, at, at + 1);
    openQuote_ = quote;
    return Add(BasicToken::Kind::String, at, Length());
}

/// The end of a label's name with the colon that may follow it.
int32_t BasicLine::Colon(int32_t end) const
{
    return At(end) == u':' && At(end + 1) != u'=' ? end + 1 : end;
}

/// Behind GOTO or GOSUB, or a comma in the list there.
bool BasicLine::TargetPosition() const
{
    using Kind = BasicToken::Kind;
    if (tokens_.empty()) return false;
    if (tokens_.back().kind == Kind::Branch) return true;
    return tokens_.size() > 1 && IsSign(tokens_.back(), u',') && tokens_[tokens_.size() - 2].kind == Kind::Target;
}

int32_t BasicLine::TakeNumber(int32_t at)
{
    int32_t end = at;
    while (IsDigit(At(end)) || (At(end) == u'.' && (IsDigit(At(end + 1)) || tokens_.empty()))) ++end;
    if (end == at + 1 && At(at) == u'0' && (At(end) | 0x20) == u'x') // hexadecimal
        for (++end; IsDigit(At(end)) || IsLetter(At(end));) ++end;
    const TextView number = Between(at, end);
    if (!tokens_.empty()) return Add(BasicToken::Kind::Number, at, end);
    const size_t first = std::min(number.find_first_not_of(u'0'), number.size() - 1);
    return Add(BasicToken::Kind::Label, at, At(end) == u':' ? end + 1 : end, BasicKey::None,
               words_->NumberOf(number.substr(first)));
}

int32_t BasicLine::TakeWord(int32_t at)
{
    using Kind = BasicToken::Kind;
    int32_t end = at + 1;
    while (IsInName(end)) ++end;
    // What a "->" leads to is a name whatever it is.
    const bool member = At(at - 1) == u'>' && At(at - 2) == u'-';
    const int32_t word = words_->NumberOf(Between(at, end));
    const BasicKey key = member ? BasicKey::None : words_->FactsOf(word).key;
    if ((At(at) | 0x20) == u'g' && !member) {
        if (const int32_t branch = TakeBranch(at, end)) return branch;
    }
    // GO may be a variable: IF GO THEN
    const bool clause =
        key == BasicKey::Then || key == BasicKey::Else || key == BasicKey::Do || key == BasicKey::Operator;
    if (TargetPosition() && !clause) return Add(Kind::Target, at, Colon(end), BasicKey::None, word);
    if (tokens_.empty() && IsLetter(At(at))) {
        int32_t colon = Colon(end);
        const Dialect* dialect = words_->Language();
        if (colon == end && dialect && dialect->blankBeforeColon && key == BasicKey::None &&
            !words_->FactsOf(word).form && !words_->FactsOf(word).statement) {
            while (At(colon) == u' ') ++colon;
            colon = At(colon) == u':' && At(colon + 1) != u'=' ? colon + 1 : end;
        }
        if (colon != end && key == BasicKey::Remark) return Hide(at);
        if (colon != end) return Add(Kind::Label, at, colon, key, word);
    }
    if (key == BasicKey::Remark && StartsComment()) return Hide(at);
    return Add(Kind::Word, at, end, key, word);
}

/// GO, GO TO, GOTO, GO SUB and GOSUB with the blank behind them; 0 for another word.
int32_t BasicLine::TakeBranch(int32_t at, int32_t end)
{
    const TextView first = Between(at, end);
    int32_t last = end;
    if (IsWord(first, u"GO")) {
        int32_t next = end;
        while (At(next) == u' ') ++next;
        int32_t nextEnd = next;
        while (IsInName(nextEnd)) ++nextEnd;
        const TextView second = Between(next, nextEnd);
        if (next > end && (IsWord(second, u"TO") || IsWord(second, u"SUB"))) last = nextEnd;
    } else if (!IsWord(first, u"GOTO") && !IsWord(first, u"GOSUB")) {
        return 0;
    }
    if (At(last) != u' ') return 0;
    int32_t target = last;
    while (At(target) == u' ') ++target;
    if (!BeginsName(target) && !IsDigit(At(target))) return 0;
    return Add(BasicToken::Kind::Branch, at, last + 1);
}

int32_t BasicLine::TakeSign(int32_t at)
{
    const char16_t c = At(at);
    const Dialect* dialect = words_->Language();
    const bool comment = c == u'*' || c == u'!' || (dialect && dialect->comments.find(c) != Text::npos);
    if (comment && StartsComment()) return Hide(at);
    if (c == u'/' && At(at + 1) == u'/') {
        if (AtStatementStart()) return Hide(at);
        // A comment in some dialects, a division in others.
        if (comment_ == Length()) {
            doubtful_ = tokens_.size();
            comment_ = at;
        }
        return Add(BasicToken::Kind::Sign, at, at + 2);
    }
    if (c == u';' && depth_ == 0) return Add(BasicToken::Kind::Separator, at, at + 1);
    depth_ += c == u'(' ? 1 : c == u')' ? -1 : 0;
    return Add(BasicToken::Kind::Sign, at, at + 1);
}

bool BasicLine::AtStatementStart() const
{
    using Kind = BasicToken::Kind;
    return tokens_.empty() || tokens_.back().kind == Kind::Separator || tokens_.back().kind == Kind::Label ||
           IsSign(tokens_.back(), u';');
}

/// A statement may begin here, or a keyword stands before that no operator can follow.
bool BasicLine::StartsComment()
{
    using enum BasicKey;
    const BasicKey before = tokens_.empty() ? None : tokens_.back().key;
    const bool clause = before == Then || before == Else || before == Locked;
    const bool other = before == Do || before == Loop || before == Repeat || before == End ||
                       (!tokens_.empty() && tokens_.back().kind == BasicToken::Kind::Target);
    if (!clause && !other && !AtStatementStart()) return false;
    unsure_ = unsure_ || clause;
    return true;
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

} // namespace nib
