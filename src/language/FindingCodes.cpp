#include "language/FindingCodes.h"

#include <algorithm>

namespace nib {

namespace {

using namespace finding_code;
using enum FindingLevel;

constexpr FindingKind kKinds[] = {
    {kBlock, Error, u"What opens a block and what closes it do not match."},
    {kOpenString, Error, u"A string ends with a quote of the kind that it begins with, on the same line."},
    {kParentheses, Error, u"A statement has a closing parenthesis for each that it opens."},
    {kMissingLabel, Error, u"GOTO and GOSUB name a label of the same routine."},
    {kDoubleLabel, Error, u"A label stands once in a routine."},
    {kMissingInclude, Error, u"An included item is in the file that its statement names, or beside the program."},
    {kMissingEnd, Warning,
     u"The END of a block stands as far right as the line that opens it; this one stands further "
     u"left, as if the END of the block were missing."},
    {kUnsetVariable, Warning, u"The variable is read, and no statement of the program gives it a value."},
    {kUnusedVariable, Hint, u"The variable is given a value that no statement of the program reads."},
    {kUnusedLabel, Hint, u"No GOTO, GOSUB or ON names the label."},
    {kUnreachable, Warning, u"No path of the program comes to the statement: what stands above it leads away."},
    {kGosubWithoutReturn, Warning, u"GOSUB comes back with RETURN; from this label on, none can be reached."},
    {kReturnWithoutGosub, Warning,
     u"The program itself comes to the RETURN, which has no GOSUB to go back to. STOP ends "
     u"a program."},
    {kFallsInto, Warning, u"The program runs on into a subroutine. A STOP may be missing."},
    {kLockKept, Warning,
     u"READU locks a record until it is written, deleted or released; no path of the program "
     u"does any of that."},
    {kDimension, Warning, u"An array is used with as many indices as it is dimensioned with."},
    {kIndexRange, Warning, u"The index lies outside the array."},
    {kArgumentCount, Warning, u"What is called takes another number of arguments."},
    {kUnknownCall, Warning, u"No item of the account, and nothing in its VOC, has the name that is called."},
    {kCommonShape, Warning,
     u"Programs that share a COMMON area name the same members in it, with the same dimensions."},
    {kOddCondition, Warning, u"A condition compares; an operator that gives a value cannot stand in it."},
};

constexpr TextView kMark{u"nib:"};

} // namespace

std::span<const FindingKind> FindingKinds()
{
    return kKinds;
}

const FindingKind& FindingKindOf(TextView code)
{
    const auto* kind = std::ranges::find(kKinds, code, &FindingKind::code);
    return kind == std::end(kKinds) ? kKinds[0] : *kind;
}

bool Silence::Covers(TextView code) const
{
    return codes.empty() || std::ranges::find(codes, code) != codes.end();
}

bool SilencesFindings(TextView comment)
{
    return comment.find(kMark) != TextView::npos;
}

bool ReadSilence(TextView comment, Silence& silence)
{
    const size_t mark = comment.find(kMark);
    if (mark == TextView::npos) return false;
    silence = {};
    bool ignores = false;
    comment.remove_prefix(mark + kMark.size());
    while (!comment.empty()) {
        const size_t start = std::min(comment.find_first_not_of(u" ,\t"), comment.size());
        comment.remove_prefix(start);
        const TextView word = comment.substr(0, comment.find_first_of(u" ,\t"));
        comment.remove_prefix(word.size());
        if (word.empty()) break;
        if (!ignores) {
            if (word != u"ignore" && word != u"ignore-all") return false;
            silence.all = word == u"ignore-all";
            ignores = true;
        } else {
            silence.codes.emplace_back(word);
        }
    }
    return ignores;
}

} // namespace nib
