#include "hosts/network/ServerConnection.h"

#include "fakes/Failure.h"
#include "fakes/MemorySettings.h"
#include "hosts/network/ClearTextTrust.h"
#include "hosts/network/NetworkLink.h"

#include <gtest/gtest.h>

#include <deque>

namespace nib::test {

namespace {

std::string Bytes(std::string_view hex)
{
    std::string bytes;
    for (size_t i = 0; i + 1 < hex.size(); i += 3)
        bytes.push_back(static_cast<char>(std::stoi(std::string(hex.substr(i, 2)), nullptr, 16)));
    return bytes;
}

std::string Reply(ServerResult result, int32_t status, std::string_view data)
{
    // The same form as a request, with the result in the place of the action and the status before the data.
    std::string body(4, '\0');
    for (size_t i = 0; i < 4; ++i) body[i] = static_cast<char>(status >> (8 * i));
    return ServerRequest(static_cast<ServerAction>(result), body.append(data));
}

/// What a server was heard to answer to what a client was heard to send, in pieces of any size.
class Replayed : public ByteStream {
public:
    struct Turn {
        std::string sent;
        std::string answered;
    };
    Replayed(std::deque<Turn> turns, size_t piece) : turns_(std::move(turns)), piece_(piece), toCome_("\6") {}

    size_t Send(std::string_view bytes, std::chrono::milliseconds) override
    {
        const std::string_view part = bytes.substr(0, piece_);
        sent_ += part;
        if (!turns_.empty() && sent_ == turns_.front().sent) {
            toCome_ += turns_.front().answered;
            turns_.pop_front();
            sent_.clear();
        }
        return part.size();
    }
    void Receive(std::string& bytes, std::chrono::milliseconds) override
    {
        if (toCome_.empty()) throw StreamEnded(u"closed, after \"" + FromUtf8(sent_) + u"\"");
        bytes += toCome_.substr(0, piece_);
        toCome_.erase(0, piece_);
    }

private:
    std::deque<Turn> turns_;
    size_t piece_;
    std::string toCome_, sent_;
};

const std::deque<Replayed::Turn> kConversation = {
    {Bytes("16 00 00 00 18 00 03 00 61 64 61 00 07 00 73 65 63 72 65 74 37 00"),
     Bytes("0a 00 00 00 00 00 00 00 00 00")},
    {Bytes("0d 00 00 00 03 00 54 45 53 54 41 43 43"), Bytes("0a 00 00 00 00 00 be 0b 00 00")},
    {Bytes("08 00 00 00 04 00 42 50"), Bytes("0c 00 00 00 00 00 00 00 00 00 01 00")},
    {Bytes("1a 00 00 00 11 00 01 00 04 00 50 52 42 31 43 52 54 20 27 48 49 27 fe 45 4e 44"),
     Bytes("0a 00 00 00 00 00 00 00 00 00")},
    {Bytes("0c 00 00 00 06 00 01 00 50 52 42 31"),
     Bytes("16 00 00 00 00 00 00 00 00 00 43 52 54 20 27 48 49 27 fe 45 4e 44")},
    {Bytes("0c 00 00 00 06 00 01 00 4e 4f 50 45"), Bytes("0a 00 00 00 02 00 be 0b 00 00")},
    {Bytes("0d 00 00 00 09 00 01 00 50 52 4f 47 31"), Bytes("0a 00 00 00 04 00 8c 00 00 00")},
    {Bytes("0d 00 00 00 22 00 01 00 50 52 4f 47 31"), Bytes("0e 00 00 00 00 00 8c 00 00 00 fe ff ff ff")},
    {Bytes("11 00 00 00 15 00 52 55 4e 20 42 50 20 50 52 42 31"), Bytes("0e 00 00 00 05 00 00 00 00 00 47 6f 3f 20")},
    {Bytes("07 00 00 00 16 00 59"), Bytes("0f 00 00 00 00 00 01 00 00 00 64 69 64 20 59")},
    {Bytes("08 00 00 00 0f 00 00 00"), Bytes("0a 00 00 00 00 00 00 00 00 00")},
    {Bytes("06 00 00 00 01 00"), Bytes("0a 00 00 00 00 00 00 00 00 00")}};

} // namespace

TEST(ServerConnectionTest, SaysWhatAServerWasHeardToUnderstand)
{
    for (const size_t piece : {size_t{1}, size_t{7}, size_t{1000}}) {
        ServerWait wait(nullptr);
        ServerConnection connection(std::make_unique<Replayed>(kConversation, piece), wait);
        ASSERT_TRUE(connection.Login("ada", "secret7"));
        connection.EnterAccount(u"TESTACC");
        const ServerReply opened = connection.Call(ServerAction::OpenFile, "BP");
        EXPECT_EQ(ShortAt(opened.data, 0), 1);
        EXPECT_EQ(connection
                      .Call(ServerAction::WriteKeepLock, WriteData(1, "PRB1",
                                                                   "CRT 'HI'\xFE"
                                                                   "END"))
                      .status,
                  0);
        EXPECT_EQ(connection.Call(ServerAction::Read, FileData(1, "PRB1")).data, "CRT 'HI'\xFE"
                                                                                 "END");
        const ServerReply missing = connection.Call(ServerAction::Read, FileData(1, "NOPE"));
        EXPECT_EQ(missing.result, ServerResult::NotFound);
        EXPECT_EQ(missing.status, server_status::kNoSuchItem);
        const ServerReply locked = connection.Call(ServerAction::ReadLocked, FileData(1, "PROG1"));
        EXPECT_EQ(locked.result, ServerResult::Locked);
        EXPECT_EQ(locked.status, 140);
        EXPECT_EQ(LongAt(connection.Call(ServerAction::LockState, FileData(1, "PROG1")).data, 0), -2);
        bool prompted = true;
        EXPECT_EQ(connection.Execute("RUN BP PRB1", "Y", prompted), "Go? \xFE"
                                                                    "did Y");
        EXPECT_FALSE(prompted);
    }
}

TEST(ServerConnectionTest, FramesThatNoServerSendsEndTheConnection)
{
    const std::string none(4, '\0');
    const std::string frames[] = {none + none + none,
                                  Bytes("09 00 00 00 00 00 00 00 00 00"),
                                  Bytes("ff ff ff ff 00 00 00 00 00 00"),
                                  Bytes("ff ff ff 7f 00 00 00 00 00 00"),
                                  Bytes("0a 00 00 00 06 00 00 00 00 00"),
                                  Bytes("0a 00 00 00 ff ff 00 00 00 00"),
                                  Bytes("0b 00 00 00 00 00 00 00 00 00"),
                                  Bytes("0a 00 00"),
                                  ""};
    for (const std::string& frame : frames) {
        ServerWait wait(nullptr);
        ServerConnection connection(
            std::make_unique<Replayed>(std::deque<Replayed::Turn>{{ServerRequest(ServerAction::Read, "x"), frame}},
                                       100),
            wait);
        EXPECT_NE(ErrorOf([&] { connection.Call(ServerAction::Read, "x"); }).number, 0)
            << testing::PrintToString(frame);
        EXPECT_TRUE(connection.IsLost());
    }
}

TEST(ServerConnectionTest, RepliesInAnyPieces)
{
    ReplyReader reader;
    const std::string replies = Reply(ServerResult::Done, 7, "data") + Reply(ServerResult::Refused, -1, "") +
                                Reply(ServerResult::Prompt, 0, std::string(70'000, 'x'));
    std::vector<ServerReply> taken;
    for (const char byte : replies) {
        reader.Buffer().push_back(byte);
        while (auto reply = reader.Take()) taken.push_back(std::move(*reply));
    }
    ASSERT_EQ(taken.size(), 3u);
    EXPECT_EQ(taken[0].status, 7);
    EXPECT_EQ(taken[0].data, "data");
    EXPECT_EQ(taken[1].status, -1);
    EXPECT_EQ(taken[2].data.size(), 70'000u);
    EXPECT_TRUE(reader.Empty());
}

/// Lets everybody in, has one hashed file and no items, and deletes as it is told.
class Answering : public ByteStream {
public:
    Answering(ServerReply deletion, std::vector<ServerAction>& asked) : deletion_(std::move(deletion)), asked_(asked) {}

    size_t Send(std::string_view bytes, std::chrono::milliseconds) override
    {
        const auto action = static_cast<ServerAction>(ShortAt(bytes, 4).value_or(0));
        asked_.push_back(action);
        if (action == ServerAction::Delete)
            toCome_ += Reply(deletion_.result, deletion_.status, {});
        else if (action == ServerAction::ReadLocked)
            toCome_ += Reply(ServerResult::NotFound, server_status::kNoSuchItem, {});
        else
            toCome_ += Reply(ServerResult::Done, 0, action == ServerAction::OpenFile ? NumberData(1) : std::string());
        return bytes.size();
    }
    void Receive(std::string& bytes, std::chrono::milliseconds) override
    {
        if (toCome_.empty() && !asked_.empty() && asked_.back() == ServerAction::Quit) throw StreamEnded(u"closed");
        bytes += std::exchange(toCome_, {});
    }

private:
    ServerReply deletion_;
    std::vector<ServerAction>& asked_;
    std::string toCome_{"\6"};
};

struct AnyPassword : Passwords {
    std::optional<std::string> Ask(const HostSettings&, bool) override { return "secret7"; }
};

TEST(NetworkLinkTest, ATestTellsThatAUserMayOnlyRead)
{
    const std::pair<ServerReply, TextView> rows[] = {
        {{ServerResult::Done, 0, {}}, u"lets user ada into account SALES."},
        {{ServerResult::Failed, server_status::kReadOnlyFile, {}}, u"to read alone: the user may not write"},
        {{ServerResult::Failed, server_status::kNoPermission, {}}, u"to read alone: the user may not write"}};
    for (const auto& [deletion, words] : rows) {
        std::vector<ServerAction> asked;
        AnyPassword passwords;
        NetworkParts parts;
        parts.passwords = &passwords;
        parts.open = [&asked, answer = deletion] { return std::make_unique<Answering>(answer, asked); };
        Text said;
        {
            NetworkLink link(HostConfig::Parse(u"[*]\nkind=network\naddress=db\nuser=ada\naccount=SALES", "/").Find({}),
                             parts);
            if (const auto failure = FailureOf([&] { said = link.Test(); })) said = failure->description;
        }
        EXPECT_NE(said.find(words), Text::npos) << ToUtf8(said);
        const auto deleted = std::find(asked.begin(), asked.end(), ServerAction::Delete);
        ASSERT_NE(deleted, asked.end());
        EXPECT_EQ(*(deleted - 1), ServerAction::ReadLocked) << "nobody can have made it meanwhile";
        EXPECT_EQ(*(deleted + 1), ServerAction::Release);
        EXPECT_EQ(asked.back(), ServerAction::Quit);
    }
}

TEST(NetworkLinkTest, APasswordInTheClearIsAskedAboutOnce)
{
    struct OneAnswer : MessageBoxes {
        int32_t Show(TextView, int32_t, TextView) override
        {
            ++shown;
            return answer;
        }
        void Beep() override {}
        int32_t answer = 0;
        size_t shown = 0;
    } boxes;
    MemorySettings store;
    const std::tuple<TextView, int32_t, bool, size_t> rows[] = {
        {u"address=127.0.0.1", message_box::kAnswerNo, true, 0},
        {u"address=db\ntunnel=ssh gateway", message_box::kAnswerNo, true, 0},
        {u"address=db", message_box::kAnswerNo, false, 1},
        {u"address=db", message_box::kAnswerYes, true, 1},
        {u"address=db", message_box::kAnswerNo, true, 0},
        {u"address=db2", message_box::kAnswerNo, false, 1}};
    for (const auto& [lines, answer, enters, questions] : rows) {
        SCOPED_TRACE(ToUtf8(lines) + " " + std::to_string(answer));
        std::vector<ServerAction> asked;
        AnyPassword passwords;
        ClearTextTrust trust(store, boxes);
        boxes.shown = 0;
        boxes.answer = answer;
        NetworkParts parts;
        parts.passwords = &passwords;
        parts.mayGoInTheClear = [&](const HostSettings& host) { return trust.MayGo(host); };
        parts.open = [&] { return std::make_unique<Answering>(ServerReply(), asked); };
        {
            NetworkLink link(
                HostConfig::Parse(u"[*]\nkind=network\nuser=ada\naccount=SALES\n" + Text(lines), "/").Find({}), parts);
            EXPECT_EQ(!FailureOf([&] { link.Test(); }), enters);
        }
        EXPECT_EQ(std::find(asked.begin(), asked.end(), ServerAction::Login) != asked.end(), enters);
        EXPECT_EQ(boxes.shown, questions);
    }
}

} // namespace nib::test
