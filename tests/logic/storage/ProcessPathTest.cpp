#include "TempFolder.h"
#include "platform/posix/Process.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace nib::test {

namespace {

class ProcessPathTest : public ::testing::Test {
protected:
    void SetUp() override { before_ = getenv("PATH"); }
    void TearDown() override { setenv("PATH", before_.c_str(), 1); }

    std::string ProgramThatSays(const std::string& folder) const
    {
        const std::string file = folder_.File(folder + "/say", "#!/bin/sh\necho " + folder + "\n");
        chmod(file.c_str(), 0700);
        return folder_ / folder;
    }
    std::string Said(const std::string& firstInPath) const
    {
        ProcessRequest request;
        request.words = {"say"};
        request.folder = folder_.Path();
        request.firstInPath = firstInPath;
        return RunProcess(request).output;
    }

    TempFolder folder_;

private:
    std::string before_;
};

} // namespace

TEST_F(ProcessPathTest, AFolderComesFirstUnlessThePathHasItAlready)
{
    const std::string own = ProgramThatSays("own");
    const std::string system = ProgramThatSays("system");
    setenv("PATH", (own + ":/usr/bin:/bin").c_str(), 1);
    EXPECT_EQ(Said(system), "system\n");
    EXPECT_EQ(Said(""), "own\n");
    // A user may put programs of their own before those of the system, the editor's among them.
    setenv("PATH", (own + ":/usr/bin:" + system + ":/bin").c_str(), 1);
    EXPECT_EQ(Said(system), "own\n");
}

} // namespace nib::test
