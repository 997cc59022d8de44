// What was typed since the last save: the records, the thread that writes them, and how it comes back.

#include "fakes/TestRecovery.h"
#include "platform/posix/FileName.h"

#include <random>
#include <thread>

namespace nib::test::journal_test {

using namespace std::chrono_literals;

Text RandomPiece(std::mt19937& random)
{
    const Text pieces[] = {u"x",      u"\r\n",          u"ab\r\ncd\r\n", u"\u00E9\u00FF", u"wide \u65E5\U0001F600",
                           u"\uF8FD", u"   ! note\r\n", Text(1, u'\0')};
    return pieces[std::uniform_int_distribution<size_t>(0, std::size(pieces) - 1)(random)];
}

Position RandomPlace(const SourceDocument& text, std::mt19937& random)
{
    const int32_t line = std::uniform_int_distribution(0, text.LineCount() - 1)(random);
    return {std::uniform_int_distribution(0, text.LineLength(line))(random), line};
}

void Edit(SourceDocument& text, std::mt19937& random)
{
    const Position a = RandomPlace(text, random);
    const Position b = RandomPlace(text, random);
    switch (std::uniform_int_distribution(0, 9)(random)) {
    case 0: text.DeleteRange(std::min(a, b), std::max(a, b)); break;
    case 1: text.Undo(); break;
    case 2: text.DeleteRange(a, {a.col + 3, a.line}); break;
    case 3:
        if (a.line % 7 == 0) text.SetText(u"all\r\nnew \u65E5");
        break;
    case 4: {
        LineEdits edits;
        edits.Remove(a.line, a.col, 2);
        for (int32_t line = a.line; line < std::min(a.line + b.line, text.LineCount()); ++line)
            edits.Insert(line, 1, line % 3 == 0 ? u"\u65E5" : u"  ");
        text.EditLines(std::move(edits));
        break;
    }
    default: text.InsertText(a, RandomPiece(random));
    }
}

TEST(JournalFile, HoldsTheTextAsItWasAtSomeMomentWhereverItIsCut)
{
    const TempFolder folder;
    for (uint32_t seed = 1; seed <= 80; ++seed) {
        std::mt19937 random(seed);
        SourceDocument text;
        Text begin;
        for (uint32_t i = 0; i < seed * 10; ++i) begin += RandomPiece(random);
        text.SetText(begin);
        std::vector<Text> states;
        {
            JournalWriter writer(folder.Path());
            DocumentJournal journal(text, writer, "J", [] {});
            text.AddListener(&journal);
            journal.Begin({u"mvdb:*/DEMO/BP/A", u"A", u"BP A", u"1", {}});
            for (int i = 0; i < 60; ++i) {
                Edit(text, random);
                if (journal.IsStale()) journal.Begin(journal.Head());
                // A slice of no time is one look at the clock: some lines.
                if (i % 3 == 0) journal.CopySlice(0us);
                states.push_back(text.GetText());
                if (i == 40) journal.SetCopyName(u"1.001");
            }
            if (journal.IsStale()) journal.Begin(journal.Head());
            journal.CopySlice(1min);
            for (int i = 0; i < 20 && !journal.IsStale(); ++i) {
                Edit(text, random);
                states.push_back(text.GetText());
            }
            text.RemoveListener(&journal);
            if (journal.IsStale()) continue;
        }
        const FileContent content = ReadWholeFile(folder / "J");
        ASSERT_EQ(journal::Read(content.Bytes()).text, text.GetText()) << seed;
        EXPECT_EQ(journal::Read(content.Bytes()).head.name, u"BP A");
        for (int i = 0; i < 40; ++i) {
            const size_t cut = std::uniform_int_distribution<size_t>(0, content.size)(random);
            std::string torn(content.Bytes().substr(0, cut));
            if (i % 2 == 0 && cut > 0) torn[cut - 1] ^= 1;
            Text had;
            if (FailureOf([&] { had = journal::Read(torn).text; })) continue;
            ASSERT_NE(std::find(states.begin(), states.end(), had), states.end()) << seed << ' ' << cut;
        }
    }
}

struct JournalTest : RecoveryTest {
    mvDocument& Typed(const Text& path, const Text& stored, const Text& typed)
    {
        if (!path.empty()) session->t.Store(path, stored);
        auto document = path.empty() ? session->t.New() : session->t.Open(path);
        Type(*document, typed);
        return *document;
    }
    /// As the window of a document says that it has changed.
    void Type(mvDocument& document, const Text& typed)
    {
        session->t.View(document).txtText().Document().InsertText({0, 0}, typed);
        session->t.program.Shell().DocumentChanged(document);
        session->t.clock.Advance(20ms);
    }
    std::vector<std::string> Files() const
    {
        std::vector<std::string> names;
        std::error_code none;
        for (const auto& entry : std::filesystem::directory_iterator(folder / "data/Orlin/Nib/Journal", none))
            names.push_back(entry.path().filename());
        return names;
    }
    bool Eventually(const std::function<bool()>& holds) const
    {
        for (int i = 0; i < 300; ++i, std::this_thread::sleep_for(10ms))
            if (holds()) return true;
        return false;
    }
    /// A new session, in which the first is as if killed; all it held in memory is gone.
    RecoveryList& AfterCrash()
    {
        session->recovery.Flush();
        const std::map<Text, StoredItem> items = session->t.Store().items;
        Crash();
        session->t.Store().items = items;
        return session->List();
    }
};

TEST_F(JournalTest, WhatWasTypedIsOnDiskWithinASecondAndGoesWithTheSave)
{
    mvDocument& document = Typed(kMain, u"one\r\ntwo", u"typed ");
    const auto start = std::chrono::steady_clock::now();
    ASSERT_TRUE(Eventually([&] { return Files() == std::vector<std::string>{"0012AB34.1"}; }));
    Type(document, u"and more ");
    const auto holds = [&] {
        return journal::Read(ReadWholeFile(folder / "data/Orlin/Nib/Journal/0012AB34.1").Bytes()).text ==
               u"and more typed one\r\ntwo";
    };
    ASSERT_TRUE(Eventually(holds));
    EXPECT_LT(std::chrono::steady_clock::now() - start, 2s);
    EXPECT_TRUE(document.FileSave());
    EXPECT_TRUE(Eventually([&] { return Files().empty(); }));
    EXPECT_EQ(session->Offered(), std::vector<Text>());
}

TEST_F(JournalTest, NoneWithoutAutoRecover)
{
    mvDocument& document = Typed({}, {}, u"first");
    session->recovery.Flush();
    EXPECT_EQ(Files().size(), 1U);
    session->t.program.EditorSettings().AutoRecover = false;
    session->recovery.FollowSetting();
    EXPECT_EQ(Files(), std::vector<std::string>());
    Type(document, u"second");
    session->recovery.Flush();
    EXPECT_EQ(Files(), std::vector<std::string>());
    session->t.program.EditorSettings().AutoRecover = true;
    session->recovery.FollowSetting();
    session->recovery.Flush();
    EXPECT_EQ(Files().size(), 1U);
    session->t.program.Shutdown();
    EXPECT_EQ(Files(), std::vector<std::string>()) << "a clean end leaves none";
}

TEST_F(JournalTest, TheTextGoesBackToItsPlaceAsOneStep)
{
    mvDocument& before = Typed(kMain, u"one\r\ntwo\r\nthree", u"typed ");
    session->t.View(before).SetAutoSaveFlag(true);
    EXPECT_TRUE(session->recovery.AutoSaveDocuments());
    Type(before, u"later ");
    RecoveryList& list = AfterCrash();
    ASSERT_EQ(list.Rows().size(), 1U) << "copy and journal are one row";
    EXPECT_EQ(list.Rows()[0].document, u"BP MAIN");
    EXPECT_EQ(list.Rows()[0].place, u"DEMO");
    list.RecoverChecked();
    ASSERT_EQ(session->t.Documents().Count(), 1);
    auto document = session->t.Documents().Item(1);
    EXPECT_EQ(document->Path(), kMain);
    EXPECT_EQ(document->GetText(), u"later typed one\r\ntwo\r\nthree");
    EXPECT_TRUE(session->t.Store().locks.contains(kMain));
    EXPECT_TRUE(document->IsDirty());
    document->Undo();
    EXPECT_EQ(document->GetText(), u"one\r\ntwo\r\nthree");
    EXPECT_FALSE(document->IsDirty());
}

TEST_F(JournalTest, WhatCannotGoBackIsANewDocumentThatSaysWhy)
{
    struct Row {
        const char* why;
        std::function<void(FakeStore&)> meanwhile;
    };
    const Row rows[] = {
        {"it was changed since", [](FakeStore& store) { store.items[kMain].text = u"theirs"; }},
        {"it is no longer there", [](FakeStore& store) { store.items.erase(kMain); }},
        {"it is locked now", [](FakeStore& store) { store.locks[kMain] = FakeStore::kStranger; }},
        {"it cannot be written now", [](FakeStore& store) { store.items[kMain].readOnly = true; }},
    };
    for (const Row& row : rows) {
        Typed(kMain, u"one", u"typed ");
        RecoveryList& list = AfterCrash();
        row.meanwhile(session->t.Store());
        list.RecoverChecked();
        ASSERT_EQ(session->t.Documents().Count(), 1) << row.why;
        auto document = session->t.Documents().Item(1);
        EXPECT_TRUE(document->Path().empty());
        EXPECT_EQ(document->GetText(), u"*---> Recovered document: BP MAIN (" + FromUtf8(row.why) + u")\r\ntyped one");
        document.reset();
        EndCleanly();
    }
}

TEST_F(JournalTest, ARowIsComparedUnderNoLockWithWhatIsStoredNow)
{
    struct Row {
        Text seen; ///< empty: it is told why nothing is
        std::function<void(Session&)> meanwhile;
    };
    const Row rows[] = {
        {u"theirs, as stored", [](Session& s) { s.t.Store(kMain, u"theirs"); }},
        {u"one, as stored", [](Session& s) { s.t.LockByStranger(kMain); }},
        {u", deleted", [](Session& s) { s.t.Store().items.erase(kMain); }},
        {{},
         [](Session& s) {
             s.t.Store().readFailure = Error{7, u"no line"};
         }},
        {{},
         [](Session& s) {
             s.t.connection.openFailures = {Error{7, u"no host"}};
         }},
        {{}, [this](Session&) { std::filesystem::remove_all(folder / "data/Orlin/Nib/Journal"); }},
    };
    for (const Row& row : rows) {
        Typed(kMain, u"one", u"typed ");
        RecoveryList& list = AfterCrash();
        row.meanwhile(*session);
        const auto locks = session->t.Store().locks;
        EXPECT_EQ(Compared(list), row.seen.empty() ? Text() : row.seen + u" | BP MAIN | typed one, as recovered");
        EXPECT_EQ(session->t.boxes.Take().size(), row.seen.empty() ? 1U : 0U);
        EXPECT_EQ(session->t.Store().locks, locks);
        EXPECT_TRUE(list.Rows().size() == 1 && list.AnyChecked() && !session->t.window.waiting);
        list.DeleteListed();
        EndCleanly();
    }
}

TEST_F(JournalTest, AnItemThatWasNotThereYetIsMadeInItsPlace)
{
    auto document = session->t.NewObject();
    document->FileNewItem(session->t.Item(kMain));
    Type(*document, u"new text");
    document.reset();
    EXPECT_EQ(Compared(AfterCrash()), u", not stored yet | BP MAIN | new text, as recovered");
    session->list.RecoverChecked();
    auto recovered = session->t.Documents().Item(1);
    EXPECT_EQ(recovered->Path(), kMain);
    EXPECT_TRUE(recovered->NewItem());
    EXPECT_EQ(recovered->GetText(), u"new text");
}

TEST_F(JournalTest, AWindowThatHasTheItemTakesTheTextUnlessItHasOther)
{
    Typed(kMain, u"one", u"typed ");
    RecoveryList& list = AfterCrash();
    auto open = session->t.Open(kMain);
    list.RecoverChecked();
    EXPECT_EQ(session->t.Documents().Count(), 1);
    EXPECT_EQ(open->GetText(), u"typed one");
    Type(*open, {});
    open.reset();
    RecoveryList& again = AfterCrash();
    Type(*session->t.Open(kMain), u"other ");
    again.RecoverChecked();
    ASSERT_EQ(session->t.Documents().Count(), 2);
    EXPECT_EQ(session->t.Documents().Item(2)->GetText(),
              u"*---> Recovered document: BP MAIN (it is open and has other changes)\r\ntyped one");
}

TEST_F(JournalTest, AFurtherCrashBringsItBackOnce)
{
    Typed(kMain, u"one", u"typed ");
    AfterCrash().RecoverChecked();
    Type(*session->t.Documents().Item(1), u"again ");
    folder.File("data/Orlin/Nib/Journal/0012AB34.7~", "of which nothing can be had back");
    RecoveryList& list = AfterCrash();
    ASSERT_EQ(list.Rows().size(), 1U);
    EXPECT_EQ(Files().size(), 1U);
    list.RecoverChecked();
    EXPECT_EQ(session->t.Documents().Item(1)->GetText(), u"again typed one");
}

TEST_F(JournalTest, AFullDiskIsToldOnceAndTheJournalIsMadeWhenThereIsRoom)
{
    std::optional<FullDisk> full(std::in_place);
    mvDocument& document = Typed(kMain, u"one", u"typed ");
    session->recovery.Flush();
    session->t.clock.Advance(2s);
    session->t.clock.Advance(10ms);
    EXPECT_TRUE(session->t.window.status[1].starts_with(u"No recovery copies can be kept: "));
    full.reset();
    session->t.clock.Advance(2s);
    session->recovery.Flush();
    session->t.clock.Advance(2s);
    EXPECT_EQ(session->t.window.status[1], u"");
    Type(document, u"more ");
    RecoveryList& list = AfterCrash();
    ASSERT_EQ(list.Rows().size(), 1U);
    list.RecoverChecked();
    EXPECT_EQ(session->t.Documents().Item(1)->GetText(), u"more typed one");
}

} // namespace nib::test::journal_test
