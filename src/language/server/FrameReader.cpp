#include "language/server/FrameReader.h"

#include "language/server/Message.h"

#include <charconv>

namespace nib {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kHeadersEnd = "\r\n\r\n";

[[noreturn]] void Refuse(TextView why)
{
    throw Error{lsp_error::kInvalidRequest, Text(why)};
}

bool IsBlank(char c)
{
    return c == ' ' || c == '\t';
}

std::string_view WithoutBlanks(std::string_view text)
{
    while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
    return text;
}

size_t ReadLength(std::string_view digits)
{
    size_t length = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), length);
    const bool whole = end == digits.data() + digits.size();
    if (whole && (error == std::errc::result_out_of_range || length > FrameReader::kLongestBody))
        Refuse(u"The message is longer than " + Decimal(FrameReader::kLongestBody) + u" bytes.");
    if (!whole || error != std::errc{}) Refuse(u"Content-Length is no number.");
    return length;
}

} // namespace

void FrameReader::Add(std::string_view bytes)
{
    pending_.append(bytes);
}

bool FrameReader::ReadHeaders()
{
    const size_t end = pending_.find(kHeadersEnd, searched_);
    if (end == std::string::npos ? pending_.size() > kLongestHeaders : end > kLongestHeaders)
        Refuse(u"The headers are longer than " + Decimal(kLongestHeaders) + u" bytes.");
    if (end == std::string::npos) {
        searched_ = pending_.size() < kHeadersEnd.size() ? 0 : pending_.size() - kHeadersEnd.size() + 1;
        return false;
    }
    std::string_view headers(pending_.data(), end + kLineEnd.size());
    while (!headers.empty()) {
        const size_t lineEnd = headers.find(kLineEnd);
        const std::string_view line = headers.substr(0, lineEnd);
        headers.remove_prefix(lineEnd + kLineEnd.size());
        const size_t colon = line.find(':');
        if (colon == std::string_view::npos) Refuse(u"A header has no colon.");
        if (EqualsNoCase(FromUtf8(WithoutBlanks(line.substr(0, colon))), u"Content-Length"))
            bodyLength_ = ReadLength(WithoutBlanks(line.substr(colon + 1)));
    }
    if (!bodyLength_) Refuse(u"The headers have no Content-Length.");
    pending_.erase(0, end + kHeadersEnd.size());
    searched_ = 0;
    return true;
}

std::optional<std::string> FrameReader::Next()
{
    if (!bodyLength_ && !ReadHeaders()) return std::nullopt;
    const size_t length = *bodyLength_;
    if (pending_.size() < length) return std::nullopt;
    std::string rest = pending_.substr(length);
    pending_.resize(length);
    bodyLength_.reset();
    return std::exchange(pending_, std::move(rest));
}

std::string Framed(std::string_view body)
{
    return ("Content-Length: " + std::to_string(body.size()) + "\r\n\r\n").append(body);
}

} // namespace nib
