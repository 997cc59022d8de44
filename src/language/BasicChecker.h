#pragma once
// Finds in a program of a MultiValue BASIC what is wrong in every dialect of it. Where dialects differ, nothing is
// said.

#include "language/BasicChecks.h"
#include "language/BasicLine.h"
#include "language/BlockCheck.h"

namespace nib {

/// The items that a program can include.
class IncludeItems {
public:
    enum class Answer : uint8_t {
        Found,
        NoItem,
        NoFile,
        Unknown, ///< may be where it cannot be looked for
    };
    virtual ~IncludeItems() = default;
    /// Sets `text`, which lives as long as this, when the item is found.
    virtual Answer Find(TextView file, TextView item, SourceDocument*& text) = 0;
};

class BasicChecker {
public:
    explicit BasicChecker(IncludeItems& includes) : includes_(includes) {}

    /// `file` is the one that the program is an item of.
    std::vector<Finding> Check(SourceDocument& program, TextView file, TextView item);

private:
    /// A text on the way through its lines.
    struct Source {
        SourceDocument& document;
        TextView file;
        TextView item;
        int32_t number; ///< among the included items, 0 for the program
        const Source* includedBy;
    };

    void Run(const Source& source);
    void Line(const Source& source, Place place);
    void Directive(const BasicDirective& directive, const Source& source, Place place);
    void Include(const BasicDirective& directive, const Source& source, Place place);

    IncludeItems& includes_;
    LexClass lexer_;
    BasicLine line_{lexer_};
    FindingList findings_;
    BlockCheck blocks_{findings_};
    LabelCheck labels_{findings_};
    ParenCheck parens_{findings_};
    int32_t conditionals_ = 0;
    int32_t includeCount_ = 0;
    bool continues_ = false;
    bool inComment_ = false;
};

} // namespace nib
