#pragma once
// Documents of a program of fakes, and recovery copies on a real disk. A restart is a new session of the same user.

#include "fakes/TestProgram.h"
#include "logic/storage/TempFolder.h"
#include "persistence/recovery/RecoveryList.h"

namespace nib::test {

struct Session {
    Session(const TempFolder& folder, FakeSessionToken& token) : t(folder.Path(), &token)
    {
        t.dialogs.onOffer = [this](TextView place, const DynamicArray& names) {
            offered.emplace();
            for (int32_t i = 1; i <= names.Count(); ++i) offered->push_back(names.Extract({i}));
            if (onOffer) onOffer(place, names);
        };
    }
    /// A changed document; with `path` an item that holds the text, else a new one.
    mvDocument& Changed(const Text& text, const Text& path = {})
    {
        if (!path.empty()) t.Store(path, u"");
        auto document = path.empty() ? t.New() : t.Open(path);
        t.View(*document).txtText().SetText(text);
        document->SetModified(true);
        t.View(*document).SetAutoSaveFlag(true);
        return *document;
    }
    std::vector<Text> Offered()
    {
        offered.reset();
        recovery.CheckAutoRecover();
        return offered.value_or(std::vector<Text>());
    }
    /// The list with what is on offer.
    RecoveryList& List()
    {
        onOffer = [this](TextView place, const DynamicArray& names) { list.Load(place, names); };
        recovery.CheckAutoRecover();
        onOffer = nullptr;
        return list;
    }

    TestProgram t;
    std::optional<std::vector<Text>> offered;
    std::function<void(TextView, const DynamicArray&)> onOffer;
    modAutoRecover& recovery = t.program.Recovery();
    RecoveryList list{recovery};
};

/// What the first row is compared with, its name, and what would come back.
inline Text Compared(RecoveryList& list)
{
    Text seen;
    list.Compare(0, [&](const RecoveryComparison& both) {
        seen = std::get<Text>(both.stored) + u", " + both.storedNote + u" | " + both.name + u" | " +
               std::get<Text>(both.recovered) + u", " + both.recoveredNote;
    });
    return seen;
}

struct RecoveryTest : testing::Test {
    RecoveryTest() { Start(); }

    void Start() { session = std::make_unique<Session>(folder, token); }
    void Crash()
    {
        token.alive.erase(token.next);
        token.next += 0x10;
        Start();
    }
    void EndCleanly()
    {
        session->recovery.EndAutoSaveSession();
        Crash();
    }
    std::string Place() const { return folder / "data/Orlin/Nib/AutoRecover"; }
    void File(const std::string& name, const std::string& bytes) const
    {
        folder.File("data/Orlin/Nib/AutoRecover/" + name, bytes);
    }
    std::vector<std::string> Names() const
    {
        if (session) session->recovery.Flush();
        std::vector<std::string> names;
        std::error_code none;
        for (const auto& entry : std::filesystem::directory_iterator(Place(), none))
            names.push_back(entry.path().filename());
        std::sort(names.begin(), names.end());
        return names;
    }

    TempFolder folder;
    FakeSessionToken token;
    std::unique_ptr<Session> session;
};

} // namespace nib::test
