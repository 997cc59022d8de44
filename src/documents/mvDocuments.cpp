#include "documents/mvDocuments.h"

#include <algorithm>

namespace nib {

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
