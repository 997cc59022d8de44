// What a line's tokens are painted as in a dialect; part of LexClass.

#include "editing/LexClass.h"

#include <algorithm>
#include <utility>

namespace nib {

namespace {

/// Statements begin behind these; folded.
constexpr TextView kLeads[] = {u"then", u"else", u"locked", u"do", u"loop", u"repeat", u"on error"};

constexpr bool IsDigit(char16_t c)
{
    return c >= u'0' && c <= u'9';
}

constexpr bool IsNameUnit(char16_t c)
{
    return (c >= u'A' && c <= u'Z') || IsDigit(c) || c == u'.' || c == u'_';
}

/// Whether a form holds this word in capitals, and not as a part of another.
bool Holds(TextView form, TextView word)
{
    for (size_t at = form.find(word); at != TextView::npos; at = form.find(word, at + 1)) {
        const size_t end = at + word.size();
        if ((at == 0 || !IsNameUnit(form[at - 1])) && (end == form.size() || !IsNameUnit(form[end]))) return true;
    }
    return false;
}

/// Walks over the tokens of a line, from statement to statement.
class LookWalk {
public:
    LookWalk(const LexRules& rules, TextView text) : rules_(rules), text_(text) {}

    void Take(Token& token)
    {
        if (token.type == token_type::kBlank) return;
        if (token.type == token_type::kLabel || token.type == token_type::kSeparator)
            Begin(true);
        else if (token.type == token_type::kReserved || token.type == token_type::kUserKeyword)
            Begin(IsLead(Of(token)));
        else if (token.type == token_type::kNormal)
            Plain(token);
        else
            atStart_ = false;
    }

private:
    TextView Of(const Token& token) const
    {
        return text_.substr(static_cast<size_t>(token.start), static_cast<size_t>(token.length));
    }
    void Begin(bool statement)
    {
        atStart_ = statement;
        if (statement) form_ = {};
    }
    static bool IsLead(TextView word)
    {
        for (TextView lead : kLeads)
            if (EqualsFolded(word, lead)) return true;
        return false;
    }
    void Plain(Token& token)
    {
        const bool start = std::exchange(atStart_, false);
        const TextView word = Of(token);
        if (word.size() < 2 && !start) return; // no word is that short
        const clsKeyword* known = rules_.looks.Find(word);
        if (!known) return;
        const size_t behind = static_cast<size_t>(token.End());
        const size_t at = std::min(text_.find_first_not_of(u' ', behind), text_.size());
        const char16_t next = at < text_.size() ? text_[at] : u'\0';
        const char16_t second = at + 1 < text_.size() ? text_[at + 1] : u'\0';
        const bool given =
            next == u'=' || next == u'<' || (second == u'=' && TextView(u"+-*/:").find(next) != TextView::npos);
        if (start) {
            const TextView form =
                known->Class > 0 ? TextView(rules_.forms[static_cast<size_t>(known->Class - 1)]) : TextView();
            const bool element =
                next == u'(' && at == behind && !form.substr(std::min(word.size(), form.size())).starts_with(u'(');
            if (!(known->Block & word_look::kStatement) || given || element) return;
            form_ = form;
            token.type = token_type::kStatement;
        } else if (next == u'(' && known->Block & word_look::kFunction) {
            token.type = token_type::kFunction;
        } else if (next != u'(' && !given && (Holds(form_, known->Word) || IsOperator(*known))) {
            token.type = token_type::kStatement;
        }
    }
    /// AND, EQ ...: its form begins with a value.
    bool IsOperator(const clsKeyword& known) const
    {
        if (!(known.Block & word_look::kClause) || known.Class == 0) return false;
        const TextView form = rules_.forms[static_cast<size_t>(known.Class - 1)];
        const char16_t first = form.empty() ? u'\0' : form.front();
        return first >= u'a' && first <= u'z';
    }

    const LexRules& rules_;
    TextView text_;
    TextView form_; ///< of the statement
    bool atStart_ = true;
};

/// How far the number goes on that the token at `from`, which is plain, may begin; `from` when it begins none.
size_t NumberEnd(const std::vector<Token>& tokens, size_t from, TextView text)
{
    size_t end = from;
    bool digits = false;
    for (; end < tokens.size() && tokens[end].type == kPlainToken && tokens[end].length == 1; ++end) {
        const char16_t c = text[static_cast<size_t>(tokens[end].start)];
        if (!IsDigit(c) && c != u'.') break;
        digits = digits || IsDigit(c);
    }
    return digits ? end : from;
}

} // namespace

void LexClass::Look(TextView text, std::vector<Token>& tokens) const
{
    const LexRules* rules = highlight_ ? keywords_->Rules() : nullptr;
    if (!rules) return;
    LookWalk walk(*rules, text);
    size_t to = 0;
    for (size_t from = 0; from < tokens.size();) {
        const size_t end = NumberEnd(tokens, from, text);
        Token token = tokens[from];
        walk.Take(token);
        if (end > from) {
            // One stretch to paint, not one a digit.
            token.type = token_type::kNumberLook;
            token.length = tokens[end - 1].End() - token.start;
        }
        tokens[to++] = token;
        from = std::max(end, from + 1);
    }
    tokens.resize(to);
}

} // namespace nib
