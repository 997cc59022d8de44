#pragma once
// Where the text comes from that an open document is compared with.

#include "compare/CompareSide.h"

namespace nib {

enum class CompareWith : uint8_t { Stored, Opened, Document, Item, Committed };

/// What is stored of the document's item now. Throws Error when there is none, or it cannot be read.
CompareText StoredTextOf(DocumentServices& services, const mvDocument& document);
/// The text as the document read or saved it last. Throws Error when that is not known.
CompareText OpenedTextOf(const mvDocument& document);
/// The document's file in the last commit of the work tree that it lies in. Throws Error when there is none.
CompareText CommittedTextOf(const mvDocument& document);
/// An item that no document has open, or a file. Throws Error when it cannot be read.
CompareText TextOfItem(DocumentServices& services, std::shared_ptr<mvItem> item);

} // namespace nib
