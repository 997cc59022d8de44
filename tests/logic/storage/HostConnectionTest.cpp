#include "HostFixture.h"

#include <chrono>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>

namespace nib::test::host_connection_test {

class HostConnectionTest : public HostFixture {};

TEST_F(HostConnectionTest, AccountsOfTheDefaultConnectionAreKnown)
{
    const std::vector<KnownHost> hosts = connection->Hosts();
    ASSERT_EQ(hosts.size(), 3U);
    EXPECT_EQ(hosts[0].name, u"box");
    EXPECT_EQ(hosts[0].path, u"mvdb:*");
    EXPECT_EQ(hosts[0].accounts, std::vector<Text>{u"DEMO"});
    EXPECT_EQ(hosts[2].path, u"mvdb:west");
    EXPECT_TRUE(hosts[2].accounts.empty());
}

TEST_F(HostConnectionTest, AnAccountItemIsReadAndWrittenAsItStood)
{
    auto item = Open(u"mvdb:*/DEMO/BP/INVOICE");
    EXPECT_TRUE(item->IsItem());
    EXPECT_TRUE(item->Exists());
    EXPECT_FALSE(item->ReadOnly());
    EXPECT_EQ(item->Path(), u"mvdb:*/DEMO/BP/INVOICE");
    EXPECT_EQ(item->DisplayPath(), u"DEMO BP INVOICE");
    EXPECT_EQ(item->ItemName(), u"BP INVOICE");
    EXPECT_EQ(item->HostName(), u"box");
    EXPECT_EQ(item->ReadItem(0, 0, 0), u"A=1\r\nPRINT A");
    item->WriteItem(0, 0, 0, u"B=2\r\nPRINT B");
    EXPECT_EQ(BytesOf(folder / "accounts/DEMO/BP/INVOICE"), "B=2\nPRINT B\n");
}

TEST_F(HostConnectionTest, AnItemAnswersWhileItIsWrittenElsewhere)
{
    auto item = Open(u"mvdb:*/DEMO/BP/INVOICE");
    item->ReadWhole();
    const Text before = item->Version();
    const auto elsewhere = [&](const std::function<void()>& work) {
        EXPECT_EQ(item->State(), StoredState::Same);
        std::thread(work).join();
        EXPECT_EQ(item->Version(), before);
    };
    item->WriteWhole(LinesIn(u"new"), elsewhere);
    EXPECT_NE(item->Version(), before);
    EXPECT_EQ(item->State(), StoredState::Same);
    folder.File("accounts/DEMO/BP/INVOICE", "of another program");
    const auto here = [](const std::function<void()>& work) { work(); };
    EXPECT_NE(ErrorOf([&] { item->WriteWhole(LinesIn(u"mine"), here); }).number, 0);
    item->WriteWhole(LinesIn(u"mine"), here); // it has been told
}

TEST_F(HostConnectionTest, ALocalFileIsReadAndWrittenAsItStood)
{
    const std::string name = folder.File("a.txt", "x\r\ny");
    auto item = Open(FromUtf8(name));
    EXPECT_EQ(item->Path(), connection->ComposeFilePath(FromUtf8(name)));
    EXPECT_EQ(item->ReadItem(0, 0, 0), u"x\r\ny");
    EXPECT_EQ(item->ItemID(), u"a.txt");
    EXPECT_EQ(item->FileName(), FromUtf8(folder.Path()));
    EXPECT_EQ(connection->ComposeHostPath({item->Provider(), {}, {}, item->Folder(), u"b.txt"}),
              connection->ComposeFilePath(FromUtf8(folder / "b.txt")))
        << "what a program in that file names lies beside it";
    EXPECT_EQ(item->DisplayPath(), FromUtf8(name));
    EXPECT_EQ(item->Session(), nullptr);
    item->WriteItem(0, 0, 0, u"x\r\nz");
    EXPECT_EQ(BytesOf(name), "x\r\nz");
    EXPECT_FALSE(Open(connection->ComposeFilePath(FromUtf8(folder.Path())))->IsItem());
}

TEST_F(HostConnectionTest, WhatIsMissingIsNamed)
{
    const struct {
        TextView path;
        int32_t number;
        TextView text;
    } rows[] = {
        {u"mvdb:*/DEMO2/BP/X", error_number::kPathNotFound, u"Account DEMO2 does not exist on box."},
        {u"mvdb:*/DEMO/BPX/X", error_number::kPathNotFound, u"File BPX does not exist in account DEMO."},
        {u"mvdb:*/%2E%2E/accounts/X", error_number::kPathNotFound, u"Account .. does not exist on box."},
        {u"mvdb:*/DEMO/%2E%2E/DEMO", error_number::kPathNotFound, u"File .. does not exist in account DEMO."},
        {u"mvdb:none/DEMO", error_number::kPathNotFound, u"The host connection \"none\" is not set up in hosts.conf."},
        {u"mvdb:odd/X", error_number::kStorage, u"The host connection \"Odd\" is of the unknown kind \"x\"."},
        {u"nowhere", error_number::kBadFileName, u"\"nowhere\" is not the path of an item or a file."}};
    for (const auto& row : rows) {
        const Error error = ErrorOf([&] { Open(row.path); });
        EXPECT_EQ(error.number, row.number);
        EXPECT_EQ(error.description, row.text) << ToUtf8(error.description);
    }
    EXPECT_EQ(ErrorOf([&] { Open(u"mvdb:*/DEMO/BP/" + Text(256, u'x')); }).number, error_number::kBadFileName);
}

TEST_F(HostConnectionTest, AnyAccountIsTheUsualOne)
{
    folder.File("accounts/LIVE/BP/X", "live\n");
    auto item = Open(u"mvdb:*/*/BP/INVOICE", false, true);
    EXPECT_EQ(item->Path(), u"mvdb:*/DEMO/BP/INVOICE") << "as a recent entry is opened by a session without an account";
    EXPECT_EQ(item->ReadItem(0, 0, 0), u"A=1\r\nPRINT A");
    EXPECT_EQ(item->DisplayPath(), u"BP INVOICE") << "a recent entry is not that of one account";
    EXPECT_EQ(ErrorOf([&] { Open(u"mvdb:*/DEMO/BP/INVOICE", false, true); }).number, error_number::kLocked);
    EXPECT_FALSE(Open(u"mvdb:*/*")->IsItem());

    for (TextView account : {u"", u"*"}) {
        const Text path = u"mvdb:west/" + Text(account) + u"/BP/X";
        EXPECT_TRUE(ErrorOf([&] { Open(path); }).description.starts_with(u"No account is named on")) << ToUtf8(path);
    }
    Open(u"mvdb:west/LIVE");
    EXPECT_EQ(Open(u"mvdb:west/*/BP/X")->Path(), u"mvdb:west/LIVE/BP/X") << "the one that was used last";
}

TEST_F(HostConnectionTest, HostileIdsStayInTheirFile)
{
    for (const Text& id : {Text(u".."), Text(u"../X"), Text(u"/etc/passwd"), Text(u"."), Text(u"50%"), Text(u".x"),
                           Text(u"a\0b", 3), Text(u"é 😀")}) {
        const ItemPlace place{u"mvdb", u"*", u"DEMO", u"BP", id};
        auto item = Open(connection->ComposeHostPath(place));
        item->WriteItem(0, 0, 0, u"text");
        EXPECT_EQ(Open(connection->ComposeHostPath(place))->ItemID(), id);
    }
    EXPECT_EQ(browser.Children(u"mvdb:*/DEMO/BP").size(), 9U);
    EXPECT_EQ(browser.Children(u"mvdb:*/DEMO").size(), 2U);
}

TEST_F(HostConnectionTest, AChangeByOthersIsToldOnce)
{
    const std::string file = folder.File("f", "one");
    auto item = Open(FromUtf8(file));
    item->ReadItem(0, 0, 0);
    item->WriteItem(0, 0, 0, u"two");
    item->WriteItem(0, 0, 0, u"three");
    folder.File("f", "theirs, longer");
    const Error error = ErrorOf([&] { item->WriteItem(0, 0, 0, u"mine"); });
    EXPECT_EQ(error.number, error_number::kStorage);
    EXPECT_NE(error.description.find(u"was changed by another program since it was opened."), Text::npos);
    EXPECT_EQ(BytesOf(file), "theirs, longer");
    EXPECT_EQ(item->State(), StoredState::Changed) << "a user can still be asked";
    folder.File("f", "theirs once more");
    EXPECT_EQ(ErrorOf([&] { item->WriteItem(0, 0, 0, u"mine"); }).number, error_number::kStorage);
    item->WriteItem(0, 0, 0, u"mine");
    EXPECT_EQ(BytesOf(file), "mine");
    EXPECT_EQ(item->State(), StoredState::Same);
    folder.File("f", "theirs once more");
    EXPECT_EQ(ErrorOf([&] { item->WriteItem(0, 0, 0, u"mine"); }).number, error_number::kStorage);
    item->WriteItem(0, 0, 0, u"mine");

    std::filesystem::remove(file);
    EXPECT_NE(ErrorOf([&] { item->WriteItem(0, 0, 0, u"again"); }).description.find(u"was deleted"), Text::npos);
    item->WriteItem(0, 0, 0, u"again");
    EXPECT_EQ(BytesOf(file), "again");

    auto fresh = Open(FromUtf8(folder / "new"));
    EXPECT_FALSE(fresh->Exists());
    folder.File("new", "theirs");
    EXPECT_NE(ErrorOf([&] { fresh->WriteItem(0, 0, 0, u"mine"); }).description.find(u"was created"), Text::npos);

    auto over = Open(FromUtf8(folder.File("over", "never read")));
    EXPECT_TRUE(over->Exists());
    over->WriteItem(0, 0, 0, u"mine");
    EXPECT_EQ(BytesOf(folder / "over"), "mine") << "a Save As was confirmed";

    std::filesystem::create_symlink("loop", folder / "loop");
    EXPECT_TRUE(Open(FromUtf8(folder / "loop"))->Exists()) << "it cannot be looked at, which reading tells";

    auto item2 = Open(FromUtf8(folder.File("d/f", "x")));
    item2->ReadItem(0, 0, 0);
    std::filesystem::remove_all(folder / "d");
    EXPECT_NE(ErrorOf([&] { item2->WriteItem(0, 0, 0, u"y"); }).description.find(u"was deleted"), Text::npos);
    EXPECT_NE(ErrorOf([&] { item2->WriteItem(0, 0, 0, u"y"); }).description.find(u"No such file"), Text::npos);
}

TEST_F(HostConnectionTest, WhatBecameOfAFileIsToldByItsBytesInTheEnd)
{
    const std::string file = folder.File("f", "one");
    const auto time = std::filesystem::last_write_time(file);
    const auto put = [&](const char* bytes) {
        folder.File("f", bytes);
        std::filesystem::last_write_time(file, time);
    };
    const struct {
        const char* what;
        std::function<void()> happens;
        StoredState state;
    } rows[] = {
        {"nothing", [] {}, StoredState::Same},
        {"the mode", [&] { chmod(file.c_str(), 0600); }, StoredState::Same},
        {"the time", [&] { std::filesystem::last_write_time(file, time - std::chrono::hours(1)); }, StoredState::Same},
        {"the same again", [&] { put("one"); }, StoredState::Same},
        {"as many bytes, at the old time", [&] { put("two"); }, StoredState::Changed},
        {"more bytes", [&] { put("three"); }, StoredState::Changed},
        {"its end", [&] { std::filesystem::remove(file); }, StoredState::Gone},
        {"a folder in place of its folder",
         [&] {
             std::filesystem::remove_all(folder.Path());
             std::ofstream(folder.Path()) << "x";
         },
         StoredState::Unknown}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        put("one");
        auto item = Open(FromUtf8(file));
        item->ReadItem(0, 0, 0);
        EXPECT_EQ(item->State(), StoredState::Same);
        auto told = Open(FromUtf8(file));
        told->ReadItem(0, 0, 0);
        row.happens();
        EXPECT_EQ(OrDefault([&] { return told->AcceptVersion(item->Version()); }, false),
                  row.state == StoredState::Same);
        told->AcceptState();
        EXPECT_EQ(told->State() == StoredState::Same, row.state != StoredState::Unknown);
        EXPECT_EQ(item->State(), row.state);
        EXPECT_EQ(ErrorOf([&] { item->WriteItem(0, 0, 0, u"mine"); }).number != 0, row.state != StoredState::Same);
    }
}

TEST_F(HostConnectionTest, AChangeWhileASaveIsUnderWayIsToldToo)
{
    static int lease = -1;
    const std::string file = folder.File("f", "old");
    usleep(60000); // else its bytes would be looked at again, which a lease prevents
    auto item = Open(FromUtf8(file));
    item->ReadItem(0, 0, 0);
    // The holder of a lease is told when another opens the file, which here is the save.
    lease = open(file.c_str(), O_RDWR | O_CLOEXEC);
    struct sigaction changes {};
    struct sigaction before {};
    changes.sa_handler = [](int) {
        EXPECT_EQ(pwrite(lease, "new", 3, 0), 3);
        fcntl(lease, F_SETLEASE, F_UNLCK);
    };
    changes.sa_flags = SA_RESTART;
    sigaction(SIGIO, &changes, &before);
    const bool held = fcntl(lease, F_SETLEASE, F_WRLCK) == 0;
    const Text told = held ? ErrorOf([&] { item->WriteItem(0, 0, 0, u"mine"); }).description : Text();
    sigaction(SIGIO, &before, nullptr);
    close(lease);
    if (!held) GTEST_SKIP() << "the file system knows no leases";
    EXPECT_NE(told.find(u"was changed by another program"), Text::npos) << ToUtf8(told);
    EXPECT_EQ(BytesOf(file), "new");
    item->WriteItem(0, 0, 0, u"mine");
    EXPECT_EQ(BytesOf(file), "mine");
}

TEST_F(HostConnectionTest, ASaveThatFailsIsNoChangeByAnother)
{
    const std::string file = folder.File("f", "old");
    std::filesystem::create_hard_link(file, folder / "g");
    auto item = Open(FromUtf8(file));
    usleep(60000); // else a look at its bytes would tell
    item->ReadItem(0, 0, 0);
    const Text version = item->Version();
    {
        const FullDisk full(1000);
        EXPECT_NE(ErrorOf([&] { item->WriteItem(0, 0, 0, Text(5000, u'x')); }).number, 0);
    }
    EXPECT_EQ(item->Version(), version) << "what is recovered from now on belongs to the old text";
    item->WriteItem(0, 0, 0, u"new");
    EXPECT_EQ(BytesOf(file), "new");
}

TEST_F(HostConnectionTest, ACheckThatFailsIsAFailedSaveAndForgetsNothing)
{
    const std::string home = folder.Path();
    for (bool changed : {false, true}) {
        auto item = Open(u"file:" + FromUtf8(folder.File("d/f", "old")));
        item->ReadItem(0, 0, 0);
        if (changed) folder.File("d/f", "another's");
        std::filesystem::rename(home + "/d", home + "/away");
        folder.File("d", "no folder");
        const Error error = ErrorOf([&] { item->WriteItem(0, 0, 0, u"new"); });
        EXPECT_NE(error.description.find(u"cannot be saved: Not a directory"), Text::npos);
        std::filesystem::remove(home + "/d");
        std::filesystem::rename(home + "/away", home + "/d");
        const Text told = ErrorOf([&] { item->WriteItem(0, 0, 0, u"new"); }).description;
        EXPECT_EQ(told.find(u"was changed by another program") != Text::npos, changed) << ToUtf8(told);
        EXPECT_EQ(BytesOf(home + "/d/f"), changed ? "another's" : "new");
    }
}

TEST_F(HostConnectionTest, LocksAreTakenAtOpenAndFreedWithTheItem)
{
    const Text path = u"mvdb:*/DEMO/BP/INVOICE";
    auto item = Open(path, false, true);
    EXPECT_EQ(ErrorOf([&] { Open(path, false, true); }).number, error_number::kLocked);
    EXPECT_NE(browser.LockHolder(path), u"");
    auto other = Open(path, true, true);
    EXPECT_TRUE(other->ReadOnly());
    EXPECT_EQ(ErrorOf([&] { other->LockItem(true); }).number, error_number::kLocked);
    item->LockItem(false);
    other->LockItem(true);
    other->LockItem(true);
    other.reset();
    EXPECT_EQ(browser.LockHolder(path), u"");
    item->WriteItem(0, 0, 0, u"x");
    EXPECT_EQ(browser.Children(u"mvdb:*/DEMO").size(), 2U) << "the locks' folder is no file";
}

TEST_F(HostConnectionTest, ThePickersAnswers)
{
    const Text path = u"mvdb:*/DEMO/BP/INVOICE";
    SelectRequest open;
    open.mode = u"Open";
    EXPECT_EQ(connection->SelectItem(open, nullptr).item, nullptr);
    EXPECT_EQ(picker.start, u"mvdb:*/DEMO");

    picker.answer = PickerAnswer{{path}, false};
    auto holder = connection->SelectItem(open, nullptr).item;
    ASSERT_TRUE(holder);
    holder->LockItem(true);
    picker.answer = PickerAnswer{{path, u"mvdb:*/NONE/BP/X", u"mvdb:*/DEMO/BP/Y"}, true};
    const auto several = connection->SelectItems(open, holder.get());
    EXPECT_EQ(picker.start, path);
    ASSERT_EQ(several.size(), 2U) << "no lock, so no question";
    EXPECT_TRUE(several[0].readOnly && several[0].item->ReadOnly());
    EXPECT_EQ(several[1].item->ItemID(), u"Y");
    EXPECT_EQ(boxes.shown, std::vector<Text>{u"Account NONE does not exist on box."});
}

TEST_F(HostConnectionTest, AHostsFileThatCannotBeReadLeavesTheDefaultConnection)
{
    setenv("XDG_CONFIG_HOME", folder.Path().c_str(), 1);
    const std::string file = folder.Folder("Orlin") + "/hosts.conf";
    const std::function<void()> states[] = {
        [] {},
        [&] { folder.Folder("Orlin/hosts.conf"); },
        [&] { mkfifo(file.c_str(), 0600); },
        [&] { std::filesystem::create_symlink("/dev/zero", file); },
        [&] { std::filesystem::create_symlink("hosts.conf", file); },
        [&] { std::filesystem::resize_file(folder.File("Orlin/hosts.conf", "[far]\n"), 1U << 31); }};
    for (const auto& state : states) {
        state();
        const HostConfig config = HostConfig::FromEnvironment();
        EXPECT_EQ(config.hosts.size(), 1U);
        EXPECT_EQ(config.fault.empty(), &state == states) << ToUtf8(config.fault);
        std::filesystem::remove(file);
    }
    folder.File("Orlin/hosts.conf", "[*]\nroot=here\n[b]\nroot=../c\n[d]\nroot=\n");
    const HostConfig config = HostConfig::FromEnvironment();
    EXPECT_EQ(config.hosts[0].root, folder / "Orlin/here") << "not of the folder that the program works in";
    EXPECT_EQ(config.hosts[1].root, folder / "c");
    EXPECT_TRUE(config.hosts[2].root.ends_with("/Orlin/Nib/Accounts"));
    unsetenv("XDG_CONFIG_HOME");
}

TEST_F(HostConnectionTest, ManySectionsAreReadInATimeThatGrowsWithTheirNumber)
{
    Text text;
    for (int32_t n = 0; n < 100000; ++n) text += u"[h" + Decimal(n) + u"]\nname=x\n";
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(HostConfig::Parse(text, folder.Path()).hosts.size(), 100001U);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

TEST_F(HostConnectionTest, TheCharsetOfAConnection)
{
    folder.File("accounts/DEMO/BP/W", "\x80\n");
    EXPECT_EQ(Open(u"mvdb:west/DEMO/BP/W")->ReadItem(0, 0, 0), u"€");
    EXPECT_EQ(Open(u"mvdb:*/DEMO/BP/W")->ReadItem(0, 0, 0), Text(1, u'\x80'));
}

TEST_F(HostConnectionTest, ReadOnlyIsWhatTheUserMayNotWrite)
{
    if (geteuid() != 0) GTEST_SKIP() << "needs another user";
    chmod(folder.Path().c_str(), 0755);
    chmod((folder / "accounts/DEMO/BP/INVOICE").c_str(), 0444);
    ASSERT_EQ(seteuid(65534), 0);
    const bool existing = Open(u"mvdb:*/DEMO/BP/INVOICE")->ReadOnly();
    const bool fresh = Open(u"mvdb:*/DEMO/BP/NEW")->ReadOnly();
    const int32_t locked = ErrorOf([&] { Open(u"mvdb:*/DEMO/BP/NEW", false, true); }).number;
    ASSERT_EQ(seteuid(0), 0);
    EXPECT_TRUE(existing);
    EXPECT_TRUE(fresh);
    EXPECT_EQ(locked, error_number::kNoUpdate);
}

TEST_F(HostConnectionTest, TheSampleAccountComesWholeAndOnce)
{
    const Text source = FromUtf8(folder / "accounts/DEMO");
    const HostConfig config = HostConfig::Parse(u"", folder / "data");
    const std::string root = "data/Orlin/Nib/Accounts";
    chmod((folder / "accounts/DEMO/BP").c_str(), 0555);
    EXPECT_FALSE(InstallSampleAccount(source, HostConfig::Parse(u"[*]\nroot=/srv", folder / "data"))) << "not ours";
    EXPECT_TRUE(InstallSampleAccount(source, config));
    EXPECT_EQ(BytesOf(folder / (root + "/DEMO/BP/INVOICE")), "A=1\nPRINT A\n");
    EXPECT_EQ(access((folder / (root + "/DEMO/BP")).c_str(), W_OK), 0);
    folder.File(root + "/DEMO/BP/INVOICE", "mine");
    EXPECT_FALSE(InstallSampleAccount(source, config));
    EXPECT_EQ(BytesOf(folder / (root + "/DEMO/BP/INVOICE")), "mine");
    EXPECT_THROW(InstallSampleAccount(u"/none/OTHER", config), Error);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder / root), {}), 1);
}

} // namespace nib::test::host_connection_test
