#pragma once
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace nib {

/// Cuts a stream of bytes into the bodies of its messages, each of which has headers and a Content-Length in front.
class FrameReader {
public:
    static constexpr size_t kLongestHeaders = size_t{8} << 10;
    static constexpr size_t kLongestBody = size_t{64} << 20;

    void Add(std::string_view bytes);
    /// The next whole body, if it has come. Throws Error where the stream cannot be followed any further; nothing is
    /// set aside for a body before its bytes are there.
    std::optional<std::string> Next();
    /// It ends within a message.
    bool IsCut() const { return !pending_.empty() || bodyLength_; }

private:
    bool ReadHeaders();

    std::string pending_;
    size_t searched_ = 0; ///< where no headers end
    std::optional<size_t> bodyLength_;
};

/// The same, to be sent.
std::string Framed(std::string_view body);

} // namespace nib
