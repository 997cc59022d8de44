#pragma once
// What a journal holds: where a changed text belongs, the text as it was when the journal began, and each change since.
//
// A file is a line that tells its kind, then records: a letter, the length of the body (32 bits, low byte first), the
// body, a check sum (32 bits). So a tail that was not written whole is known, and left out. Texts are bytes where each
// unit fits into one, else units with the low byte first.

#include "base/Text.h"

#include <string>
#include <string_view>

namespace nib {

/// Where a text belongs.
struct JournalHead {
    Text path;    ///< of its item; empty for a document that was never saved
    Text itemId;  ///< empty when there is no item
    Text name;    ///< as windows and lists show the document
    Text version; ///< of the stored text that the changes began from, as mvItem::Version tells it
    Text copy;    ///< the name of its recovery copy; empty before there is one

    friend bool operator==(const JournalHead&, const JournalHead&) = default;
};

/// What can be had back from a journal.
struct JournalText {
    JournalHead head;
    Text text; ///< lines parted by CR LF
};

namespace journal {

/// All append to `out`. Behind the beginning stand the pieces of the text that the journal begins with, the changes
/// that came while these were gathered, and their end: without it there is no text. Then changes and names in any
/// order.
void Begin(const JournalHead& head, std::string& out);
void TextPiece(TextView text, std::string& out);
/// The same of a text whose units are bytes already.
void NarrowPiece(std::string_view text, std::string& out);
void EndOfText(std::string& out);
/// From `start` to `oldEnd` of the text before, replaced by `inserted`.
void Change(Position start, Position oldEnd, TextView inserted, std::string& out);
/// The document's recovery copy has this name from now on.
void CopyName(TextView copy, std::string& out);

/// All up to the first record that is not whole. Throws Error when not even the beginning is.
JournalText Read(std::string_view bytes);

} // namespace journal
} // namespace nib
