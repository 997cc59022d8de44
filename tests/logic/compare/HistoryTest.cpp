#include "compare/history/VersionKeeper.h"

#include "../storage/TempFolder.h"
#include "compare/history/ItemHistory.h"
#include "compare/history/VersionText.h"
#include "fakes/AssistedProgram.h"
#include "platform/posix/FileName.h"

#include <array>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <random>

#include <sys/file.h>

namespace nib::test::history_test {

LinewiseText Lines(const Text& text)
{
    const auto held = std::make_shared<Text>(text);
    LinewiseText lines = LinesIn(*held);
    lines.walk = [held, walk = lines.walk](const auto& visit) { walk(visit); };
    return lines;
}

constexpr const char* kSound = "notice: HEAD points to an unborn branch (main)\n";

class VersionsTest : public testing::Test {
protected:
    GitLibrary library_;
    TempFolder folder_;
    const std::string root_ = folder_.Path() + "/History";
    const HistoryPlace place_ = HistoryPlace::Of({Text(kHostProvider), u"*", u"DEMO", u"BP", u"MAIN"}, root_);

    static NewVersion Made(const Text& text, int64_t time = 1000, bool wasRead = false)
    {
        return {
            VersionBytes(Lines(text)), time, wasRead ? u"server" : u"anna", u"BP MAIN", u"server", u"DEMO", wasRead};
    }
    void Save(const Text& text, int64_t time = 1000, const std::optional<Text>& before = {})
    {
        auto repository = VersionRepository::Make(place_.repository);
        if (before) repository.Add(place_, Made(*before, time - 1, true));
        repository.Add(place_, Made(text, time));
    }
    /// From the last one back: "r" read, "s" saved; text, lines that came and went, message.
    std::string Listed()
    {
        const auto repository = VersionRepository::Open(place_.repository);
        std::string all;
        for (const Version& version : repository->List(repository->Last(place_), 1000))
            all += (version.wasRead ? "r " : "s ") + ToUtf8(VersionText(repository->Bytes(version.id))) +
                   (version.added < 0 ? ""
                                      : " +" + std::to_string(version.added) + "-" + std::to_string(version.removed)) +
                   (version.message.empty() ? "" : " " + ToUtf8(version.message)) + "; ";
        return all;
    }
    /// What git's own program prints about the repository.
    std::string Git(const std::string& command)
    {
        const std::string whole = "git -C '" + place_.repository + "' " + command + " 2>&1";
        FILE* pipe = popen(whole.c_str(), "r");
        std::string out;
        for (int c = fgetc(pipe); c != EOF; c = fgetc(pipe)) out += static_cast<char>(c);
        return pclose(pipe) == 0 ? out : "failed: " + out;
    }
    RepositoryUpkeep Upkeep(
        const VersionRepository& repository, std::function<bool()> goOn = [] { return true; })
    {
        return RepositoryUpkeep(repository, std::move(goOn));
    }
    static size_t Loose(const VersionRepository& repository)
    {
        size_t count = 0;
        for (const auto& file : std::filesystem::recursive_directory_iterator(repository.Folder() + "/objects"))
            count += file.is_regular_file() && file.path().filename().string().size() == 38;
        return count;
    }
};

TEST_F(VersionsTest, NamesLeadNowhereElse)
{
    const Text kLong(300, u'A');
    const Text kNames[] = {u"A",  u"a",   u"A.B",   u"A.lock", u".A",        u"..", u".",        u"-A",      u"A..B",
                           u"A.", u"A/B", u"A%2FB", u"A B",    u"A~^:?*[\\", u"@{", u"@",        u"Ä\xF8FD", u"\xDC80",
                           u"",   u"%",   u"A\n",   u"A/",     u"A/../B",    kLong, kLong + u"B"};
    std::set<std::string> repositories;
    std::set<std::string> branches;
    for (const Text& name : kNames) {
        const auto account = HistoryPlace::Of({Text(kHostProvider), name, name, u"BP", u"X"}, "/h").repository;
        EXPECT_EQ(AbsolutePath(account), account) << ToUtf8(name);
        EXPECT_EQ(std::count(account.begin(), account.end(), '/'), 4) << account;
        repositories.insert(account);
        const HistoryPlace item = HistoryPlace::Of({Text(kFileProvider), u"", u"", name, name}, "/h");
        EXPECT_EQ(item.repository, "/h/files.git");
        int valid = 0;
        git_reference_name_is_valid(&valid, item.branch.c_str());
        EXPECT_TRUE(valid && std::count(item.branch.begin(), item.branch.end(), '/') == 3) << item.branch;
        EXPECT_LT(item.branch.size(), 450U);
        branches.insert(item.branch);
    }
    EXPECT_EQ(branches.size(), std::size(kNames));
    EXPECT_EQ(repositories.size(), std::size(kNames));
    EXPECT_EQ(place_.branch, "refs/heads/BP/MAIN") << "readable for other programs";
}

TEST_F(VersionsTest, TextsComeBackWhole)
{
    const Text kPieces[] = {u"\r\n",   u"A",      u"\t",           u"ä",      u"\xF8FD",
                            u"\xD800", u"\xDC00", u"\xD83D\xDE00", u"\xD7FF", u"\0"};
    std::mt19937 random(7);
    for (int i = 0; i < 2000; ++i) {
        Text text;
        for (auto count = random() % 9; count > 0; --count) text += kPieces[random() % std::size(kPieces)];
        ASSERT_EQ(VersionText(VersionBytes(Lines(text))), text) << i;
    }
}

TEST_F(VersionsTest, WhatWasThereBeforeIsAVersionOfItsOwn)
{
    Save(u"b", 1000, u"a");
    Save(u"c\r\nd", 900, u"b"); // the clock was set back
    Save(u"e", 1100, u"x");
    EXPECT_EQ(Listed(), "s e +1-1; r x +1-2; s c\r\nd +2-1; s b +1-1; r a; ");
    const auto repository = VersionRepository::Open(place_.repository);
    auto versions = repository->List(repository->Last(place_), 2);
    ASSERT_EQ(versions.size(), 2U);
    EXPECT_EQ(versions[1].author, u"server");
    VersionRepository(std::move(*VersionRepository::Open(place_.repository)))
        .SetMessage(versions[0].id, u"Für Käthe", u"anna");
    EXPECT_TRUE(Listed().starts_with("s e +1-1 Für Käthe; ")) << Listed();
    EXPECT_EQ(Git("log --format='%an %at %s%n%N' -1 refs/heads/BP/MAIN"), "anna 1100 Saved BP MAIN\nFür Käthe\n\n");
    EXPECT_EQ(Git("fsck --strict"), kSound) << "git's own program finds nothing wrong";
    EXPECT_EQ(Git("show BP/MAIN~1:MAIN"), "x\n");
    for (const std::string& part : {root_, place_.repository})
        EXPECT_EQ(std::filesystem::status(part).permissions(), std::filesystem::perms(0700)) << part;
}

TEST_F(VersionsTest, NothingIsLostWhereSeveralSaveAtOnce)
{
    constexpr int kSaves = 60;
    std::atomic<int> failures = 0;
    const auto save = [&](const Text& name) {
        for (int i = 0; i < kSaves; ++i)
            if (FailureOf([&] { Save(name + Decimal(i)); })) ++failures;
    };
    std::thread other([&] { save(u"a"); });
    save(u"b");
    other.join();
    EXPECT_EQ(failures, 0);
    const std::string all = "; " + Listed();
    for (int i = 0; i < kSaves; ++i)
        for (const char* name : {"; s a", "; s b"}) {
            const std::string text = name + std::to_string(i);
            EXPECT_TRUE(all.find(text + " ") != std::string::npos || all.find(text + ";") != std::string::npos) << text;
        }
    EXPECT_EQ(Git("fsck --strict"), kSound);
}

TEST_F(VersionsTest, SaysWhyNothingCanBeKept)
{
    Save(u"a");
    {
        const Descriptor other(open(place_.repository.c_str(), O_RDONLY));
        flock(other.Get(), LOCK_EX);
        EXPECT_EQ(FailureOf([&] { Save(u"b"); })->description, u"another program is writing to it.");
    }
    // Of a program that was killed.
    const std::string lock = place_.repository + "/refs/heads/BP/MAIN.lock";
    std::ofstream(lock).put('x');
    EXPECT_TRUE(FailureOf([&] { Save(u"b"); }).has_value());
    const timespec old[2] = {{1000, 0}, {1000, 0}};
    utimensat(AT_FDCWD, lock.c_str(), old, 0);
    Save(u"b");
    EXPECT_EQ(Listed(), "s b +1-1; s a; ");
    std::filesystem::remove(place_.repository + "/HEAD");
    EXPECT_TRUE(FailureOf([&] { Save(u"c"); }).has_value()) << "broken";
}

TEST_F(VersionsTest, PacksAndLosesNothing)
{
    for (int i = 0; i < 30; ++i) Save(u"line " + Decimal(i) + u"\r\n" + Text(500, u'x'));
    const std::string all = Listed();
    const auto repository = VersionRepository::Open(place_.repository);
    int asked = 0;
    EXPECT_TRUE(FailureOf([&] { Upkeep(*repository, [&] { return ++asked < 5; }).Pack(); }).has_value());
    EXPECT_EQ(Loose(*repository), 90U) << "stopped";
    for (int pass = 0; pass < 3; ++pass) {
        Upkeep(*repository).Pack();
        EXPECT_EQ(Loose(*repository), 0U);
        EXPECT_EQ(Listed().substr(Listed().size() - all.size()), all);
        Save(Decimal(pass));
    }
    // Another program saves while a pack is made.
    bool once = false;
    Upkeep(*repository, [&] {
        if (!std::exchange(once, true)) Save(u"meanwhile");
        return true;
    }).Pack();
    EXPECT_TRUE(Listed().starts_with("s meanwhile"));
    EXPECT_EQ(Git("fsck --strict"), kSound);
    EXPECT_LT(std::distance(std::filesystem::directory_iterator(place_.repository + "/objects/pack"), {}), 7);
}

TEST_F(VersionsTest, OldVersionsGoAndTheLastStays)
{
    constexpr int64_t kDay = 86400;
    for (int day = 0; day < 20; ++day) Save(Decimal(day), day * kDay);
    Save(u"clock", 3 * kDay);
    const auto repository = VersionRepository::Open(place_.repository);
    EXPECT_FALSE(Upkeep(*repository).Drop({0, 1}, 20 * kDay)) << "smaller than the bound";
    EXPECT_TRUE(Upkeep(*repository).Drop({3, 0}, 20 * kDay));
    EXPECT_EQ(Listed(), "s clock +1-1; s 19 +1-1; s 18 +1-1; s 17 +1-1; ");
    EXPECT_EQ(Git("fsck --strict"), kSound);
    EXPECT_EQ(Git("rev-list --count BP/MAIN"), "4\n");
    EXPECT_EQ(Git("count-objects"), "0 objects, 0 kilobytes\n");
    EXPECT_FALSE(Upkeep(*repository).Drop({3, 0}, 20 * kDay));
    EXPECT_TRUE(Upkeep(*repository).Drop({3, 0}, 900 * kDay));
    EXPECT_EQ(Listed(), "s clock +1-1; ");
    Save(u"new", 901 * kDay);
    EXPECT_EQ(Listed(), "s new +1-1; s clock +1-1; ");
    EXPECT_EQ(Git("fsck --strict"), kSound);
}

TEST_F(VersionsTest, ALargeHistoryIsCutToItsBound)
{
    std::mt19937 random(3);
    for (int i = 0; i < 8; ++i) {
        Text text;
        for (int unit = 0; unit < 400'000; ++unit) text += static_cast<char16_t>(u'0' + random() % 64);
        Save(text, 1000 + i);
    }
    const auto repository = VersionRepository::Open(place_.repository);
    EXPECT_GT(Upkeep(*repository).Size(), 2 << 20);
    EXPECT_TRUE(Upkeep(*repository).Drop({0, 1}, 5000));
    EXPECT_LT(Upkeep(*repository).Size(), 1 << 20);
    EXPECT_EQ(Git("fsck --strict"), kSound);
}

/// Lines that know their version, edited at random, against what is found by comparing.
TEST_F(VersionsTest, EachLineIsOfTheVersionThatBroughtIt)
{
    std::mt19937 random(11);
    std::vector<int> lines; ///< by line, its number, and by that its version
    std::vector<int> cameWith;
    for (int version = 0; version < 40; ++version) {
        for (auto edits = 1 + random() % 3; edits > 0; --edits) {
            const auto at = static_cast<std::ptrdiff_t>(random() % (lines.size() + 1));
            if (random() % 3 == 0 && at < static_cast<std::ptrdiff_t>(lines.size())) {
                lines.erase(lines.begin() + at);
            } else {
                lines.insert(lines.begin() + at, static_cast<int>(cameWith.size()));
                cameWith.push_back(version);
            }
        }
        Text text;
        for (int line : lines) text += u"line " + Decimal(line) + u"\r\n";
        Save(text, version);
    }
    const auto repository = VersionRepository::Open(place_.repository);
    const std::string tip = repository->Last(place_);
    LineAuthors authors(*repository, tip);
    while (authors.Step()) {
    }
    ASSERT_EQ(authors.Lines().size(), lines.size() + 1);
    for (size_t i = 0; i < lines.size(); ++i)
        EXPECT_EQ(authors.Versions().at(static_cast<size_t>(authors.Lines()[i])).time,
                  cameWith[static_cast<size_t>(lines[i])])
            << i;
    const std::vector<int32_t> edited = authors.LinesOf("mine\n" + repository->Bytes(tip));
    EXPECT_EQ(edited[0], -1);
    EXPECT_TRUE(std::equal(edited.begin() + 1, edited.end(), authors.Lines().begin()));
}

constexpr TextView kItem = u"mvdb:*/DEMO/BP/MAIN";

struct ProgramHistoryTest : testing::Test {
    TempFolder folder;
    AssistedProgram t{folder.Path()};
    ItemHistory& history = t.program.Versions();
    int news = 0;
    std::shared_ptr<mvDocument> document = t.Open(Text(kItem), u"a\tb\r\nc");

    void SetUp() override
    {
        history.Changed = [this] { ++news; };
    }
    void SaveAs(TextView text)
    {
        document->ReplaceText(text);
        const int before = news;
        ASSERT_TRUE(document->FileSave());
        ASSERT_TRUE(t.Wait([&] { return news > before; }));
    }
    std::vector<Text> Texts() const
    {
        std::vector<Text> texts;
        for (const Version& version : history.List(*document, history.Last(*document), 10))
            texts.push_back((version.wasRead ? u"read " : u"") + history.TextOf(*document, version.id));
        return texts;
    }
};

TEST_F(ProgramHistoryTest, ASaveLeavesAVersionAndOneComesBackInOneStep)
{
    SaveAs(u"a  b\r\nnew");
    document->SetText(u"by a client");
    SaveAs(document->GetText());
    t.connection.store.items[Text(kItem)].text = u"by another";
    document->Reload();
    SaveAs(u"mine again");
    EXPECT_EQ(Texts(),
              (std::vector<Text>{u"mine again", u"read by another", u"by a client", u"a  b\r\nnew", u"read a\tb\r\nc"}))
        << "a TAB that was read is in it, too";
    const auto first = history.List(*document, history.Last(*document), 10).back();
    EXPECT_EQ(first.author, u"server1");
    history.BringBack(*document, first.id);
    EXPECT_EQ(document->GetText(), u"a   b\r\nc") << "with its TAB as it is shown";
    document->Undo();
    EXPECT_EQ(document->GetText(), u"mine again");
    EXPECT_FALSE(document->IsDirty()) << "one step";
    t.View(*document).SetReadOnly(true);
    history.BringBack(*document, first.id);
    EXPECT_EQ(document->GetText(), u"mine again");
}

TEST_F(ProgramHistoryTest, WhatComesBackHasItsTabsAndSoHasItsUndo)
{
    SaveAs(u"mine");
    const Text stored = u"a   b\r\n\td\r\n\te";
    t.connection.store.items[Text(kItem)].text = stored;
    document->Reload();
    history.BringBack(*document, history.List(*document, history.Last(*document), 10).back().id);
    for (int pass = 0; pass < 2; ++pass) {
        EXPECT_EQ(document->AsWritten().Whole(), u"a\tb\r\nc");
        EXPECT_TRUE(document->IsDirty());
        document->Undo();
        EXPECT_EQ(document->AsWritten().Whole(), stored) << "one step";
        EXPECT_FALSE(document->IsDirty());
        document->Redo();
    }
}

TEST_F(ProgramHistoryTest, WhatIsSavedOverWithTheUsersConsentIsAVersion)
{
    document->ReplaceText(u"mine");
    t.connection.store.items[Text(kItem)].text = u"\ttheirs";
    t.connection.store.states[Text(kItem)] = StoredState::Changed;
    t.boxes.Answer({message_box::kAnswerKeep});
    t.program.Files().FileSave(*document);
    t.boxes.Take();
    ASSERT_TRUE(t.Wait([&] { return news > 0; }));
    EXPECT_EQ(Texts(), (std::vector<Text>{u"mine", u"read \ttheirs"}));
    document->ReplaceText(u"merged");
    t.connection.store.items[Text(kItem)].text = u"\tmore";
    t.connection.store.states[Text(kItem)] = StoredState::Changed;
    t.boxes.Answer({message_box::kAnswerMerge});
    t.dialogs.onMerge = [](MergeModel& merge) { return merge.Choose(0, MergeChoice::Mine), MergeAnswer::Merge; };
    t.program.Files().FileSave(*document);
    t.program.Files().FileSave(*document);
    t.boxes.Take();
    ASSERT_TRUE(t.Wait([&] { return news > 1; }));
    EXPECT_EQ(Texts(), (std::vector<Text>{u"merged", u"read \tmore", u"mine", u"read \ttheirs"}));
}

TEST_F(ProgramHistoryTest, SaveAsKeepsWhatItReplaces)
{
    t.connection.store.items[u"mvdb:*/DEMO/BP/OTHER"] = {u"other", false};
    t.boxes.Answer({message_box::kAnswerYes});
    ASSERT_TRUE(document->FileSaveAs(u"mvdb:*/DEMO/BP/OTHER"));
    t.boxes.Take();
    ASSERT_TRUE(t.Wait([&] { return news > 0; }));
    EXPECT_EQ(Texts(), (std::vector<Text>{u"a\tb\r\nc", u"read other"}));
    ASSERT_TRUE(document->FileSaveAs(u"mvdb:*/DEMO/BP/NEW"));
    ASSERT_TRUE(t.Wait([&] { return news > 1; }));
    EXPECT_EQ(Texts(), std::vector<Text>{u"a\tb\r\nc"}) << "there was nothing before";
}

TEST_F(ProgramHistoryTest, AFailureIsToldAndTheSaveIsDone)
{
    folder.File("data/Orlin/Nib/History", "no folder can be made");
    SaveAs(u"new");
    EXPECT_EQ(t.connection.store.items[Text(kItem)].text, u"new");
    EXPECT_FALSE(document->IsDirty());
    t.program.ShowChanges();
    EXPECT_TRUE(t.window.status[1].starts_with(u"The history cannot be kept: ")) << ToUtf8(t.window.status[1]);
    std::filesystem::remove(folder / "data/Orlin/Nib/History");
    SaveAs(u"newer");
    EXPECT_EQ(Texts(), (std::vector<Text>{u"newer", u"read new"}));
    t.program.ShowChanges();
    EXPECT_EQ(t.window.status[1], u"");
}

TEST_F(ProgramHistoryTest, AuthorsOfTheTextInTheWindow)
{
    SaveAs(u"1\r\na   b\r\n2");
    document->ReplaceText(u"unsaved\r\n1\r\na   b\r\n2");
    std::optional<AuthoredText> found;
    history.AskAuthors(*document, [&](const AuthoredText& answer) { found = answer; });
    ASSERT_TRUE(t.Wait([&] { return found.has_value(); }));
    EXPECT_EQ(found->lines, (std::vector<int32_t>{-1, 0, 1, 0}));
    ASSERT_EQ(found->versions.size(), 2U);
    EXPECT_FALSE(found->versions[0].wasRead);
    EXPECT_TRUE(found->versions[1].wasRead);
}

TEST_F(ProgramHistoryTest, AnEndKeepsWhatWasSaved)
{
    document->ReplaceText(u"last");
    ASSERT_TRUE(document->FileSave());
    history.End();
    EXPECT_EQ(Texts(), (std::vector<Text>{u"last", u"read a\tb\r\nc"}));
}

} // namespace nib::test::history_test
