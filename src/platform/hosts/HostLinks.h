#pragma once
#include "platform/hosts/HostLink.h"
#include "platform/hosts/VerbPrograms.h"
#include "platform/posix/FileSaver.h"

#include <map>

namespace nib {

/// The links of all configured connections, each made when it is first used.
class HostLinks {
public:
    /// `network` makes the links of kind "network"; without it there are none.
    HostLinks(HostConfig config, VerbPrograms programs, HostLinkFactory network)
        : config_(std::move(config)), programs_(std::move(programs)), network_(std::move(network))
    {
    }

    const HostConfig& Config() const { return config_; }
    FileSaver Saver() const { return FileSaver(config_.backupFolder); }
    HostLink& Find(TextView serverName);

private:
    std::unique_ptr<HostLink> Make(const HostSettings& settings) const;

    HostConfig config_;
    VerbPrograms programs_;
    HostLinkFactory network_;
    std::map<Text, std::unique_ptr<HostLink>> links_;
};

} // namespace nib
