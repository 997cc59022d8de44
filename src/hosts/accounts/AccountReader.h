#pragma once
#include "hosts/ItemReader.h"
#include "hosts/accounts/AccountStore.h"

#include <atomic>
#include <map>

namespace nib {

/// Reads the files of an account's folder without a look at locks, or at anything twice.
class AccountReader final : public ItemReader {
public:
    AccountReader(AccountStore store, Text account) : store_(std::move(store)), account_(std::move(account)) {}

    std::vector<Text> Files() override;
    std::vector<Text> Ids(TextView file) override;
    /// Of the file whose ids were asked for last.
    std::optional<Text> Read(TextView file, TextView id) override;
    void Stop() override { stopped_ = true; }

private:
    void CheckStopped() const;
    /// False when the file holds a NUL, which is looked for before all of a large one has been read.
    bool ReadBytes(const std::string& path);

    AccountStore store_;
    Text account_;
    IdRule rule_ = IdRule::Plain;
    std::string folder_;                ///< of the file whose ids are known
    std::map<Text, std::string> names_; ///< by id
    std::string bytes_;
    std::atomic<bool> stopped_ = false;
};

} // namespace nib
