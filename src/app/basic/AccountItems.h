#pragma once
#include "language/BasicChecker.h"

#include <map>
#include <memory>
#include <string>

namespace nib {

/// The items of the account in a folder, as texts to be checked.
class AccountItems final : public IncludeSource {
public:
    explicit AccountItems(std::string account) : account_(std::move(account)) {}

    Answer Find(TextView file, TextView item, std::shared_ptr<const ProgramText>& text) override;

private:
    Answer FindExactly(TextView file, TextView item, std::shared_ptr<const ProgramText>& text);
    bool HasFile(TextView file) const;

    std::string account_;
    std::map<std::string, std::shared_ptr<const ProgramText>> texts_; ///< by file name
};

} // namespace nib
