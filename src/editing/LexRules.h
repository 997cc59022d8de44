#pragma once
// What a dialect adds to the rules that lexer, keywords and formatter have anyway. Without one they are as they are.

#include "editing/KeywordList.h"

#include <vector>

namespace nib {

/// Where a word that shapes blocks must stand to count, beside its style in `clsKeyword::Block`.
namespace block_condition {
inline constexpr int32_t kFirst = 0x10000; ///< of a statement, with a name or nothing behind it
inline constexpr int32_t kLast = 0x20000;  ///< of a line
inline constexpr int32_t kAny = kFirst | kLast;
} // namespace block_condition

/// What a word may be, bits of `clsKeyword::Block` in LexRules::looks.
namespace word_look {
inline constexpr int32_t kStatement = 1;
inline constexpr int32_t kFunction = 2;
inline constexpr int32_t kClause = 4;
inline constexpr int32_t kVariable = 8;
} // namespace word_look

struct LexRules {
    KeywordList blockWords; ///< a word of the same name among the user's hides one
    KeywordList looks;      ///< `Class` is 1 + the index of a statement's form
    std::vector<Text> forms;
    Text inNames;
    Text beginNames;
    Text comments;
    Text directives;
    Text continuations;
    bool blankBeforeColon = false;
};

} // namespace nib
