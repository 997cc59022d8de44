// How a document is stored, as far as its user chooses that: line ends, character set, and whether it is locked to be
// written; part of mvDocument.

#include "documents/DocumentServices.h"
#include "documents/Overwriting.h"
#include "documents/mvDocument.h"
#include "hosts/StoredForm.h"

namespace nib {

const StoredForm* mvDocument::Stored() const
{
    return item_ ? item_->Form() : nullptr;
}

/// What is stored differs from what a save would write now, also where no character does.
void mvDocument::StoreOtherwise(const std::function<void(StoredForm&)>& change)
{
    StoredForm* form = item_ && !IsBeingSaved() && !ReadOnly() ? item_->Form() : nullptr;
    if (!form) return;
    change(*form);
    EnsureView().txtText().Document().SetModified(true);
    services_.shell.DocumentChanged(*this);
}

void mvDocument::SetEnds(LineEnd end)
{
    const StoredForm* form = Stored();
    if (!form || (form->Ends() == end && !MixedEnds())) return;
    StoreOtherwise([&](StoredForm& chosen) {
        chosen.SetEnds(end);
        stored_.ForgetEnds();
    });
}

void mvDocument::SetCoding(TextCoding coding)
{
    const StoredForm* form = Stored();
    if (!form || form->Coding() == coding) return;
    StoreOtherwise([&](StoredForm& chosen) { chosen.SetCoding(coding); });
}

void mvDocument::SetReadOnly(bool readOnly)
{
    if (!item_ || IsBeingSaved() || IsDirty() || readOnly == ReadOnly()) return;
    if (readOnly) {
        item_->SetReadOnly(true);
        item_->LockItem(false);
    } else if (!Attempt(u"mvDocument.SetReadOnly", [this] { return MakeWritable(); })) {
        item_->SetReadOnly(true);
        item_->LockItem(false);
        return;
    }
    EnsureView().txtText().SetReadOnly(readOnly);
    services_.shell.DocumentChanged(*this);
}

bool mvDocument::MakeWritable()
{
    item_->SetReadOnly(false);
    if (item_->ReadOnly()) {
        Warn(u"Item '" + item_->ItemID() + u"' may only be read. Please save using a different name.");
        return false;
    }
    const auto show = [this](TextView text, int32_t flags) { return Show(text, flags); };
    if (services_.settings.RecordLocking && !LockToWrite(*item_, show)) return false;
    // What was shown was never edited here.
    return item_->StateToSave() != StoredState::Changed || Reload();
}

} // namespace nib
