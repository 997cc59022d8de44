#include "fakes/TestShell.h"

namespace nib::test::save_test {

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
    EXPECT_EQ(document->TitleText(), u"*BP MAIN on server1, account DEMO");
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
    EXPECT_EQ(document->TitleText(), u"BP MAIN on server1, account DEMO");
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

TEST(FileSaveTest, WhatIsEditedMeanwhileIsNotSavedAndNotLost)
{
    TestProgram t;
    auto document = t.StoreAndOpen(kMain, u"one");
    SourceDocument& text = t.View(*document).txtText().Document();
    text.InsertText({0, 0}, u"x");
    t.Store().whileBusy = [&] {
        text.InsertText({0, 0}, u"y");
        EXPECT_FALSE(document->FileClose(false) || document->FileNew() || document->Reload());
        EXPECT_FALSE(document->FileSave() || document->ItemSaveAs(t.Item(kOther)));
        EXPECT_FALSE(document->ItemOpen(t.Item(kOther), false));
    };
    EXPECT_TRUE(document->FileSave());
    EXPECT_EQ(t.Stored(kMain), u"xone");
    EXPECT_EQ(document->TitleText().substr(0, 1), u"*");
    document->Undo();
    EXPECT_FALSE(document->IsDirty());
    document->Redo();
    t.Store().whileBusy = [&] { text.InsertText({0, 0}, u"z"); };
    t.boxes.Answer({message_box::kAnswerYes, message_box::kAnswerYes});
    EXPECT_FALSE(t.program.Files().FileClose(*document)) << "it has something again that is not stored";
    EXPECT_FALSE(document->FileClose(true));
    t.Store().writeFailure = Error{error_number::kStorage, u"no"};
    EXPECT_FALSE(document->FileSave());
    t.Store().whileBusy = nullptr;
    EXPECT_EQ(t.Stored(kMain), u"zyxone");
    EXPECT_EQ(document->GetText(), u"zzzyxone");
    EXPECT_TRUE(document->IsDirty());
    EXPECT_EQ(t.boxes.Take().size(), 3U);
}

TEST(FileSaveTest, ANewItemBecomesAnExistingOne)
{
    TestProgram t;
    t.boxes.Answer({kYes});
    auto document = t.Open(kMain);
    t.boxes.Take();
    EXPECT_EQ(document->TitleText(), u"BP MAIN on server1, account DEMO (New)");
    EXPECT_TRUE(document->NewItem());
    EXPECT_TRUE(document->FileSave());
    EXPECT_EQ(document->TitleText(), u"BP MAIN on server1, account DEMO");
    EXPECT_EQ(t.Stored(kMain), u"");
}

TEST(FileSaveAsTest, APlaceIsNoItem)
{
    TestProgram t;
    auto document = t.New();
    EXPECT_FALSE(document->FileSaveAs(u"mvdb:*/DEMO/BP"));
    EXPECT_EQ(t.boxes.Take(), Boxes{Warning(Text(kMissing))});
    EXPECT_TRUE(document->FileSaveAs(kMain));
    EXPECT_EQ(document->TitleText(), u"BP MAIN on server1, account DEMO");
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

TEST(ItemSaveAsTest, AHostThatCannotBeReachedIsNoLock)
{
    TestProgram t;
    auto document = t.StoreAndOpen(kMain, u"text");
    t.Store().lockFailure = Error{error_number::kDeviceUnavailable, u"No line"};
    EXPECT_FALSE(document->ItemSaveAs(t.Item(kOther)));
    EXPECT_EQ(t.boxes.Take(), Boxes{Warning(u"No line")});
}

TEST(ItemSaveAsTest, AFailingWriteLeavesTheDocumentWithItsItem)
{
    TestProgram t;
    auto document = t.StoreAndOpen(kMain, u"text");
    document->SetText(u"work");
    t.Store().writeFailure = Error{error_number::kStorage, u"Disk full"};
    EXPECT_FALSE(document->ItemSaveAs(t.Item(kOther)));
    EXPECT_EQ(document->Path(), kMain);
    EXPECT_EQ(document->TitleText(), u"*BP MAIN on server1, account DEMO");
    EXPECT_TRUE(t.Store().locks.contains(kMain));
    EXPECT_FALSE(t.Store().locks.contains(kOther));
    EXPECT_EQ(t.boxes.Take(), Boxes{Warning(u"Disk full")});
    EXPECT_EQ(t.trace.Take(), (TraceLines{{4, u"mvDocument.ItemSaveAs: error during save 0x80049D01 Disk full"}}));
    EXPECT_TRUE(document->IsDirty());
    EXPECT_EQ(document->GetText(), u"work");
    t.ExpectCalm();
}

using namespace message_box;

struct CloseRow {
    const char* name;
    bool stored, dirty, prompt;
    int32_t answer; ///< 0: nothing is asked
    bool writeFails, closed;
    Text kept; ///< in storage afterwards
};

const CloseRow kCloseRows[] = {{"clean", true, false, true, 0, false, true, u"old"},
                               {"dirty, no prompt", true, true, false, 0, false, true, u"old"},
                               {"yes", true, true, true, kAnswerYes, false, true, u"new"},
                               {"yes, write fails", true, true, true, kAnswerYes, true, false, u"old"},
                               {"no", true, true, true, kAnswerNo, false, true, u"old"},
                               {"cancel", true, true, true, kAnswerCancel, false, false, u"old"},
                               {"new, clean", false, false, true, 0, false, true, u""},
                               {"new, yes", false, true, true, kAnswerYes, false, false, u""},
                               {"new, no", false, true, true, kAnswerNo, false, true, u""},
                               {"new, cancel", false, true, true, kAnswerCancel, false, false, u""}};

TEST(FileCloseTest, EachAnswer)
{
    for (const CloseRow& row : kCloseRows) {
        SCOPED_TRACE(row.name);
        int32_t raised = 0; // outlives the documents, which tell their end
        TestProgram t;
        if (row.stored) t.Store(kMain, u"old");
        auto document = row.stored ? t.Open(kMain) : t.New();
        t.window.status = {{2, u"Line 1"}, {3, u"INS"}};
        t.window.panels = {{2, true}, {3, true}};
        if (row.dirty) document->SetText(u"new");
        if (row.writeFails) t.Store().writeFailure = Error{error_number::kStorage, u"no"};
        if (row.answer) t.boxes.Answer({row.answer});
        document->DocumentClose = [&] { ++raised; };
        EXPECT_EQ(document->FileClose(row.prompt), row.closed);
        Boxes boxes;
        Text name = row.stored ? u"BP MAIN" : u"NewItem1";
        if (row.answer) boxes.push_back(Question(u"Save changes to " + name + u" ?", kYesNoCancel));
        if (row.writeFails) boxes.push_back(Warning(u"no"));
        EXPECT_EQ(t.boxes.Take(), boxes);
        EXPECT_EQ(raised, row.closed);
        EXPECT_EQ(t.Documents().Count(), row.closed ? 0 : 1);
        EXPECT_EQ(t.program.Services().openCount, row.closed ? 0 : 1);
        EXPECT_EQ(document->View() == nullptr, row.closed);
        EXPECT_EQ(t.Store().liveItems, row.stored && !row.closed);
        EXPECT_EQ(t.Store().locks.size(), row.stored && !row.closed ? 1U : 0U);
        EXPECT_EQ(t.window.panels[2] || t.window.panels[3], !row.closed);
        EXPECT_EQ(t.window.status[2], row.closed ? u"" : u"Line 1");
        if (row.stored) {
            EXPECT_EQ(t.Stored(kMain), row.kept);
        }
    }
}

TEST(FileCloseTest, TheLastOneClearsThePanels)
{
    TestProgram t;
    auto first = t.New();
    auto second = t.New();
    t.window.panels[2] = true;
    first->FileClose(false);
    EXPECT_TRUE(t.window.panels[2]);
    int32_t raised = 0;
    second->DocumentClose = [&] { ++raised; };
    EXPECT_TRUE(second->FileClose(false));
    EXPECT_FALSE(t.window.panels[2]);
    EXPECT_TRUE(second->FileClose(true)) << "a second time does no harm";
    EXPECT_EQ(raised, 1);
    EXPECT_EQ(t.program.Services().openCount, 0);
}

TEST(FileCloseTest, AFailingListenerStopsNothing)
{
    TestProgram t;
    auto document = t.StoreAndOpen(kMain, u"");
    document->DocumentClose = [] { throw Error{5, u"client gone"}; };
    EXPECT_TRUE(document->FileClose(true));
    EXPECT_EQ(t.Store().liveItems, 0);
}

TEST(FileCloseTest, WhoCannotTellChangesDoesNotCountAsClean)
{
    TestProgram t;
    auto document = t.New();
    document->SetText(u"work");
    t.View(*document).failure = Error{5, u"no text"};
    EXPECT_THROW(document->IsDirty(), Error);
    EXPECT_FALSE(t.program.Files().FileClose(*document));
    EXPECT_EQ(t.boxes.Take(), (Boxes{{u"The following error has occurred:\nno text", 0}}));
    EXPECT_THROW(document->FileClose(true), Error);
    t.View(*document).failure.reset();
    EXPECT_EQ(document->GetText(), u"work");
    EXPECT_EQ(t.Documents().Count(), 1);
}

TEST(DocumentNamesTest, NumbersNeverFall)
{
    TestProgram t;
    EXPECT_EQ(t.New()->DisplayName(), u"NewItem1");
    t.Documents().Item(1)->FileClose(false);
    auto second = t.New();
    EXPECT_EQ(second->TitleText(), u"NewItem2 (New)");
    EXPECT_EQ(second->ListName(), u"NewItem2 [2]");
    t.boxes.Answer({kAnswerYes});
    t.Open(kMain);
    t.boxes.Take();
    EXPECT_EQ(t.New()->DisplayName(), u"NewItem4") << "a new item with a name takes a number too";
}

struct TitleRow {
    Text path;
    bool stored, readOnly, dirty;
    Text host, title;
};

const TitleRow kTitleRows[] = {{kMain, true, false, false, u"server1", u"BP MAIN on server1, account DEMO"},
                               {kMain, true, true, false, u"server1", u"BP MAIN on server1, account DEMO (Read only)"},
                               {kMain, true, true, true, u"server1", u"*BP MAIN on server1, account DEMO (Read only)"},
                               {kMain, false, false, true, u"server1", u"*BP MAIN on server1, account DEMO (New)"},
                               {kMain, false, true, false, u"server1", u"BP MAIN on server1, account DEMO (New)"},
                               {kMain, true, false, false, u"", u"BP MAIN, account DEMO"},
                               {kLocal, true, false, false, u"server1", u"a.bas"},
                               {kLocal, true, false, true, u"server1", u"*a.bas"},
                               {kLocal, true, true, false, u"server1", u"a.bas (Read only)"},
                               {kLocal, false, false, false, u"server1", u"a.bas (New)"}};

TEST(DocumentNamesTest, Titles)
{
    for (const TitleRow& row : kTitleRows) {
        SCOPED_TRACE(ToUtf8(row.title));
        TestProgram t;
        t.Store().hostName = row.host;
        if (row.stored)
            t.Store(row.path, u"");
        else
            t.boxes.Answer({kAnswerYes});
        auto document = t.Open(row.path, row.readOnly);
        t.boxes.Take();
        if (row.readOnly) document->ItemObject()->SetReadOnly(true);
        document->SetModified(row.dirty);
        document->UpdateTitle();
        EXPECT_EQ(t.View(*document).title, row.title);
    }
}

TEST(DocumentNamesTest, PropertiesAndTheirDefaults)
{
    TestProgram t;
    auto bare = t.NewObject();
    EXPECT_TRUE(bare->NewItem());
    EXPECT_FALSE(bare->ReadOnly() || bare->IsDirty() || bare->LocalFile());
    EXPECT_EQ(bare->Path() + bare->Filename() + bare->ItemID(), u"");
    EXPECT_EQ(bare->View(), nullptr);
    t.Store(kMain, u"");
    t.Store(kLocal, u"");
    auto host = t.Open(kMain);
    EXPECT_FALSE(host->NewItem() || host->LocalFile());
    EXPECT_EQ(host->Path() + u" " + host->Filename() + u" " + host->ItemID(), kMain + u" BP MAIN");
    auto local = t.Open(kLocal);
    EXPECT_TRUE(local->LocalFile());
}

} // namespace nib::test::save_test
