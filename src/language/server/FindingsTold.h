#pragma once
#include "language/server/Workspace.h"

#include <chrono>
#include <set>

namespace nib {

/// Tells the client the findings of open texts, a little after the last key.
class FindingsTold {
public:
    using Time = std::chrono::steady_clock::time_point;

    explicit FindingsTold(Workspace& workspace) : workspace_(workspace) {}

    /// A text was opened or edited; all of them may have other findings by that.
    void Changed(Time now);
    /// The client is told that there are none.
    void Closed(const std::string& uri);
    /// Tells what is due. Answers when to come back.
    Time Step(Time now);

private:
    Workspace& workspace_;
    Time due_ = Time::max();
    Time latest_ = Time::max();
    uint64_t revision_ = 0;
    std::map<std::string, Json> told_; ///< by URI
};

/// A finding as the client is told of it.
Json DiagnosticOf(const ClientText& text, const ProgramFinding& finding);

} // namespace nib
