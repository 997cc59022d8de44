#include "HostFixture.h"
#include "fakes/MemorySettings.h"
#include "hosts/accounts/VerbTrust.h"

#include <chrono>

#include <sys/stat.h>

namespace nib::test::account_session_test {

using namespace std::string_literals;
using namespace std::chrono_literals;

/// Stops the command after a time.
struct StoppingNotice final : WaitNotice {
    explicit StoppingNotice(std::chrono::milliseconds patienceOfUser) : patience(patienceOfUser) {}
    bool Started(TextView command) override
    {
        if (busy) return false;
        log.emplace_back(command);
        return true;
    }
    bool GoOn(std::chrono::milliseconds elapsed) override
    {
        ++asked;
        return elapsed < patience;
    }
    void Ended() override { log.emplace_back(u"ended"); }

    std::chrono::milliseconds patience;
    std::vector<Text> log;
    int asked = 0;
    bool busy = false;
};

struct AccountSessionTest : HostFixture {
    void Verb(const std::string& name, const std::string& program, const std::string& seconds = "")
    {
        folder.File("accounts/DEMO/VOC/" + name, "V verb\n" + program + "\n" + seconds + "\n");
    }
    Text Run(TextView command, TextView input = u"")
    {
        return Open(u"mvdb:*/DEMO")->Session()->Execute(command, input, 0);
    }
    /// The process whose number stands in a file of the account.
    bool HasGone(const std::string& name)
    {
        const std::string child = BytesOf(folder / ("accounts/DEMO/" + name));
        if (child.empty()) return false;
        for (int tries = 0; tries < 100; ++tries) {
            const std::string state = BytesOf("/proc/" + std::to_string(std::stoi(child)) + "/stat");
            if (state.empty() || state.find(") Z") != std::string::npos) return true;
            usleep(10000);
        }
        return false;
    }
};

TEST_F(AccountSessionTest, VerbsRunProgramsInTheAccount)
{
    Verb("WHERE", "pwd");
    Verb("SHOW", "printf \"%s|\" 'a b'");
    Verb("lower", "echo low");
    Verb("BOTH", "sh -c 'echo one; echo two >&2; printf three'");
    Verb("CAT", "cat");
    Verb("DIE", "sh -c 'kill -SEGV $$'");
    Verb("RAW", "printf 'a\\0b\\377\\351'");
    const std::pair<TextView, Text> rows[] = {{u"WHERE", FromUtf8(folder / "accounts/DEMO")},
                                              {u"where", FromUtf8(folder / "accounts/DEMO")},
                                              {u"SHOW x 'y z' \"\" $(id) ;", u"a b|x|y z||$(id)|;|"},
                                              {u"lower", u"low"},
                                              {u"BOTH", u"one\r\ntwo\r\nthree"},
                                              {u"RAW", u"a b\xF8FFé"},
                                              {u"DIE", u"sh was ended by signal 11 (Segmentation fault)."}};
    for (const auto& [command, output] : rows) EXPECT_EQ(Run(command), output) << ToUtf8(command);
    EXPECT_EQ(Run(u"CAT", u"in é\nput"), u"in é\r\nput");
    EXPECT_EQ(Open(u"mvdb:*/DEMO")->Session()->AccountName(), u"DEMO");
}

TEST_F(AccountSessionTest, TellsOfWholeLinesAsTheyCome)
{
    Verb("SLOW", "sh -c 'printf \"one\\ntw\"; while ! test -e go; do sleep 0.01; done; printf \"o \\377\\nthree\"'");
    std::vector<Text> told;
    const Text all = Open(u"mvdb:*/DEMO")->Session()->ExecuteTelling(u"SLOW", [&](TextView lines) {
        told.emplace_back(lines);
        folder.File("accounts/DEMO/go", "");
    });
    EXPECT_EQ(told, (std::vector<Text>{u"one", u"two \xF8FF"}));
    EXPECT_EQ(all, u"one\r\ntwo \xF8FF\r\nthree");
}

TEST_F(AccountSessionTest, WhatCannotRunSaysWhy)
{
    Verb("GONE", "no-such-program-here");
    Verb("PLAIN", "./plain");
    Verb("EMPTY", "");
    folder.File("accounts/DEMO/VOC/BP", "F\nBP\n");
    folder.File("accounts/DEMO/plain", "text");
    const struct {
        TextView command;
        Text text;
    } rows[] = {{u"basic BP", u"basic is not in the VOC of account DEMO."},
                {u"BP", u"BP is not in the VOC of account DEMO."},
                {u" ", u"There is no command to run."},
                {u"GONE", u"no-such-program-here cannot be run: No such file or directory"},
                {u"PLAIN", u"./plain cannot be run: Permission denied"},
                {u"EMPTY", u"The verb EMPTY of account DEMO names no program."}};
    for (const auto& row : rows) EXPECT_EQ(ErrorOf([&] { Run(row.command); }).description, row.text);
    chmod((folder / "accounts/DEMO/plain").c_str(), 0755);
    EXPECT_EQ(ErrorOf([&] { Run(u"PLAIN"); }).description, u"./plain cannot be run: Exec format error");
}

TEST_F(AccountSessionTest, TheProgramFolderComesFirstUnlessThePathHasItAlready)
{
    const std::string before = getenv("PATH");
    const std::string ours = folder.File("programs/ls", "#!/bin/sh\necho ours\n");
    const std::string own = folder.File("own/ls", "#!/bin/sh\necho own\n");
    for (const std::string& program : {ours, own}) chmod(program.c_str(), 0755);
    Verb("LS", "ls");
    setenv("PATH", (folder / "own" + ":/usr/bin:/bin").c_str(), 1);
    EXPECT_EQ(Run(u"LS"), u"ours");
    // A user may put programs of their own before those of the system, the editor's among them.
    setenv("PATH", (folder / "own" + ":/usr/bin:" + folder / "programs" + ":/bin").c_str(), 1);
    EXPECT_EQ(Run(u"LS"), u"own");
    setenv("PATH", before.c_str(), 1);
}

TEST_F(AccountSessionTest, AVerbThatOthersMayChangeIsAskedForOnce)
{
    MemorySettings settings;
    VerbTrust trust(settings, boxes);
    const auto mayRun = [&](TextView account, TextView line) { return trust.MayRun(account, line); };
    connection = std::make_unique<HostConnection>(Config(), picker, boxes, AccountLinks({{}, nullptr, mayRun}));
    const std::string account = folder / "accounts/DEMO";
    for (const std::string& path : {account + "/VOC/SAY", account + "/VOC", account}) {
        SCOPED_TRACE(path);
        settings.values.clear();
        boxes.shown.clear();
        Verb("SAY", "echo one");
        EXPECT_EQ(Run(u"SAY"), u"one");
        EXPECT_TRUE(boxes.shown.empty());
        const auto before = std::filesystem::status(path).permissions();
        std::filesystem::permissions(path, std::filesystem::perms::group_write, std::filesystem::perm_options::add);
        boxes.answer = message_box::kAnswerNo;
        EXPECT_EQ(ErrorOf([&] { Run(u"SAY"); }).description, u"SAY was not run.");
        boxes.answer = message_box::kAnswerYes;
        EXPECT_EQ(Run(u"SAY"), u"one");
        EXPECT_EQ(Run(u"SAY two"), u"one two");
        ASSERT_EQ(boxes.shown.size(), 2U);
        EXPECT_TRUE(boxes.shown[1].ends_with(u"Run `echo one`?"));
        Verb("SAY", "echo other");
        EXPECT_EQ(Run(u"SAY"), u"other");
        EXPECT_EQ(boxes.shown.size(), 3U) << "another command line";
        Verb("SAY", "echo odd\x1E");
        Run(u"SAY");
        Run(u"SAY");
        EXPECT_EQ(boxes.shown.size(), 5U) << "what could pass for an answer to another question is never kept";
        std::filesystem::permissions(path, before);
    }
}

TEST_F(AccountSessionTest, ATimeLimitEndsTheWholeGroup)
{
    Verb("SLOW", "sh -c 'sleep 60 & echo $! > child; sleep 60'", "1");
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(ErrorOf([&] { Run(u"SLOW"); }).description, u"SLOW was stopped: it did not end within 1 seconds.");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
    EXPECT_TRUE(HasGone("child"));

    Verb("LEAVES", "sh -c 'sleep 30 & echo done'", "60");
    const auto again = std::chrono::steady_clock::now();
    EXPECT_EQ(Run(u"LEAVES"), u"done");
    EXPECT_LT(std::chrono::steady_clock::now() - again, std::chrono::seconds(20))
        << "nobody waits for who stays behind";
}

TEST_F(AccountSessionTest, WhatIsStoppedTakesItsChildrenAlong)
{
    // One child in the group, one in a session of its own, one that has lost its parent as well.
    Verb("FORK", "sh -c 'echo begun; sleep 60 & echo $! > a; setsid sleep 60 & echo $! > b; "
                 "(setsid sh -c \"echo \\$\\$ > c; exec sleep 60\" &); sleep 60'");
    StoppingNotice notice{500ms};
    connection = std::make_unique<HostConnection>(Config(), picker, boxes, AccountLinks({u"", &notice}));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(Run(u"FORK x"), u"begun\r\nFORK was stopped.");
    EXPECT_LT(std::chrono::steady_clock::now() - start, 30s);
    EXPECT_EQ(notice.log, (std::vector<Text>{u"FORK x", u"ended"}));
    EXPECT_GE(notice.asked, 4) << "about every 50 ms";
    EXPECT_LE(notice.asked, 11);
    for (const char* name : {"a", "b", "c"}) EXPECT_TRUE(HasGone(name)) << name;
}

TEST_F(AccountSessionTest, TheNoticeIsToldOfEveryEnd)
{
    Verb("OK", "echo fine");
    Verb("GONE", "no-such-program-here");
    Verb("FLOOD", "sh -c 'while :; do echo xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx; done'");
    StoppingNotice notice{300ms};
    connection = std::make_unique<HostConnection>(Config(), picker, boxes, AccountLinks({u"", &notice}));
    EXPECT_EQ(Run(u"OK"), u"fine");
    EXPECT_NE(ErrorOf([&] { Run(u"GONE"); }).number, 0);
    EXPECT_TRUE(Run(u"FLOOD").ends_with(u"x\r\nFLOOD was stopped."));
    EXPECT_EQ(notice.log, (std::vector<Text>{u"OK", u"ended", u"GONE", u"ended", u"FLOOD", u"ended"}));
    notice.busy = true;
    EXPECT_EQ(ErrorOf([&] { Run(u"OK"); }).description, u"OK cannot be run while another command runs.");
    EXPECT_EQ(notice.log.size(), 6U);
}

TEST_F(AccountSessionTest, ConfigurationIsAnItemOfTheVoc)
{
    auto item = Open(u"mvdb:*/DEMO/BP/INVOICE");
    EXPECT_TRUE(item->Supports(kSupportsExecute));
    EXPECT_FALSE(item->Supports(kSupportsConfiguration));
    EXPECT_EQ(item->Session()->GetConfiguration(u"NIB", 1), u"");
    folder.File("accounts/DEMO/VOC/NIB", "X\nsecond\n\nfourth\n");
    EXPECT_TRUE(item->Supports(kSupportsConfiguration));
    EXPECT_EQ(item->Session()->GetConfiguration(u"NIB", 2), u"second");
    EXPECT_EQ(item->Session()->GetConfiguration(u"NIB", 3), u"");
    EXPECT_EQ(item->Session()->GetConfiguration(u"NIB", 4), u"fourth");
    EXPECT_EQ(item->Session()->GetConfiguration(u"NIB", 9), u"");
    folder.Folder("accounts/BARE");
    EXPECT_FALSE(Open(u"mvdb:*/BARE")->Supports(kSupportsExecute));
}

TEST_F(AccountSessionTest, APlaceWithoutAccountHasTheDefaultOne)
{
    const auto account = [&](TextView server) {
        const auto item = Open(u"mvdb:" + Text(server));
        return item->Session() ? item->Session()->AccountName() : Text();
    };
    folder.File("accounts/DEMO/VOC/NIB", "X\n");
    EXPECT_EQ(account(u"west"), u"DEMO") << "the only one";
    folder.Folder("accounts/OTHER");
    EXPECT_EQ(account(u"west"), u"");
    EXPECT_EQ(account(u"*"), u"DEMO") << "configured";
    Open(u"mvdb:west/OTHER");
    EXPECT_EQ(account(u"west"), u"OTHER") << "used last";
    EXPECT_TRUE(Open(u"mvdb:*")->Supports(kSupportsConfiguration));
    EXPECT_EQ(Open(u"mvdb:*//BP/INVOICE")->Path(), u"mvdb:*/DEMO/BP/INVOICE");
    const auto opened = Open(u"mvdb:*");
    std::filesystem::remove_all(folder / "accounts");
    EXPECT_FALSE(opened->Supports(kSupportsConfiguration)) << "gone while it was open, which is no failure";
    EXPECT_EQ(account(u"*"), u"");
    EXPECT_FALSE(Open(u"mvdb:*")->Supports(kSupportsExecute));
}

} // namespace nib::test::account_session_test
