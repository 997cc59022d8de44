// A record as a grid in place of its text; part of frmDocument.

#include "documents/mvDocument.h"
#include "hosts/ItemReader.h"
#include "records/GridFiles.h"
#include "records/frmRecord.h"
#include "shell/Program.h"
#include "shell/frame/frmDocument.h"
#include "shell/frame/frmMain.h"
#include "text/widget/SourceViewWidget.h"

namespace nib {

namespace {

/// Of the item's file. A host that cannot be asked has none: the record is there without names.
Dictionary DictionaryOf(const mvItem& item, DocumentServices& services)
{
    Dictionary dictionary;
    IgnoringErrors([&] {
        const WaitCursor wait(services.frame);
        const auto reader = services.connection.Reader(ParsePath(item.Path()));
        services.frame.Await([&] { dictionary = ReadDictionary(*reader, item.Folder()); });
    });
    return dictionary;
}

} // namespace

void frmDocument::SetGrid(bool grid)
{
    if (grid == IsGrid()) return;
    if (!grid) {
        delete std::exchange(grid_, nullptr);
        window_->ShowInstead(nullptr);
        window_->widget()->setFocusProxy(widget_);
        widget_->RevealPlace(Model().Caret());
        return FocusText();
    }
    const std::shared_ptr<mvItem> item = document_->ItemObject();
    Dictionary dictionary = item ? DictionaryOf(*item, mainWindow_.Owner().Services()) : Dictionary();
    auto shown = std::make_unique<frmRecord>(Model(), std::move(dictionary));
    grid_ = shown.release();
    grid_->onReset = [this] { window_->Post([](frmDocument& form) { form.RemakeGrid(); }); };
    window_->ShowInstead(grid_);
    window_->widget()->setFocusProxy(grid_);
    grid_->show();
    FocusText();
}

/// As the user looked at records of this file before. One that is too large for it shows as the text that it is.
void frmDocument::RestoreGrid()
{
    const std::shared_ptr<mvItem> item = document_ ? document_->ItemObject() : nullptr;
    if (!item || document_->LocalFile() || !GridFiles(mainWindow_.Owner().Store()).Holds(*item)) return;
    IgnoringErrors([this] { SetGrid(true); });
}

void frmDocument::RemakeGrid()
{
    if (!document_ || !IsGrid()) return;
    SetGrid(false);
    IgnoringErrors([this] { SetGrid(true); });
}

} // namespace nib
