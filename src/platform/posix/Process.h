#pragma once
#include <chrono>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace nib {

/// Of the user who runs this process; the number of one without a name.
const std::string& LoginName();
/// "localhost" for a machine without one.
const std::string& MachineName();

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

struct ProcessRequest {
    std::vector<std::string> words; ///< the program and its arguments
    std::string folder;             ///< where it runs
    std::string firstInPath;        ///< a folder put before those of PATH unless it is one of them; may be empty
    std::string_view input;
    std::chrono::milliseconds timeLimit{120'000};
    size_t outputLimit = size_t{128} << 20;
    /// Asked about every 50 ms while the program runs; false stops it. May be empty.
    std::function<bool()> goOn;
    /// Given what is new of the output, as it comes. May be empty.
    std::function<void(std::string_view bytes)> printed;
};

struct ProcessResult {
    std::string output; ///< standard output and error together, as they came
    bool timedOut = false;
    bool cancelled = false;
    bool cut = false; ///< stopped at the output limit
    int exitCode = 0;
    int signal = 0; ///< what ended it, 0 when it ended by itself
};

/// Runs a program, without a shell, in a process group of its own, and waits for it. When it is stopped, all that it
/// started is killed, what has left the group as well. Throws SystemFailure when it cannot be started: ENOENT when
/// there is no such program, EACCES when it may not be run.
ProcessResult RunProcess(const ProcessRequest& request);

} // namespace nib
