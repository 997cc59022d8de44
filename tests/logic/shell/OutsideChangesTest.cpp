// What happens to an open item behind the program's back.

#include "fakes/FakeSearch.h"
#include "text/TextSearch.h"

namespace nib::test::outside_changes_test {

using namespace message_box;

struct Row {
    const char* name;
    StoredState state;
    bool dirty, saving;
    std::initializer_list<int32_t> answers;
    Text text; ///< in the window; empty when it is closed
    bool dirtyAfter;
    Text stored; ///< empty when there is nothing
};

constexpr auto kChanged = StoredState::Changed;
constexpr auto kGone = StoredState::Gone;

const Row kRows[] = {
    {"unchanged", StoredState::Same, true, false, {}, u"a\r\nmine", true, u"a\r\ntheirs"},
    {"not to be told", StoredState::Unknown, true, false, {}, u"a\r\nmine", true, u"a\r\ntheirs"},
    {"reload", kChanged, false, false, {kAnswerReload}, u"a\r\ntheirs", false, u"a\r\ntheirs"},
    {"reload a dirty one", kChanged, true, false, {kAnswerReload}, u"a\r\ntheirs", false, u"a\r\ntheirs"},
    {"keep", kChanged, false, false, {kAnswerKeep}, u"a\r\nmine", true, u"a\r\ntheirs"},
    {"put off", kChanged, true, false, {kAnswerCancel}, u"a\r\nmine", true, u"a\r\ntheirs"},
    {"saved over it", kChanged, true, true, {kAnswerKeep}, u"a\r\nmine", false, u"a\r\nmine"},
    {"not saved", kChanged, true, true, {kAnswerCancel}, u"a\r\nmine", true, u"a\r\ntheirs"},
    {"gone, kept", kGone, false, false, {kAnswerKeep}, u"a\r\nmine", true, u""},
    {"gone, made again", kGone, true, true, {kAnswerKeep}, u"a\r\nmine", false, u"a\r\nmine"},
    {"gone, closed and saved", kGone, false, false, {kAnswerClose, kAnswerYes}, u"", false, u"a\r\nmine"},
    {"gone, not closed", kGone, false, false, {kAnswerClose, kAnswerCancel}, u"a\r\nmine", true, u""}};

TEST(OutsideChangesTest, EachAnswer)
{
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.name);
        TestProgram t;
        auto document = t.StoreAndOpen(kMain, u"a\r\nmine");
        document->EnsureView().txtText().Document().ToggleBookmark(0);
        document->SetModified(row.dirty);
        t.Store(kMain, u"a\r\ntheirs");
        if (row.state == kGone) t.Store().items.erase(kMain);
        t.Store().states[kMain] = row.state;
        t.boxes.Answer(row.answers);
        t.boxes.whileShown = [&] { t.program.Outside().Look(); };
        if (row.saving)
            t.program.Files().FileSave(*document);
        else
            t.program.Outside().Look();
        t.program.Outside().Look(); // as when the focus comes back from the box
        EXPECT_EQ(t.boxes.Take().size(), row.answers.size());
        EXPECT_EQ(document->View() ? document->GetText() : Text(), row.text);
        EXPECT_EQ(document->IsDirty(), row.dirtyAfter);
        EXPECT_EQ(t.Store().items.contains(kMain) ? t.Stored(kMain) : Text(), row.stored);
        if (!row.text.empty()) {
            EXPECT_TRUE(document->EnsureView().txtText().Document().HasBookmark(0));
        }
        if (row.text == u"a\r\ntheirs") {
            document->Undo();
            EXPECT_EQ(document->GetText(), u"a\r\nmine") << "one step";
            EXPECT_TRUE(document->IsDirty());
        }
    }
}

struct MergeCase {
    const char* name;
    Text theirs, mine;
    std::vector<MergeChoice> choices; ///< none: it is closed
    Text text;                        ///< in the window afterwards, and stored by the next save
};

const MergeCase kMerges[] = {{"apart", u"A\t-\n\tb\nc", u"a\n\tb\nC", {MergeChoice::Open}, u"A\t-\n\tb\nC"},
                             {"a conflict", u"a\n\tT\nc", u"a\nM\nc", {MergeChoice::MineThenTheirs}, u"a\nM\n\tT\nc"},
                             {"theirs alone", u"a\n\tb\nT", u"a\n\tb\nM", {MergeChoice::Theirs}, u"a\n\tb\nT"},
                             {"put off", u"A\n\tb\nc", u"a\n\tb\nC", {}, u"a\n\tb\nC"}};

TEST(OutsideChangesTest, MergesWithWhatOthersHaveStored)
{
    for (const MergeCase& row : kMerges) {
        SCOPED_TRACE(row.name);
        TestProgram t;
        const bool done = !row.choices.empty();
        const auto lines = [](const Text& text) { return Replace(text, u"\n", u"\r\n"); };
        const auto shown = [&](const Text& text) {
            return ExpandTabs(lines(text), t.program.EditorSettings().TabSize);
        };
        auto document = t.StoreAndOpen(kMain, lines(u"a\n\tb\nc"));
        SourceDocument& text = document->EnsureView().txtText().Document();
        text.ToggleBookmark(2);
        document->ReplaceText(row.mine);
        t.Store(kMain, lines(row.theirs));
        t.Store().states[kMain] = kChanged;
        t.boxes.Answer({kAnswerMerge});
        if (!done) t.boxes.Answer({kAnswerCancel}); // the next save asks again
        t.dialogs.onMerge = [&](MergeModel& merge) {
            if (merge.Conflicts() > 0) merge.Choose(0, row.choices[0]);
            return done ? MergeAnswer::Merge : MergeAnswer::Cancel;
        };
        EXPECT_FALSE(t.program.Files().FileSave(*document));
        EXPECT_EQ(t.Stored(kMain), lines(row.theirs)) << "nothing is stored yet";
        EXPECT_EQ(document->GetText(), shown(row.text));
        EXPECT_EQ(document->IsDirty(), row.text != row.theirs);
        EXPECT_TRUE(text.HasBookmark(text.LineCount() - 1));
        EXPECT_EQ(t.program.Files().FileSave(*document), done);
        EXPECT_EQ(t.Stored(kMain), lines(done ? row.text : row.theirs));
        EXPECT_EQ(t.boxes.Take().size(), done ? 1U : 2U);
        document->Undo();
        EXPECT_EQ(document->GetText(), shown(done ? row.mine : u"a\n\tb\nc")) << "one step";
    }
}

TEST(OutsideChangesTest, MergesOnceMoreWhatIsStoredMeanwhile)
{
    TestProgram t;
    auto document = t.StoreAndOpen(kMain, u"a\r\nb\r\nc");
    document->ReplaceText(u"a\r\nb\r\nmine");
    t.Store(kMain, u"first\r\nb\r\nc");
    t.Store().states[kMain] = kChanged;
    t.boxes.Answer({kAnswerMerge});
    t.dialogs.onMerge = [&](MergeModel&) {
        if (t.Stored(kMain).starts_with(u"first")) t.Store(kMain, u"second\r\nb\r\nc");
        return MergeAnswer::Merge;
    };
    t.program.Outside().Look();
    EXPECT_EQ(t.boxes.Take().size(), 2U);
    EXPECT_EQ(document->GetText(), u"second\r\nb\r\nmine");
}

TEST(OutsideChangesTest, ACopyIsForAnotherPlaceAndOverTheItemAsksOnceMore)
{
    for (const Text& path : {Text(kMain), Text(u"file:/home/me/.x/prog.b")}) {
        SCOPED_TRACE(ToUtf8(path));
        TestProgram t;
        auto document = t.StoreAndOpen(path, u"a");
        document->ReplaceText(u"mine");
        t.Store(path, u"theirs");
        t.Store().states[path] = kChanged;
        t.dialogs.onMerge = [](MergeModel&) { return MergeAnswer::KeepCopy; };
        t.connection.picks.push_back({{t.connection.OpenServerForPath(path, false, false), false}});
        t.boxes.Answer({kAnswerMerge, kAnswerCancel});
        EXPECT_FALSE(t.program.Files().FileSave(*document));
        EXPECT_EQ(t.connection.requests.back().second,
                  path == kMain ? path + u".MINE" : Text(u"file:/home/me/.x/prog.mine.b"));
        EXPECT_EQ(t.boxes.Take().size(), 2U);
        EXPECT_EQ(t.Stored(path), u"theirs");
        EXPECT_TRUE(document->IsDirty());
    }
}

TEST(OutsideChangesTest, AClientMayCloseTheDocumentThatIsAskedAbout)
{
    for (StoredState state : {kChanged, kGone}) {
        TestProgram t;
        auto document = t.StoreAndOpen(kMain, u"a");
        t.Store().states[kMain] = state;
        t.boxes.Answer({kAnswerKeep});
        t.boxes.whileShown = [&] { document->FileClose(false); };
        t.program.Outside().Look();
        EXPECT_EQ(t.boxes.Take().size(), 1U);
        EXPECT_EQ(t.Documents().Count(), 0);
    }
}

TEST(OutsideChangesTest, WaitsWhileTheUserIsAskedAndListsWhatDiffers)
{
    TestSearch search;
    TestProgram& t = search.program;
    t.program.Services().results = &search.results;
    auto document = t.StoreAndOpen(kMain, u"a\r\nb\r\nc");
    t.Store(kMain, u"a\r\nx\r\ny\r\nc");
    t.Store().states[kMain] = kChanged;
    t.window.modal = true;
    t.program.Outside().Look();
    t.window.modal = false;
    t.boxes.Answer({kAnswerCompare});
    t.program.Outside().Look();
    EXPECT_EQ(search.Said().size(), 1u);
    EXPECT_EQ(search.results.lines, (std::vector<Text>{u"= What differs: - in the window, + stored", u"",
                                                       u"# BP MAIN [1]", u"0002 - b", u"0002 + x", u"0002 + y"}));
    EXPECT_EQ(document->GetText(), u"a\r\nb\r\nc");
}

} // namespace nib::test::outside_changes_test
