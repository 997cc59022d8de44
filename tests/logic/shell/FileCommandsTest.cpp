#include "shell/FileCommands.h"
#include "fakes/TestProgram.h"

namespace nib::test::file_commands_test {

using namespace message_box;
using Lines = std::vector<Text>;

ShownBox SaveQuestion(TextView name)
{
    return Question(u"Save changes to " + Text(name) + u" ?", kYesNoCancel);
}

struct FileCommandsTest : testing::Test {
    TestProgram t;
    FileCommands& files = t.program.Files();

    std::shared_ptr<mvDocument> OpenDirty(const Text& path, bool readOnly = false)
    {
        t.Store(path, u"old");
        auto document = t.Open(path, readOnly);
        document->SetText(u"new");
        return document;
    }
    void Pick(std::initializer_list<Text> paths, bool readOnly = false)
    {
        std::vector<SelectedItem> picked;
        for (const Text& path : paths) picked.push_back({t.Item(path), readOnly});
        t.connection.picks.push_back(std::move(picked));
        t.connection.whilePicking = [this] { EXPECT_TRUE(t.program.AutoSaveHeld()); };
    }
};

TEST_F(FileCommandsTest, CloseAllStopsAtTheFirstThatStays)
{
    OpenDirty(kMain);
    OpenDirty(kOther);
    OpenDirty(kLocal);
    t.boxes.Answer({kAnswerNo, kAnswerCancel});
    EXPECT_FALSE(files.FileCloseAll());
    EXPECT_EQ(t.boxes.Take(), (Boxes{SaveQuestion(u"BP MAIN"), SaveQuestion(u"BP OTHER")}));
    EXPECT_EQ(t.Titles(), (Lines{u"*BP OTHER on server1, account DEMO", u"*a.bas"}));
    EXPECT_EQ(t.Stored(kMain), u"old");
    t.boxes.Answer({kAnswerYes, kAnswerCancel});
    files.FileExit();
    EXPECT_FALSE(t.journal.Has(u"Unload"));
    EXPECT_EQ(t.Stored(kOther), u"new");
    t.boxes.Answer({kAnswerYes});
    files.FileExit();
    EXPECT_TRUE(t.journal.Has(u"Unload"));
    EXPECT_EQ(t.Documents().Count(), 0);
    t.boxes.Take();
}

TEST_F(FileCommandsTest, CloseOfANewDocumentSavesItUnderAName)
{
    auto document = t.New();
    document->SetText(u"work");
    t.boxes.Answer({kAnswerYes, kAnswerYes});
    EXPECT_FALSE(files.FileClose(*document)) << "the picker was cancelled";
    Pick({kMain});
    EXPECT_TRUE(files.FileClose(*document));
    EXPECT_EQ(t.boxes.Take(), (Boxes{SaveQuestion(u"NewItem1"), SaveQuestion(u"NewItem1")}));
    EXPECT_EQ(t.Stored(kMain), u"work");
    EXPECT_EQ(t.Documents().Count(), 0);
}

TEST_F(FileCommandsTest, SaveAllGoesOnPastAFailure)
{
    auto readOnly = OpenDirty(kMain, true);
    t.New()->SetText(u"unnamed");
    OpenDirty(kOther);
    const ShownBox warned{u"Document BP MAIN is read-only and cannot be saved. Continue with next document?",
                          kOkCancel | kWarning};

    t.boxes.Answer({kAnswerCancel});
    files.FileSaveAll();
    EXPECT_EQ(t.boxes.Take(), Boxes{warned});
    EXPECT_EQ(t.Stored(kOther), u"old");

    t.boxes.Answer({kAnswerOk});
    t.connection.whilePicking = [] { throw Error{5, u"No picker"}; };
    files.FileSaveAll();
    EXPECT_EQ(t.boxes.Take(), (Boxes{warned, {u"The following error has occurred:\nNo picker"}}));
    EXPECT_EQ(t.Stored(kOther), u"new") << "the next one is saved all the same";
    EXPECT_FALSE(t.program.AutoSaveHeld());
}

TEST_F(FileCommandsTest, OpenDialog)
{
    t.Store(kMain, u"");
    t.Store(kOther, u"", true);
    t.StoreFolder(u"mvdb:*/DEMO/BP/DIR");
    t.program.Place().GoTo({u"mvdb", u"h", u"ACC", u"BP"});
    Pick({kMain, u"mvdb:*/DEMO/BP/DIR", kOther}, true);
    files.FileOpen();
    EXPECT_EQ(t.boxes.Take().size(), 1U) << "about the folder";
    EXPECT_EQ(t.Titles(),
              (Lines{u"BP MAIN on server1, account DEMO (Read only)", u"BP OTHER on server1, account DEMO (Read only)"}));
    EXPECT_EQ(t.Recent(), (Lines{kOther, kMain}));
    EXPECT_EQ(std::count(t.journal.lines.begin(), t.journal.lines.end(), u"messages"), 3);
    auto& [request, start] = t.connection.requests.front();
    EXPECT_EQ(request.mode, u"Open");
    EXPECT_TRUE(request.several && request.offerReadOnly);
    EXPECT_EQ(start, u"mvdb:h/ACC/BP");
    files.FileOpen(); // cancelled
    EXPECT_EQ(t.Documents().Count(), 2);
    t.ExpectCalm();
}

TEST_F(FileCommandsTest, PickersBeginWhereTheLastOneEnded)
{
    const struct {
        const char* why;
        Location present; ///< as the command line or an open document leaves it
        Text last, start;
    } cases[] = {
        {"a first start", {}, u"", u"mvdb:*"},
        {"a bare start", {}, u"mvdb:srv/LIVE/BP", u"mvdb:srv/LIVE/BP"},
        {"a folder", {}, u"file:/home/x", u"file:/home/x"},
        {"that host was named", {u"mvdb", u"SRV", u"", u""}, u"mvdb:srv/LIVE/BP", u"mvdb:srv/LIVE/BP"},
        {"that account too", {u"mvdb", u"srv", u"LIVE", u""}, u"mvdb:srv/LIVE/BP", u"mvdb:srv/LIVE/BP"},
        {"another host", {u"mvdb", u"h", u"", u""}, u"mvdb:srv/LIVE/BP", u"mvdb:h"},
        {"another account", {u"mvdb", u"srv", u"TEST", u""}, u"mvdb:srv/LIVE/BP", u"mvdb:srv/TEST"},
        {"a file is known", {u"mvdb", u"srv", u"LIVE", u"SUBS"}, u"mvdb:srv/LIVE/BP", u"mvdb:srv/LIVE/SUBS"},
        {"no path", {}, u"x", u"mvdb:*"},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.why);
        t.program.Place() = {};
        t.program.Place().GoTo(row.present);
        t.store.values[u"LastPlace"] = row.last;
        files.FileOpen(); // cancelled
        EXPECT_EQ(t.connection.requests.back().second, row.start);
    }
    t.Store(kMain, u"");
    t.program.OpenPath(kMain, false);
    t.program.Place() = {}; // the next session
    files.FileOpen();
    EXPECT_EQ(t.connection.requests.back().second, u"mvdb:*/DEMO/BP");
}

TEST_F(FileCommandsTest, ThePickerOpensThoughThePresentPlaceIsGone)
{
    t.connection.openFailures = {Error{error_number::kPathNotFound, u"No such account"}};
    Pick({kLocal});
    t.Store(kLocal, u"");
    files.FileOpen();
    EXPECT_EQ(t.Titles(), Lines{u"a.bas"});
    EXPECT_EQ(t.connection.requests.back().second, u"") << "begins where it likes";

    auto document = t.New();
    document->SetText(u"work");
    t.connection.openFailures = {Error{error_number::kPathNotFound, u"No such account"}};
    Pick({kMain});
    EXPECT_TRUE(files.FileSaveAs(*document));
    EXPECT_EQ(t.Stored(kMain), u"work");
    EXPECT_TRUE(t.boxes.Take().empty());
    t.ExpectCalm();
}

TEST_F(FileCommandsTest, SaveAsDialogRenamesTheRecentEntry)
{
    t.Store(kMain, u"text");
    EXPECT_TRUE(t.program.OpenPath(kMain, false));
    auto document = t.Documents().Item(1);
    EXPECT_FALSE(files.FileSaveAs(*document)) << "cancelled";
    EXPECT_EQ(t.connection.requests.back().second, kMain) << "begins where the document is";
    EXPECT_TRUE(t.connection.requests.back().first.startNamed) << "and with its name";
    Pick({kLocal});
    EXPECT_TRUE(files.FileSaveAs(*document));
    EXPECT_EQ(t.Recent(), Lines{kLocal});
    t.StoreFolder(kOther);
    Pick({kOther});
    EXPECT_FALSE(files.FileSaveAs(*document));
    EXPECT_EQ(t.Recent(), Lines{kLocal});
    EXPECT_EQ(t.boxes.Take().size(), 1U);
    t.ExpectCalm();
}

TEST_F(FileCommandsTest, OpenRecent)
{
    for (const Text& path : {kLocal, kMain}) {
        t.Store(path, u"");
        t.program.OpenPath(path, false);
    }
    t.Documents().Item(2)->FileClose(false);
    t.Documents().Item(1)->FileClose(false);
    t.program.Place() = {}; // as after a bare start
    EXPECT_EQ(t.Recent(), (Lines{kMain, kLocal}));
    files.FileOpenRecent(2);
    EXPECT_EQ(t.Titles(), Lines{u"a.bas"});
    EXPECT_EQ(t.Recent(), (Lines{kLocal, kMain})) << "the last opened comes to the top";
    files.FileOpenRecent(2);
    EXPECT_EQ(t.Titles(), (Lines{u"a.bas", u"BP MAIN on server1, account DEMO"}));
    t.boxes.Answer({kAnswerNo});
    t.Store().items.erase(kMain);
    t.Documents().Item(2)->FileClose(false);
    files.FileOpenRecent(1);
    EXPECT_EQ(t.boxes.Take(), Boxes{Question(u"Item BP MAIN does not exist. Create new item?")});
    EXPECT_EQ(t.Documents().Count(), 1);
    files.FileOpenRecent(9);
    EXPECT_EQ(t.boxes.Take(), (Boxes{{u"The following error has occurred:\nInvalid index of a recent list"}}));
    t.ExpectCalm();
}

TEST_F(FileCommandsTest, ANewDocumentWithoutAWindowIsNone)
{
    t.views.failure = Error{error_number::kOutOfMemory, u"No window"};
    files.FileNew();
    EXPECT_EQ(t.boxes.Take(), (Boxes{{u"The following error has occurred:\nNo window"}}));
    EXPECT_EQ(t.trace.Take(), (TraceLines{{1, u"frmMain.FileNew: error=0x7 No window"}}));
    EXPECT_EQ(t.Documents().Count(), 0);
    t.ExpectCalm();
}

TEST_F(FileCommandsTest, WhatIsOpenComesToTheFrontByEveryWay)
{
    t.Store(kMain, u"");
    t.Store(kLocal, u"");
    t.program.OpenPath(kMain, false);
    t.program.OpenPath(kLocal, false);
    t.New();
    const std::function<void()> ways[] = {[&] { t.program.OpenPath(u"mvdb:/DEMO/BP/MAIN", true); },
                                          [&] { (Pick({kMain}), files.FileOpen()); }, [&] { files.FileOpenRecent(2); },
                                          [&] { t.program.HandleDroppedFiles({u"/home/x/a.bas"}); }};
    for (auto& way : ways) {
        const Text below = t.Recent()[1];
        t.window.activeDocument = 3;
        way();
        EXPECT_LT(t.window.activeDocument, 3);
        EXPECT_EQ(t.Documents().Count(), 3);
        t.program.RecentFiles().AddItem(below == kMain ? kLocal : kMain);
    }
    t.Store(u"mvdb:*/LIVE/BP/MAIN", u"");
    EXPECT_TRUE(t.program.OpenPath(u"mvdb:*/LIVE/BP/MAIN", false)) << "of another account";
    EXPECT_EQ(t.Documents().Count(), 4);
}

TEST_F(FileCommandsTest, AnOldRecentEntryTakesTheLastAccount)
{
    const Text old = u"mvdb:*/*/BP/MAIN";
    t.Store(kMain, u"");
    t.program.RecentFiles().AddItem(old);
    t.program.RecentFiles().AddItem(kOther);
    t.program.RecentFiles().AddItem(u"mvdb:prod/LIVE/BP/MAIN");
    files.FileOpenRecent(3);
    EXPECT_EQ(t.Titles(), Lines{u"BP MAIN on server1, account DEMO"}) << "the account of OTHER, on the same host";
    EXPECT_EQ(t.Recent(), (Lines{kMain, u"mvdb:prod/LIVE/BP/MAIN", kOther})) << "it has a name now";
}

TEST(RecentEntriesTest, NameTheirPlace)
{
    FakeStore store;
    const std::pair<Text, Text> entries[] = {{u"mvdb:/DEMO/BP/MAIN", kMain},
                                             {u"mvdb:h1/ACC/MY%20FILE/A%2FB", u"mvdb:h1/ACC/MY%20FILE/A%2FB"},
                                             {u"file:/a b%20", u"file:/a b%20"}};
    for (auto& [path, entry] : entries) EXPECT_EQ(RecentEntryOf(FakeItem(store, path)), entry);

    const std::tuple<Location, Text, Text> rows[] = {
        {{u"mvdb", u"h1", u"ACC", u""}, u"mvdb:*/*/BP/X", u"mvdb:h1/ACC/BP/X"},
        {{u"mvdb", u"h1", u"", u""}, u"mvdb:*/*/BP/X", u"mvdb:h1/*/BP/X"},
        {{u"mvdb", u"", u"ACC", u""}, u"mvdb:*/*/BP/X", u"mvdb:*/ACC/BP/X"},
        {{u"mvdb", u"h1", u"ACC", u""}, u"mvdb:%28ANY%29/*/BP/X", u"mvdb:h1/ACC/BP/X"},
        {{u"mvdb", u"h1", u"ACC", u""}, u"mvdb:*/OWN/BP/X", u"mvdb:*/OWN/BP/X"},
        {{u"mvdb", u"h1", u"ACC", u""}, u"file:/x/y", u"file:/x/y"}};
    for (const auto& [host, entry, path] : rows) EXPECT_EQ(RecentEntryToPath(host, entry), path);

    const std::pair<Text, Text> captions[] = {{kMain, u"DEMO BP MAIN"},
                                              {u"mvdb:*/*/BP/A%20B", u"BP A B"},
                                              {u"mvdb:h1/ACC/BP/X", u"ACC BP X on h1"},
                                              {kLocal, u"/home/x/a.bas"},
                                              {u"what", u"what"}};
    for (auto& [entry, caption] : captions) EXPECT_EQ(RecentEntryCaption(entry), caption);
}

} // namespace nib::test::file_commands_test
