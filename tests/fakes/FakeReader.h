#pragma once
// An account's items as they were when the reader was made, and a search in them on a program of fakes.

#include "fakes/FakeSearch.h"
#include "search/AccountFind.h"

#include <atomic>
#include <thread>

namespace nib::test {

/// Where a search waits until it is let go.
class Gate {
public:
    void Wait() const { open_.wait(false); }
    void Open()
    {
        open_ = true;
        open_.notify_all();
    }

private:
    std::atomic<bool> open_ = false;
};

/// Items whose text is "object" are none.
struct FakeReader : ItemReader {
    FakeReader(const FakeStore& store, const ItemPlace& account, std::map<ItemKey, std::function<void()>> hooks)
        : hooks_(std::move(hooks))
    {
        for (const auto& [path, item] : store.items) {
            const ItemPlace place = ParsePath(path);
            if (place.database == account.database && !place.itemId.empty())
                items_[place.folder][place.itemId] = item.text;
        }
    }
    std::vector<Text> Files() override { return Names(items_); }
    std::vector<Text> Ids(TextView file) override { return Names(items_.at(Text(file))); }
    std::optional<Text> Read(TextView file, TextView id) override
    {
        const ItemKey key(file, id);
        if (const auto hook = hooks_.find(key); hook != hooks_.end()) hook->second();
        const Text& text = items_.at(key.first).at(key.second);
        return text == u"object" ? std::nullopt : std::optional(text);
    }
    void Stop() override { stopped.Open(); }

    Gate stopped;

private:
    template <typename Map>
    static std::vector<Text> Names(const Map& map)
    {
        std::vector<Text> names;
        for (const auto& [name, value] : map) names.push_back(name);
        return names;
    }
    std::map<Text, std::map<Text, Text>> items_;
    std::map<ItemKey, std::function<void()>> hooks_; ///< before an item is read, on the thread of the search
};

/// The engine over the account DEMO; time passes until what is waited for has come.
struct TestAccountFind {
    TestAccountFind()
    {
        recent.SetListSize(10);
        t.program.Services().results = &results;
        t.program.Services().place.host.Database = u"DEMO";
        t.connection.reader = [this](const ItemPlace& account) {
            auto reader = std::make_unique<FakeReader>(t.Store(), account, hooks);
            last = reader.get();
            return reader;
        };
    }
    ~TestAccountFind() { t.program.Services().results = nullptr; }

    void Item(const Text& id, Text text, bool readOnly = false)
    {
        t.Store(u"mvdb:*/DEMO/" + id, std::move(text), readOnly);
    }
    Text Stored(const Text& id) { return t.Stored(u"mvdb:*/DEMO/" + id); }
    bool Until(const std::function<bool()>& came)
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        while (!came() && std::chrono::steady_clock::now() < end) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
            t.clock.Advance(std::chrono::milliseconds(50));
        }
        return came();
    }
    void Open(TextView text)
    {
        find.Open();
        ASSERT_TRUE(Until([this] { return !find.Dialog().readsFiles; }));
        find.Dialog().findText = text;
    }
    bool IsIdle() { return find.Dialog().state == FindingState::Idle; }
    void Find()
    {
        find.Find();
        ASSERT_TRUE(Until([this] { return IsIdle(); }));
    }
    void Replace(TextView with, int32_t answer)
    {
        find.Dialog().replaceText = with;
        t.boxes.Answer({answer});
        find.Replace();
        ASSERT_TRUE(Until([this] { return IsIdle(); }));
    }
    bool Listed(TextView line)
    {
        return std::find(results.lines.begin(), results.lines.end(), line) != results.lines.end();
    }

    TestProgram t;
    FakeResults results;
    clsRecentList recent;
    std::map<ItemKey, std::function<void()>> hooks;
    FakeReader* last = nullptr;
    AccountFind find{t.program.Services(), t.clock, t.store, recent};
};

} // namespace nib::test
