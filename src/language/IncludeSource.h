#pragma once
#include "language/ProgramText.h"

namespace nib {

/// The items that a program can include.
class IncludeSource {
public:
    enum class Answer : uint8_t {
        Found,
        NoItem,
        NoFile,
        Unknown, ///< may be where it cannot be looked for
    };
    virtual ~IncludeSource() = default;
    /// Sets `text` when the item is found. `file` is that of the item that includes where its statement names none.
    virtual Answer Find(TextView file, TextView item, std::shared_ptr<const ProgramText>& text) = 0;
};

} // namespace nib
