#pragma once
#include "language/BasicChecker.h"
#include "text/SourceDocument.h"

#include <map>
#include <memory>
#include <string>

namespace nib {

/// The items of the account in a folder, as texts to be checked.
class AccountItems final : public IncludeItems {
public:
    explicit AccountItems(std::string account) : account_(std::move(account)) {}

    Answer Find(TextView file, TextView item, SourceDocument*& text) override;

private:
    Answer FindExactly(TextView file, TextView item, SourceDocument*& text);
    bool HasFile(TextView file) const;

    std::string account_;
    std::map<std::string, std::unique_ptr<SourceDocument>> texts_; ///< by file name
};

} // namespace nib
