#pragma once
// A line of a program as the checks see it: the lexer's tokens without blanks and comments, and with the words that
// structure a program told apart; and lines that are none of the program, but for its compiler.

#include "editing/LexClass.h"

#include <vector>

namespace nib {

enum class BasicKey : uint8_t {
    None,
    If,
    Then,
    Else,
    Locked,
    On,
    Error,
    Begin,
    Case,
    End,
    For,
    Next,
    Loop,
    Repeat,
    While,
    Until,
    Do,
    Return, ///< and STOP
    Remark,
    Include,
    Routine,     ///< begins a routine: SUBROUTINE, FUNCTION, PROGRAM
    Nested,      ///< tells of routines inside the program, each with an END of its own: LOCAL, CLASS ...
    Transaction, ///< what BEGIN and END may enclose beside cases
    Operator,    ///< AND, OR, EQ ...: no value ends here
    Print,       ///< statements that a colon may follow at once
};

struct BasicToken {
    enum class Kind : uint8_t {
        Word,
        Number,
        String,
        Label,     ///< defined here
        Target,    ///< the name of a label behind GOTO or GOSUB
        Branch,    ///< GO, GO TO, GOTO, GOSUB
        Separator, ///< a semicolon between statements
        Sign,
    };
    Kind kind;
    BasicKey key;
    int32_t start;
    int32_t end;

    bool Is(BasicKey wanted) const { return key == wanted; }
};

class BasicLine {
public:
    /// The lexer outlives this and scans nothing else meanwhile.
    explicit BasicLine(LexClass& lexer) : lexer_(lexer) {}

    void Scan(SourceDocument& document, int32_t line);

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
    /// The quote of a string that the line's end cuts off; 0 when there is none.
    char16_t OpenQuote() const { return openQuote_; }
    /// Dialects differ in whether a part of this line is a comment, and its blocks depend on that.
    bool Unsure() const { return unsure_; }
    /// The next code line continues this one for certain.
    bool Continues() const;
    /// A value, a name or a closing bracket: something that an operator could follow.
    bool EndsValue(const BasicToken& token) const;

private:
    enum class Hiding : uint8_t { Nothing, Comment, MaybeComment };

    TextView Between(int32_t start, int32_t end) const
    {
        return TextView(text_).substr(static_cast<size_t>(start), static_cast<size_t>(end - start));
    }
    void Take(const Token& token);
    void TakeLabel(const Token& token);
    void TakeString(const Token& token);
    void TakeOther(const Token& token);
    void TakeSign(const Token& token);
    bool AtStatementStart() const;
    bool StartsComment();
    BasicKey KeyOf(int32_t start, int32_t end) const;
    void Add(BasicToken::Kind kind, const Token& token, BasicKey key = BasicKey::None);

    LexClass& lexer_;
    Text text_;
    std::vector<BasicToken> tokens_;
    char16_t openQuote_ = 0;
    Hiding hiding_ = Hiding::Nothing;
    bool unsure_ = false;
};

/// Equality of a word with one in ASCII capitals.
bool IsWord(TextView word, TextView capitals);

/// A line for the compiler, or a statement that includes an item.
struct BasicDirective {
    enum class Kind : uint8_t {
        None,
        Other,
        Include,
        Insert, ///< an include that some compilers look for in folders of their own
        Opaque, ///< takes in text in a way that is not understood here
        If,
        Else,
        EndIf,
    };
    Kind kind = Kind::None;
    Text file; ///< empty: the file of the item that includes
    Text item;
};

/// `line` is whole; none unless it begins with "$" or "#".
BasicDirective ReadDirective(TextView line);
/// What follows the word INCLUDE.
BasicDirective ReadInclude(TextView names);

} // namespace nib
