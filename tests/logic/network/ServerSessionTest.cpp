// Sessions whose waits are not alone: something else is wanted of them meanwhile.

#include "hosts/network/NetworkLink.h"

#include "diagnostics/Guarded.h"
#include "fakes/Failure.h"

#include <gtest/gtest.h>

namespace nib::test {

namespace {

using std::chrono::milliseconds;

/// What all connections of a server share.
struct LittleServer {
    bool silent = false; ///< answers nothing
    bool gone = false;
    int32_t connections = 0;
};

/// A server that does whatever is asked: each file is number 1, each item "X", and locked by whoever asks.
class LittleStream : public ByteStream {
public:
    explicit LittleStream(LittleServer& server) : server_(server) { ++server_.connections; }

    size_t Send(std::string_view bytes, milliseconds) override
    {
        sent_ += bytes;
        for (auto size = LongAt(sent_, 0); size && sent_.size() >= static_cast<size_t>(*size);
             size = LongAt(sent_, 0)) {
            const auto action = static_cast<ServerAction>(*ShortAt(sent_, 4));
            left_ = left_ || action == ServerAction::Quit;
            std::string data = "X";
            if (action == ServerAction::OpenFile) data = NumberData(1);
            if (action == ServerAction::LockState) data = std::string("\2\0\0\0", 4);
            if (!server_.silent) toCome_ += ServerRequest(ServerAction{}, std::string(4, '\0') + data);
            sent_.erase(0, static_cast<size_t>(*size));
        }
        return bytes.size();
    }
    void Receive(std::string& bytes, milliseconds) override
    {
        if (server_.gone || (left_ && toCome_.empty())) throw StreamEnded(u"gone");
        bytes += std::exchange(toCome_, {});
    }

private:
    LittleServer& server_;
    std::string sent_, toCome_ = "\6";
    bool left_ = false;
};

/// Something happens while a server is waited for, and while a password is asked for.
class Meanwhile : public WaitNotice, public Passwords {
public:
    bool Started(TextView) override { return !std::exchange(running, true); }
    bool GoOn(milliseconds) override
    {
        if (const auto once = std::exchange(waiting, nullptr)) once();
        return !cancel;
    }
    void Ended() override { running = false; }
    std::optional<std::string> Ask(const HostSettings&, bool) override
    {
        if (const auto once = std::exchange(asking, nullptr)) once();
        return "secret7";
    }

    std::function<void()> waiting, asking;
    bool cancel = false, running = false;
};

} // namespace

class ServerSessionTest : public testing::Test {
protected:
    ServerSessionTest()
    {
        HostSettings settings;
        settings.address = settings.name = u"stock";
        settings.account = u"TESTACC";
        NetworkParts parts;
        parts.notice = &meanwhile;
        parts.passwords = &meanwhile;
        parts.tell = [this](const Text&, const Text& why) { news.push_back(why); };
        parts.open = [this] { return std::make_unique<LittleStream>(server); };
        link = std::make_unique<NetworkLink>(settings, parts);
    }
    std::shared_ptr<mvItem> Open(TextView id)
    {
        return link->Open({Text(kHostProvider), u"*", u"TESTACC", u"BP", Text(id)}, false, true);
    }
    static ServerSession& Of(mvItem& item, ServerSession ServerAccount::*which = &ServerAccount::items)
    {
        return static_cast<ServerCommands&>(*item.Session()).Shared().*which;
    }

    LittleServer server;
    Meanwhile meanwhile;
    std::vector<Text> news;
    std::unique_ptr<NetworkLink> link;
};

TEST_F(ServerSessionTest, ALookLeavesTheConnectionToTheCallThatWaits)
{
    const auto item = Open(u"MAIN");
    server.silent = true;
    meanwhile.waiting = [&] {
        server.gone = true;
        link->Look();
        EXPECT_NE(Of(*item).Login(), 0);
    };
    EXPECT_EQ(ErrorOf([&] { item->StateToSave(); }).number, error_number::kDeviceUnavailable);
}

TEST_F(ServerSessionTest, NobodyConnectsWhileThePasswordIsAskedFor)
{
    meanwhile.asking = [&] { EXPECT_NE(ErrorOf([&] { Open(u"OTHER"); }).number, 0); };
    EXPECT_NO_THROW(Open(u"MAIN"));
    EXPECT_EQ(server.connections, 1);
}

TEST_F(ServerSessionTest, ClosingDoesNotWaitLongForAnAnswerThatNobodyWanted)
{
    auto item = Open(u"MAIN");
    server.silent = meanwhile.cancel = true;
    EXPECT_EQ(ErrorOf([&] { item->WriteItem(0, 0, 0, u"Y"); }).description, u"The request was cancelled.");
    const auto began = std::chrono::steady_clock::now();
    item.reset();
    EXPECT_LT(std::chrono::steady_clock::now() - began, std::chrono::seconds(8));
}

TEST_F(ServerSessionTest, TheEndOfTheConnectionForCommandsIsNoNews)
{
    const auto item = Open(u"MAIN");
    item->Session()->Execute(u"WHO", u"", 0);
    news.clear();
    Of(*item, &ServerAccount::commands).Drop();
    item->Session()->Execute(u"WHO", u"", 0);
    EXPECT_TRUE(news.empty()) << "it has no locks, and a new one mends no other";

    server.silent = meanwhile.cancel = true;
    EXPECT_EQ(item->Session()->Execute(u"LONG", u"", 0), u"LONG was stopped.");
    server.silent = meanwhile.cancel = false;
    EXPECT_EQ(item->Session()->Execute(u"WHO", u"", 0), u"X") << "over a connection of its own again";
    EXPECT_TRUE(item->HoldsLock() && news.empty());
}

} // namespace nib::test
