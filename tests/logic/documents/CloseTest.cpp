// Closing a document, and what identifies it while it is open.

#include "fakes/TestProgram.h"

namespace nib::test {
namespace {

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

const TitleRow kTitleRows[] = {{kMain, true, false, false, u"server1", u"BP MAIN on server1"},
                               {kMain, true, true, false, u"server1", u"BP MAIN on server1 (Read only)"},
                               {kMain, true, true, true, u"server1", u"*BP MAIN on server1 (Read only)"},
                               {kMain, false, false, true, u"server1", u"*BP MAIN on server1 (New)"},
                               {kMain, false, true, false, u"server1", u"BP MAIN on server1 (New)"},
                               {kMain, true, false, false, u"", u"BP MAIN"},
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

} // namespace
} // namespace nib::test
