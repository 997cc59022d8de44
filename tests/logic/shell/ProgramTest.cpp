#include "fakes/TestProgram.h"
#include "language/Dialects.h"

namespace nib {
void PrintTo(const CommandLineAction& action, std::ostream* out)
{
    *out << static_cast<int32_t>(action.kind) << " '" << ToUtf8(action.value) << "'";
}
} // namespace nib

namespace nib::test::program_test {

using Lines = std::vector<Text>;
using Kind = CommandLineAction::Kind;

struct Row {
    Lines arguments;
    std::vector<CommandLineAction> actions;
    Lines unknown;
};

constexpr Kind kFile = Kind::OpenFile;

const Row kRows[] = {{{}, {}, {}},
                     {{u"", u"x"}, {{kFile, u"x"}}, {}},
                     {{u"/l", u"d.txt"}, {{Kind::ReadOnly, u""}, {kFile, u"d.txt"}}, {}},
                     {{u"/t=file", u"/h=h1", u"/a=ACC", u"/f=BP", u"/i=X"},
                      {{Kind::Provider, u"file"},
                       {Kind::Server, u"h1"},
                       {Kind::Database, u"ACC"},
                       {Kind::Folder, u"BP"},
                       {Kind::OpenItem, u"X"}},
                      {}},
                     {{u" a ", u"/F=MY FILE", u"/I=a/b", u"/I=/c/d", u"/F="},
                      {{kFile, u" a "},
                       {Kind::Folder, u"MY FILE"},
                       {Kind::OpenItem, u"a/b"},
                       {Kind::OpenItem, u"/c/d"},
                       {Kind::Folder, u""}},
                      {}},
                     {{u"/H=\"h 1\"", u"/I=\"\"", u"/F=\"BP", u"/A=\"", u"\"c.txt\""},
                      {{Kind::Server, u"h 1"},
                       {Kind::OpenItem, u""},
                       {Kind::Folder, u"\"BP"},
                       {Kind::Database, u"\""},
                       {kFile, u"\"c.txt\""}},
                      {}},
                     {{u"/home/x/a.txt", u"/L/x", u"/here", u"-here", u"-x/y", u"-"},
                      {{kFile, u"/home/x/a.txt"},
                       {kFile, u"/L/x"},
                       {kFile, u"/here"},
                       {kFile, u"-here"},
                       {kFile, u"-x/y"},
                       {kFile, u"-"}},
                      {}},
                     {{u"/LX", u"/etc", u"/", u"/T", u"-x", u"--nothing", u"a"},
                      {{kFile, u"a"}},
                      {u"/LX", u"/etc", u"/", u"/T", u"-x", u"--nothing"}},
                     {{u"/L", u"--", u"/L", u"--help", u"", u"--", u"/X"},
                      {{Kind::ReadOnly, u""}, {kFile, u"/L"}, {kFile, u"--help"}, {kFile, u"--"}, {kFile, u"/X"}},
                      {}}};

TEST(CommandLineTest, SwitchesAndFiles)
{
    for (const Row& row : kRows) {
        CommandLine line = ParseArguments(row.arguments, [](TextView name) { return name.ends_with(u"here"); });
        SCOPED_TRACE(ToUtf8(line.text));
        EXPECT_EQ(line.actions, row.actions);
        EXPECT_EQ(line.unknown, row.unknown);
    }
}

TEST(CommandLineTest, AnswersOnTheTerminalUnlessAFileIsMeant)
{
    const std::pair<Lines, bool> rows[] = {{{u"x", u"-h"}, true},         {{u"--help"}, true},
                                           {{u"/L", u"--version"}, true}, {{u"--", u"-h", u"--help"}, false},
                                           {{u"-H", u"/h"}, false},       {{}, false}};
    testing::internal::CaptureStdout();
    for (auto& [arguments, answers] : rows) EXPECT_EQ(AnswersOnTerminal(arguments), answers);
    EXPECT_NE(testing::internal::GetCapturedStdout().find("/I=ITEM"), std::string::npos);
}

TEST(StartTest, AutomationReadsNoCommandLine)
{
    TestProgram t;
    Program program(t.Around(t.window, t.views), StartMode::Automation);
    program.Main(Arguments({u"/home/x/a.bas", u"/H=h1"}));
    EXPECT_EQ(t.journal.Take(), (Lines{u"Load", u"Show", u"LoadForms", u"Ready"}));
    EXPECT_TRUE(t.connection.opens.empty() && t.trace.lines.empty());
    EXPECT_EQ(program.Place().now.ServerName, u"*");
    t.ExpectCalm();
}

TEST(StartTest, ADialectIsOfferedOnceToThoseWhoHaveSettings)
{
    const std::tuple<Text, int32_t, Text> rows[] = {{u"", message_box::kAnswerYes, u"common"},
                                                    {u"", message_box::kAnswerNo, u"none"},
                                                    {u"server", 0, u"server"},
                                                    {u"none", 0, u"none"}};
    for (const auto& [stored, answer, dialect] : rows) {
        Dialects dialects;
        TestProgram t;
        t.store.values = {{u"", u"7.1"}, {u"Dialect", stored}};
        for (const size_t boxes : {answer == 0 ? 0U : 1U, 0U}) {
            ProgramPorts ports = t.Around(t.window, t.views);
            ports.dialects = &dialects;
            Program program(ports);
            if (boxes > 0) t.boxes.Answer({answer});
            program.Main({});
            EXPECT_EQ(t.boxes.Take().size(), boxes);
            EXPECT_EQ(program.EditorSettings().Keywords.Rules(), dialects.Rules(dialect));
            EXPECT_EQ(t.store.values[u"Dialect"], dialect);
        }
    }
}

TEST(StartTest, AFailingStepEndsTheProgram)
{
    TestProgram t;
    t.dialogs.failing = true;
    t.program.Main({});
    EXPECT_EQ(t.boxes.Take(), (Boxes{{u"The Application is unable to start due to the following error:\nNo forms"}}));
    EXPECT_EQ(t.trace.Take(), (TraceLines{{1, u"modMain.ParseCmdLine: error=0x47 No forms"}}));
    EXPECT_TRUE(t.program.IsShuttingDown());
    EXPECT_TRUE(t.journal.Has(u"UnloadForms"));
    EXPECT_EQ(t.fonts.removed.size(), 4U);
    EXPECT_FALSE(t.window.waiting);
}

TEST(StartTest, DefaultFont)
{
    const std::pair<Lines, Text> rows[] = {
        {{u"Arial", u"DEJAVU SANS MONO Bold", u"DejaVu Sans Mono"}, u"DEJAVU SANS MONO Bold"},
        {{u"DejaVu Sans", u"Mono"}, u"Courier New"},
        {{}, u"Courier New"}};
    for (auto& [families, name] : rows) {
        TestProgram t;
        t.fonts.families = families;
        EXPECT_EQ(t.program.DefaultFontName(), name);
        t.fonts.families = {u"DejaVu Sans Mono"};
        EXPECT_EQ(t.program.DefaultFontName(), name) << "found once for the whole process";
    }
}

TEST(ShutdownTest, AnErrorEndsItThere)
{
    TestProgram t;
    t.program.Main({});
    t.program.Automation().Hold(":1.1");
    t.store.failing = true;
    t.program.Shutdown();
    EXPECT_EQ(t.boxes.Take(), (Boxes{{u"The following error has occurred:\nNot saved"}}));
    EXPECT_EQ(t.trace.Take().back(), (std::pair<int32_t, Text>{1, u"modMain.Shutdown: error=0x47 Not saved"}));
    EXPECT_FALSE(t.journal.Has(u"Quit"));
    EXPECT_TRUE(t.fonts.removed.empty());
}

TEST(ShutdownTest, AClientThatHoldsItSeesItEnd)
{
    TestProgram t;
    t.program.Main({});
    t.program.Automation().Hold(":1.1");
    t.trace.wanted = trace::kObjects;
    t.trace.Take();
    t.program.Shutdown();
    EXPECT_TRUE(t.journal.Has(u"Quit"));
    ASSERT_GE(t.trace.lines.size(), 2u);
    EXPECT_TRUE(t.trace.lines.end()[-2].second.starts_with(u"application terminate begin:"));
    EXPECT_EQ(t.trace.lines.back().second, u"applicaiton terminate end");
}

TEST(StartTest, ClientsAreServedWhileTheUserIsAsked)
{
    TestProgram t;
    bool served = false;
    t.boxes.whileShown = [&] { served = t.journal.Has(u"Ready"); };
    t.boxes.Answer({message_box::kAnswerNo});
    t.program.Main(Arguments({u"/A=DEMO", u"/F=BP", u"/I=NOPE"}));
    EXPECT_TRUE(served);
    EXPECT_EQ(t.boxes.Take().size(), 1u);
}

struct CommandLineStart : testing::Test {
    TestProgram t;

    void Start(const Lines& words)
    {
        t.program.Main(Arguments(words));
        t.trace.Take();
    }
};

TEST_F(CommandLineStart, FirstDocumentIsActiveAndReadOnlyHoldsFromItsPlaceOn)
{
    for (TextView path : {u"file:/x/a b.txt", u"file:/x/d.txt", u"file:/x/e.txt"}) t.Store(Text(path), u"");
    Start({u"/x/a b.txt", u"/L", u"/x/d.txt", u"/x/e.txt"});
    EXPECT_EQ(t.Titles(), (Lines{u"a b.txt", u"d.txt (Read only)", u"e.txt (Read only)"}));
    EXPECT_EQ(t.window.activeDocument, 1);
    EXPECT_EQ(t.Recent(), (Lines{u"file:/x/e.txt", u"file:/x/d.txt", u"file:/x/a b.txt"}));
}

TEST_F(CommandLineStart, AFailingDocumentIsSkipped)
{
    t.Store(u"file:/x/b", u"");
    t.StoreFolder(u"file:/x/a");
    Start({u"-x", u"/x/a", u"/x/b", u"/X"});
    EXPECT_EQ(t.window.status[1], u"Unknown on the command line: -x /X");
    EXPECT_EQ(t.boxes.Take(),
              Boxes{Warning(u"Unable to open item /x/a because it appears to be a folder or file definition.")});
    EXPECT_EQ(t.Titles(), Lines{u"b"});
    EXPECT_EQ(t.Recent(), Lines{u"file:/x/b"});
    EXPECT_EQ(t.Store().liveItems, 1);
}

TEST_F(CommandLineStart, AnItemTakesTheSwitchesBeforeIt)
{
    t.Store(u"mvdb:h1/ACC/MY%20FILE/PROG1", u"");
    t.Store().session.account = u"LOGIN";
    Start({u"/h=h1", u"/A=ACC", u"/F=MY FILE", u"/I=PROG1"});
    EXPECT_EQ(t.Titles(), Lines{u"MY FILE PROG1 on server1, account ACC"});
    EXPECT_EQ(t.Recent(), Lines{u"mvdb:h1/ACC/MY%20FILE/PROG1"});
    EXPECT_EQ(t.program.Place().now.Database, u"ACC");
    EXPECT_FALSE(t.Store().session.asked.empty()) << "for the host's configuration";
}

TEST_F(CommandLineStart, ALocalFileTakesNothingFromTheSwitchesRoundIt)
{
    for (TextView path : {u"file:/x/a", u"file:/x/b", u"file:/x/c", u"mvdb:h1/ACC/BP/X"}) t.Store(Text(path), u"");
    t.Store().session.account = u"LOGIN";
    Start({u"/H=h1", u"/x/a", u"/A=ACC", u"/F=BP", u"/x/b", u"/I=X", u"/x/c"});
    EXPECT_EQ(t.Titles(), (Lines{u"a", u"b", u"BP X on server1, account ACC", u"c"}));
    EXPECT_EQ(t.connection.opens.back().path, u"mvdb:h1") << "the last question is that for the account";
    EXPECT_EQ(t.program.Place().now.Provider, u"file");
    EXPECT_EQ(t.program.Place().host.Database, u"ACC");
}

TEST_F(CommandLineStart, AnUnknownTypeOfConnectionIsTold)
{
    t.Store(kMain, u"");
    Start({u"/T=bogus", u"/A=DEMO", u"/F=BP", u"/I=MAIN", u"/T=MVDB", u"/I=MAIN"});
    EXPECT_EQ(t.boxes.Take(), Boxes{Warning(u"Unable to open item MAIN because \"bogus\" is no type of connection. The "
                                            u"types are mvdb and file.")});
    EXPECT_EQ(t.Titles(), Lines{u"BP MAIN on server1, account DEMO"});
}

TEST_F(CommandLineStart, TheHostConfigurationIsLoadedOnceForAllItems)
{
    t.Store(kMain, u"");
    t.Store(kOther, u"");
    Start({u"/A=DEMO", u"/F=BP", u"/I=MAIN", u"/I=OTHER"});
    auto& asked = t.Store().session.asked;
    EXPECT_EQ(std::count(asked.begin(), asked.end(), u"NIB 2"), 1);
    EXPECT_EQ(t.Documents().Count(), 2);
}

TEST(LearnAccountTest, FromTheConnectedServer)
{
    const std::tuple<const char*, Lines, Text, bool, Text> rows[] = {
        {"learned", {u"/H=h1"}, u"LOGIN", false, u"LOGIN"},
        {"given", {u"/H=h1", u"/A=MINE"}, u"LOGIN", false, u"MINE"},
        {"given behind", {u"/A=MINE", u"/H=h1"}, u"LOGIN", false, u"MINE"},
        {"no name", {u"/H=h1"}, u"", false, u""},
        {"fails", {u"/H=h1"}, u"LOGIN", true, u""},
        {"no host", {}, u"LOGIN", false, u""}};
    for (const auto& [name, words, account, fails, database] : rows) {
        SCOPED_TRACE(name);
        TestProgram t;
        t.Store().session.account = account;
        if (fails) t.Store().session.failure = Error{error_number::kStorage, u"no"};
        t.program.Main(Arguments(words));
        EXPECT_EQ(t.program.Place().now.Database, database);
        EXPECT_EQ(t.Store().session.asked.empty(), database.empty());
        EXPECT_EQ(t.trace.lines.back().second, u"parse end");
        if (!words.empty()) {
            EXPECT_EQ(t.connection.opens.front().path, u"mvdb:h1");
        }
    }
}

TEST(ParseFailureTest, IsReportedAndTheProgramGoesOn)
{
    TestProgram t;
    t.Store(kMain, u"");
    t.connection.openFailures = {Error{71, u"No host"}};
    t.Store(u"file:/x/local.txt", u"");
    t.program.Main(Arguments({u"/A=DEMO", u"/F=BP", u"/I=MAIN", u"/x/local.txt"}));
    EXPECT_EQ(t.Titles(), Lines{u"local.txt"});
    EXPECT_EQ(t.boxes.Take(), (Boxes{{u"The following error has occurred:\nNo host"}}));
    EXPECT_EQ(t.trace.lines.back().second, u"modMain.ParseCmdLine: error=0x47 No host");
    EXPECT_FALSE(t.program.IsShuttingDown());
}

} // namespace nib::test::program_test
