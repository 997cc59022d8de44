#pragma once
#include "compare/history/ItemHistory.h"

namespace nib {

/// Why there is no version to list.
enum class NoVersions : uint8_t { NoDocument, NeverStored, NotKept, NoneYet, Unreadable };

/// The versions of a document as they are listed, the last one first. Long ways back are read as far as somebody looks.
class VersionList {
public:
    VersionList(ItemHistory& history, DocumentServices& services) : history_(history), services_(services) {}

    /// Begins anew where the document, 0 for none, or its last version is another; false when neither is.
    bool Refresh(int32_t documentId);
    /// Nothing when there are some.
    std::optional<NoVersions> WhyNone() const;
    /// Why they cannot be read; empty when they can.
    const Text& Fault() const { return fault_; }
    const std::vector<Version>& Rows() const { return rows_; }
    bool HasMore() const { return !next_.empty(); }
    void ReadMore();
    /// Null when there is none.
    std::shared_ptr<mvDocument> Document() const;

    Text TextOf(size_t row) const;
    void SetMessage(size_t row, TextView message);
    void BringBack(size_t row) const;

private:
    ItemHistory& history_;
    DocumentServices& services_;
    int32_t documentId_ = 0;
    Text fault_;
    std::string last_;
    std::string next_; ///< to be read from; empty at the end
    std::vector<Version> rows_;
};

} // namespace nib
