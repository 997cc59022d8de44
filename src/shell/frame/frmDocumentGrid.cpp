// A record as a grid in place of its text; part of frmDocument.

#include "documents/mvDocument.h"
#include "hosts/ItemReader.h"
#include "platform/qt/QtText.h"
#include "records/GridFiles.h"
#include "records/frmRecord.h"
#include "shell/Program.h"
#include "shell/frame/frmDocument.h"
#include "shell/frame/frmMain.h"
#include "text/widget/SourceViewWidget.h"

namespace nib {

namespace {

/// Of the item's file. Without one the record is there all the same.
Dictionary DictionaryOf(const mvItem& item, DocumentServices& services)
{
    Dictionary dictionary;
    const auto failure = FailureOf([&] {
        const WaitCursor wait(services.frame);
        const auto reader = services.connection.Reader(ParsePath(item.Path()));
        services.frame.Await([&] { dictionary = ReadDictionary(*reader, item.Folder()); });
    });
    if (failure) dictionary.fault = failure->description;
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
    ShowGrid(item ? DictionaryOf(*item, mainWindow_.Owner().Services()) : Dictionary());
    gridFile_ = item ? GridFileOf(*item) : Text();
}

void frmDocument::ShowGrid(Dictionary dictionary)
{
    grid_ = new frmRecord(Model(), std::move(dictionary));
    grid_->onReset = [this] { window_->Post([](frmDocument& form) { form.RemakeGrid(); }); };
    window_->ShowInstead(grid_);
    window_->widget()->setFocusProxy(grid_);
    grid_->show();
    FocusText();
    mainWindow_.Owner().StateChanged(); // commands on the text rest
}

Text frmDocument::TakeInput()
{
    const QString reason = grid_ ? grid_->TakeInput() : QString();
    if (!reason.isEmpty()) Activate();
    return ToText(reason);
}

/// When the call that opens it is over.
void frmDocument::Opened()
{
    window_->Post([](frmDocument& form) { form.RestoreGrid(); });
}

/// As the user looked at records of this file before. One that is too large for it shows as the text that it is.
void frmDocument::RestoreGrid()
{
    const std::shared_ptr<mvItem> item = document_ ? document_->ItemObject() : nullptr;
    if (!item || document_->LocalFile() || !GridFiles(mainWindow_.Owner().Store()).Holds(*item)) return;
    IgnoringErrors([this] { SetGrid(true); });
}

/// Its host is not asked for the names once more.
void frmDocument::RemakeGrid()
{
    if (!document_ || !IsGrid()) return;
    const std::shared_ptr<mvItem> item = document_->ItemObject();
    const bool known = item && GridFileOf(*item) == gridFile_ && grid_->Names().fault.empty();
    Dictionary dictionary = grid_->Names();
    SetGrid(false);
    IgnoringErrors([&] { known ? ShowGrid(std::move(dictionary)) : SetGrid(true); });
}

} // namespace nib
