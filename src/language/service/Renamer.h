#pragma once
#include "language/service/NameReach.h"

namespace nib {

/// Gives a name another one wherever it reaches, or says why that would change what a program does.
class Renamer {
public:
    explicit Renamer(Sources& sources) : sources_(sources), reach_(sources) {}

    std::optional<TextRange> Prepare(const Text& path, Position at, Text& refusal);
    RenamePlan Plan(const Text& path, Position at, const Text& name);

private:
    /// Empty: it can be done.
    Text WhyNotHere(const std::optional<NamedPlace>& name);
    Text WhyNotCalled(const NamedPlace& place, const Text& name, bool isLabel) const;
    Text WhyNotIn(const SourceUnit& unit, const NamedPlace& place, const Text& name, const PathEdit& edits);

    Sources& sources_;
    NameReach reach_;
};

} // namespace nib
