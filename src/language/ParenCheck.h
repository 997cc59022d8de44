#pragma once
#include "language/BasicLine.h"
#include "language/FindingList.h"

namespace nib {

/// Parentheses of a statement, which may go on over line ends where it cannot end yet.
class ParenCheck {
public:
    explicit ParenCheck(FindingList& findings) : findings_(findings) {}

    void Line(const BasicLine& line, Place place);
    void Finish();
    /// A parenthesis is open behind the last line.
    bool IsOpen() const { return depth_ > 0; }

private:
    bool GoesOnWith(const BasicLine& line) const;

    FindingList& findings_;
    int32_t depth_ = 0;
    Place opened_;
    bool mustGoOn_ = false;
};

} // namespace nib
