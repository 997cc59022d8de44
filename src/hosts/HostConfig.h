#pragma once
#include "base/Text.h"

#include <string>
#include <vector>

namespace nib {

/// One host connection.
struct HostSettings {
    Text serverName = u"*"; ///< its section; "*" is the default connection
    Text kind = u"accounts";
    std::string root; ///< folder of the accounts
    Text charset;     ///< empty: Latin-1 for reading, UTF-8 for new items
    Text name;        ///< for the user to read
    Text account;     ///< where pickers begin when nothing else is known
    Text address;     ///< network: host and port, user
    Text port;
    Text user;
};

/// The host connections, from sections of hosts.conf:
///
///     [*]
///     root=/srv/accounts
///     charset=windows-1252
///     account=DEMO
///
/// Keys and section names ignore case; a line that begins with "#" or ";" is a comment. The default connection is
/// there even without a section.
struct HostConfig {
    std::vector<HostSettings> hosts; ///< the default connection first
    std::string backupFolder;        ///< for old contents while a file is written in place

    static HostConfig Parse(TextView text, const std::string& dataFolder);
    /// From $XDG_CONFIG_HOME/Orlin/hosts.conf and $XDG_DATA_HOME.
    static HostConfig FromEnvironment();
    /// Throws kPathNotFound for a connection that is not configured. An empty name is the default one.
    const HostSettings& Find(TextView serverName) const;
};

} // namespace nib
