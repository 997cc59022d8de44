#pragma once
// A line of a program cut into tokens without blanks and comments, with the words that structure a program told apart.

#include "language/WordTable.h"

namespace nib {

struct BasicToken {
    enum class Kind : uint8_t {
        Word,
        Number,
        String,
        Label,     ///< defined here, with its colon
        Target,    ///< the name of a label behind GOTO or GOSUB
        Branch,    ///< GO, GO TO, GOTO, GOSUB, and a blank
        Separator, ///< a semicolon between statements
        Sign,
    };
    Kind kind;
    BasicKey key;
    int32_t start;
    int32_t end;
    int32_t word = -1; ///< number of a word, a label or a target (without the colon)

    bool Is(BasicKey wanted) const { return key == wanted; }
};

class BasicLine {
public:
    void Scan(TextView text, WordTable& words);

    TextView Whole() const { return text_; }
    const std::vector<BasicToken>& Tokens() const { return tokens_; }
    TextView Of(const BasicToken& token) const { return Between(token.start, token.end); }
    bool IsSign(const BasicToken& token, char16_t sign) const
    {
        return token.kind == BasicToken::Kind::Sign && text_[static_cast<size_t>(token.start)] == sign;
    }
    /// The character, or 0 outside the line.
    char16_t At(int32_t at) const
    {
        return at >= 0 && at < static_cast<int32_t>(text_.size()) ? text_[static_cast<size_t>(at)] : u'\0';
    }
    bool IsCode() const { return !tokens_.empty(); }
    /// More than a semicolon ahead of a comment.
    bool HasStatement() const { return CodeTokens() > 0; }
    /// Without the semicolon that parts the last one from a comment.
    size_t CodeTokens() const
    {
        size_t count = tokens_.size();
        const bool comment = comment_ < Length();
        while (comment && count > 0 &&
               (tokens_[count - 1].kind == BasicToken::Kind::Separator || IsSign(tokens_[count - 1], u';')))
            --count;
        return count;
    }
    /// Where the comment begins; the line's length when there is none.
    int32_t CommentStart() const { return comment_; }
    /// The quote of a string that the line's end cuts off; 0 when there is none.
    char16_t OpenQuote() const { return openQuote_; }
    /// Dialects differ in whether a part of this line is a comment, and its blocks depend on that.
    bool Unsure() const { return unsure_; }
    /// The next code line continues this one for certain.
    bool Continues() const { return continues_; }
    /// A value, a name or a closing bracket: something that an operator could follow.
    bool EndsValue(const BasicToken& token) const;

private:
    TextView Between(int32_t start, int32_t end) const
    {
        return TextView(text_).substr(static_cast<size_t>(start), static_cast<size_t>(end - start));
    }
    int32_t Length() const { return static_cast<int32_t>(text_.size()); }
    bool IsInName(int32_t at) const;
    bool BeginsName(int32_t at) const;
    int32_t Take(int32_t at);
    int32_t TakeString(int32_t at);
    int32_t TakeNumber(int32_t at);
    int32_t TakeWord(int32_t at);
    int32_t TakeBranch(int32_t at, int32_t end);
    int32_t TakeSign(int32_t at);
    int32_t Colon(int32_t end) const;
    bool TargetPosition() const;
    bool AtStatementStart() const;
    bool StartsComment();
    int32_t Hide(int32_t at);
    void DropDoubtful();
    int32_t Add(BasicToken::Kind kind, int32_t start, int32_t end, BasicKey key = BasicKey::None, int32_t word = -1);

    Text text_;
    std::vector<BasicToken> tokens_;
    WordTable* words_ = nullptr; ///< while it scans
    int32_t comment_ = 0;
    int32_t depth_ = 0;   ///< of parentheses
    size_t doubtful_ = 0; ///< the first token that may be in a comment
    char16_t openQuote_ = 0;
    bool unsure_ = false;
    bool continues_ = false;
};

} // namespace nib
