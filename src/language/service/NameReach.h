#pragma once
#include "language/service/Sources.h"

#include <set>

namespace nib {

/// A name where it stands.
struct NamedPlace {
    SourceUnit unit;
    std::shared_ptr<const ProgramFacts> facts;
    Occurrence at;

    const Symbol& Name() const { return facts->symbols[static_cast<size_t>(at.symbol)]; }
};

struct FoundPlace {
    SourceUnit unit;
    Occurrence at;
};

/// Names of programs, in whatever case they are written.
bool SameName(TextView a, TextView b);

/// How far names reach beyond the program that they stand in. Included text is text of the program, so a name reaches
/// to all that it is included with; what is called reaches through the account; a routine within a program keeps what
/// is its own.
class NameReach {
public:
    explicit NameReach(Sources& sources) : sources_(sources) {}

    std::optional<NamedPlace> At(const Text& path, Position at);
    /// Everywhere, by paths, ascending in each.
    std::vector<FoundPlace> All(const NamedPlace& name);
    /// Where it is declared, else where it is set first; the beginning of an item that has no better place.
    std::vector<FoundPlace> Declarations(const NamedPlace& name);
    /// The programs that a call of the name may run.
    std::vector<SourceUnit> Callees(const SourceUnit& from, TextView name);
    /// All programs that the text of the unit is read with, itself first.
    std::vector<SourceUnit> Joined(const SourceUnit& unit, const Symbol& name);
    /// Another item runs or is run by this name.
    static bool IsCalled(const NamedPlace& name);
    /// The item that is included there.
    std::optional<SourceUnit> IncludedAt(const Text& path, Position at);
    /// Where the item is included.
    std::vector<FoundPlace> Inclusions(const SourceUnit& item);

private:
    std::vector<SourceUnit> IncludesOf(const SourceUnit& unit);
    void AddAlike(const SourceUnit& unit, const Symbol& name, std::vector<FoundPlace>& found);
    void AddCalls(const SourceUnit& unit, TextView name, std::vector<FoundPlace>& found);
    void AddEntry(const SourceUnit& unit, std::vector<FoundPlace>& found);
    std::vector<SourceUnit> Users(ServedAccount& account, ItemUse use, TextView name);

    Sources& sources_;
};

/// The symbol has the name, and what has one of this kind cannot have it as well.
bool IsAlike(const Symbol& symbol, const Symbol& name);

} // namespace nib
