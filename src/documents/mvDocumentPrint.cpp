// The hand-over of a document to its view's printing.

#include "documents/PrintHeader.h"
#include "documents/mvDocument.h"

namespace nib {

void mvDocument::PrintText()
{
    SourceView& source = EnsureView().txtText();
    if (auto* header = dynamic_cast<PrintHeader*>(source.DrawHandler())) {
        if (!item_)
            header->SetNames({}, {});
        else if (LocalFile())
            header->SetNames(item_->DisplayPath(), {});
        else
            header->SetNames(item_->Folder(), item_->ItemID());
    }
    source.Print();
}

} // namespace nib
