#pragma once
#include "base/Text.h"

#include <exception>

namespace nib {

/// The one kind of failure the program throws. Caught at the doors only, by Guarded().
struct Error : std::exception {
    Error(int32_t errorNumber, Text errorDescription)
        : number(errorNumber), description(std::move(errorDescription)), what_(ToUtf8(description))
    {
    }
    const char* what() const noexcept override { return what_.c_str(); }

    int32_t number;
    Text description;

private:
    std::string what_;
};

/// Program error numbers that more than one room raises or tests.
namespace error_number {
inline constexpr int32_t kInvalidCall = 5;
inline constexpr int32_t kOutOfMemory = 7;
inline constexpr int32_t kSubscript = 9;
inline constexpr int32_t kBadFileName = 52;
/// What is searched for cannot be, or takes too long: the description is for the user.
inline constexpr int32_t kSearch = 51;
inline constexpr int32_t kFileNotFound = 53;
inline constexpr int32_t kFileExists = 58;
inline constexpr int32_t kDiskFull = 61;
inline constexpr int32_t kTooManyFiles = 67;
inline constexpr int32_t kDeviceUnavailable = 68;
inline constexpr int32_t kPermissionDenied = 70;
inline constexpr int32_t kRenameAcrossDisks = 74;
inline constexpr int32_t kPathAccess = 75;
inline constexpr int32_t kPathNotFound = 76;
inline constexpr int32_t kBadIndex = 381;
inline constexpr int32_t kKeyInUse = 457;
inline constexpr int32_t kLabelNotFound = 32767;
inline constexpr int32_t kNotImplemented = static_cast<int32_t>(0x80004001);
/// The item cannot be opened for update: the opener falls back to read-only without asking.
inline constexpr int32_t kNoUpdate = static_cast<int32_t>(0x80049D12);
/// Locked by another user or process (two numbers for the same state, by the road it was found on).
inline constexpr int32_t kLocked = static_cast<int32_t>(0x80049D2B);
inline constexpr int32_t kLockedElsewhere = static_cast<int32_t>(0x80049D44);
/// Everything else that storage reports: the description is for the user.
inline constexpr int32_t kStorage = static_cast<int32_t>(0x80049D01);
} // namespace error_number

} // namespace nib
