#pragma once
#include <cerrno>
#include <utility>

#include <unistd.h>

namespace nib {

/// Owns one file descriptor.
class Descriptor {
public:
    explicit Descriptor(int fd = -1) : fd_(fd) {}
    Descriptor(Descriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(fd_, other.fd_);
        return *this;
    }
    ~Descriptor() { Close(); }

    explicit operator bool() const { return fd_ >= 0; }
    int Get() const { return fd_; }
    /// Answers 0 or the system's error: a close can be what reports a failed write.
    int Close()
    {
        if (fd_ < 0) return 0;
        return close(std::exchange(fd_, -1)) == 0 || errno == EINTR ? 0 : errno;
    }

private:
    int fd_;
};

} // namespace nib
