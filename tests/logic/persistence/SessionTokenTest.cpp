// The number of a running copy: nobody else's while it runs, free again however it ends.

#include "logic/storage/HeldProcess.h"
#include "logic/storage/TempFolder.h"
#include "platform/posix/FileLocks.h"

#include <fcntl.h>
#include <sys/file.h>

namespace nib::test {
namespace {

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

} // namespace
} // namespace nib::test
