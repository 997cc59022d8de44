#pragma once
#include "base/Text.h"

namespace nib {

/// The lists that a word may stand in, bits of `clsKeyword::Class`.
namespace keyword_class {
inline constexpr int32_t kReserved = 1;
inline constexpr int32_t kLanguage = 2;
inline constexpr int32_t kUser = 4;
} // namespace keyword_class

/// One word of the language or of the user.
class clsKeyword {
public:
    Text Word;         ///< in the user's own case, without suffix; blanks join a compound
    int32_t Block = 0; ///< one bit of kBlockStyles, or 0
    int32_t Class = 0; ///< bits of keyword_class

    /// 0 none, 1 begins a block, 2 ends one, 3 its middle.
    int16_t BlockStyle() const;
    /// The character that stands behind the word in a keyword list, empty without a style.
    TextView Suffix() const;
    clsKeyword Clone() const { return *this; }
};

} // namespace nib
