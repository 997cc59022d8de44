#pragma once
#include "base/Error.h"

#include <cerrno>
#include <new>
#include <utility>

namespace nib {

/// A failed call of the operating system: what could not be done, and the system's reason.
struct SystemFailure : Error {
    SystemFailure(TextView whatFailed, int error);
    int systemError; ///< errno
};

/// Runs `body` and answers the errno that it failed with, 0 when it did not: for what answers codes and does not throw.
template <typename Body>
int SystemErrorOf(Body&& body) noexcept
{
    try {
        std::forward<Body>(body)();
        return 0;
    } catch (const SystemFailure& failure) {
        return failure.systemError;
    } catch (const std::bad_alloc&) {
        return ENOMEM;
    } catch (...) {
        return EINVAL;
    }
}

/// The system's own sentence for an errno.
Text SystemText(int error);

} // namespace nib
