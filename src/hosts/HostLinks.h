#pragma once
#include "hosts/HostLink.h"

namespace nib {

/// The links of all configured connections, each made when it is first used.
class HostLinks {
public:
    HostLinks(HostConfig config, HostLinkKinds kinds) : config_(std::move(config)), kinds_(std::move(kinds)) {}

    const HostConfig& Config() const { return config_; }
    FileSaver Saver() const { return FileSaver(config_.backupFolder); }
    HostLink& Find(TextView serverName);

private:
    std::unique_ptr<HostLink> Make(const HostSettings& settings) const;

    HostConfig config_;
    HostLinkKinds kinds_;
    std::map<Text, std::unique_ptr<HostLink>> links_;
};

} // namespace nib
