#include "platform/posix/FileLocks.h"
#include "HeldProcess.h"
#include "TempFolder.h"
#include "fakes/Failure.h"
#include "platform/posix/Process.h"

#include <optional>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace nib::test::file_locks_test {

int32_t LockError(const std::string& account, const std::string& name)
{
    return ErrorOf([&] { ItemLock(account, name, u"BP X"); }).number;
}

struct Holder : HeldProcess {
    Holder(const std::string& account, const std::string& name)
        : HeldProcess([&](const Tell& tell) {
              ItemLock lock(account, name, u"");
              tell(0);
          })
    {
    }
};

TEST(ItemLockTest, OneHolderAtATimeAndNoneWhenItDies)
{
    TempFolder account;
    Holder holder(account.Path(), "BP%%X");
    EXPECT_EQ(LockError(account.Path(), "BP%%X"), error_number::kLocked);
    EXPECT_EQ(LockError(account.Path(), "BP%%Y"), 0);
    const Text who = ItemLock::Holder(account.Path(), "BP%%X");
    EXPECT_NE(who.find(u"(process " + Decimal(holder.Id()) + u")"), Text::npos) << ToUtf8(who);
    holder.Kill();
    EXPECT_TRUE(std::filesystem::exists(account / ".locks/BP%%X"));
    EXPECT_EQ(ItemLock::Holder(account.Path(), "BP%%X"), u"");
    EXPECT_EQ(LockError(account.Path(), "BP%%X"), 0);
    EXPECT_FALSE(std::filesystem::exists(account / ".locks/BP%%X"));
}

TEST(ItemLockTest, TheSameProcessIsRefusedToo)
{
    TempFolder account;
    std::optional<ItemLock> lock(std::in_place, account.Path(), std::string(400, 'x'), u"");
    EXPECT_EQ(LockError(account.Path(), std::string(400, 'x')), error_number::kLocked);
    EXPECT_EQ(LockError(account.Path(), std::string(401, 'x')), 0);
    lock.reset();
    EXPECT_EQ(LockError(account.Path(), std::string(400, 'x')), 0);
}

TEST(ItemLockTest, ALockFileRemovedByHandIsNotRemovedAgain)
{
    TempFolder account;
    std::optional<ItemLock> first(std::in_place, account.Path(), "x", u"");
    EXPECT_EQ(ItemLock::Holder(account.Path(), "x"), u"this program");
    std::filesystem::remove(account / ".locks/x");
    const ItemLock second(account.Path(), "x", u"");
    first.reset();
    EXPECT_EQ(LockError(account.Path(), "x"), error_number::kLocked);
}

TEST(ItemLockTest, ALinkInPlaceOfTheFolderIsRefused)
{
    TempFolder account;
    account.File("other/x", "bystander");
    std::filesystem::create_symlink("other", account / ".locks");
    EXPECT_EQ(LockError(account.Path(), "x"), error_number::kNoUpdate);
    EXPECT_EQ(ItemLock::Holder(account.Path(), "x"), u"");
    EXPECT_EQ(BytesOf(account / "other/x"), "bystander");
}

TEST(ItemLockTest, AProgramThatIsRunInheritsNone)
{
    TempFolder account;
    std::optional<ItemLock> lock(std::in_place, account.Path(), "x", u"");
    ProcessRequest request;
    request.words = {"sh", "-c", "sleep 5 >/dev/null 2>&1 & echo"};
    request.folder = account.Path();
    RunProcess(request);
    lock.reset();
    EXPECT_EQ(LockError(account.Path(), "x"), 0);
}

TEST(ProcessTest, OutputIsCutAtItsLimitAndUnreadInputBlocksNobody)
{
    const std::string input(1 << 20, 'x');
    ProcessRequest request;
    request.words = {"yes"};
    request.folder = "/";
    request.input = input;
    request.outputLimit = 1000;
    const ProcessResult result = RunProcess(request);
    EXPECT_TRUE(result.cut);
    EXPECT_EQ(result.output.size(), 1000U);
}

TEST(ItemLockTest, OtherUsersShareTheFolder)
{
    if (geteuid() != 0) GTEST_SKIP() << "needs another user";
    TempFolder account;
    chmod(account.Path().c_str(), 0755);
    const auto asNobody = [&](const std::string& name) {
        return InChild([&] {
            if (setegid(65534) != 0 || seteuid(65534) != 0) return 9;
            const int32_t number = LockError(account.Path(), name);
            return number == 0 ? 0 : number == error_number::kNoUpdate ? 1 : number == error_number::kLocked ? 2 : 3;
        });
    };
    EXPECT_EQ(asNobody("x"), 1) << "cannot make the folder";
    Holder(account.Path(), "x").Kill();
    struct stat status {};
    stat((account / ".locks").c_str(), &status);
    EXPECT_EQ(status.st_mode & 07777, 01777U);
    EXPECT_EQ(asNobody("x"), 0) << "takes a dead user's lock over";
    EXPECT_EQ(LockError(account.Path(), "x"), 0);
    Holder holder(account.Path(), "x");
    EXPECT_EQ(asNobody("x"), 2);
}

TEST(ItemLockTest, NeverTwoHoldersHoweverManyTry)
{
    TempFolder account;
    std::vector<pid_t> children;
    for (int n = 0; n < 4; ++n) {
        const pid_t child = fork();
        if (child == 0) {
            for (int round = 0; round < 300; ++round) {
                ItemLock::Holder(account.Path(), "x");
                try {
                    ItemLock lock(account.Path(), "x", u"");
                    const std::string mark = account / "inside";
                    if (mkdir(mark.c_str(), 0700) != 0) _exit(1);
                    rmdir(mark.c_str());
                } catch (const Error&) {
                }
            }
            _exit(0);
        }
        children.push_back(child);
    }
    for (pid_t child : children) {
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_EQ(WEXITSTATUS(status), 0);
    }
}

bool Unused(uint32_t)
{
    return false;
}

struct OtherCopy : HeldProcess {
    explicit OtherCopy(std::vector<std::string> folders)
        : HeldProcess([&](const Tell& tell) {
              PosixSessionToken token(std::move(folders));
              tell(token.Take(Unused));
          })
    {
    }
};

size_t CountFiles(const std::string& folder)
{
    std::error_code none;
    size_t count = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder, none)) ++count;
    return count;
}

TEST(SessionTokenTest, AliveUntilItsProcessDies)
{
    TempFolder folder;
    const std::string place = folder / "made/when/needed";
    OtherCopy other({place});
    PosixSessionToken token({place});
    EXPECT_NE(other.Number(), 0U);
    EXPECT_TRUE(token.IsAlive(other.Number()));
    EXPECT_FALSE(token.IsAlive(other.Number() + 1));
    const uint32_t own = token.Take(Unused);
    EXPECT_NE(own, other.Number());
    EXPECT_TRUE(token.IsAlive(own));
    other.Kill();
    EXPECT_FALSE(token.IsAlive(other.Number()));
    EXPECT_EQ(CountFiles(place), 2U) << "the dead one's file is still there";
    OtherCopy third({place});
    EXPECT_EQ(CountFiles(place), 2U) << "and goes with the next start";
    EXPECT_TRUE(token.IsAlive(own));
}

TEST(SessionTokenTest, ACleanEndLeavesNoFile)
{
    TempFolder folder;
    uint32_t number = 0;
    {
        PosixSessionToken token({folder / "a", folder / "b"});
        number = token.Take(Unused);
        EXPECT_EQ(CountFiles(folder / "a") + CountFiles(folder / "b"), 2U);
    }
    EXPECT_EQ(CountFiles(folder / "a") + CountFiles(folder / "b"), 0U);
    EXPECT_FALSE(PosixSessionToken({folder / "a", folder / "b"}).IsAlive(number));
}

TEST(SessionTokenTest, TakesNoNumberThatIsInUseOrHasFiles)
{
    TempFolder folder;
    std::vector<uint32_t> picks{3, 2, 1, 0};
    const auto pick = [&] {
        const uint32_t number = picks.back();
        if (picks.size() > 1) picks.pop_back();
        return number;
    };
    std::filesystem::create_directories(folder / "locks");
    const int held = open((folder / "locks/00000001.lock").c_str(), O_RDWR | O_CREAT, 0600);
    ASSERT_EQ(flock(held, LOCK_EX), 0);
    PosixSessionToken token({folder / "locks"}, pick);
    EXPECT_EQ(token.Take([](uint32_t number) { return number == 2; }), 3U);
    PosixSessionToken unlucky({folder / "locks"}, [] { return 3U; });
    EXPECT_EQ(unlucky.Take(Unused), 0U);
    EXPECT_TRUE(token.IsAlive(3));
    close(held);
}

TEST(SessionTokenTest, OneFolderThatHoldsLocksIsEnough)
{
    TempFolder folder;
    folder.File("blocked", "");
    OtherCopy other({folder / "blocked/a", folder / "good"});
    PosixSessionToken sameFolders({folder / "blocked/a", folder / "good"});
    PosixSessionToken fewerFolders({folder / "good"});
    EXPECT_TRUE(sameFolders.IsAlive(other.Number()));
    EXPECT_TRUE(fewerFolders.IsAlive(other.Number()));
    EXPECT_EQ(PosixSessionToken({folder / "blocked/a"}).Take(Unused), 0U);
}

} // namespace nib::test::file_locks_test
