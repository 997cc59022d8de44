#include "compare/history/VersionList.h"

#include "diagnostics/Guarded.h"
#include "documents/mvDocument.h"

#include <algorithm>

namespace nib {

namespace {

constexpr size_t kAtOnce = 200;

} // namespace

std::shared_ptr<mvDocument> VersionList::Document() const
{
    return services_.openDocuments.ById(documentId_);
}

bool VersionList::Refresh(int32_t documentId)
{
    const auto document = services_.openDocuments.ById(documentId);
    std::string last;
    const auto failure = document ? FailureOf([&] { last = history_.Last(*document); }) : std::nullopt;
    fault_ = failure ? failure->description : Text();
    if (documentId_ == documentId && last_ == last) return false;
    documentId_ = documentId;
    last_ = next_ = last;
    rows_.clear();
    ReadMore();
    return true;
}

std::optional<NoVersions> VersionList::WhyNone() const
{
    if (!rows_.empty()) return std::nullopt;
    const auto document = Document();
    if (!document) return NoVersions::NoDocument;
    const auto item = document->ItemObject();
    if (!item) return NoVersions::NeverStored;
    if (!fault_.empty()) return NoVersions::Unreadable;
    return history_.Keeps(*item) ? NoVersions::NoneYet : NoVersions::NotKept;
}

void VersionList::ReadMore()
{
    const auto document = Document();
    const std::string from = std::exchange(next_, {});
    if (!document || from.empty()) return;
    const auto more = OrDefault([&] { return history_.List(*document, from, kAtOnce); }, std::vector<Version>());
    rows_.insert(rows_.end(), more.begin(), more.end());
    if (more.size() == kAtOnce) next_ = more.back().parent;
}

Text VersionList::TextOf(size_t row) const
{
    const auto document = Document();
    return document ? history_.TextOf(*document, rows_.at(row).id) : Text();
}

void VersionList::SetMessage(size_t row, TextView message)
{
    const auto document = Document();
    if (!document || rows_.at(row).message == message) return;
    const std::string id = rows_[row].id;
    history_.SetMessage(*document, id, message);
    // The list may have been read anew meanwhile.
    const auto now = std::find_if(rows_.begin(), rows_.end(), [&](const Version& version) { return version.id == id; });
    if (now != rows_.end()) now->message = message;
}

void VersionList::BringBack(size_t row) const
{
    if (const auto document = Document()) history_.BringBack(*document, rows_.at(row).id);
}

} // namespace nib
