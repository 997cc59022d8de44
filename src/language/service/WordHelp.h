#pragma once
#include "language/service/NameReach.h"

namespace nib {

/// What a word means: the help on what stands under the pointer, and on the parameters of what is being called.
class WordHelp {
public:
    explicit WordHelp(Sources& sources) : sources_(sources), reach_(sources) {}

    std::optional<HoverText> Hover(const Text& path, Position at);
    std::optional<SignatureHelp> Signature(const Text& path, Position at);
    /// The head of a program with its parameters: "SUBROUTINE NAME(A, B)".
    static Text HeadOf(const ProgramFacts& facts, const Routine& routine);

private:
    std::optional<HoverText> OfName(const Text& path, Position at);
    std::optional<HoverText> OfWord(OpenText& text, Position at);
    HoverText OfDeclaration(const NamedPlace& name, const FoundPlace& declaration);
    Text CommentAbove(const SourceUnit& unit, int32_t line);
    Text CommentBelow(const SourceUnit& unit, int32_t line);
    std::optional<SignatureHelp> OfCallee(OpenText& text, TextView name, bool call);

    Sources& sources_;
    NameReach reach_;
};

} // namespace nib
