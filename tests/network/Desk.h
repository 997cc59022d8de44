#pragma once
#include "hosts/network/NetworkLink.h"

#include "diagnostics/Guarded.h"
#include "fakes/Failure.h"
#include "platform/posix/FileName.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace nib::test {

struct Arguments {
    Text host, port, users[2], account;
    std::string passwords[2];
    int rounds = 300;
};
extern Arguments given;

class OnePassword : public Passwords {
public:
    explicit OnePassword(std::string password) : password_(std::move(password)) {}
    std::optional<std::string> Ask(const HostSettings&, bool refused) override
    {
        return refused ? std::nullopt : std::optional(password_);
    }

private:
    std::string password_;
};

/// A user at a desk of their own.
class Desk {
public:
    explicit Desk(int user, std::string password = {}, Text account = given.account)
        : passwords_(password.empty() ? given.passwords[user] : password)
    {
        HostSettings settings;
        settings.name = u"the server";
        settings.address = given.host;
        settings.port = given.port;
        settings.user = given.users[user];
        settings.account = account;
        NetworkParts parts;
        parts.passwords = &passwords_;
        parts.tell = [this](const Text& what, const Text& why) { news_.push_back(what + why); };
        link_ = std::make_unique<NetworkLink>(settings, parts);
    }

    std::shared_ptr<mvItem> Open(TextView file, TextView id, bool lock = true)
    {
        return link_->Open({Text(kHostProvider), u"*", given.account, Text(file), Text(id)}, false, lock);
    }
    NetworkLink& Link() { return *link_; }
    const std::vector<Text>& News() const { return news_; }

private:
    OnePassword passwords_;
    std::vector<Text> news_;
    std::unique_ptr<NetworkLink> link_;
};

/// The bytes of items behind the link's back.
class Behind {
public:
    explicit Behind(int user = 1)
        : session_(
              {u"behind",
               ToUtf8(given.users[user]),
               [](const WaitStep& step) { return ConnectTcp(given.host, given.port, std::chrono::seconds(5), step); },
               [user](bool) { return std::optional(given.passwords[user]); },
               {},
               {}},
              given.account, nullptr)
    {
    }

    std::string Get(const std::string& file, const std::string& id)
    {
        const ServerReply reply = session_.OnItem(file, ServerAction::Read, id);
        return reply.result == ServerResult::Done ? reply.data : "(none)";
    }
    void Put(const std::string& file, const std::string& id, const std::string& bytes)
    {
        session_.OnItem(file, ServerAction::Read, id); // connects
        EXPECT_EQ(session_.Write(file, id, bytes, false, session_.Login()).result, ServerResult::Done);
    }
    ServerSession& Session() { return session_; }

private:
    ServerSession session_;
};

class ServerTest : public testing::Test {
protected:
    Behind behind;
};

inline Text ReadAll(mvItem& item)
{
    return item.ReadItem(0, 0, 0);
}

inline void WriteAll(mvItem& item, TextView text)
{
    item.WriteItem(0, 0, 0, text);
    item.Commit();
}

} // namespace nib::test
