#pragma once
// What is said of programs, as rows of a table with names in them: whoever shows it may say it in another language.

#include "base/Text.h"

#include <functional>
#include <iterator>

namespace nib {

enum class Wording : uint8_t {
    Line,
    LineOf,
    InPlace,
    StrayEnd,
    EndTooEarly,
    Without,
    ClosedBefore,
    NotClosed,
    ClosedAtLabel,
    LabelTwice,
    NoLabel,
    OpenString,
    NoInclude,
    NoIncludeFile,
    UnusedLabel,
    Unset,
    Unused,
    TakesAtLeast,
    TakesAtMost,
    Takes,
    Dimension,
    Dimensions,
    IndexOutside,
    OddCondition,
    Unreachable,
    NoReturn,
    NoGosub,
    FallsInto,
    EndFurtherLeft,
    LockKept,
    NoSubroutine,
    TakesOneHere,
    TakesHere,
    CommonDiffers,
    NamedCommonDiffers,
    MemberDiffers,
    NoArray,
    OneMember,
    Members,
    RemoveLabel,
    ChangeTo,
    InsertEnd,
    SilenceHere,
    Name, ///< none of the table: a name or a number, the same in every language
};

struct WordingRow {
    Wording wording;
    TextView english; ///< %1 to %5 are the values
};

inline constexpr WordingRow kWordings[] = {
    {Wording::Line, u"line %1"},
    {Wording::LineOf, u"line %1 of %2"},
    {Wording::InPlace, u"in %1: %2"},
    {Wording::StrayEnd, u"END closes no block; open is %1 of %2."},
    {Wording::EndTooEarly, u"END closes no block, and the program goes on below it."},
    {Wording::Without, u"%1 without %2."},
    {Wording::ClosedBefore, u"%1 is not closed by %2 before %3 in %4."},
    {Wording::NotClosed, u"%1 is not closed: %2 is missing."},
    {Wording::ClosedAtLabel, u"%1 is not closed by END before the label in %2."},
    {Wording::LabelTwice, u"Label %1 is defined twice, first in %2."},
    {Wording::NoLabel, u"%1 to label %2, which does not exist."},
    {Wording::OpenString, u"The string that begins with %1 is not closed."},
    {Wording::NoInclude, u"Include item %1 does not exist."},
    {Wording::NoIncludeFile, u"Include item %1 does not exist: there is no file %2."},
    {Wording::UnusedLabel, u"Nothing jumps to label %1."},
    {Wording::Unset, u"%1 is read, and nothing sets it."},
    {Wording::Unused, u"%1 is set, and nothing reads it."},
    {Wording::TakesAtLeast, u"%1 takes %2 arguments at least, not %3."},
    {Wording::TakesAtMost, u"%1 takes %2 arguments at most, not %3."},
    {Wording::Takes, u"%1 takes %2 arguments, not %3."},
    {Wording::Dimension, u"%1 has %2 dimension, not %3."},
    {Wording::Dimensions, u"%1 has %2 dimensions, not %3."},
    {Wording::IndexOutside, u"Index %1 lies outside %2, which has %3 elements."},
    {Wording::OddCondition, u"An assignment cannot stand in a condition."},
    {Wording::Unreachable, u"No path of the program leads here."},
    {Wording::NoReturn, u"GOSUB leads to %1, and no path from there comes to RETURN."},
    {Wording::NoGosub, u"The program comes to this RETURN without a GOSUB."},
    {Wording::FallsInto, u"The program runs on into subroutine %1."},
    {Wording::EndFurtherLeft, u"The END in line %1, which closes this block, stands further left than it."},
    {Wording::LockKept, u"No path from here writes, deletes or releases the record."},
    {Wording::NoSubroutine, u"There is no subroutine %1 in this account."},
    {Wording::TakesOneHere, u"%1 takes %2 argument, and here it is given %3."},
    {Wording::TakesHere, u"%1 takes %2 arguments, and here it is given %3."},
    {Wording::CommonDiffers, u"COMMON differs: %1."},
    {Wording::NamedCommonDiffers, u"COMMON /%1/ differs: %2."},
    {Wording::MemberDiffers, u"member %1, %2, is %3 here and %4 in %5"},
    {Wording::NoArray, u"no array"},
    {Wording::OneMember, u"%1 member here and %2 in %3"},
    {Wording::Members, u"%1 members here and %2 in %3"},
    {Wording::RemoveLabel, u"Remove the label"},
    {Wording::ChangeTo, u"Change to %1"},
    {Wording::InsertEnd, u"Insert END"},
    {Wording::SilenceHere, u"Silence %1 here"},
};

/// A row of the table and what stands in it.
struct Phrase {
    Phrase() = default;
    Phrase(Text shown) : name(std::move(shown)) {}
    Phrase(Wording row, std::vector<Phrase> inIt = {}) : wording(row), values(std::move(inIt)) {}

    Wording wording = Wording::Name;
    Text name;
    std::vector<Phrase> values; ///< a row has at most nine

    friend bool operator==(const Phrase&, const Phrase&) = default;
};

/// `words` answers the text of a row.
Text Composed(const Phrase& phrase, const std::function<Text(Wording)>& words);
Text English(const Phrase& phrase);

} // namespace nib
