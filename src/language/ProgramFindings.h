#pragma once
// What is wrong in a program by itself, or looks so.

#include "language/BasicChecks.h"
#include "language/FindingCodes.h"
#include "language/ProgramAnalyser.h"

namespace nib {

class FindingSink {
public:
    FindingSink(const ProgramAnalyser& analyser, ProgramFacts& program) : analyser_(analyser), program_(program) {}

    void Add(TextView code, TextRange at, Phrase message, std::vector<QuickMend> mends = {});
    /// The statement of a node, up to the end of its code in the line.
    TextRange RangeOf(const FlowNode& node) const;
    TextRange CodeOf(int32_t line) const;
    const ProgramAnalyser& Of() const { return analyser_; }
    const ProgramFacts& Known() const { return program_; }

private:
    const ProgramAnalyser& analyser_;
    ProgramFacts& program_;
};

/// Fills the findings of the program: those of the checker, and what follows from its names and its ways.
void FindInProgram(const ProgramAnalyser& analyser, const std::vector<Finding>& checked, ProgramFacts& program);
/// Drops what comments of the program silence. For whoever adds findings, too.
void DropSilenced(const ProgramText& text, std::vector<ProgramFinding>& findings);

void FindInFlow(FindingSink& sink);
void FindLocks(FindingSink& sink);
void FindMissingEnds(FindingSink& sink);

} // namespace nib
