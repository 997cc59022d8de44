#pragma once
#include <string>

namespace nib {

/// Tells the processes that descend from one start by a mark in their environment, which they inherit whatever group,
/// session or parent they move to.
class ProcessFamily {
public:
    ProcessFamily();

    /// To be put into the environment of the first one.
    const std::string& Mark() const { return mark_; }
    /// Kills all that bear the mark. Those that appear meanwhile too.
    void Kill() const;

private:
    std::string mark_;
};

} // namespace nib
