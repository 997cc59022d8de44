// Saving, and saving under another name.

#include "fakes/TestShell.h"

namespace nib::test {
namespace {

constexpr int32_t kYes = message_box::kAnswerYes;
constexpr int32_t kNo = message_box::kAnswerNo;
constexpr TextView kMissing = u"Cannot save document - file name and/or item ID missing!";

TEST(FileSaveTest, Refusals)
{
    TestProgram t;
    EXPECT_FALSE(t.New()->FileSave());
    EXPECT_EQ(t.boxes.Take(), Boxes{Warning(Text(kMissing))});
    auto document = t.StoreAndOpen(kMain, u"text", true);
    document->SetText(u"other");
    EXPECT_FALSE(document->FileSave());
    EXPECT_EQ(t.boxes.Take(), Boxes{Warning(u"Cannot save BP MAIN - document is read-only!")});
    EXPECT_TRUE(document->IsDirty());
    EXPECT_EQ(t.Stored(kMain), u"text");
}

TEST(FileSaveTest, WritesTheItemForm)
{
    TestProgram t;
    auto document = t.StoreAndOpen(kMain, u"a\tb\nc");
    document->SetText(document->GetText() + u"\r\nd");
    EXPECT_EQ(document->TitleText(), u"*BP MAIN on server1");
    int32_t writes = 0;
    t.Store().whileBusy = [&] {
        ++writes;
        EXPECT_TRUE(t.window.waiting && t.program.AutoSaveHeld());
        EXPECT_EQ(t.window.status[1], u"Saving document to host");
    };
    t.program.Place().GoTo({});
    EXPECT_TRUE(document->FileSave());
    EXPECT_EQ(writes, 1);
    EXPECT_EQ(t.Store().commits, 1);
    EXPECT_EQ(t.Stored(kMain), u"a\tb\r\nc\r\nd") << "a line that nobody edited keeps its TAB";
    EXPECT_EQ(t.program.Place().now.Folder, u"BP");
    EXPECT_FALSE(document->IsDirty());
    EXPECT_EQ(document->TitleText(), u"BP MAIN on server1");
    EXPECT_TRUE(t.Store().locks.contains(kMain));
    t.ExpectCalm();
}

TEST(FileSaveTest, IsDrawnOnceWhenTheTurnIsOver)
{
    TestShell t;
    auto document = t.StoreAndOpen(kMain, u"text");
    document->SetText(u"new");
    t.clock.Advance({});
    int32_t updates = t.window.toolBarUpdates;
    int32_t titles = t.View(*document).titles;
    EXPECT_TRUE(t.Run(u"Save"));
    EXPECT_EQ(t.window.toolBarUpdates, updates);
    t.clock.Advance({});
    t.clock.Advance({});
    EXPECT_EQ(t.window.toolBarUpdates, updates + 1);
    EXPECT_EQ(t.View(*document).titles, titles + 1);
}

TEST(FileSaveTest, AFailingWriteKeepsWorkAndLock)
{
    TestProgram t;
    auto document = t.StoreAndOpen(kMain, u"old");
    document->SetText(u"new");
    t.Store().writeFailure = Error{error_number::kStorage, u"Disk full"};
    EXPECT_FALSE(document->FileSave());
    EXPECT_EQ(t.boxes.Take(), Boxes{Warning(u"Disk full")});
    EXPECT_EQ(t.trace.Take(), (TraceLines{{4, u"mvDocument.FileSave: error during save 0x80049D01 Disk full"}}));
    EXPECT_TRUE(document->IsDirty());
    EXPECT_TRUE(t.Store().locks.contains(kMain));
    EXPECT_EQ(t.Stored(kMain), u"old");
    t.ExpectCalm();
}

TEST(FileSaveTest, ANewItemBecomesAnExistingOne)
{
    TestProgram t;
    t.boxes.Answer({kYes});
    auto document = t.Open(kMain);
    t.boxes.Take();
    EXPECT_EQ(document->TitleText(), u"BP MAIN on server1 (New)");
    EXPECT_TRUE(document->NewItem());
    EXPECT_TRUE(document->FileSave());
    EXPECT_EQ(document->TitleText(), u"BP MAIN on server1");
    EXPECT_EQ(t.Stored(kMain), u"");
}

TEST(FileSaveAsTest, APlaceIsNoItem)
{
    TestProgram t;
    auto document = t.New();
    EXPECT_FALSE(document->FileSaveAs(u"mvdb:*/DEMO/BP"));
    EXPECT_EQ(t.boxes.Take(), Boxes{Warning(Text(kMissing))});
    EXPECT_TRUE(document->FileSaveAs(kMain));
    EXPECT_EQ(document->TitleText(), u"BP MAIN on server1");
    EXPECT_TRUE(t.Store().items.contains(kMain));
    EXPECT_TRUE(t.Store().locks.contains(kMain));
}

struct SaveAsRow {
    const char* name;
    std::optional<StoredItem> target;
    bool strangersLock, recordLocking;
    int32_t answer; ///< 0: nothing is asked
    Boxes boxes;
    bool saved;
};

const ShownBox kAsk = Question(u"Item 'OTHER' exists. Overwrite?");
const ShownBox kLocked = Warning(u"Item 'OTHER' is currently locked and cannot be updated!");
const ShownBox kFixed = Warning(u"Item 'OTHER' exists and cannot be overwritten. Please save using a different name.");
const ShownBox kNoItem = Warning(u"'OTHER' appears to be a file or folder and cannot be overwritten!");

const SaveAsRow kSaveAsRows[] = {{"missing", {}, false, true, 0, {}, true},
                                 {"exists, yes", StoredItem{u"x"}, false, true, kYes, {kAsk}, true},
                                 {"exists, no", StoredItem{u"x"}, false, true, kNo, {kAsk}, false},
                                 {"read-only", StoredItem{u"x", true}, false, true, 0, {kFixed}, false},
                                 {"file definition", StoredItem{u"x", false, false}, false, true, 0, {kNoItem}, false},
                                 {"locked", StoredItem{u"x"}, true, true, kYes, {kAsk, kLocked}, false},
                                 {"locked, without locking", StoredItem{u"x"}, true, false, kYes, {kAsk}, true}};

TEST(ItemSaveAsTest, EachStateOfTheTarget)
{
    for (const SaveAsRow& row : kSaveAsRows) {
        SCOPED_TRACE(row.name);
        TestProgram t;
        t.program.EditorSettings().RecordLocking = row.recordLocking;
        auto document = t.StoreAndOpen(kMain, u"text");
        document->SetText(u"new text");
        const Text other = u"mvdb:h2/ACC/F/OTHER";
        if (row.target) t.Store().items[other] = *row.target;
        if (row.strangersLock) t.LockByStranger(other);
        if (row.answer) t.boxes.Answer({row.answer});
        EXPECT_EQ(document->ItemSaveAs(t.Item(other)), row.saved);
        EXPECT_EQ(t.boxes.Take(), row.boxes);
        EXPECT_EQ(t.program.Place().now.Folder, u"F") << "the place changes whatever comes of it";
        EXPECT_EQ(document->IsDirty(), !row.saved);
        EXPECT_EQ(document->Path(), row.saved ? other : kMain);
        EXPECT_EQ(t.Store().items.contains(other) ? t.Stored(other) : u"", row.saved    ? u"new text"
                                                                           : row.target ? u"x"
                                                                                        : u"");
        EXPECT_EQ(t.Store().locks.contains(kMain), row.recordLocking && !row.saved);
        EXPECT_EQ(t.Store().liveItems, 1);
        t.ExpectCalm();
    }
}

TEST(ItemSaveAsTest, OntoItself)
{
    TestProgram t;
    auto document = t.StoreAndOpen(kMain, u"text");
    document->SetText(u"1");
    EXPECT_TRUE(document->ItemSaveAs(t.Item(kMain)));
    EXPECT_TRUE(t.Store().locks.contains(kMain)) << "its own lock is no obstacle and is not lost";
    const Text lower = u"mvdb:*/DEMO/BP/main";
    t.Store(lower, u"old");
    document->SetText(u"2");
    t.boxes.Answer({kNo});
    EXPECT_FALSE(document->ItemSaveAs(t.Item(lower))) << "a name in another case is another item";
    EXPECT_EQ(t.boxes.Take(), Boxes{Question(u"Item 'main' exists. Overwrite?")});
    EXPECT_EQ(t.Stored(lower), u"old");
    auto readOnly = t.Open(kMain, true);
    EXPECT_FALSE(readOnly->ItemSaveAs(t.Item(kMain)));
    EXPECT_EQ(t.boxes.Take(),
              Boxes{Warning(u"Item 'MAIN' is open in read-only mode. Please save using a different name.")});
    EXPECT_TRUE(readOnly->ItemSaveAs(t.Item(u"mvdb:*/DEMO/BP/Main")));
    EXPECT_FALSE(readOnly->ItemSaveAs(nullptr));
}

TEST(ItemSaveAsTest, LockedOnlyNowIsLocked)
{
    TestProgram t;
    t.Store(kMain, u"text");
    t.program.EditorSettings().RecordLocking = false;
    auto document = t.Open(kMain);
    t.program.EditorSettings().RecordLocking = true;
    t.LockByStranger(kMain);
    EXPECT_FALSE(document->ItemSaveAs(t.Item(kMain)));
    EXPECT_EQ(t.boxes.Take(), Boxes{Warning(u"Item 'MAIN' is currently locked and cannot be updated!")});
}

TEST(ItemSaveAsTest, AFailingWriteLeavesTheDocumentWithItsItem)
{
    TestProgram t;
    auto document = t.StoreAndOpen(kMain, u"text");
    document->SetText(u"work");
    t.Store().writeFailure = Error{error_number::kStorage, u"Disk full"};
    EXPECT_FALSE(document->ItemSaveAs(t.Item(kOther)));
    EXPECT_EQ(document->Path(), kMain);
    EXPECT_EQ(document->TitleText(), u"*BP MAIN on server1");
    EXPECT_TRUE(t.Store().locks.contains(kMain));
    EXPECT_FALSE(t.Store().locks.contains(kOther));
    EXPECT_EQ(t.boxes.Take(), Boxes{Warning(u"Disk full")});
    EXPECT_EQ(t.trace.Take(), (TraceLines{{4, u"mvDocument.ItemSaveAs: error during save 0x80049D01 Disk full"}}));
    EXPECT_TRUE(document->IsDirty());
    EXPECT_EQ(document->GetText(), u"work");
    t.ExpectCalm();
}

} // namespace
} // namespace nib::test
