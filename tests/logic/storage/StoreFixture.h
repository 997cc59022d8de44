#pragma once
#include "TempFolder.h"
#include "persistence/store/Profile.h"

#include <gtest/gtest.h>

#include <functional>

#include <sys/wait.h>

namespace nib::test {

/// Settings files on a real disk.
struct StoreTest : testing::Test {
    Text Path(const std::string& name) const { return FromUtf8(folder / name); }

    /// Runs each body in a process of its own, all at once, and waits for them.
    static void InProcesses(const std::vector<std::function<void()>>& bodies)
    {
        std::vector<pid_t> children;
        for (const auto& body : bodies) {
            const pid_t child = fork();
            if (child == 0) {
                body();
                _exit(0);
            }
            children.push_back(child);
        }
        for (const pid_t child : children) {
            int status = -1;
            waitpid(child, &status, 0);
            EXPECT_EQ(status, 0);
        }
    }

    TempFolder folder;
    ProfileDisk disk{FileSaver(folder / "backups"), std::chrono::seconds{20}};
};

} // namespace nib::test
