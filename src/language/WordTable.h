#pragma once
// The words of a program, each with a number, so that what compares them later compares numbers. Those that the
// language gives a meaning have the first numbers.

#include "language/Dialect.h"
#include "language/StatementForms.h"

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
    Try,    ///< in dialects that know it
    Return, ///< and STOP
    Catch,
    Remark,
    Include,
    Routine,     ///< begins a routine: SUBROUTINE, FUNCTION, PROGRAM
    Nested,      ///< tells of routines inside the program, each with an END of its own: LOCAL, CLASS ...
    Transaction, ///< what BEGIN and END may enclose beside cases
    Operator,    ///< AND, OR, EQ ...: no value ends here
    Print,       ///< statements that a colon may follow at once
};

struct WordFacts {
    BasicKey key = BasicKey::None;
    bool function = false;  ///< of the dialect
    bool statement = false; ///< the same
    bool clause = false;    ///< the same
    const StatementForm* form = nullptr;
    const DialectWord* called = nullptr; ///< what tells the arguments of the function
};

class WordTable {
public:
    /// The dialect, if there is one, outlives the table.
    explicit WordTable(const Dialect* dialect);

    /// The number of a word in any case, a new one for a word that was not there.
    int32_t NumberOf(TextView word);
    /// -1 when it is not there.
    int32_t Find(TextView word) const;
    const WordFacts& FactsOf(int32_t number) const { return words_[static_cast<size_t>(number)].facts; }
    /// In ASCII capitals.
    const Text& TextOf(int32_t number) const { return words_[static_cast<size_t>(number)].text; }
    int32_t Size() const { return static_cast<int32_t>(words_.size()); }
    const Dialect* Language() const { return dialect_; }

private:
    struct Word {
        Text text;
        uint64_t hash;
        WordFacts facts;
    };

    int32_t Slot(TextView word, uint64_t hash) const;
    void Grow();

    const Dialect* dialect_;
    std::vector<Word> words_;
    std::vector<int32_t> slots_; ///< 1 + the number of a word, 0: free
};

/// Equality of a word with one in ASCII capitals.
bool IsWord(TextView word, TextView capitals);

} // namespace nib
