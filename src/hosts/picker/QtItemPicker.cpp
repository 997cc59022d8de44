#include "hosts/picker/QtItemPicker.h"

#include "hosts/picker/frmItemPicker.h"
#include "platform/qt/QtDesktop.h"

namespace nib {

std::optional<PickerAnswer> ItemPicker::Run(const SelectRequest& request, TextView startPath, ItemBrowser& browser)
{
    PickerModel model(request, browser);
    model.SetShowHidden(showHidden_);
    {
        const QtWaitCursor wait;
        model.Start(startPath);
    }
    frmItemPicker form(model, browser, owner_);
    if (size_.isValid()) form.resize(size_);
    const bool accepted = form.exec() == QDialog::Accepted;
    size_ = form.size();
    showHidden_ = model.List().ShowsHidden();
    return accepted ? std::optional(model.Answer()) : std::nullopt;
}

} // namespace nib
