#include "platform/posix/TransferText.h"

#include "platform/FileTransfer.h"

#include <algorithm>

namespace nib {

namespace {

constexpr std::string_view kUtf16Mark{"\xFF\xFE"};
constexpr std::string_view kUtf8Mark{"\xEF\xBB\xBF"};

bool IsUtf16(int32_t encoding)
{
    return encoding == transfer_encoding::kUtf16 || encoding == transfer_encoding::kUtf16Alternate;
}

bool IsUtf8(int32_t encoding)
{
    return encoding == transfer_encoding::kUtf8 || encoding == transfer_encoding::kUtf8Alternate;
}

unsigned char Byte(char c)
{
    return static_cast<unsigned char>(c);
}

} // namespace

int32_t DetectEncoding(std::string_view bytes)
{
    if (bytes.starts_with(kUtf16Mark)) return transfer_encoding::kUtf16;
    const bool ascii = std::all_of(bytes.begin(), bytes.end(), [](char c) { return Byte(c) < 0x80; });
    return !ascii && IsValidUtf8(bytes) ? transfer_encoding::kUtf8 : transfer_encoding::kSingleByte;
}

Text DecodeTransfer(std::string_view bytes, int32_t encoding)
{
    if (IsUtf8(encoding)) return FromUtf8(bytes.starts_with(kUtf8Mark) ? bytes.substr(kUtf8Mark.size()) : bytes);
    Text text;
    if (!IsUtf16(encoding)) {
        text.reserve(bytes.size());
        for (char c : bytes) text.push_back(Byte(c));
        return text;
    }
    if (bytes.starts_with(kUtf16Mark)) bytes.remove_prefix(kUtf16Mark.size());
    text.reserve(bytes.size() / 2);
    for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
        text.push_back(static_cast<char16_t>(Byte(bytes[i]) | Byte(bytes[i + 1]) << 8));
    }
    return text;
}

std::string EncodeTransfer(TextView text, int32_t encoding)
{
    if (IsUtf8(encoding)) return ToUtf8(text);
    std::string bytes;
    if (!IsUtf16(encoding)) {
        bytes.reserve(text.size());
        for (char16_t c : text) bytes.push_back(c > 0xFF ? '?' : static_cast<char>(c));
        return bytes;
    }
    bytes = kUtf16Mark;
    bytes.reserve(text.size() * 2 + bytes.size());
    for (char16_t c : text) {
        bytes.push_back(static_cast<char>(c & 0xFF));
        bytes.push_back(static_cast<char>(c >> 8));
    }
    return bytes;
}

} // namespace nib
