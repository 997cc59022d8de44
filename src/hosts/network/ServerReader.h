#pragma once
#include "hosts/ItemReader.h"
#include "hosts/ItemText.h"
#include "hosts/network/ServerSession.h"

#include <atomic>

namespace nib {

/// Reads items on a connection of its own, which it makes at its first call.
class ServerReader final : public ItemReader {
public:
    /// The door asks nobody anything and tells nobody.
    ServerReader(ServerDoor door, Text account, ItemText coding, Text programRules)
        : session_(std::move(door), std::move(account), nullptr, &stopped_), coding_(std::move(coding)),
          programRules_(std::move(programRules))
    {
    }

    std::vector<Text> Files() override;
    std::vector<Text> Ids(TextView file) override;
    std::optional<Text> Read(TextView file, TextView id) override;
    Text ProgramRules() override { return programRules_; }
    void Stop() override { stopped_ = true; }

private:
    std::atomic<bool> stopped_ = false;
    ServerSession session_;
    ItemText coding_;
    Text programRules_;
};

} // namespace nib
