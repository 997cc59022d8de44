#pragma once
#include "editing/LexRules.h"
#include "language/Dialect.h"

#include <memory>

namespace nib {

/// What a text of a dialect says that was not understood. Its other lines count.
struct DialectNote {
    Text dialect;
    int32_t line = 0; ///< from 1
    Text text;
};

/// What `text` tells, on top of what `dialect` holds already.
void ReadDialect(TextView text, Dialect& dialect, std::vector<DialectNote>& notes);
/// The dialect that `text` builds on; empty when there is none.
Text BaseOfDialect(TextView text);

/// What lexer and formatter want of a dialect.
LexRules RulesOf(const Dialect& dialect);

/// The dialects that there are, read when they are first asked for. One thread.
class Dialects {
public:
    /// Those that the programs bring.
    Dialects();

    /// Adds the files "*.dialect" of a folder, each named after its file; one takes the place of another of its name.
    void AddFolder(const std::string& folder);
    void Add(TextView name, Text text);

    /// In any case; null for "none" and for a name that nobody knows. Good as long as this object.
    const Dialect* Find(TextView name);
    /// The same for lexer and formatter.
    const LexRules* Rules(TextView name);
    std::vector<Text> Names() const;
    /// Of those that have been read.
    const std::vector<DialectNote>& Notes() const { return notes_; }

private:
    struct Entry {
        Text name;
        Text text;
        std::unique_ptr<Dialect> dialect; ///< null until it is read
        std::unique_ptr<LexRules> rules;  ///< null until they are asked for
        bool reading = false;
    };

    Entry* EntryOf(TextView name);

    std::vector<Entry> entries_;
    std::vector<DialectNote> notes_;
};

} // namespace nib
