#include "documents/mvDocument.h"

#include "diagnostics/Guarded.h"
#include "documents/DocumentSettings.h"
#include "editing/LexClass.h"

#include <algorithm>

namespace nib {

std::shared_ptr<mvDocument> NewDocumentObject(DocumentServices& services)
{
    return OrDefault(
        [&] {
            auto document = std::make_shared<mvDocument>(services);
            services.openDocuments.Add(document);
            services.log.Write(u"mvdocument initialize end", trace::kObjects);
            return document;
        },
        std::shared_ptr<mvDocument>());
}

mvDocument::mvDocument(DocumentServices& services)
    : services_(services), documentId_(services.lastDocumentId + 1), highlight_(services.settings.Highlight)
{
    services_.log.Write(u"mvdocument initialize begin", trace::kObjects);
    services_.lastDocumentId = documentId_;
}

mvDocument::~mvDocument()
{
    services_.log.Write(u"mvdocument terminate begin", trace::kObjects);
    view_.reset();
    ReleaseItem();
    services_.log.Write(u"mvdocument terminate end", trace::kObjects);
}

clsDocView& mvDocument::EnsureView()
{
    if (!view_) {
        view_ = services_.createView(*this);
        ApplySettings();
    }
    view_->Show();
    return *view_;
}

bool mvDocument::ReadOnly() const
{
    return item_ && item_->ReadOnly();
}

bool mvDocument::NewItem() const
{
    return !item_ || !item_->Exists();
}

bool mvDocument::IsDirty() const
{
    return view_ && Source()->Document().Modified();
}

Text mvDocument::Path() const
{
    return item_ ? item_->Path() : Text();
}

Text mvDocument::Filename() const
{
    return item_ ? item_->Folder() : Text();
}

Text mvDocument::ItemID() const
{
    return item_ ? item_->ItemID() : Text();
}

bool mvDocument::LocalFile() const
{
    return item_ && item_->Provider() == u"file";
}

Text mvDocument::DisplayName() const
{
    if (!item_) return u"NewItem" + Decimal(newNumber_);
    if (item_->Provider() == u"file") return item_->ItemID();
    return item_->Folder() + u" " + item_->ItemID();
}

Text mvDocument::PrintTitle() const
{
    if (!item_) return u"File: (untitled)";
    if (LocalFile()) return u"File: " + item_->DisplayPath();
    return u"File: " + item_->Folder() + u"     Item: " + item_->ItemID();
}

Text mvDocument::ListName() const
{
    return DisplayName() + u" [" + Decimal(documentId_) + u"]";
}

Text mvDocument::TitleText() const
{
    Text title = DisplayName();
    if (!item_) {
        title += u" (New)";
    } else {
        if (item_->Provider() == u"mvdb" && !item_->HostName().empty()) title += u" on " + item_->HostName();
        if (item_->Provider() == u"mvdb" && !item_->Account().empty()) title += u", account " + item_->Account();
        if (!item_->Exists())
            title += u" (New)";
        else if (item_->ReadOnly())
            title += u" (Read only)";
    }
    return IsDirty() ? u"*" + title : title;
}

Text mvDocument::PlaceText() const
{
    if (!item_ || LocalFile()) return item_ ? item_->Folder() : Text();
    if (item_->Account().empty() || item_->HostName().empty()) return item_->Account() + item_->HostName();
    return item_->Account() + u" on " + item_->HostName();
}

Text mvDocument::Color() const
{
    if (!item_) return {};
    return services_.connection.ColorOf({item_->Provider(), item_->ServerName(), item_->Account(), {}, {}});
}

void mvDocument::UpdateTitle()
{
    if (view_) view_->SetTitle(TitleText());
}

void mvDocument::Activate()
{
    services_.frame.ToForeground();
    EnsureView().Activate();
}

bool mvDocument::AutoSaveFlag() const
{
    return view_ && view_->AutoSaveFlag();
}

void mvDocument::ApplySettings()
{
    if (!view_) return;
    highlight_ = services_.settings.Highlight;
    ApplyViewSettings(view_->txtText(), services_.settings, view_->Lexer());
}

void mvDocument::SetHighlight(bool highlight)
{
    if (highlight == highlight_) return;
    highlight_ = highlight;
    if (LexClass* lexer = view_ ? view_->Lexer() : nullptr) lexer->SetHighlight(highlight);
    if (SourceView* source = Source()) source->Document().UpdateLines(0, source->Document().LineCount() - 1);
}

int32_t mvDocument::Show(TextView text, int32_t flags)
{
    services_.frame.SetWaitCursor(false);
    return services_.shell.ShowMessage(text, flags);
}

bool mvDocument::Ask(TextView question)
{
    return Show(question, message_box::kYesNo | message_box::kQuestion) == message_box::kAnswerYes;
}

void mvDocument::Warn(TextView text)
{
    Show(text, message_box::kOk | message_box::kWarning);
}

bool mvDocument::Attempt(TextView where, const std::function<bool()>& body)
{
    bool done = false;
    if (auto failure = FailureOf([&] { done = body(); })) ReportFailure(where, *failure);
    return done;
}

void mvDocument::ReportFailure(TextView where, const Error& error)
{
    services_.log.Write([&] { return Text(where) + u" 0x" + Hex(error.number) + u" " + error.description; },
                        trace::kCommandLine);
    Warn(error.description);
}

void mvDocument::AdoptLocation(const mvItem& item)
{
    services_.place.GoTo({item.Provider(), item.ServerName(), item.Database(), item.Folder()});
}

bool mvDocument::ConfirmClose()
{
    if (!view_ || !IsDirty()) return true;
    services_.frame.SetWaitCursor(false);
    int32_t answer = services_.shell.ShowMessage(u"Save changes to " + DisplayName() + u" ?",
                                                 message_box::kYesNoCancel | message_box::kQuestion);
    if (answer == message_box::kAnswerYes) return item_ && FileSave() && !IsDirty();
    return answer == message_box::kAnswerNo;
}

void mvDocument::TakeItem(std::shared_ptr<mvItem> item)
{
    if (item_ && item_ != item) IgnoringErrors([&] { item_->Close(); });
    item_ = std::move(item);
}

void mvDocument::ReleaseItem()
{
    if (item_) IgnoringErrors([&] { item_->Close(); }, [&] { item_->LockItem(false); });
    item_.reset();
}

bool mvDocument::FileClose(bool prompt)
{
    if (IsBeingSaved()) return false;
    auto self = shared_from_this(); // the collection and the window may be the only ones that hold it
    if (prompt && !ConfirmClose()) return false;
    view_.reset();
    services_.openDocuments.Remove(documentId_);
    if (counted_) --services_.openCount;
    counted_ = false;
    if (services_.openCount < 1) {
        for (int32_t panel : {2, 3}) {
            services_.frame.SetStatusText(panel, u"");
            services_.frame.ShowStatusPanel(panel, false);
        }
    }
    labels_.reset();
    if (const auto raise = std::exchange(DocumentClose, nullptr)) IgnoringErrors(raise);
    ReleaseItem();
    services_.shell.DocumentChanged(*this);
    return true;
}

namespace {
auto FindId(const std::vector<std::shared_ptr<mvDocument>>& documents, int32_t id)
{
    return std::find_if(documents.begin(), documents.end(), [id](auto& d) { return d->DocumentID() == id; });
}
} // namespace

std::shared_ptr<mvDocument> mvDocuments::Item(int32_t index) const
{
    return index < 1 || index > Count() ? nullptr : documents_[static_cast<size_t>(index - 1)];
}

std::shared_ptr<mvDocument> mvDocuments::ById(int32_t documentId) const
{
    auto found = FindId(documents_, documentId);
    return found == documents_.end() ? nullptr : *found;
}

std::shared_ptr<mvDocument> mvDocuments::NextAfter(int32_t documentId) const
{
    if (documents_.size() < 2) return nullptr;
    auto found = FindId(documents_, documentId);
    if (found == documents_.end() || ++found == documents_.end()) found = documents_.begin();
    return *found;
}

std::shared_ptr<mvDocument> mvDocuments::On(const mvItem& item) const
{
    auto found = std::find_if(documents_.begin(), documents_.end(), [&](auto& document) {
        const auto own = document->ItemObject();
        return own && IsSameItem(*own, item);
    });
    return found == documents_.end() ? nullptr : *found;
}

void mvDocuments::Add(std::shared_ptr<mvDocument> document)
{
    documents_.push_back(std::move(document));
    if (Added) Added(*documents_.back());
}

void mvDocuments::Remove(int32_t documentId)
{
    auto found = FindId(documents_, documentId);
    if (found != documents_.end()) documents_.erase(found);
}

} // namespace nib
