// The recovery copies of a running session: which documents get one, what is in it, and when it goes.

#include "base/Text.h"
#include "fakes/TestRecovery.h"

#include <thread>

#include <sys/stat.h>

namespace nib::test::auto_save_test {

using namespace std::chrono_literals;
using Strings = std::vector<std::string>;

TEST(AutoSaveNameTest, Names)
{
    EXPECT_EQ(AutoSaveName(0x12AB34, 1), u"0012AB34.001");
    EXPECT_EQ(AutoSaveName(0xFEDCBA98, 1000), u"FEDCBA98.1000");

    const std::pair<const char16_t*, std::optional<uint32_t>> rows[] = {
        {u"0012AB34.001", 0x12AB34},
        {u"0012ab34.bak.old", 0x12AB34},
        {u"12AB34", 0x12AB34},
        {u"0012AB34 (copy)", 0x12AB34},
        {u"notes.txt", 0},
        {u"", 0},
        {u".001", 0},
        {u"00000012AB34.1", 0x12AB34},
        {u"FFFFFFFF.1", 0xFFFFFFFF},
        {u"100000000.1", std::nullopt},
        {u"ABCDEFABCDEFABCDEFABCDEFABCDEF", std::nullopt}};
    for (const auto& [name, number] : rows) EXPECT_EQ(SessionOfName(name), number) << ToUtf8(name);
}

mode_t ModeOf(const std::string& path)
{
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? status.st_mode & 0777 : 0;
}

struct AutoSaveTest : RecoveryTest {
    bool Pass()
    {
        const bool any = session->recovery.AutoSaveDocuments();
        session->recovery.Flush();
        return any;
    }
    Text Copy(const std::string& name)
    {
        session->recovery.Flush();
        return ReadAutoSaveCopy(FromUtf8(Place() + "/" + name)).value_or(u"(none)");
    }
};

TEST_F(AutoSaveTest, ChangedDocumentsAreCopiedAsTheyStand)
{
    const Text texts[] = {u"plain\r\ntext\r\n",
                          u"\u00C3\u00A9 Latin-1 that looks like UTF-8",
                          u"wide \u65E5\u672C \U0001F600 " + Text{char16_t(0xD800)} + u" alone",
                          Text(u"A") + kAttributeMark + kValueMark + kSubValueMark + u"B\r\n\r\n",
                          u"\uFEFFmark first",
                          Text(u"nul ") + char16_t(0) + u" inside",
                          u""};
    int number = 0;
    for (const Text& text : texts) {
        const Text item = u"I" + Decimal(++number);
        mvDocument& document = session->Changed(text, u"mvdb:*/DEMO/BP/" + item);
        const Text present = document.GetText();
        ASSERT_TRUE(Pass());
        EXPECT_EQ(Copy("0012AB34.00" + std::to_string(number)), item + u"\r\n" + present);
        session->t.View(document).SetAutoSaveFlag(false);
    }
    EXPECT_FALSE(Pass()) << "nothing has changed";
    EXPECT_EQ(ModeOf(Place()), 0700U);
    EXPECT_EQ(ModeOf(folder / "data/Orlin"), 0700U);
    EXPECT_EQ(ModeOf(Place() + "/0012AB34.001"), 0600U);
}

TEST_F(AutoSaveTest, NumbersAreNotGivenTwice)
{
    session->t.StoreAndOpen(kOther, u"never changed");
    mvDocument& first = session->Changed(u"one", kMain);
    mvDocument& second = session->Changed(u"two");
    EXPECT_TRUE(Pass());
    EXPECT_EQ(Names(), (Strings{"0012AB34.001", "0012AB34.002"}));
    EXPECT_EQ(Copy("0012AB34.001"), u"MAIN\r\none");
    EXPECT_EQ(Copy("0012AB34.002"), u"\r\ntwo");
    session->t.View(second).txtText().SetText(u"more");
    first.FileClose(false);
    session->Changed(u"three");
    EXPECT_TRUE(Pass());
    EXPECT_EQ(Copy("0012AB34.002"), u"\r\nmore");
    EXPECT_EQ(Copy("0012AB34.003"), u"\r\nthree");
    for (int number = 4; number < 1000; ++number) File("0012AB34." + std::to_string(number + 1000).substr(1), "");
    session->Changed(u"four");
    EXPECT_TRUE(Pass());
    EXPECT_EQ(Copy("0012AB34.1000"), u"\r\nfour");
    EndCleanly();
    EXPECT_EQ(Names(), Strings());
}

TEST_F(AutoSaveTest, WhatACopyHoldsIsNotWrittenAgain)
{
    const std::string copy = Place() + "/0012AB34.001";
    SourceDocument& text = session->t.View(session->Changed(u"one", kMain)).txtText().Document();
    EXPECT_TRUE(Pass());
    const FileStamp written = StampOf(copy);
    EXPECT_TRUE(Pass()) << "a copy is there";
    EXPECT_EQ(StampOf(copy), written);
    const std::pair<std::function<void()>, Text> rows[] = {
        {[&] { text.InsertText({0, 0}, u"x"); }, u"MAIN\r\nxone"},
        {[&] { text.Undo(); }, u"MAIN\r\none"},
        {[&] { text.SetText(u"two"); }, u"MAIN\r\ntwo"},
        {[&] { File("0012AB34.001", "damaged"); }, u"MAIN\r\ntwo"},
        {[&] { unlink(copy.c_str()); }, u"MAIN\r\ntwo"},
    };
    for (const auto& [change, wanted] : rows) {
        change();
        text.SetModified(true);
        EXPECT_TRUE(Pass());
        EXPECT_EQ(Copy("0012AB34.001"), wanted);
    }
}

TEST_F(AutoSaveTest, ACopyIsOfTheMomentThatItTells)
{
    mvDocument& document = session->Changed(u"one", kMain);
    EXPECT_TRUE(session->recovery.AutoSaveDocuments());
    const auto ordered = std::chrono::system_clock::now();
    session->t.View(document).txtText().SetText(u"two");
    std::this_thread::sleep_for(50ms);
    EXPECT_EQ(Copy("0012AB34.001"), u"MAIN\r\none");
    const FileStamp copy = StampOf(Place() + "/0012AB34.001");
    EXPECT_LE(copy.seconds * 1'000'000'000 + copy.nanoseconds, ordered.time_since_epoch() / 1ns)
        << "else it would be taken for younger than a journal that has more";
    EXPECT_TRUE(session->recovery.AutoSaveDocuments());
    document.FileSave();
    EXPECT_EQ(Names(), Strings()) << "what is saved is not offered";
}

TEST_F(AutoSaveTest, ReadOnlyAndHiddenDocumentsToo)
{
    session->t.Store(kMain, u"text", true);
    auto document = session->t.Open(kMain, true);
    auto& view = session->t.View(*document);
    view.SetAutoSaveFlag(true);
    view.visible = false;
    EXPECT_TRUE(Pass());
    EXPECT_FALSE(view.visible) << "a pass must not bring a window up";
    EXPECT_EQ(Copy("0012AB34.001"), u"MAIN\r\ntext");
}

TEST_F(AutoSaveTest, SwitchedOff)
{
    session->Changed(u"one");
    EXPECT_TRUE(Pass());
    session->t.program.EditorSettings().AutoRecover = false;
    session->Changed(u"two");
    EXPECT_FALSE(Pass());
    EXPECT_EQ(session->recovery.HoldAutoSaveGuard(), 0);
    EXPECT_EQ(Names(), Strings{"0012AB34.001"});
    EndCleanly();
    EXPECT_EQ(Names(), Strings()) << "what was there before goes all the same";
}

TEST_F(AutoSaveTest, FailuresAreSilentAndCostNoCopy)
{
    mvDocument& document = session->Changed(u"one");
    EXPECT_TRUE(Pass());
    auto full = std::make_unique<FullDisk>();
    session->t.View(document).txtText().SetText(u"changed");
    Pass();
    EXPECT_EQ(Copy("0012AB34.001"), u"\r\none");
    mvDocument& second = session->Changed(u"two");
    mvDocument& third = session->Changed(u"three");
    Pass();
    full.reset();
    EXPECT_TRUE(Pass());
    EXPECT_EQ(Copy("0012AB34.001"), u"\r\nchanged");
    EXPECT_NE(second.AutoRecoverFile(), third.AutoRecoverFile()) << "though neither had a file when it got its name";
    std::filesystem::remove_all(Place());
    EXPECT_TRUE(Pass()) << "the folder is made again";
    EXPECT_EQ(Names().size(), 3U);
}

TEST_F(AutoSaveTest, WithoutAFolderOrANumberNothingIsCopied)
{
    session->Changed(u"one");
    folder.File("data/Orlin/Nib", "a file in the way");
    EXPECT_FALSE(Pass());
    EXPECT_TRUE(session->recovery.AutoRecoverFolder().empty());
    std::filesystem::remove(folder / "data/Orlin/Nib");
    token.next = 0;
    EXPECT_FALSE(Pass());
    session->recovery.EndAutoSaveSession();
    token.next = 5;
    EXPECT_TRUE(Pass());
    EXPECT_EQ(Names(), Strings{"00000005.001"});
}

TEST_F(AutoSaveTest, OnlyTheLastGuardGivenOutCanBeReleased)
{
    const std::tuple<const char*, int, std::vector<int32_t>, bool> rows[] = {
        {"none", 0, {}, false},
        {"released", 1, {1}, false},
        {"held", 1, {}, true},
        {"held, another's release", 1, {0}, true},
        {"the outer one of two first", 2, {1}, true},
        {"the inner one of two", 2, {2, 1}, false},
        {"none, released", 0, {0}, false}};
    for (const auto& [name, holds, releases, kept] : rows) {
        SCOPED_TRACE(name);
        session->Changed(u"text");
        EXPECT_TRUE(Pass());
        for (int32_t i = 1; i <= holds; ++i) EXPECT_EQ(session->recovery.HoldAutoSaveGuard(), i);
        for (int32_t guard : releases) session->recovery.ReleaseAutoSaveGuard(guard);
        EndCleanly();
        EXPECT_EQ(!Names().empty(), kept);
        EXPECT_EQ(!session->Offered().empty(), kept);
        session->recovery.DeleteAutoSaveFiles(true);
    }
    session->Changed(u"text");
    const int32_t guard = session->recovery.HoldAutoSaveGuard();
    session->t.View(*session->t.Documents().Item(1)).SetAutoSaveFlag(false);
    EXPECT_EQ(session->recovery.HoldAutoSaveGuard(), 0) << "nothing has changed: nothing to guard";
    session->recovery.ReleaseAutoSaveGuard(guard);
}

TEST_F(AutoSaveTest, TheProgramGuardsItsHostCalls)
{
    auto& t = session->t;
    t.program.Main({});
    mvDocument& document = session->Changed(u"unsaved");
    t.Store(kOther, u"");
    t.Store().whileBusy = [&] {
        EXPECT_EQ(Copy("0012AB34.001"), u"\r\nunsaved") << "copied before the host gets control";
        t.View(document).txtText().SetText(u"changed while it waits");
        t.clock.Advance(5min);
        EXPECT_EQ(Copy("0012AB34.001"), u"\r\nunsaved");
        session->recovery.EndAutoSaveSession();
        EXPECT_FALSE(Names().empty()) << "the guard is held";
    };
    t.Open(kOther);
    t.Store().whileBusy = nullptr;
    t.clock.Advance(5min);
    EXPECT_EQ(Copy("0012AB34.001"), u"\r\nchanged while it waits");
    session->recovery.EndAutoSaveSession();
    EXPECT_TRUE(Names().empty()) << "and was released";
}

TEST_F(AutoSaveTest, APassRunsEveryFiveMinutesAndOnlyThen)
{
    auto& t = session->t;
    t.program.Main({});
    mvDocument& document = session->Changed(u"first");
    t.clock.Advance(5min - 1ms);
    EXPECT_EQ(Names(), Strings());
    t.clock.Advance(1ms);
    EXPECT_EQ(Copy("0012AB34.001"), u"\r\nfirst");
    t.View(document).txtText().SetText(u"second");
    t.clock.Advance(5min - 1ms);
    EXPECT_EQ(Copy("0012AB34.001"), u"\r\nfirst");
    t.clock.Advance(1ms);
    EXPECT_EQ(Copy("0012AB34.001"), u"\r\nsecond");

    t.program.EditorSettings().AutoRecover = false;
    t.clock.Advance(60min);
    t.program.EditorSettings().AutoRecover = true;
    t.View(document).txtText().SetText(u"third");
    t.clock.Advance(4min);
    EXPECT_EQ(Copy("0012AB34.001"), u"\r\nsecond") << "minutes without recovery do not count";
    t.clock.Advance(1min);
    EXPECT_EQ(Copy("0012AB34.001"), u"\r\nthird");
    t.program.Shutdown();
    EXPECT_EQ(t.clock.RunningTimers(), 0U);
}

} // namespace nib::test::auto_save_test
