#include "platform/posix/SystemError.h"

#include <cerrno>
#include <cstring>

namespace nib {

namespace {

struct CodeRow {
    int error;
    int32_t code;
};

constexpr CodeRow kCodes[] = {
    {ENOENT, 2},   {ENOTDIR, 3}, {ELOOP, 3},          {EMFILE, 4},   {ENFILE, 4},      {EACCES, 5},   {EPERM, 5},
    {EROFS, 5},    {EISDIR, 5},  {EBADF, 6},          {ENOMEM, 8},   {ENODEV, 15},     {ENOTBLK, 15}, {ENXIO, 15},
    {EXDEV, 17},   {EIO, 31},    {EBUSY, 32},         {ETXTBSY, 32}, {EAGAIN, 33},     {EINVAL, 87},  {ENOSPC, 112},
    {EDQUOT, 112}, {EFBIG, 112}, {ENAMETOOLONG, 123}, {EILSEQ, 123}, {ENOTEMPTY, 145}, {EEXIST, 183},
};

constexpr int32_t kGeneralFailure = 31;

} // namespace

SystemFailure::SystemFailure(TextView whatFailed, int error)
    : Error(error_number::kStorage, Text(whatFailed) + u": " + SystemText(error)), systemError(error)
{
}

Text SystemText(int error)
{
    char buffer[256] = {};
    return FromUtf8(strerror_r(error, buffer, sizeof buffer));
}

int32_t SystemCode(int error)
{
    if (error == 0) return 0;
    for (const CodeRow& row : kCodes)
        if (row.error == error) return row.code;
    return kGeneralFailure;
}

int ErrnoOfCode(int32_t code)
{
    for (const CodeRow& row : kCodes)
        if (row.code == code) return row.error;
    return 0;
}

} // namespace nib
