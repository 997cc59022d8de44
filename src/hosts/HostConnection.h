#pragma once
#include "hosts/HostLinks.h"
#include "hosts/ItemBrowser.h"
#include "platform/MessageBoxes.h"

namespace nib {

/// What the picker shows of the connections and of the local file system. Hidden local files are among the rest:
/// whether to show them is the picker's choice.
class HostBrowser : public ItemBrowser {
public:
    explicit HostBrowser(HostLinks& links) : links_(links) {}

    std::vector<BrowseEntry> Places() override;
    std::vector<BrowseEntry> Children(TextView path) override;
    Text LockHolder(TextView path) override;
    Text Parent(TextView path) override;
    /// What is typed goes on from the place: at a file it is an item id (or "FILE ITEM" when no item has that id and
    /// there is such a file), at an account "FILE ITEM", at a connection "ACCOUNT FILE ITEM"; in the local file system
    /// a name below the folder, or one that begins with "~/". The name of a folder or file gives the path of that
    /// place.
    Text Resolve(TextView place, TextView typed) override;

private:
    Text ResolveHost(ItemPlace place, TextView typed);

    HostLinks& links_;
};

/// The host connection: finds the link of a path, and runs the picker. Items may outlive it.
class HostConnection : public mvConnection {
public:
    HostConnection(HostConfig config, PickerDialog& picker, MessageBoxes& boxes, HostLinkKinds kinds);

    std::vector<KnownHost> Hosts() override;
    SelectedItem SelectItem(const SelectRequest& request, mvItem* start) override;
    std::vector<SelectedItem> SelectItems(const SelectRequest& request, mvItem* start) override;
    std::shared_ptr<mvItem> OpenServerForPath(TextView path, bool readOnly, bool lock) override;
    HostLinks& Links() { return links_; }
    /// From time to time: to notice connections that were lost.
    void Look() { links_.Look(); }
    std::unique_ptr<ItemReader> Reader(const ItemPlace& account) override;
    Text DialectOf(TextView serverName) override { return links_.Config().Find(serverName).dialect; }
    Text ColorOf(const ItemPlace& account) const override
    {
        return account.provider == kHostProvider ? links_.Config().ColorOf(account.serverName, account.database)
                                                 : Text();
    }
    bool KeepsHistory(const ItemPlace& account) const override
    {
        return account.provider != kHostProvider || links_.Config().KeepsHistory(account.serverName, account.database);
    }

private:
    PickerAnswer RunPicker(const SelectRequest& request, mvItem* start);
    SelectedItem OpenPicked(const PickerAnswer& answer, TextView path);

    HostLinks links_;
    HostBrowser browser_;
    PickerDialog& picker_;
    MessageBoxes& boxes_;
};

} // namespace nib
