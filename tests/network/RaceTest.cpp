// Desks, and the server's own editor, on one item in every order: whatever was saved by somebody stays until somebody
// who has seen it takes it out.

#include "network/Desk.h"

#include <chrono>
#include <random>
#include <set>

namespace nib::test {

namespace {

constexpr TextView kId{u"RACE"};
constexpr std::string_view kBytesId{"RACE"};

/// Somebody who opens the item, writes a line of their own below what is there, and saves.
class Editor {
public:
    virtual ~Editor() = default;
    /// The next thing that such a person does. Adds to `saved` what is stored by then.
    virtual void Step(std::mt19937& random, const std::string& token, std::set<std::string>& saved) = 0;
    virtual void Close() = 0;
};

class NibEditor : public Editor {
public:
    NibEditor(int user, bool locks) : desk_(user), locks_(locks) {}

    void Step(std::mt19937& random, const std::string& token, std::set<std::string>& saved) override
    {
        if (item_ && random() % 12 == 0) Break();
        if (!item_) return Open();
        if (token_.empty()) {
            token_ = token;
            text_ += (text_.empty() ? u"" : u"\r\n") + FromUtf8(token_);
            return;
        }
        const std::optional<Error> failure = FailureOf([&] { WriteAll(*item_, text_); });
        if (!failure) {
            saved.insert(token_);
            if (random() % 2 == 0) return Close();
            token_.clear();
        } else if (!IsLocked(*failure)) {
            Read(); // takes what the other has stored, and begins anew
        }
    }
    void Close() override
    {
        item_.reset();
        token_.clear();
    }

private:
    void Open()
    {
        const auto began = std::chrono::steady_clock::now();
        const std::optional<Error> failure = FailureOf([&] { item_ = desk_.Open(u"BP", kId, locks_); });
        if (failure) {
            EXPECT_TRUE(IsLocked(*failure)) << ToUtf8(failure->description);
            EXPECT_NE(failure->description.find(u"It is held by "), Text::npos) << ToUtf8(failure->description);
            EXPECT_LT(std::chrono::steady_clock::now() - began, std::chrono::seconds(1));
            return item_.reset();
        }
        Read();
    }
    void Read()
    {
        text_ = ReadAll(*item_);
        token_.clear();
    }
    void Break() { static_cast<ServerCommands&>(*item_->Session()).Shared().items.Drop(); }

    Desk desk_;
    bool locks_;
    std::shared_ptr<mvItem> item_;
    Text text_;
    std::string token_;
};

/// The server's own editor takes the lock, writes, and lets it go.
class OwnEditor : public Editor {
public:
    void Step(std::mt19937& random, const std::string& token, std::set<std::string>& saved) override
    {
        ServerSession& session = behind_.Session();
        if (!open_) {
            const ServerReply reply = session.OnItem("BP", ServerAction::ReadLocked, kBytesId);
            open_ = reply.result == ServerResult::Done;
            text_ = reply.data;
        } else if (random() % 4 == 0) {
            Close();
        } else {
            text_ += (text_.empty() ? "" : std::string(1, kFieldMark)) + token;
            session.Write("BP", kBytesId, text_, false, session.Login());
            saved.insert(token);
            open_ = false;
        }
    }
    void Close() override
    {
        behind_.Session().Release("BP", kBytesId, behind_.Session().Login());
        open_ = false;
    }

private:
    Behind behind_;
    bool open_ = false;
    std::string text_;
};

} // namespace

TEST(ServerRace, NothingSavedIsLost)
{
    Behind behind;
    NibEditor first(0, true);
    NibEditor second(1, true);
    NibEditor unlocked(1, false);
    OwnEditor own;
    Editor* editors[] = {&first, &second, &unlocked, &own};
    int kept = 0;
    for (int round = 0; round < given.rounds; ++round) {
        std::mt19937 random(static_cast<unsigned>(round));
        behind.Put("BP", std::string(kBytesId), "");
        std::set<std::string> saved;
        for (int step = 0; step < 16; ++step)
            editors[random() % std::size(editors)]->Step(random, "T" + std::to_string(step), saved);
        std::string stored = kFieldMark + behind.Get("BP", std::string(kBytesId)) + kFieldMark;
        for (const std::string& token : saved)
            ASSERT_NE(stored.find(kFieldMark + token + kFieldMark), std::string::npos)
                << "round " << round << ": " << token << " is lost from " << testing::PrintToString(stored);
        kept += static_cast<int>(saved.size());
        for (Editor* editor : editors) editor->Close();
    }
    EXPECT_GT(kept, given.rounds) << "most rounds save something";
    RecordProperty("saved", kept);
}

} // namespace nib::test
