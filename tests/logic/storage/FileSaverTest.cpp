#include "platform/posix/FileSaver.h"
#include "HeldProcess.h"
#include "TempFolder.h"
#include "fakes/Failure.h"
#include "platform/posix/FileName.h"

#include <acl/libacl.h>
#include <fcntl.h>
#include <sys/acl.h>
#include <sys/stat.h>
#include <sys/xattr.h>

namespace nib::test::file_saver_test {

constexpr uid_t kNobody = 65534;

struct FileSaverTest : testing::Test {
    void Save(const std::string& path, const std::string& bytes) const
    {
        FileSaver(folder / "backups/of/saves").Save(path, bytes);
    }
    Text ErrorOf(const std::string& path, const std::string& bytes) const
    {
        const Error error = test::ErrorOf([&] { Save(path, bytes); });
        EXPECT_TRUE(error.number == 0 || error.number == error_number::kStorage);
        return error.description;
    }
    size_t FilesIn(const std::string& path) const
    {
        std::error_code missing;
        return static_cast<size_t>(std::distance(std::filesystem::directory_iterator(path, missing), {}));
    }

    TempFolder folder;
};

mode_t ModeOf(const std::string& path)
{
    struct stat status {};
    stat(path.c_str(), &status);
    return status.st_mode & 07777;
}

TEST_F(FileSaverTest, ANewFileTakesTheUmaskAndLeavesNothingBeside)
{
    const std::string file = folder.Folder("d") + "/new";
    const mode_t old = umask(027);
    Save(file, "text");
    umask(old);
    EXPECT_EQ(BytesOf(file), "text");
    EXPECT_EQ(ModeOf(file), 0640U);
    EXPECT_EQ(FilesIn(folder / "d"), 1U);
}

TEST_F(FileSaverTest, AReplacedFileKeepsItsTraits)
{
    const std::string file = folder.File("d/f", "old");
    chmod(file.c_str(), 0751);
    const bool attributes = setxattr(file.c_str(), "user.origin", "host", 4, 0) == 0;
    const bool owned = geteuid() == 0 && chown(file.c_str(), 1234, 4321) == 0;
    const acl_t acl = acl_from_text("u::rwx,u:99:r--,g::r-x,m::r-x,o::--x");
    const bool listed = acl_set_file(file.c_str(), ACL_TYPE_ACCESS, acl) == 0;
    acl_free(acl);
    struct stat before {};
    stat(file.c_str(), &before);

    Save(file, "new");
    struct stat after {};
    stat(file.c_str(), &after);
    EXPECT_EQ(BytesOf(file), "new");
    EXPECT_NE(before.st_ino, after.st_ino);
    EXPECT_EQ(before.st_mode, after.st_mode);
    if (owned) {
        EXPECT_EQ(after.st_uid, 1234U);
        EXPECT_EQ(after.st_gid, 4321U);
    }
    char value[8] = {};
    if (attributes) {
        EXPECT_EQ(getxattr(file.c_str(), "user.origin", value, sizeof value), 4);
    }
    if (listed) {
        EXPECT_EQ(acl_extended_file(file.c_str()), 1);
    }
}

TEST_F(FileSaverTest, LinksAreFollowedAlsoToNothing)
{
    const std::string target = folder.File("real/f", "old");
    const std::string link = folder / "link";
    ASSERT_EQ(symlink("real/f", link.c_str()), 0);
    Save(link, "new");
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_EQ(BytesOf(target), "new");

    ASSERT_EQ(symlink("real/none", (folder / "dangling").c_str()), 0);
    Save(folder / "dangling", "made");
    EXPECT_EQ(BytesOf(folder / "real/none"), "made");

    ASSERT_EQ(symlink("loop", (folder / "loop").c_str()), 0);
    EXPECT_NE(ErrorOf(folder / "loop", "x").find(u"levels of symbolic links"), Text::npos);
}

TEST_F(FileSaverTest, AFileWithSeveralNamesIsWrittenInPlace)
{
    const std::string file = folder.File("f", "a longer old content");
    ASSERT_EQ(link(file.c_str(), (folder / "g").c_str()), 0);
    Save(file, "new");
    EXPECT_EQ(BytesOf(folder / "g"), "new");
    Save(file, "and a much longer new content");
    EXPECT_EQ(BytesOf(folder / "g"), "and a much longer new content");
    EXPECT_EQ(FilesIn(folder / "backups/of/saves"), 0U);
    EXPECT_EQ(ModeOf(folder / "backups/of/saves"), 0700U);
}

TEST_F(FileSaverTest, FaultsLeaveTheOldFileAndNameIt)
{
    const std::string file = folder.File("d/f", "old");
    EXPECT_NE(ErrorOf(folder / "none/f", "x").find(u"none/f cannot be saved: No such file or directory"), Text::npos);
    EXPECT_NE(ErrorOf(folder / "d", "x").find(u"Is a directory"), Text::npos);
    EXPECT_NE(ErrorOf("/dev/full", "x").find(u"is not a plain file"), Text::npos);
    ASSERT_EQ(link(file.c_str(), (folder / "second").c_str()), 0);
    const std::string single = folder.File("e/f", "old");

    // No room, for a replaced file and for one that is written in place.
    const std::string large(5000, 'x');
    for (const std::string& path : {file, single}) {
        const FullDisk full(1000);
        EXPECT_NE(ErrorOf(path, large).find(u"File too large"), Text::npos);
    }
    EXPECT_EQ(BytesOf(file), "old");
    EXPECT_EQ(BytesOf(single), "old");
    EXPECT_EQ(FilesIn(folder / "e"), 1U);
    EXPECT_EQ(FilesIn(folder / "backups/of/saves"), 0U);
}

TEST_F(FileSaverTest, AnOldFileThatCannotBeLookedAtIsNoNewOne)
{
    const std::string file = folder.File("d/f", "old");
    chmod(file.c_str(), 0640);
    // Who opens a file under lease waits, and the signal to its holder, which is this process, ends the waiting.
    const int lease = open(file.c_str(), O_RDWR | O_CLOEXEC);
    struct sigaction interrupts {};
    struct sigaction before {};
    interrupts.sa_handler = [](int) {};
    sigaction(SIGIO, &interrupts, &before);
    const bool held = fcntl(lease, F_SETLEASE, F_WRLCK) == 0;
    const Text error = held ? ErrorOf(file, "new") : Text();
    close(lease);
    sigaction(SIGIO, &before, nullptr);
    if (!held) GTEST_SKIP() << "the file system knows no leases";
    EXPECT_NE(error.find(u"cannot be saved: Interrupted system call"), Text::npos) << ToUtf8(error);
    EXPECT_EQ(BytesOf(file), "old");
    EXPECT_EQ(ModeOf(file), 0640U);
    EXPECT_EQ(FilesIn(folder / "d"), 1U);
}

TEST_F(FileSaverTest, RightsAreRespected)
{
    if (geteuid() != 0) GTEST_SKIP() << "needs another user";
    const std::string inReadOnlyFolder = folder.File("closed/f", "old");
    const std::string writeProtected = folder.File("open/f", "old");
    chmod(folder.Path().c_str(), 0777);
    chmod((folder / "open").c_str(), 0777);
    chmod(inReadOnlyFolder.c_str(), 0666);
    chmod(writeProtected.c_str(), 0444);
    const std::string foreign = folder.File("open/foreign", "old");
    chmod(foreign.c_str(), 0666);
    const int code = InChild([&] {
        if (setegid(kNobody) != 0 || seteuid(kNobody) != 0) return 9;
        Save(inReadOnlyFolder, "in place");
        Save(foreign, "in place");
        if (ErrorOf(writeProtected, "x").find(u"Permission denied") == Text::npos) return 1;
        return ErrorOf(folder / "closed/new", "x").find(u"Permission denied") == Text::npos ? 2 : 0;
    });
    EXPECT_EQ(code, 0);
    EXPECT_EQ(BytesOf(inReadOnlyFolder), "in place");
    EXPECT_EQ(BytesOf(foreign), "in place");
    struct stat status {};
    stat(foreign.c_str(), &status);
    EXPECT_EQ(status.st_uid, 0U);
    EXPECT_EQ(BytesOf(writeProtected), "old");
}

TEST_F(FileSaverTest, WhatAKilledSaveLeavesIsFoundAndCleared)
{
    const std::string kept = folder / "backups/of/saves";
    const std::string single = folder.File("d/f", "old");
    const std::string linked = folder.File("e/f", "old");
    ASSERT_EQ(link(linked.c_str(), (folder / "g").c_str()), 0);
    const auto unsettled = [&](const char* now) {
        folder.File("e/f", now);
        const std::vector<KeptCopy> copies = UnsettledCopies(kept);
        EXPECT_TRUE(copies.empty() || (copies.front().target == linked && BytesOf(copies.front().copy) == "old"));
        return copies.size();
    };
    for (const std::string& file : {single, linked}) {
        folder.File("e/f", "old");
        // Right before the old content goes.
        HeldProcess saving(
            [&](const HeldProcess::Tell& tell) { FileSaver(kept).Save(file, "new!", [&] { tell(0); }); });
        ClearLeftovers(kept);
        EXPECT_EQ(unsettled("torn") + FilesIn(folder / "d"), file == single ? 2U : 1U) << "its process lives";
        EXPECT_GT(FilesIn(kept), 0U);
        saving.Kill();
        if (file == linked) {
            ClearLeftovers(kept);
            EXPECT_EQ(unsettled("torn"), 1U);
            EXPECT_EQ(unsettled("new!"), 0U);
            EXPECT_EQ(unsettled("old"), 0U);
        }
        ClearLeftovers(kept);
        EXPECT_EQ(FilesIn(folder / "d"), 1U);
        EXPECT_EQ(FilesIn(kept), 0U);
    }
    HeldProcess saving([&](const HeldProcess::Tell& tell) { FileSaver(kept).Save(linked, "new!", [&] { tell(0); }); });
    saving.Kill();
    FileSaver(kept).Save(linked, "later");
    EXPECT_EQ(FilesIn(kept), 0U) << "the old content would be put back over a later one";
}

TEST_F(FileSaverTest, TheLastCheckStopsASaveThatLeavesNothing)
{
    const std::string single = folder.File("d/f", "old");
    const std::string linked = folder.File("e/f", "old");
    ASSERT_EQ(link(linked.c_str(), (folder / "g").c_str()), 0);
    for (const std::string& file : {single, linked}) {
        EXPECT_THROW(FileSaver(folder / "kept").Save(file, "new", [] { throw Error(1, u"no"); }), Error);
        EXPECT_EQ(BytesOf(file), "old");
        EXPECT_EQ(FilesIn(FolderOf(file)), 1U);
        EXPECT_EQ(FilesIn(folder / "kept"), 0U);
    }
}

TEST_F(FileSaverTest, AFileTooLargeToEditIsRefused)
{
    const std::string file = folder.File("f", "");
    ASSERT_EQ(truncate(file.c_str(), (off_t{1} << 30) + 1), 0);
    EXPECT_THROW(ReadWholeFile(file), Error);
    EXPECT_THROW(ReadWholeFile("/dev/zero"), Error);
    EXPECT_FALSE(ReadWholeFile("/proc/self/status").Bytes().empty()) << "a file that does not tell its size";
}

TEST(FileNameTest, AnyBytesComeBack)
{
    std::string pairs;
    for (int high = 0x7F; high < 0x100; ++high)
        for (int low = 0x7F; low < 0x100; ++low) pairs += {static_cast<char>(high), static_cast<char>(low)};
    for (const char* name :
         {"a\xFF\xFE.txt", "\xC3\xA9", "\xE9t\xE9", "\xED\xB2\x80", "\xF0\x9F\x98\x80\x80", "\xE2\x82",
          "\xED\xA0\xBD\xED\xB8\x80", "\xED\xA0\xBDx", "\xC0\xAFx", "\xF4\x90\x80\x80", "", pairs.c_str()}) {
        EXPECT_EQ(ToFileName(FromFileName(name)), name);
    }
    EXPECT_EQ(AbsolutePath("/a/./b/../c//d"), "/a/c/d");
}

struct Row {
    const char* there; ///< files and folders (with a slash at the end) below the prefix, between blanks
    const char* data;
    const char* settings;
};

constexpr Row kRows[] = {{"bin/", "bin", "bin"},
                         {"bin/accounts/", "bin", "bin"},
                         {"bin/ share/nibpad71/", "share/nibpad71", "share/nibpad71"},
                         {"bin/ share/nibpad71/ etc/nibpad71/", "share/nibpad71", "share/nibpad71"},
                         {"bin/ share/nibpad71/ etc/nibpad71/isolation.ini", "share/nibpad71", "etc/nibpad71"},
                         // A tree of a build below a prefix that has the program too.
                         {"bin/accounts/ share/nibpad71/ etc/nibpad71/isolation.ini", "bin", "bin"}};

TEST(ProgramPlacesTest, BesideTheProgramOrOfItsPrefix)
{
    for (const Row& row : kRows) {
        TempFolder prefix;
        for (const Text& name : Split(FromFileName(row.there), u' ')) {
            if (name.ends_with(u'/'))
                prefix.Folder(ToFileName(name));
            else
                prefix.File(ToFileName(name), "");
        }
        const Text root = FromFileName(prefix.Path()) + u"/";
        const ProgramPlaces places = ProgramPlaces::Around(root + u"bin");
        EXPECT_EQ(places.programs, root + u"bin");
        EXPECT_EQ(places.data, root + FromFileName(row.data)) << row.there;
        EXPECT_EQ(places.settings, root + FromFileName(row.settings)) << row.there;
    }
}

} // namespace nib::test::file_saver_test
