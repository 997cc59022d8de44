#pragma once
// What a dialect of the language knows: its words, what shapes its blocks, and how its lines are written. It is read
// from a text (docs/language.md tells the form); programs ship with some, and a user may bring more.

#include "editing/KeywordList.h"

#include <optional>
#include <span>
#include <vector>

namespace nib {

/// A name may be several: DELETE is a statement and a function.
enum class WordKind : uint8_t {
    Statement,
    Function,
    Clause,   ///< belongs to a statement: THEN, LOCKED, FROM
    Variable, ///< set by the system: @DATE
};

struct DialectWord {
    Text name; ///< in capitals
    WordKind kind = WordKind::Statement;
    Text form; ///< one line: what is optional stands in brackets
    Text help; ///< one line
    // Of a function, or a statement whose form puts them in parentheses behind its name.
    int32_t least = 0;
    int32_t most = -1; ///< -1: any number
};

enum class BlockRole : uint8_t {
    Opens,
    Routine, ///< opens the body of a routine inside the program
    Continues,
    Closes,
};

/// What shapes blocks beside the words that all dialects share (IF, FOR, LOOP, BEGIN CASE, END ...).
struct DialectBlock {
    Text words; ///< in capitals; a blank joins two
    BlockRole role = BlockRole::Opens;
    bool first = false; ///< counts only at the start of a statement, where no value is given to a variable of its name
    bool last = false;  ///< counts only at the end of a line
    Text closer;        ///< the word that ends what it opens
};

class Dialect {
public:
    /// All words of this name, in any case.
    std::span<const DialectWord> Find(TextView word) const;
    /// Null when there is none.
    const DialectWord* Find(TextView word, WordKind kind) const;
    bool Is(TextView word, WordKind kind) const { return Find(word, kind) != nullptr; }
    /// By name; those of the same name lie side by side.
    std::span<const DialectWord> Words() const { return words_; }
    const DialectBlock* FindBlock(TextView blockWords) const;

    /// Whether `c` may stand in a name behind its first character, or begin one.
    bool IsInName(char16_t c) const { return IsLetter(c) || (c >= u'0' && c <= u'9') || Has(inNames, c); }
    bool BeginsName(char16_t c) const { return IsLetter(c) || Has(beginNames, c); }
    /// A line whose first character this is tells the compiler something.
    bool IsDirective(char16_t c) const { return Has(directives, c); }
    /// A line whose last token this is goes on with its statement in the next.
    bool Continues(char16_t last) const { return Has(continuations, last); }

    /// Each takes the place of an equal one.
    void SetWords(std::vector<DialectWord> words);
    void SetBlock(DialectBlock block);

    Text name;
    Text title; ///< for people
    Text inNames;
    Text beginNames;
    Text comments;                  ///< characters that begin one where a statement may begin, beside "*" and "!"
    std::vector<Text> commentWords; ///< REM
    Text directives;
    Text continuations;
    bool blankBeforeColon = false;  ///< a label's colon may stand apart
    std::vector<Text> includeFiles; ///< where an included item is looked for when its statement names no file
    std::vector<DialectBlock> blocks;

private:
    static bool IsLetter(char16_t c) { return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z'); }
    static bool Has(TextView list, char16_t c) { return list.find(c) != TextView::npos; }

    std::vector<DialectWord> words_;
    std::vector<uint32_t> slots_; ///< 1 + the first word of a name, by the hash of that; 0: free
};

} // namespace nib
