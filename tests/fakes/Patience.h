#pragma once

#include <gtest/gtest.h>

#include <chrono>

namespace nib::test {

/// Fails where work took longer than any machine needs for it. Speed is measured by the benchmarks: here a clock only
/// tells work that grows with the square of its input, which takes minutes, from work that does not, however slow the
/// build and busy the machine.
class Patience {
public:
    explicit Patience(const char* work) : work_(work) {}
    Patience(const Patience&) = delete;
    Patience& operator=(const Patience&) = delete;
    ~Patience()
    {
        auto spent = std::chrono::steady_clock::now() - start_;
        EXPECT_LT(std::chrono::duration_cast<std::chrono::seconds>(spent).count(), kSeconds) << work_;
    }

private:
    static constexpr int kSeconds = 30;
    const char* work_;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

} // namespace nib::test
