#include "shell/assist/QtPhrase.h"

#include "platform/qt/QtText.h"

#include <QCoreApplication>

#include <algorithm>

namespace nib {

namespace {

/// For the translators: what the table of wordings holds.
constexpr const char* kTexts[] = {
    QT_TRANSLATE_NOOP("Checker", "line %1"),
    QT_TRANSLATE_NOOP("Checker", "line %1 of %2"),
    QT_TRANSLATE_NOOP("Checker", "in %1: %2"),
    QT_TRANSLATE_NOOP("Checker", "END closes no block; open is %1 of %2."),
    QT_TRANSLATE_NOOP("Checker", "END closes no block, and the program goes on below it."),
    QT_TRANSLATE_NOOP("Checker", "%1 without %2."),
    QT_TRANSLATE_NOOP("Checker", "%1 is not closed by %2 before %3 in %4."),
    QT_TRANSLATE_NOOP("Checker", "%1 is not closed: %2 is missing."),
    QT_TRANSLATE_NOOP("Checker", "%1 is not closed by END before the label in %2."),
    QT_TRANSLATE_NOOP("Checker", "Label %1 is defined twice, first in %2."),
    QT_TRANSLATE_NOOP("Checker", "%1 to label %2, which does not exist."),
    QT_TRANSLATE_NOOP("Checker", "The string that begins with %1 is not closed."),
    QT_TRANSLATE_NOOP("Checker", "Include item %1 does not exist."),
    QT_TRANSLATE_NOOP("Checker", "Include item %1 does not exist: there is no file %2."),
    QT_TRANSLATE_NOOP("Checker", "Nothing jumps to label %1."),
    QT_TRANSLATE_NOOP("Checker", "%1 is read, and nothing sets it."),
    QT_TRANSLATE_NOOP("Checker", "%1 is set, and nothing reads it."),
    QT_TRANSLATE_NOOP("Checker", "%1 takes %2 arguments at least, not %3."),
    QT_TRANSLATE_NOOP("Checker", "%1 takes %2 arguments at most, not %3."),
    QT_TRANSLATE_NOOP("Checker", "%1 takes %2 arguments, not %3."),
    QT_TRANSLATE_NOOP("Checker", "%1 has %2 dimension, not %3."),
    QT_TRANSLATE_NOOP("Checker", "%1 has %2 dimensions, not %3."),
    QT_TRANSLATE_NOOP("Checker", "Index %1 lies outside %2, which has %3 elements."),
    QT_TRANSLATE_NOOP("Checker", "An assignment cannot stand in a condition."),
    QT_TRANSLATE_NOOP("Checker", "No path of the program leads here."),
    QT_TRANSLATE_NOOP("Checker", "GOSUB leads to %1, and no path from there comes to RETURN."),
    QT_TRANSLATE_NOOP("Checker", "The program comes to this RETURN without a GOSUB."),
    QT_TRANSLATE_NOOP("Checker", "The program runs on into subroutine %1."),
    QT_TRANSLATE_NOOP("Checker", "The END in line %1, which closes this block, stands further left than it."),
    QT_TRANSLATE_NOOP("Checker", "No path from here writes, deletes or releases the record."),
    QT_TRANSLATE_NOOP("Checker", "There is no subroutine %1 in this account."),
    QT_TRANSLATE_NOOP("Checker", "%1 takes %2 argument, and here it is given %3."),
    QT_TRANSLATE_NOOP("Checker", "%1 takes %2 arguments, and here it is given %3."),
    QT_TRANSLATE_NOOP("Checker", "COMMON differs: %1."),
    QT_TRANSLATE_NOOP("Checker", "COMMON /%1/ differs: %2."),
    QT_TRANSLATE_NOOP("Checker", "member %1, %2, is %3 here and %4 in %5"),
    QT_TRANSLATE_NOOP("Checker", "no array"),
    QT_TRANSLATE_NOOP("Checker", "%1 member here and %2 in %3"),
    QT_TRANSLATE_NOOP("Checker", "%1 members here and %2 in %3"),
    QT_TRANSLATE_NOOP("Checker", "Remove the label"),
    QT_TRANSLATE_NOOP("Checker", "Change to %1"),
    QT_TRANSLATE_NOOP("Checker", "Insert END"),
    QT_TRANSLATE_NOOP("Checker", "Silence %1 here"),
};

constexpr bool IsTable()
{
    return std::ranges::equal(kTexts, kWordings, [](std::string_view text, const WordingRow& row) {
        return std::ranges::equal(text, row.english, [](char a, char16_t b) { return static_cast<char16_t>(a) == b; });
    });
}
static_assert(IsTable());

/// And what the kinds of findings say of themselves.
[[maybe_unused]] constexpr const char* kHelp[] = {
    QT_TRANSLATE_NOOP("Checker", "What opens a block and what closes it do not match."),
    QT_TRANSLATE_NOOP("Checker", "A string ends with a quote of the kind that it begins with, on the same line."),
    QT_TRANSLATE_NOOP("Checker", "A statement has a closing parenthesis for each that it opens."),
    QT_TRANSLATE_NOOP("Checker", "GOTO and GOSUB name a label of the same routine."),
    QT_TRANSLATE_NOOP("Checker", "A label stands once in a routine."),
    QT_TRANSLATE_NOOP("Checker", "An included item is in the file that its statement names, or beside the program."),
    // NOLINTNEXTLINE(bugprone-suspicious-missing-comma): one text of two pieces
    QT_TRANSLATE_NOOP("Checker", "The END of a block stands as far right as the line that opens it; this one stands "
                                 "further left, as if the END of the block were missing."),
    QT_TRANSLATE_NOOP("Checker", "The variable is read, and no statement of the program gives it a value."),
    QT_TRANSLATE_NOOP("Checker", "The variable is given a value that no statement of the program reads."),
    QT_TRANSLATE_NOOP("Checker", "No GOTO, GOSUB or ON names the label."),
    QT_TRANSLATE_NOOP("Checker", "No path of the program comes to the statement: what stands above it leads away."),
    QT_TRANSLATE_NOOP("Checker", "GOSUB comes back with RETURN; from this label on, none can be reached."),
    QT_TRANSLATE_NOOP("Checker",
                      "The program itself comes to the RETURN, which has no GOSUB to go back to. STOP ends a program."),
    QT_TRANSLATE_NOOP("Checker", "The program runs on into a subroutine. A STOP may be missing."),
    QT_TRANSLATE_NOOP(
        "Checker",
        "READU locks a record until it is written, deleted or released; no path of the program does any of that."),
    QT_TRANSLATE_NOOP("Checker", "An array is used with as many indices as it is dimensioned with."),
    QT_TRANSLATE_NOOP("Checker", "The index lies outside the array."),
    QT_TRANSLATE_NOOP("Checker", "What is called takes another number of arguments."),
    QT_TRANSLATE_NOOP("Checker", "No item of the account, and nothing in its VOC, has the name that is called."),
    QT_TRANSLATE_NOOP("Checker",
                      "Programs that share a COMMON area name the same members in it, with the same dimensions."),
    QT_TRANSLATE_NOOP("Checker", "A condition compares; an operator that gives a value cannot stand in it."),
};

} // namespace

Text ShownText(const Phrase& phrase)
{
    return Composed(phrase, [](Wording row) {
        return ToText(QCoreApplication::translate("Checker", kTexts[static_cast<size_t>(row)]));
    });
}

QString Shown(const Phrase& phrase)
{
    return ToQString(ShownText(phrase));
}

QString ShownHelp(const FindingKind& kind)
{
    return QCoreApplication::translate("Checker", ToUtf8(kind.help).c_str());
}

} // namespace nib
