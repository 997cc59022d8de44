// What tells the user where a document is and how it is stored, and documents that are closed together and had back.

#include "fakes/TestShell.h"
#include "hosts/StoredForm.h"

namespace nib::test::where_test {

using Lines = std::vector<Text>;

const Text kLive = u"mvdb:*/LIVE/BP/MAIN";

struct WhereTest : testing::Test {
    TestShell t;

    /// Of the panels about the document in front.
    Lines Panels()
    {
        t.clock.Advance({});
        Lines texts;
        for (TextView key : {u"Place", u"Lock", u"Coding", u"Ends", u"Dialect"})
            texts.push_back(t.menus.Tool(Band::StatusBar, key).caption);
        return texts;
    }
    CommandState StateOf(TextView key) { return StateOfCommand(key, t.dispatcher.Context()); }
};

TEST_F(WhereTest, PanelsFollowTheDocumentInFront)
{
    t.connection.colors[u"LIVE"] = u"red";
    EXPECT_EQ(Panels(), Lines(5));
    t.program.EditorSettings().Dialect = u"common";
    t.Store().forms = true;
    auto live = t.StoreAndOpen(kLive, u"a");
    EXPECT_EQ(Panels(), (Lines{u"LIVE on server1", u"Locked here", u"windows-1252", u"LF", u"common"}));
    EXPECT_EQ(t.menus.Tool(Band::StatusBar, u"Place").color, u"red");
    t.Store().forms = false;
    t.program.EditorSettings().Dialect = u"None";
    t.StoreAndOpen(kMain, u"a", true);
    EXPECT_EQ(Panels(), (Lines{u"DEMO on server1", u"Read only", u"", u"", u"No dialect"}));
    EXPECT_EQ(t.menus.Tool(Band::StatusBar, u"Place").color, u"");
    t.StoreAndOpen(kLocal, u"a");
    EXPECT_EQ(Panels(), (Lines{u"/home/x", u"", u"", u"", u"No dialect"}));
    t.New();
    EXPECT_EQ(Panels(), (Lines{u"", u"", u"", u"", u"No dialect"}));
    live->Activate();
    t.Store().locks.clear(); // as a lost connection does
    t.program.StateChanged();
    t.Store().forms = true;
    EXPECT_EQ(Panels(), (Lines{u"LIVE on server1", u"Not locked", u"windows-1252", u"LF", u"No dialect"}));
}

TEST_F(WhereTest, LineEndsAndCharacterSetCountFromTheNextSaveOn)
{
    t.Store().forms = true;
    auto document = t.StoreAndOpen(kMain, u"\u00E9\r\nb");
    EXPECT_TRUE(t.Run(u"EndsLf") && t.Run(u"CodingOwn"));
    EXPECT_FALSE(document->IsDirty()) << "it is stored so already";
    EXPECT_TRUE(t.Run(u"EndsCrLf") && t.Run(u"CodingUtf8"));
    EXPECT_TRUE(document->IsDirty());
    EXPECT_TRUE(StateOf(u"EndsCrLf").checked && StateOf(u"CodingUtf8").checked);
    EXPECT_FALSE(StateOf(u"EndsLf").checked || StateOf(u"CodingOwn").checked);
    EXPECT_FALSE(StateOf(u"CodingUtf16Le").enabled) << "no item is";
    EXPECT_TRUE(t.Run(u"Save"));
    EXPECT_EQ(document->ItemObject()->Form()->Encode(document->GetText()), "\xC3\xA9\r\nb\r\n");
    document->SetReadOnly(true);
    for (TextView key : {u"EndsLf", u"CodingOwn"}) EXPECT_FALSE(StateOf(key).enabled) << ToUtf8(key);
}

TEST_F(WhereTest, TheLockIsGivenUpAndTaken)
{
    auto document = t.StoreAndOpen(kMain, u"a");
    EXPECT_TRUE(t.Run(u"ReadOnly"));
    EXPECT_TRUE(document->ReadOnly() && t.ViewOf(*document).ReadOnly() && StateOf(u"ReadOnly").checked);
    EXPECT_FALSE(t.Store().locks.contains(kMain));
    t.LockByStranger(kMain);
    EXPECT_TRUE(t.Run(u"ReadOnly"));
    EXPECT_EQ(t.boxes.Take(), Boxes{Warning(u"Item 'MAIN' is currently locked and cannot be updated!")});
    EXPECT_TRUE(document->ReadOnly() && t.ViewOf(*document).ReadOnly());
    // They have saved it and let it go.
    t.Store().locks.clear();
    t.Store(kMain, u"theirs");
    t.Store().states[kMain] = StoredState::Changed;
    EXPECT_TRUE(t.Run(u"ReadOnly"));
    EXPECT_FALSE(document->ReadOnly() || t.ViewOf(*document).ReadOnly());
    EXPECT_TRUE(t.Store().locks.contains(kMain));
    EXPECT_EQ(document->GetText(), u"theirs");
    document->SetText(u"mine");
    EXPECT_FALSE(StateOf(u"ReadOnly").enabled) << "changes stay under their lock";
}

TEST_F(WhereTest, AMissingFileIsAskedAboutWithItsFolder)
{
    const Text question = u"Item /home/x/a.bas does not exist. Create new item?\nIts folder ";
    t.boxes.Answer({message_box::kAnswerNo, message_box::kAnswerNo});
    EXPECT_FALSE(t.program.OpenPath(kLocal, false));
    EXPECT_EQ(t.boxes.Take(),
              Boxes{Question(question + u"/home/x does not exist either, so the item cannot be saved there.")});
    t.StoreFolder(u"file:/home/x");
    EXPECT_FALSE(t.program.OpenPath(kLocal, false));
    EXPECT_EQ(t.boxes.Take(), Boxes{Question(question + u"is /home/x.")});
}

TEST_F(WhereTest, TabsCloseTogetherAndComeBack)
{
    const Lines paths{kMain, kOther, kLive, kLocal};
    const auto open = [&](const Text& path) {
        t.Store(path, u"1\r\n2\r\n3");
        EXPECT_TRUE(t.program.OpenPath(path, false));
        auto document = t.Documents().Item(t.Documents().Count());
        t.menus.SetTab(document->DocumentID(), document->DisplayName(), u"");
        return document;
    };
    const auto left = [&] {
        Lines names;
        for (auto& document : t.Documents().All()) names.push_back(document->Path());
        return names;
    };
    std::vector<std::shared_ptr<mvDocument>> documents;
    for (const Text& path : paths) documents.push_back(open(path));
    t.ViewOf(*documents[2]).SetCaret({1, 2});
    t.menus.MoveTab(documents[0]->DocumentID(), 1);
    documents[0]->Activate();
    EXPECT_TRUE(t.Run(u"CloseRight"));
    EXPECT_EQ(left(), (Lines{kMain, kOther})) << "as the user has put the tabs";
    EXPECT_TRUE(t.Run(u"ReopenClosed"));
    EXPECT_EQ(left(), (Lines{kMain, kOther, kLocal}));
    EXPECT_TRUE(t.Run(u"ReopenClosed"));
    EXPECT_EQ(t.ViewOf(*t.Documents().Item(4)).Caret(), (Position{1, 2}));
    EXPECT_FALSE(StateOf(u"ReopenClosed").enabled);
    documents[1]->SetText(u"changed");
    t.boxes.Answer({message_box::kAnswerCancel});
    documents[0]->Activate();
    EXPECT_TRUE(t.Run(u"CloseOthers"));
    EXPECT_TRUE(documents[1]->IsDirty()) << "stops at what the user keeps";
    t.boxes.Answer({message_box::kAnswerNo});
    EXPECT_TRUE(t.Run(u"CloseAll"));
    EXPECT_EQ(left(), Lines());
    EXPECT_EQ(t.boxes.Take().size(), 2U);
}

} // namespace nib::test::where_test
