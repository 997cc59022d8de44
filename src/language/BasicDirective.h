#pragma once
#include "base/Text.h"

namespace nib {

/// A line for the compiler, or a statement that includes an item.
struct BasicDirective {
    enum class Kind : uint8_t {
        None,
        Other,
        Include,
        Insert,   ///< an include that some compilers look for in folders of their own
        Opaque,   ///< takes in text in a way that is not understood here
        Define,   ///< names a constant
        Internal, ///< for what belongs to the system
        If,
        Else,
        EndIf,
    };
    Kind kind = Kind::None;
    Text file; ///< empty: the file of the item that includes
    Text item;
};

/// `line` is whole; none unless it begins with "$" or "#".
BasicDirective ReadDirective(TextView line);
/// What follows the word INCLUDE.
BasicDirective ReadInclude(TextView names);

} // namespace nib
