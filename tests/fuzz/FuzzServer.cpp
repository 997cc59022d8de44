// Any bytes as what a server answers: each reply is whole, or the connection ends.

#include "Fuzz.h"
#include "hosts/network/ServerConnection.h"

using namespace nib;

namespace {

/// Takes everything, and answers with the bytes in pieces whose sizes are among them.
class Noise : public ByteStream {
public:
    explicit Noise(std::string_view bytes) : bytes_(bytes) {}
    size_t Send(std::string_view bytes, std::chrono::milliseconds) override { return bytes.size(); }
    void Receive(std::string& bytes, std::chrono::milliseconds) override
    {
        if (bytes_.empty()) throw StreamEnded(u"its end");
        const size_t size = 1 + static_cast<unsigned char>(bytes_.front());
        bytes += bytes_.substr(0, size);
        bytes_.remove_prefix(std::min(size, bytes_.size()));
    }

private:
    std::string_view bytes_;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    ServerWait wait(nullptr);
    try {
        ServerConnection connection(
            std::make_unique<Noise>(std::string_view(reinterpret_cast<const char*>(data), size)), wait);
        if (!connection.Login("user", "password")) return 0;
        connection.EnterAccount(u"ACCOUNT");
        bool prompted = false;
        connection.Execute("RUN",
                           "a\xFE"
                           "b",
                           prompted);
        for (;;) {
            const ServerReply reply = connection.Call(ServerAction::Read, "x");
            Require(reply.data.size() <= size);
        }
    } catch (const Error& error) {
        Require(!error.description.empty());
    }
    return 0;
}
