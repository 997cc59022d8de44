#pragma once
// The findings that there are: their codes, how grave each is, and a line of help.

#include "language/Program.h"

#include <span>

namespace nib {

namespace finding_code {
inline constexpr TextView kOpenString{u"open-string"};
inline constexpr TextView kParentheses{u"parentheses"};
inline constexpr TextView kBlock{u"block"};
inline constexpr TextView kMissingLabel{u"missing-label"};
inline constexpr TextView kDoubleLabel{u"double-label"};
inline constexpr TextView kMissingInclude{u"missing-include"};
inline constexpr TextView kMissingEnd{u"missing-end"};
inline constexpr TextView kUnsetVariable{u"unset-variable"};
inline constexpr TextView kUnusedVariable{u"unused-variable"};
inline constexpr TextView kUnusedLabel{u"unused-label"};
inline constexpr TextView kUnreachable{u"unreachable-code"};
inline constexpr TextView kGosubWithoutReturn{u"gosub-without-return"};
inline constexpr TextView kReturnWithoutGosub{u"return-without-gosub"};
inline constexpr TextView kFallsInto{u"falls-into-routine"};
inline constexpr TextView kLockKept{u"lock-kept"};
inline constexpr TextView kDimension{u"dimension"};
inline constexpr TextView kIndexRange{u"index-range"};
inline constexpr TextView kArgumentCount{u"argument-count"};
inline constexpr TextView kUnknownCall{u"unknown-call"};
inline constexpr TextView kCommonShape{u"common-shape"};
inline constexpr TextView kOddCondition{u"assignment-in-condition"};
} // namespace finding_code

struct FindingKind {
    TextView code;
    FindingLevel level;
    TextView help; ///< one line
};

std::span<const FindingKind> FindingKinds();
/// The one of a code; the first of all for a code that nobody knows.
const FindingKind& FindingKindOf(TextView code);

/// "nib: ignore CODE CODE" silences these on its line and, where that holds nothing else, on the next; without codes
/// all. "nib: ignore-all CODE" ahead of the program silences them in all of it.
struct Silence {
    bool all = false; ///< the whole item
    std::vector<Text> codes;
    bool Covers(TextView code) const;
};
/// Quick, and may be wrong when it says yes.
bool SilencesFindings(TextView comment);
/// False for a comment that silences nothing.
bool ReadSilence(TextView comment, Silence& silence);

} // namespace nib
