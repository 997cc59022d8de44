#include "fakes/FakeReader.h"
#include "fakes/Patience.h"
#include "fakes/PlainSearch.h"

#include <random>

namespace nib::test::account_find_test {

using Lines = std::vector<Text>;

/// Hits and what takes their place, in texts of few letters, are those of a search by hand.
TEST(ItemSearchTest, AgreesWithASearchByHand)
{
    std::mt19937 random(7);
    const auto pick = [&](size_t from) { return random() % from; };
    const auto part = [&](size_t least, size_t most) {
        Text text;
        for (size_t i = least + pick(most - least + 1); i > 0; --i) text += TextView(u"aAb.ä é-")[pick(8)];
        return text;
    };
    const auto joined = [](const Lines& lines) {
        Text text = lines[0];
        for (size_t i = 1; i < lines.size(); ++i) text += u"\r\n" + lines[i];
        return text;
    };
    for (int run = 0; run < 2000; ++run) {
        PlainSearch plain;
        plain.find = part(1, 3);
        plain.matchCase = pick(2) == 0;
        plain.wholeWord = pick(2) == 0;
        Lines stored(1 + pick(5));
        for (Text& line : stored) line = part(0, 8) + Text(pick(4) / 3, u'\t') + part(0, 8);
        Lines& edited = plain.texts.emplace_back();
        for (const Text& line : stored) edited.push_back(ExpandTabs(line, 3));
        AccountQuery query;
        query.text = plain.find;
        query.matchCase = plain.matchCase;
        query.wholeWord = plain.wholeWord;
        plain.Whole();
        const auto hits = plain.All();
        std::vector<FoundLine> lines;
        for (const auto& [text, at] : hits)
            if (lines.empty() || lines.back().line != at.line)
                lines.push_back({at.line, at.col, plain.Size(), edited[static_cast<size_t>(at.line)]});
        const TextHits found = FindInText(query.Prepared(), joined(stored), 3, 100);
        EXPECT_EQ(found.hits, static_cast<int64_t>(hits.size()));
        EXPECT_EQ(found.lines, lines);

        const Text with = part(0, 3);
        plain.Whole();
        int64_t count = 0;
        for (; plain.Next([] { return true; }); ++count) plain.Replace(with);
        const ReplacedText replaced = ReplaceInText(query.Prepared(), joined(stored), with, 3);
        Lines expected = stored; // a line without a hit keeps its TABs
        for (const FoundLine& line : lines)
            expected[static_cast<size_t>(line.line)] = edited[static_cast<size_t>(line.line)];
        ASSERT_EQ(replaced.hits, count);
        ASSERT_EQ(replaced.text, joined(expected)) << ToUtf8(joined(stored)) << '|' << ToUtf8(query.text);
    }
}

TEST(ItemSearchTest, ALongLineIsShownRoundItsHit)
{
    AccountQuery query;
    query.text = u"x";
    const FoundLine line = FindInText(query.Prepared(), Text(5000, u'-') + u"x" + Text(5000, u'-'), 2, 1).lines.at(0);
    EXPECT_LT(line.text.size(), 1000U);
    EXPECT_EQ(line.text[static_cast<size_t>(line.column)], u'x');
}

TEST(ItemSearchTest, Patterns)
{
    const std::tuple<Text, Lines, Lines> rows[] = {{u"", {u"", u"A"}, {}},
                                                   {u"INV*", {u"INV", u"inv.1"}, {u"XINV"}},
                                                   {u"*.H", {u"A.H", u".H"}, {u"A.H1"}},
                                                   {u"A?C*D", {u"ABCD", u"AxCxxDD"}, {u"ACD", u"ABCX"}},
                                                   {u"*A*B*", {u"xAxBx", u"AAB"}, {u"BA"}}};
    for (const auto& [pattern, fits, not_] : rows) {
        for (auto& id : fits) EXPECT_TRUE(FitsPattern(id, pattern)) << ToUtf8(pattern + u" " + id);
        for (auto& id : not_) EXPECT_FALSE(FitsPattern(id, pattern)) << ToUtf8(pattern + u" " + id);
    }
}

struct AccountFindTest : testing::Test, TestAccountFind {
    AccountFindTest()
    {
        Item(u"BP/A", u"one\r\nx = 1");
        Item(u"BP/B", u"object");
        Item(u"BP/C", u"X and x");
        Item(u"DATA/D", u"x");
    }
};

TEST_F(AccountFindTest, ListsWhatItFindsInTheChosenFiles)
{
    Open(u"x");
    ASSERT_EQ(find.Dialog().files.size(), 2U);
    find.Dialog().files[1].chosen = false;
    t.StoreAndOpen(u"mvdb:*/DEMO/BP/W", u"stored")->SetText(u"x of the window");
    hooks[{u"BP", u"C"}] = [] { throw Error(error_number::kStorage, u"bad\r\nsector"); };
    Find();
    results.lines.back() = results.lines.back().substr(0, results.lines.back().find(u" Time"));
    EXPECT_EQ(results.lines,
              (Lines{u"= Search Results", u"", u"# BP A", u"0002 [x] = 1", u"", u"# BP C", u"bad  sector", u"",
                     u"# BP W", u"0001 [x] of the window", u"", u"Hits: 2. Items with hits: 2 of 2. Files: 1."}));
    EXPECT_EQ(find.Dialog().counts.skipped, 1);
    EXPECT_EQ(find.Dialog().counts.failed, 1);
    // The next dialog has the same files.
    AccountFind again(t.program.Services(), t.clock, t.store, recent);
    again.Open();
    ASSERT_TRUE(Until([&] { return !again.Dialog().readsFiles; }));
    EXPECT_TRUE(again.Dialog().files[0].chosen);
    EXPECT_FALSE(again.Dialog().files[1].chosen);
}

TEST_F(AccountFindTest, HitsAreThereBeforeTheEnd)
{
    Gate gate;
    hooks[{u"BP", u"C"}] = [&] { gate.Wait(); };
    Open(u"x");
    find.Find();
    EXPECT_TRUE(Until([&] { return Listed(u"0002 [x] = 1"); }));
    EXPECT_EQ(find.Dialog().state, FindingState::Searching);
    gate.Open();
    EXPECT_TRUE(Until([&] { return IsIdle(); }));
    EXPECT_TRUE(Listed(u"0001 [X] and x"));
    EXPECT_EQ(find.Dialog().counts.hits, 4);
}

/// A read that hangs is ended by Stop, and so it is when the program ends or another search begins.
TEST_F(AccountFindTest, StopsInTheMiddleOfARead)
{
    hooks[{u"BP", u"C"}] = [&] {
        last->stopped.Wait();
        throw Error(error_number::kStorage, u"stopped");
    };
    Open(u"x");
    find.Find();
    ASSERT_TRUE(Until([&] { return Listed(u"0002 [x] = 1"); }));
    const Patience patience("a search that is stopped");
    EXPECT_TRUE(find.Stop());
    EXPECT_TRUE(IsIdle());
    EXPECT_FALSE(find.Stop());
    EXPECT_TRUE(results.lines.back().starts_with(u"Stopped. Hits: 1."));
    find.Find();
    find.Find();
    find.Dialog().replaceText = u"y";
    find.Replace(); // and is not asked about
}

TEST_F(AccountFindTest, AHostThatIsLostAndAnotherListEndIt)
{
    hooks[{u"BP", u"C"}] = [] { throw Error(error_number::kDeviceUnavailable, u"gone"); };
    Open(u"x");
    Find();
    EXPECT_EQ(find.Dialog().fault, u"gone");
    EXPECT_EQ(find.Dialog().counts.items, 1);
    EXPECT_TRUE(results.lines.back().starts_with(u"gone Hits: 1."));
    hooks[{u"BP", u"C"}] = [&] { last->stopped.Wait(); };
    results.lines.clear();
    find.Find();
    ASSERT_TRUE(Until([&] { return Listed(u"0002 [x] = 1"); }));
    results.ShowResults(u"compiled");
    EXPECT_TRUE(Until([&] { return IsIdle(); }));
    EXPECT_EQ(results.lines, Lines{u"compiled"});
}

TEST_F(AccountFindTest, TheListIsCutAndSaysSo)
{
    Item(u"DATA/D", nib::Replace(Text(12'000, u'x'), u"x", u"x\r\n"));
    Open(u"x");
    Find();
    EXPECT_EQ(find.Dialog().counts.hits, 12'003);
    EXPECT_LT(results.lines.size(), 10'020U);
    EXPECT_TRUE(Listed(u"The list ends here: hits in more than 10000 lines are counted only."));
}

TEST_F(AccountFindTest, ReplacesItemByItemAndReportsEach)
{
    Item(u"BP/GONE", u"x");
    Item(u"BP/LOCKED", u"x");
    Item(u"BP/MOVED", u"x");
    Item(u"BP/RO", u"x", true);
    auto document = t.StoreAndOpen(u"mvdb:*/DEMO/BP/W", u"x x");
    Open(u"x");
    find.Dialog().files[1].chosen = false;
    t.boxes.whileShown = [&] {
        t.Store().items.erase(u"mvdb:*/DEMO/BP/GONE");
        t.LockByStranger(u"mvdb:*/DEMO/BP/LOCKED");
        Item(u"BP/MOVED", u"y");
        Item(u"BP/A", u"x = 1\r\nx = 2");
    };
    Replace(u"z", message_box::kAnswerYes);
    EXPECT_TRUE(t.boxes.Take().at(0).text.starts_with(u"Replace 9 occurrences in 7 items of account DEMO?"));
    EXPECT_EQ(
        results.lines,
        (Lines{u"= Replaced in Account", u"# BP A", u"2 replaced.", u"# BP C", u"2 replaced.", u"# BP GONE",
               u"Not changed: it is not there any more.", u"# BP LOCKED", u"Not changed: Locked by them", u"# BP MOVED",
               u"Not changed: the text is not in it any more.", u"# BP RO", u"Not changed: it is read-only.", u"# BP W",
               u"2 replaced in its window, not saved.", u"", u"Replaced: 6. Items changed: 3. Items not changed: 4."}));
    EXPECT_EQ(Stored(u"BP/A"), u"z = 1\r\nz = 2") << "as it was by then";
    EXPECT_EQ(Stored(u"BP/C"), u"z and z");
    EXPECT_EQ(Stored(u"BP/LOCKED"), u"x");
    EXPECT_EQ(Stored(u"DATA/D"), u"x");
    EXPECT_EQ(Stored(u"BP/W"), u"x x");
    EXPECT_TRUE(document->IsDirty());
    document->Undo();
    EXPECT_EQ(document->GetText(), u"x x");
    EXPECT_EQ(t.Store().locks.size(), 2U) << "the stranger's and the window's";
    EXPECT_EQ(t.Store().commits, 2);
    document->FileClose(false);
}

TEST_F(AccountFindTest, NothingIsReplacedWithoutAYesOrWhereAWriteFails)
{
    Open(u"x");
    Replace(u"z", message_box::kAnswerNo);
    EXPECT_EQ(Stored(u"BP/A"), u"one\r\nx = 1");
    EXPECT_TRUE(Listed(u"0002 [x] = 1")) << "what was found stays";
    t.Store().writeFailure = Error(error_number::kStorage, u"no room");
    Replace(u"z", message_box::kAnswerYes);
    EXPECT_TRUE(Listed(u"Not changed: no room"));
    EXPECT_EQ(Stored(u"BP/A"), u"one\r\nx = 1");
    EXPECT_TRUE(t.Store().locks.empty());
    // Stopped between two items.
    t.Store().writeFailure.reset();
    t.Store().whileBusy = [&] { find.Stop(); };
    Replace(u"z", message_box::kAnswerYes);
    EXPECT_EQ(results.lines.back(),
              u"Replaced: 1. Items changed: 1. Items not changed: 0. Stopped before these items: 2.");
    EXPECT_EQ(Stored(u"BP/A"), u"one\r\nz = 1");
    EXPECT_EQ(Stored(u"BP/C"), u"X and x");
    t.boxes.Take();
}

TEST_F(AccountFindTest, TheAccountIsThatOfTheActiveDocument)
{
    t.program.Services().place.host.Database = u"OTHER";
    t.Open(u"mvdb:*/DEMO/DATA/D");
    Open(u"x");
    EXPECT_EQ(find.Dialog().account, u"DEMO");
    EXPECT_FALSE(find.Dialog().files[0].chosen);
    EXPECT_TRUE(find.Dialog().files[1].chosen) << "its file";
    find.SetAccount(u"NONE");
    EXPECT_TRUE(Until([&] { return !find.Dialog().readsFiles; }));
    EXPECT_TRUE(find.Dialog().files.empty());
    EXPECT_FALSE(find.CanFind());
    t.connection.reader = nullptr;
    find.SetAccount(u"WAY");
    EXPECT_EQ(find.Dialog().fault, u"The account WAY cannot be searched.");
}

} // namespace nib::test::account_find_test
