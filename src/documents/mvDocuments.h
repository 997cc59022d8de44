#pragma once
#include "documents/mvDocument.h"

#include <functional>
#include <vector>

namespace nib {

/// The open documents in the order of their creation; the key is the decimal DocumentID.
class mvDocuments {
public:
    int32_t Count() const { return static_cast<int32_t>(documents_.size()); }
    /// 1-based; null when out of range.
    std::shared_ptr<mvDocument> Item(int32_t index) const;
    std::shared_ptr<mvDocument> ById(int32_t documentId) const;
    /// The next after `documentId`, round to the first; null with fewer than two documents.
    std::shared_ptr<mvDocument> NextAfter(int32_t documentId) const;
    void Add(std::shared_ptr<mvDocument> document);
    void Remove(int32_t documentId);
    /// A copy, so that documents may close while it is walked.
    std::vector<std::shared_ptr<mvDocument>> All() const { return documents_; }

    /// Told of each document once it is in.
    std::function<void(mvDocument&)> Added;

private:
    std::vector<std::shared_ptr<mvDocument>> documents_;
};

} // namespace nib
