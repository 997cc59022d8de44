#include "persistence/recovery/Journals.h"

#include "documents/mvDocument.h"

#include <algorithm>

namespace nib {

namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;

// A million lines in half a second, and no key that comes meanwhile waits longer than nobody can notice.
constexpr milliseconds kBetweenSlices{5};
constexpr microseconds kSlice{250};
constexpr milliseconds kBetweenLooks{2000};

JournalHead HeadOf(const mvDocument& document)
{
    const std::shared_ptr<mvItem> item = document.ItemObject();
    return {document.Path(), document.ItemID(), document.DisplayName(), item ? item->Version() : Text(),
            document.AutoRecoverFile()};
}

} // namespace

Journals::Journals(Timers& timers, std::string folder, std::string session, std::function<void(TextView)> fault)
    : timers_(timers), folder_(std::move(folder)), session_(std::move(session)), fault_(std::move(fault))
{
}

Journals::~Journals()
{
    while (!entries_.empty()) Drop(entries_.begin()->first, false);
}

void Journals::DocumentChanged(mvDocument& document)
{
    const int32_t id = document.DocumentID();
    auto found = entries_.find(id);
    if (!document.IsDirty()) {
        if (found != entries_.end()) Drop(id, true);
        return;
    }
    if (found == entries_.end()) {
        Start(document);
    } else if (found->second.journal->Head() != HeadOf(document)) {
        found->second.journal->MakeStale();
    }
}

void Journals::Start(mvDocument& document)
{
    if (!writer_) writer_.emplace(folder_);
    SourceDocument& text = document.View()->txtText().Document();
    auto journal = std::make_unique<DocumentJournal>(
        text, *writer_, session_ + "." + std::to_string(document.DocumentID()), [this] { Wake(); });
    text.AddListener(journal.get());
    entries_[document.DocumentID()] = {document.weak_from_this(), std::move(journal)};
    Wake();
}

void Journals::Drop(int32_t documentId, bool removeFile)
{
    auto found = entries_.find(documentId);
    const auto document = found->second.document.lock();
    // Its text is gone with its window.
    if (document && document->View())
        document->View()->txtText().Document().RemoveListener(found->second.journal.get());
    if (removeFile) writer_->Remove(found->second.journal->Name());
    entries_.erase(found);
}

void Journals::CopyMade(mvDocument& document)
{
    auto found = entries_.find(document.DocumentID());
    if (found != entries_.end() && found->second.journal->Head().copy != document.AutoRecoverFile())
        found->second.journal->SetCopyName(document.AutoRecoverFile());
}

void Journals::Supersede(mvDocument& document, std::string name)
{
    auto found = entries_.find(document.DocumentID());
    if (found != entries_.end()) found->second.journal->Supersede(std::move(name));
}

void Journals::Wake()
{
    if (!copying_) copying_ = timers_.Every(kBetweenSlices, [this] { CopyNext(); });
    if (!lookingAfter_) lookingAfter_ = timers_.Every(kBetweenLooks, [this] { LookAfter(); });
}

bool Journals::AnyStale() const
{
    return std::any_of(entries_.begin(), entries_.end(), [](const auto& entry) {
        return entry.second.journal->IsStale() || entry.second.journal->IsCopying();
    });
}

void Journals::CopyNext()
{
    CopyAll(kSlice);
    if (!AnyStale()) copying_.reset();
}

void Journals::CopyAll(microseconds timeEach)
{
    for (auto& [id, entry] : entries_) {
        const auto document = entry.document.lock();
        if (!document) continue;
        if (entry.journal->IsStale()) entry.journal->Begin(HeadOf(*document));
        if (entry.journal->IsCopying()) entry.journal->CopySlice(timeEach);
    }
}

/// One that could not be written is begun anew now and then: there may be room again.
void Journals::LookAfter()
{
    const Text fault = writer_ ? writer_->Fault() : Text();
    if (fault != knownFault_) fault_(knownFault_ = fault);
    if (entries_.empty() && fault.empty()) return lookingAfter_.reset();
    for (auto& [id, entry] : entries_)
        if (writer_->IsBroken(entry.journal->Name())) entry.journal->MakeStale();
}

void Journals::Flush()
{
    if (!writer_) return;
    CopyAll(std::chrono::minutes(1));
    writer_->Flush();
}

void Journals::RemoveAll()
{
    while (!entries_.empty()) Drop(entries_.begin()->first, true);
    if (writer_) writer_->Flush();
    copying_.reset();
    lookingAfter_.reset();
}

} // namespace nib
