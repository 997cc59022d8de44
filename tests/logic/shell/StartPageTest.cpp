#include "shell/StartPage.h"
#include "fakes/TestRecovery.h"

namespace nib::test::start_page_test {

using Kind = StartRow::Kind;
using Rows = std::vector<StartRow>;

struct StartPageTest : RecoveryTest {
    TestProgram& T() { return session->t; }
    StartRows Now() { return StartPage(T().program).Rows(); }
    void Run(const StartRow& row) { StartPage(T().program).Run(row); }
};

TEST_F(StartPageTest, ShowsWhatThereIs)
{
    EXPECT_EQ(Now().begin, (Rows{{Kind::Command, u"Open an item or a file", u"Ctrl+O", u"Open"},
                                 {Kind::Command, u"New document", u"Ctrl+N", u"New"}}));
    EXPECT_TRUE(Now().recent.empty() && Now().places.empty());

    T().connection.hosts = {{u"vm", u"mvdb:*", {u"A/B", u"DEMO"}}, {u"Stock", u"mvdb:stock", {}}};
    for (TextView entry : {u"mvdb:srv/LIVE/BP/X%2FY", u"mvdb:*/*/BP/OLD", u"file:/a.b", u"file:/home/x/c.b", u"odd"})
        T().program.RecentFiles().AddItem(entry);
    EXPECT_EQ(Now().begin.back(), (StartRow{Kind::Sample, u"Open DEMO", u"the sample account", u"mvdb:*/DEMO/BP"}));
    EXPECT_EQ(Now().places, (Rows{{Kind::Place, u"vm", u"", u"mvdb:*"},
                                  {Kind::Place, u"A/B", u"vm", u"mvdb:*/A%2FB"},
                                  {Kind::Place, u"DEMO", u"vm", u"mvdb:*/DEMO"},
                                  {Kind::Place, u"Stock", u"", u"mvdb:stock"}}));
    EXPECT_EQ(Now().recent, (Rows{{Kind::Recent, u"odd", u"", u"odd"},
                                  {Kind::Recent, u"c.b", u"/home/x", u"file:/home/x/c.b"},
                                  {Kind::Recent, u"a.b", u"/", u"file:/a.b"},
                                  {Kind::Recent, u"BP OLD", u"", u"mvdb:*/*/BP/OLD"}}));
    T().program.RecentFiles().RemoveItem(u"odd");
    T().program.RecentFiles().AddItem(u"mvdb:srv/LIVE/BP/X%2FY");
    EXPECT_EQ(Now().recent[0].caption + u", " + Now().recent[0].detail, u"BP X/Y, LIVE on srv");
}

TEST_F(StartPageTest, RunsWhatWasChosen)
{
    T().Store(kMain, u"text");
    T().Open(kMain);
    T().program.Shutdown();
    const auto items = T().Store().items;
    Crash();
    T().Store().items = items;
    ASSERT_EQ(Now().begin.back(), (StartRow{Kind::LastSession, u"Open the last session", u"MAIN", u""}));
    Run(Now().begin.back());
    EXPECT_EQ(T().Documents().Item(1)->Path(), kMain);
    T().Documents().Item(1)->FileClose(false);

    T().program.RecentFiles().AddItem(kMain);
    Run(Now().recent.front());
    EXPECT_EQ(T().Documents().Item(1)->Path(), kMain);
    Run({Kind::Place, u"", u"", u"mvdb:*/DEMO"});
    EXPECT_EQ(T().connection.requests.back().second, u"mvdb:*/DEMO");
    Run({Kind::Command, u"", u"", u"New"});
    EXPECT_EQ(T().Documents().Count(), 2);
    Run(Now().steps.back());
    EXPECT_TRUE(T().journal.Has(u"help guide.html"));
    T().boxes.Take();
}

} // namespace nib::test::start_page_test
