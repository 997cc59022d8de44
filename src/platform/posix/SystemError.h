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

/// Runs `body` and answers the errno that it failed with, 0 when it did not: for ports that answer codes and do not
/// throw.
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
/// The system error code of the file layer's error tables that stands for an errno; 31 (general failure) for the rest.
int32_t SystemCode(int error);
/// The errno that the code stands for, the first one where several share it; 0 when there is none.
int ErrnoOfCode(int32_t code);

} // namespace nib
