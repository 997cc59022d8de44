#pragma once
#include "hosts/HostBrowser.h"
#include "hosts/HostLinks.h"
#include "hosts/ItemBrowser.h"
#include "platform/MessageBoxes.h"

namespace nib {

/// The host connection: finds the link of a path, and runs the picker. Items may outlive it.
class HostConnection : public mvConnection {
public:
    HostConnection(HostConfig config, PickerDialog& picker, MessageBoxes& boxes, HostLinkKinds kinds);

    SelectedItem SelectItem(const SelectRequest& request, mvItem* start) override;
    std::vector<SelectedItem> SelectItems(const SelectRequest& request, mvItem* start) override;
    std::shared_ptr<mvItem> OpenServerForPath(TextView path, bool readOnly, bool lock) override;

private:
    PickerAnswer RunPicker(const SelectRequest& request, mvItem* start);
    SelectedItem OpenPicked(TextView path, bool readOnly, bool lock);
    bool AgreesToReadOnly(TextView path);

    HostLinks links_;
    HostBrowser browser_;
    PickerDialog& picker_;
    MessageBoxes& boxes_;
};

} // namespace nib
