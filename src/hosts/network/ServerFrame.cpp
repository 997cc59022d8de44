#include "hosts/network/ServerFrame.h"

#include "base/Error.h"

#include <utility>

namespace nib {

namespace {

constexpr size_t kRequestHeader = 6;
constexpr size_t kReplyHeader = 10;

template <typename Number>
void AppendNumber(std::string& out, Number number)
{
    for (size_t i = 0; i < sizeof number; ++i) out.push_back(static_cast<char>(number >> (8 * i) & 0xFF));
}

template <typename Number>
std::optional<Number> NumberAt(std::string_view data, size_t at)
{
    if (data.size() < sizeof(Number) || at > data.size() - sizeof(Number)) return std::nullopt;
    uint32_t number = 0;
    for (size_t i = 0; i < sizeof(Number); ++i)
        number |= static_cast<uint32_t>(static_cast<unsigned char>(data[at + i])) << (8 * i);
    return static_cast<Number>(number);
}

/// Length, bytes, and a byte more where the length is odd.
void AppendPadded(std::string& out, std::string_view bytes)
{
    AppendNumber(out, static_cast<int16_t>(bytes.size()));
    out += bytes;
    if (bytes.size() % 2 != 0) out.push_back('\0');
}

} // namespace

std::string ServerRequest(ServerAction action, std::string_view data)
{
    std::string out;
    out.reserve(kRequestHeader + data.size());
    AppendNumber(out, static_cast<int32_t>(kRequestHeader + data.size()));
    AppendNumber(out, static_cast<int16_t>(action));
    out += data;
    return out; // not what append answers, of which it would be a copy: passwords and large items go this way
}

std::string LoginData(std::string_view user, std::string_view password)
{
    std::string out;
    out.reserve(user.size() + password.size() + kRequestHeader); // so that no copy of the password is left behind
    AppendPadded(out, user);
    AppendPadded(out, password);
    return out;
}

std::string NumberData(int16_t number)
{
    std::string out;
    AppendNumber(out, number);
    return out;
}

std::string FileData(int16_t file, std::string_view id)
{
    return NumberData(file).append(id);
}

std::string WriteData(int16_t file, std::string_view id, std::string_view item)
{
    std::string out;
    out.reserve(2 * sizeof(int16_t) + id.size() + item.size());
    AppendNumber(out, file);
    AppendNumber(out, static_cast<int16_t>(id.size()));
    out += id;
    out += item;
    return out;
}

std::string InformationData(int16_t file, int32_t key)
{
    std::string out = NumberData(file);
    AppendNumber(out, key);
    return out;
}

std::optional<int16_t> ShortAt(std::string_view data, size_t at)
{
    return NumberAt<int16_t>(data, at);
}

std::optional<int32_t> LongAt(std::string_view data, size_t at)
{
    return NumberAt<int32_t>(data, at);
}

std::optional<ServerReply> ReplyReader::Take()
{
    if (buffer_.size() < kReplyHeader) return std::nullopt;
    const int32_t length = *LongAt(buffer_, 0);
    const int16_t result = *ShortAt(buffer_, 4);
    if (length < static_cast<int32_t>(kReplyHeader) || static_cast<size_t>(length) > kLargestReply || result < 0 ||
        result > static_cast<int16_t>(ServerResult::Prompt)) {
        throw Error(error_number::kDeviceUnavailable, u"it sent what is no reply of a MultiValue server");
    }
    const auto size = static_cast<size_t>(length);
    if (buffer_.size() < size) return std::nullopt;
    ServerReply reply{static_cast<ServerResult>(result), *LongAt(buffer_, 6), {}};
    std::string rest = buffer_.substr(size);
    buffer_.resize(size);
    buffer_.erase(0, kReplyHeader);
    reply.data = std::exchange(buffer_, std::move(rest));
    return reply;
}

} // namespace nib
