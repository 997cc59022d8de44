#pragma once
#include "text/LineStore.h"

#include <memory>

namespace nib {

/// A text as it was at one time, kept from the first edit on. It shares all lines that nobody edits.
class KeptText {
public:
    /// It is what the lines hold now.
    void Clear();
    void Set(std::shared_ptr<const TextSnapshot> text);
    /// These lines are about to be edited. One that is longer than anybody reads is not kept twice: then the whole text
    /// is let go.
    void BeforeEdit(const LineStore& lines, int32_t first, int32_t last);
    /// All lines are about to go.
    void BeforeReset(const LineStore& lines);
    /// Null when it was let go.
    std::shared_ptr<const TextSnapshot> Get(const LineStore& lines) const;

private:
    std::shared_ptr<const TextSnapshot> text_;
    bool lost_ = false;
};

} // namespace nib
