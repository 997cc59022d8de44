// Which documents come back, and how they are looked at.

#include "persistence/recovery/DocumentSession.h"
#include "fakes/TestRecovery.h"

namespace nib::test::document_session_test {

struct DocumentSessionTest : RecoveryTest {
    /// A further run of the program after what `end` does to this one.
    void NextRun(const std::function<void(Program&)>& end, bool reopen = false)
    {
        end(session->t.program);
        const auto items = session->t.Store().items;
        const auto settings = session->t.store.values;
        Crash();
        session->t.Store().items = items;
        session->t.program.EditorSettings().ReopenDocuments = reopen;
    }
    std::vector<Text> Restored(bool last) { return session->t.program.Session().Restore(last); }
    std::vector<Text> Titles() { return session->t.Titles(); }
};

TEST_F(DocumentSessionTest, StatesComeBackAsTheyWereWritten)
{
    const std::vector<DocumentState> states{
        {u"mvdb:*/DEMO/BP/A%20B", true, false, {3, 17}, 12, {2, 9, 40}, {0}, 2, {}},
        {u"file:/home/x/\u00E9 =;# \u65E5.bas", false, true, {0, 0}, 0, {}, {5, 6}, 0, u"-3 4 500 60"}};
    EXPECT_EQ(ReadStates(WriteStates(states)), states);
    EXPECT_EQ(ReadStates("path=x\n[document]\n[document]\npath=y\ncaret=999999999999,z\nfirst=-4\nbookmarks=1 x 3\n"),
              (std::vector<DocumentState>{{u"y", false, false, {}, 0, {}, {0, 2}, 0, {}}}));
}

TEST_F(DocumentSessionTest, AfterACrashAndAfterAnEndThatWasToldTo)
{
    const auto open = [&] {
        session->t.Store(kMain, u"a\r\nb\r\nc\r\nd\r\ne");
        session->t.Store(kOther, u"other");
        session->t.Open(kMain)->EnsureView().txtText().SetCaret({1, 3});
        auto other = session->t.Open(kOther, true);
        session->t.New();
        other->Activate();
        session->t.Documents().Item(1)->EnsureView().txtText().Document().ToggleBookmark(2);
    };
    const auto restored = [&] {
        ASSERT_EQ(Titles(),
                  (std::vector<Text>{u"BP MAIN on server1, account DEMO", u"BP OTHER on server1, account DEMO (Read only)"}));
        SourceView& view = session->t.Documents().Item(1)->EnsureView().txtText();
        EXPECT_EQ(view.Caret(), (Position{1, 3}));
        EXPECT_EQ(view.Document().BookmarkedLines(), std::vector<int32_t>{2});
        session->t.program.Session().ActivateRestored();
        EXPECT_EQ(session->t.window.activeDocument, session->t.Documents().Item(2)->DocumentID());
        EXPECT_FALSE(session->t.Documents().Item(1)->IsDirty());
        EXPECT_EQ(session->t.boxes.Take(), Boxes());
    };
    open();
    NextRun([](Program& program) { program.Session().Save(); });
    EXPECT_EQ(Restored(false), std::vector<Text>());
    restored();
    NextRun([](Program& program) { program.Shutdown(); });
    EXPECT_EQ(Restored(true), std::vector<Text>());
    EXPECT_EQ(Titles(), std::vector<Text>()) << "an ordinary end, and nobody wants them back";
    NextRun([](Program& program) { program.Shutdown(); }); // with nothing open
    EXPECT_EQ(session->t.program.Session().Last().size(), 2U);
    EXPECT_EQ(session->t.program.Session().OpenLast(), std::vector<Text>());
    restored();
    for (auto& document : session->t.Documents().All()) document->FileClose(false);

    session->t.program.EditorSettings().ReopenDocuments = true;
    open();
    NextRun([](Program& program) {
        program.Files().FileExit();
        program.Shutdown();
    });
    EXPECT_EQ(Restored(true), std::vector<Text>());
    restored();
}

TEST_F(DocumentSessionTest, WhatCannotBeHadIsNamedAndNobodyIsAsked)
{
    session->t.Store(kMain, u"a");
    session->t.Store(kOther, u"b");
    session->t.Open(kMain);
    session->t.Open(kOther);
    NextRun([](Program& program) { program.Session().Save(); });
    session->t.Store().items.erase(kMain);
    session->t.LockByStranger(kOther);
    EXPECT_EQ(Restored(false), (std::vector<Text>{u"MAIN", u"OTHER"}));
    EXPECT_EQ(Titles(), std::vector<Text>());
    EXPECT_EQ(session->t.boxes.Take(), Boxes());
    EXPECT_EQ(Restored(false), std::vector<Text>()) << "once";
}

TEST_F(DocumentSessionTest, AHostThatCannotBeReachedIsTriedOnce)
{
    session->t.Store(kMain, u"a");
    session->t.Store(kOther, u"b");
    session->t.Open(kMain);
    session->t.Open(kOther);
    NextRun([](Program& program) { program.Session().Save(); });
    session->t.connection.openFailures.assign(9, Error{error_number::kDeviceUnavailable, u"no line"});
    EXPECT_EQ(Restored(false), (std::vector<Text>{u"MAIN", u"OTHER"}));
    EXPECT_EQ(session->t.connection.openFailures.size(), 8u);
    NextRun([](Program& program) { program.Session().Save(); });
    EXPECT_EQ(Restored(false), std::vector<Text>()) << "the host is there again";
    EXPECT_EQ(session->t.program.OpenDocuments().All().size(), 2u);
}

} // namespace nib::test::document_session_test
