#pragma once
#include "base/Error.h"
#include "hosts/HostLinks.h"
#include "hosts/HostsFile.h"

#include <functional>
#include <set>

namespace nib {

/// Why a connection cannot be taken as it is.
struct ConnectionFault : Error {
    ConnectionFault(const Error& error, Text name) : Error(error), connection(std::move(name)) {}
    Text connection;
};

/// Changes of the connections, which come into force when they are accepted. Names and values are in words for the user
/// where Error is thrown.
class ConnectionEdits {
public:
    /// The links outlive it.
    ConnectionEdits(HostsFile file, HostLinks& links) : file_(std::move(file)), links_(links) {}

    std::vector<Text> Names() const { return file_.Names(); }
    /// As it is written, without a default.
    Text Value(TextView name, TextView key) const { return file_.Value(name, key); }
    void Set(TextView name, TextView key, TextView value);
    /// A new one of the kind; its name.
    Text Add(TextView kind);
    Text Rename(TextView name, TextView newName);
    void Remove(TextView name);
    /// With the defaults.
    HostSettings Settings(TextView name) const;
    /// As HostLink::Test.
    Text Test(TextView name) const { return links_.Test(Settings(name)); }
    /// Writes the file, and has the links follow it. `forget` is called for logins that are of no more use. Throws
    /// ConnectionFault for a changed connection that cannot work, and Error when the file cannot be written.
    void Accept(const std::function<void(const HostSettings&)>& forget);

private:
    HostConfig Config() const;

    HostsFile file_;
    HostLinks& links_;
    std::set<Text> changed_;
};

} // namespace nib
