#include "platform/posix/SystemError.h"

#include <cstring>

namespace nib {

SystemFailure::SystemFailure(TextView whatFailed, int error)
    : Error(error_number::kStorage, Text(whatFailed) + u": " + SystemText(error)), systemError(error)
{
}

Text SystemText(int error)
{
    char buffer[256] = {};
    return FromUtf8(strerror_r(error, buffer, sizeof buffer));
}

} // namespace nib
