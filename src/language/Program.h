#pragma once
// What is known of one program after its lines have been read: its names, where they stand, and what it wants of
// others.
//
// Lines and columns are 0-based, columns count UTF-16 units, ends are excluded. Indices point into the vectors here.

#include "language/Phrase.h"
#include "text/SourceContract.h"

#include <vector>

namespace nib {

enum class SymbolKind : uint8_t {
    Variable,
    Array,
    CommonMember,
    Constant,   ///< named by EQU
    Label,      ///< of the routine that holds it
    Program,    ///< the item as a whole, where its first statement does not tell otherwise
    Subroutine, ///< of its own item, or local
    Function,   ///< the same
    Parameter,
    FileVariable, ///< set by OPEN
    External,     ///< another item that is called
    File,         ///< a file of the account, named as a string
    Item,         ///< an included item
};

/// What happens to a name at a place.
enum class Use : uint8_t {
    Declares, ///< DIM, COMMON, a parameter, a label, an EQU
    Sets,
    Reads,
    Both, ///< given to a CALL by its name, or changed where it stands
    Calls,
    Jumps, ///< GO, GOSUB, ON
    Names, ///< an included item, a file
};

struct Symbol {
    Text name; ///< as it is first written
    SymbolKind kind = SymbolKind::Variable;
    int32_t routine = 0; ///< that it belongs to; 0 is the item itself
    int32_t item = 0;    ///< that declares it: 0 this one, else 1 + the index of an include
    int32_t dimensions = 0;
    std::vector<int32_t> sizes; ///< of an array; -1 what is no plain number
    Text value;                 ///< of a constant, as it is written; the file behind a file variable
    int32_t common = -1;        ///< the block of a COMMON member
    bool caseSensitive = true;
};

struct Occurrence {
    TextRange at; ///< in one line
    int32_t symbol = 0;
    Use use = Use::Reads;
};

struct Routine {
    Text name;
    SymbolKind kind = SymbolKind::Program;
    std::vector<int32_t> parameters; ///< symbols
    int32_t first = 0;               ///< line
    int32_t last = 0;
    TextRange nameAt;
    bool local = false;
    bool fewer = false; ///< arguments may be left out
};

/// An INCLUDE, in whatever form.
struct IncludeSite {
    TextRange at; ///< of the names
    Text file;    ///< empty: that of the item
    Text item;
    bool found = false;
};

/// A CALL, or a function that the program declares.
struct CallSite {
    TextRange at; ///< of the name
    Text name;    ///< empty where a variable tells it
    int32_t arguments = 0;
    int32_t routine = 0;
    bool function = false;
};

struct CommonBlock {
    Text name; ///< empty: the one without a name
    TextRange at;
    std::vector<int32_t> members; ///< symbols, in their order
    int32_t item = 0;             ///< as in Symbol
};

enum class FindingLevel : uint8_t { Error, Warning, Hint };

struct QuickMend {
    Phrase caption;
    struct Edit {
        TextRange range;
        Text text;
    };
    std::vector<Edit> edits; ///< ascend and lie apart
};

/// What is wrong, or looks so.
struct ProgramFinding {
    Text code; ///< "unset-variable"; what silences it
    FindingLevel level = FindingLevel::Warning;
    TextRange at;
    Phrase message;
    std::vector<QuickMend> mends;
};

struct OutlineEntry {
    Text name;
    SymbolKind kind = SymbolKind::Label;
    TextRange at;     ///< of the name
    int32_t last = 0; ///< line of its body
    int32_t level = 0;
};

/// A name as it looks in the text, for colours laid over those of the lexer.
enum class WordLook : uint8_t {
    Statement,
    Function,
    Clause,
    Number,
    Variable,
    Parameter,
    CommonMember,
    Constant,
    Label,
    Subroutine
};
struct LookedWord {
    TextRange at;
    WordLook look = WordLook::Variable;
    bool declares = false;
};

struct ProgramFacts {
    std::vector<Symbol> symbols;
    std::vector<Occurrence> occurrences; ///< in this item, ascending
    std::vector<Routine> routines;       ///< 0 is the item itself
    std::vector<IncludeSite> includes;
    std::vector<CallSite> calls;
    std::vector<CommonBlock> commons;
    std::vector<OutlineEntry> outline;
    std::vector<ProgramFinding> findings; ///< of this program by itself, ascending; those of the account are not here
    std::vector<TextRange> blocks;        ///< first to last line of what folds
};

} // namespace nib
