#pragma once
// A whole program on fakes: every rule of start, documents and commands can be driven through it.

#include "fakes/Surroundings.h"

namespace nib::test {

using Boxes = std::vector<ShownBox>;

struct TestProgram : Surroundings {
    using Surroundings::Surroundings;

    FakeMainWindow window{journal};
    FakeViewFactory views{window, clipboard};
    Program program{Around(window, std::ref(views))};

    FakeStore& Store() { return connection.store; }
    mvDocuments& Documents() { return program.OpenDocuments(); }
    Text Stored(const Text& path) { return Store().items.at(path).text; }
    void Store(const Text& path, Text text, bool readOnly = false)
    {
        Store().items[path] = {std::move(text), readOnly};
    }
    void StoreFolder(const Text& path) { Store().items[path] = {{}, false, false}; }
    void LockByStranger(const Text& path) { Store().locks[path] = FakeStore::kStranger; }
    std::shared_ptr<mvItem> Item(TextView path) { return std::make_shared<FakeItem>(Store(), path); }

    std::shared_ptr<mvDocument> NewObject() { return NewDocumentObject(program.Services()); }
    std::shared_ptr<mvDocument> New()
    {
        auto document = NewObject();
        document->FileNew();
        return document;
    }
    std::shared_ptr<mvDocument> Open(TextView path, bool readOnly = false)
    {
        auto document = NewObject();
        EXPECT_TRUE(document->FileOpen(path, readOnly)) << ToUtf8(path);
        return document;
    }
    std::shared_ptr<mvDocument> StoreAndOpen(const Text& path, Text text, bool readOnly = false)
    {
        Store(path, std::move(text));
        return Open(path, readOnly);
    }
    FakeDocView& View(mvDocument& document) { return static_cast<FakeDocView&>(document.EnsureView()); }
    std::vector<Text> Titles()
    {
        std::vector<Text> titles;
        for (auto& document : Documents().All()) titles.push_back(document->TitleText());
        return titles;
    }
    std::vector<Text> Recent()
    {
        std::vector<Text> entries;
        for (int32_t i = 1; i <= program.RecentFiles().ListCount(); ++i)
            entries.push_back(program.RecentFiles().ListItem(i));
        return entries;
    }
    /// Nothing that a command must put back is left behind.
    void ExpectCalm()
    {
        EXPECT_FALSE(window.waiting);
        EXPECT_EQ(window.status[1], u"");
        EXPECT_FALSE(program.AutoSaveHeld());
    }
};

/// A start with these arguments, none of them a file that is there.
inline CommandLine Arguments(const std::vector<Text>& words)
{
    return ParseArguments(words, [](TextView) { return false; });
}

/// A place for host items of the tests.
inline const Text kMain = u"mvdb:*/DEMO/BP/MAIN";
inline const Text kOther = u"mvdb:*/DEMO/BP/OTHER";
inline const Text kLocal = u"file:/home/x/a.bas";

} // namespace nib::test
