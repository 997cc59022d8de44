// Any hosts.conf: there is a default connection, and each one is found by its name.

#include "Fuzz.h"
#include "hosts/HostLinks.h"

using namespace nib;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const HostConfig config = HostConfig::Parse(FromUtf8({reinterpret_cast<const char*>(data), size}), "/data");
    Require(!config.hosts.empty() && &config.Find(u"") == &config.hosts.front());
    Require(!config.hosts.front().root.empty() && !config.backupFolder.empty());
    for (const HostSettings& host : config.hosts)
        Require(host.serverName.empty() || EqualsNoCase(config.Find(host.serverName).serverName, host.serverName));
    return 0;
}
