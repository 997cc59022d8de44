#pragma once
#include "hosts/ItemReader.h"
#include "hosts/accounts/AccountStore.h"

#include <atomic>
#include <map>

namespace nib {

/// Reads the files of an account's folder without a look at locks, or at anything twice.
class AccountReader final : public ItemReader {
public:
    AccountReader(AccountStore store, Text account, Text programRules = {})
        : store_(std::move(store)), account_(std::move(account)), programRules_(std::move(programRules))
    {
    }

    std::vector<Text> Files() override;
    std::vector<Text> Ids(TextView file) override;
    std::optional<Text> Read(TextView file, TextView id) override;
    Text Stamp(TextView file, TextView id) override;
    std::string Folder(TextView file) override;
    Text ProgramRules() override { return programRules_; }
    void Stop() override { stopped_ = true; }

private:
    void CheckStopped() const;
    void Enter(TextView file);
    std::string PathOf(TextView file, TextView id);
    /// False when the file holds a NUL, which is looked for before all of a large one has been read.
    bool ReadBytes(const std::string& path);

    AccountStore store_;
    Text account_;
    Text programRules_;
    Text file_; ///< that the last call was about
    IdRule rule_ = IdRule::Plain;
    std::string folder_;
    std::map<Text, std::string> names_; ///< by id, as far as they have been asked for
    std::string bytes_;
    std::atomic<bool> stopped_ = false;
};

} // namespace nib
