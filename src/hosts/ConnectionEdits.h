#pragma once
#include "hosts/HostLinks.h"
#include "hosts/HostsFile.h"

#include <functional>
#include <set>

namespace nib {

/// Changes of the connections, which come into force when they are accepted. What changes them throws Error as
/// HostsFile does.
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
    struct Fault {
        Text connection;
        Text why;
    };
    /// Of a connection that cannot work as it was changed here; what nobody has touched may be as wrong as it was.
    std::optional<Fault> FirstFault() const;
    /// Writes the file, and has the links follow it. `forget` is called for logins that are of no more use. Throws
    /// Error when the file cannot be written; then nothing has changed.
    void Accept(const std::function<void(const HostSettings&)>& forget);

private:
    HostConfig Config() const;

    HostsFile file_;
    HostLinks& links_;
    std::set<Text> changed_;
};

} // namespace nib
