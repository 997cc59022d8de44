#pragma once
// Finds in a program of a MultiValue BASIC what is wrong in every dialect of it. Where dialects differ, nothing is
// said.

#include "language/BasicChecks.h"
#include "language/BasicLine.h"
#include "language/BlockCheck.h"
#include "language/IncludeSource.h"

namespace nib {

class BasicChecker {
public:
    /// `surely`: nothing is told that what cannot be read could make right.
    explicit BasicChecker(IncludeSource& includes, bool surely = true) : includes_(includes), surely_(surely) {}

    /// `file` is the one that the program is an item of.
    std::vector<Finding> Check(const ProgramText& program, TextView file, TextView item);
    /// The line of the program that ends it, 1-based, once it has been checked.
    std::optional<int32_t> LastLine() const { return blocks_.LastLine(); }

private:
    /// A text on the way through its lines.
    struct Source {
        const ProgramText& text;
        TextView file;
        TextView item;
        int32_t number; ///< among the included items, 0 for the program
        const Source* includedBy;
    };

    void Run(const Source& source);
    void Line(const BasicLine& line, Place place);
    void Directive(const BasicDirective& directive, const Source& source, Place place);
    void Include(const BasicDirective& directive, const Source& source, Place place);

    IncludeSource& includes_;
    bool surely_;
    FindingList findings_;
    BlockCheck blocks_{findings_};
    LabelCheck labels_{findings_};
    ParenCheck parens_{findings_};
    int32_t conditionals_ = 0;
    int32_t includeCount_ = 0;
    bool continues_ = false;
};

} // namespace nib
