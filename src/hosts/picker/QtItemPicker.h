#pragma once
#include "hosts/ItemBrowser.h"

#include <QPointer>
#include <QSize>
#include <QWidget>

namespace nib {

/// Runs the item picker as a modal dialog. Its size and the showing of hidden files last as long as the program.
class ItemPicker : public PickerDialog {
public:
    /// The dialog stands over `owner`.
    explicit ItemPicker(QWidget* owner = nullptr) : owner_(owner) {}
    std::optional<PickerAnswer> Run(const SelectRequest& request, TextView startPath, ItemBrowser& browser) override;

private:
    QPointer<QWidget> owner_;
    QSize size_;
    bool showHidden_ = false;
};

} // namespace nib
