#include "diagnostics/DebugLog.h"
#include "base/Error.h"
#include "diagnostics/Guarded.h"
#include "platform/posix/PosixTraceMailbox.h"
#include "platform/posix/TraceViewer.h"

#include <gtest/gtest.h>

#include <thread>

#include <fcntl.h>
#include <sys/eventfd.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <unistd.h>

namespace nib::test::debug_log_test {

struct FakeMailbox : TraceMailbox {
    bool OpenDebugMemory(TextView, int32_t capacity) override
    {
        open = true;
        slots.resize(static_cast<size_t>(capacity));
        return true;
    }
    bool HasDebugMemory() const override { return open; }
    bool ReadDebugSlot(int32_t index, uint32_t& value) const override
    {
        if (!open || index >= used) return false;
        value = slots[static_cast<size_t>(index)];
        return true;
    }
    int32_t Register(uint32_t) override
    {
        ++registered;
        return gives;
    }
    void Send(uint32_t viewer, int32_t client, TextView text) override
    {
        sent.push_back(Decimal(viewer) + u"/" + Decimal(client) + u" " + Text(text));
    }

    bool open = false;
    int32_t used = 0;
    std::vector<uint32_t> slots;
    int32_t gives = 3;
    int registered = 0;
    std::vector<Text> sent;
};

TEST(modDebugLog, MasksAreOfTheViewerAndAllBitsCount)
{
    FakeMailbox mailbox;
    modDebugLog log(mailbox);
    log.GetDebugWindow();
    mailbox.slots[0] = 900;
    mailbox.used = 1;
    log.Write(u"no slot yet", 1);
    log.Write(u"always", 0);
    mailbox.used = 4;
    const std::tuple<uint32_t, int32_t, bool> rows[] = {{0, 1, false}, {1, 1, true},   {1, 2, false}, {1, 3, false},
                                                        {3, 3, true},  {19, 16, true}, {0, 0, true}};
    mailbox.sent.clear();
    for (const auto& [wanted, mask, arrives] : rows) {
        mailbox.slots[3] = wanted;
        log.Write(u"x", mask);
        EXPECT_EQ(mailbox.sent.size(), arrives ? 1U : 0U) << wanted << ' ' << mask;
        EXPECT_EQ(log.Wants(mask), arrives);
        mailbox.sent.clear();
    }
    EXPECT_EQ(mailbox.registered, 1);
    mailbox.slots[0] = 901; // another viewer
    mailbox.gives = 2;
    mailbox.slots[2] = 1;
    log.Write(u"y", 1);
    EXPECT_EQ(mailbox.registered, 2);
    EXPECT_EQ(mailbox.sent, std::vector<Text>{u"901/2 y"});
}

TEST(TraceBlock, IsSharedAndKnowsItsSize)
{
    const std::string name = "nib-test-" + std::to_string(getpid());
    TraceBlock one;
    TraceBlock two;
    uint32_t value = 7;
    ASSERT_TRUE(one.Open(name, 252));
    ASSERT_TRUE(two.Open(name, 252));
    EXPECT_FALSE(two.Read(0, value));
    one.Write(4, 11);
    EXPECT_TRUE(two.Read(4, value));
    EXPECT_EQ(value, 11U);
    EXPECT_FALSE(two.Read(5, value));
    EXPECT_FALSE(two.Read(-1, value));
    one.Write(252, 1);
    EXPECT_EQ(two.Used(), 5);
    TraceBlock other;
    EXPECT_THROW(other.Open(name, 10), Error);
    EXPECT_FALSE(other.Open("", 252));
    EXPECT_FALSE(other.Open(name, 0));
    shm_unlink(("/" + name).c_str());
}

TEST(TraceViewer, RulesByNumberAndName)
{
    const std::vector<TraceMaskRule> rules = {{"", 1}, {"nibpad71", 5}, {"2", 16}};
    EXPECT_EQ(MaskFor(rules, {1, 10, "other", 0}), 1U);
    EXPECT_EQ(MaskFor(rules, {1, 10, "nibpad71", 0}), 5U);
    EXPECT_EQ(MaskFor(rules, {2, 10, "nibpad71", 0}), 16U);
    EXPECT_EQ(MaskFor({}, {2, 10, "x", 0}), 0U);
}

/// The real road, both ends in this process.
struct TraceRoad : testing::Test {
    void SetUp() override
    {
        flock(turn.Get(), LOCK_EX); // there is one block a user, and tests run side by side
        if (TraceViewer::Running() != 0) GTEST_SKIP() << "a viewer of the user runs";
        viewer = std::make_unique<TraceViewer>(std::vector<TraceMaskRule>{{"", 5}});
        thread = std::thread([this] {
            viewer->Run(stop.Get(), [this](const TraceClient& c, const std::string& text) {
                lines.push_back(c.name + " " + text);
            });
        });
    }
    void TearDown() override
    {
        if (viewer) EndViewer();
    }
    void EndViewer()
    {
        eventfd_write(stop.Get(), 1);
        thread.join();
        viewer.reset();
    }

    Descriptor turn{open("/tmp/nib-trace-test.lock", O_RDWR | O_CREAT | O_CLOEXEC, 0666)};
    Descriptor stop{eventfd(0, EFD_CLOEXEC)};
    std::unique_ptr<TraceViewer> viewer;
    std::thread thread;
    std::vector<std::string> lines;
};

TEST_F(TraceRoad, LinesOfWantedCategoriesArriveInOrder)
{
    PosixTraceMailbox mailbox(u"tested");
    modDebugLog log(mailbox);
    EXPECT_TRUE(log.Wants(5));
    EXPECT_FALSE(log.Wants(2));
    for (int32_t i = 0; i < 2000; ++i) log.Write(u"line " + Decimal(i), 1);
    log.Write(u"unwanted", 2);
    log.Write(Text(1000000, u'ä'), 4);
    EXPECT_EQ(TraceViewer::ClientsOfRunning().size(), 1U);
    EXPECT_EQ(TraceViewer::SetMasksOfRunning({{"tested", 2}}), 1);
    EXPECT_TRUE(log.Wants(2));
    EXPECT_FALSE(log.Wants(1));
    EXPECT_THROW(TraceViewer({}), Error) << "a second viewer";
    EndViewer();
    ASSERT_EQ(lines.size(), 2002U);
    EXPECT_EQ(lines[0], "tested begins");
    EXPECT_EQ(lines[2000], "tested line 1999");
    EXPECT_EQ(lines[2001].size(), 7 + TraceMessage::kLongestText);
    log.Write(u"nobody listens", 2);
    EXPECT_FALSE(log.Wants(2));
}

TEST_F(TraceRoad, AViewerThatHangsCostsATenthOfASecondOnce)
{
    PosixTraceMailbox mailbox(u"tested");
    modDebugLog log(mailbox);
    EXPECT_TRUE(log.Wants(1));
    eventfd_write(stop.Get(), 1);
    thread.join(); // it reads no more
    const auto start = std::chrono::steady_clock::now();
    for (int32_t i = 0; i < 5000; ++i) log.Write(u"line", 1);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(1500));
    thread = std::thread([] {});
}

} // namespace nib::test::debug_log_test
