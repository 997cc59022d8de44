#pragma once
#include <gtest/gtest.h>

#include <csignal>
#include <functional>

#include <sys/wait.h>
#include <unistd.h>

namespace nib::test {

/// Runs `body` in a process of its own and answers its exit code.
inline int InChild(const std::function<int()>& body)
{
    const pid_t child = fork();
    if (child == 0) _exit(body());
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// A process that holds something until it is killed: `body` gets it and tells a number, which does not return.
class HeldProcess {
public:
    using Tell = std::function<void(uint32_t)>;
    explicit HeldProcess(const std::function<void(const Tell&)>& body)
    {
        int ends[2];
        if (pipe(ends) != 0) return;
        child_ = fork();
        if (child_ == 0) {
            body([&](uint32_t number) {
                if (write(ends[1], &number, sizeof number) == sizeof number) pause();
                _exit(1);
            });
            _exit(1);
        }
        close(ends[1]);
        EXPECT_EQ(read(ends[0], &number_, sizeof number_), static_cast<ssize_t>(sizeof number_));
        close(ends[0]);
    }
    HeldProcess(const HeldProcess&) = delete;
    HeldProcess& operator=(const HeldProcess&) = delete;
    ~HeldProcess() { Kill(); }

    pid_t Id() const { return child_; }
    uint32_t Number() const { return number_; }
    void Kill()
    {
        if (child_ <= 0) return;
        kill(child_, SIGKILL);
        waitpid(child_, nullptr, 0);
        child_ = -1;
    }

private:
    pid_t child_ = -1;
    uint32_t number_ = 0;
};

} // namespace nib::test
