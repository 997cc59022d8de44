// How a document is named on paper.

#include "documents/mvDocument.h"

namespace nib {

Text mvDocument::PrintTitle() const
{
    if (!item_) return u"File: (untitled)";
    if (LocalFile()) return u"File: " + item_->DisplayPath();
    return u"File: " + item_->Folder() + u"     Item: " + item_->ItemID();
}

} // namespace nib
