#include "documents/CompileCommand.h"
#include "fakes/TestProgram.h"
#include "hosts/accounts/AccountSession.h"

namespace nib::test::compile_test {

constexpr int32_t kYes = message_box::kAnswerYes;
constexpr int32_t kNo = message_box::kAnswerNo;

TEST(CompileCommandTest, PlaceholdersAndOptions)
{
    const struct {
        TextView command, options, file, item, line;
    } rows[] = {{u"BASIC", u"", u"BP", u"MAIN", u"BASIC BP MAIN"},
                {u"COMPILE %ITEMID% FROM %filename%", u"", u"BP", u"MAIN", u"COMPILE MAIN FROM BP"},
                {u"BASIC", u"(O", u"BP", u"MAIN", u"BASIC BP MAIN (O"},
                {u"X %FileName% %FILENAME%", u"", u"BP", u"MAIN", u"X BP %FILENAME% MAIN"},
                {u"X %ITEMID%", u"-d", u"BP", u"MAIN", u"X MAIN BP -d"},
                {u"X %FILENAME% %ITEMID%", u"", u"A%itemid%B", u"MAIN", u"X AMAINB %ITEMID%"},
                {u"X %FILENAME", u"", u"B", u"M", u"X %FILENAME B M"},
                {u"X '%ITEMID%' -f=%FILENAME%", u"", u"BP", u"a b", u"X 'a b' -f=BP"},
                {u"", u"", u"BP", u"MAIN", u" BP MAIN"}};
    for (const auto& row : rows)
        EXPECT_EQ(BuildCompileCommand(row.command, row.options, row.file, row.item), row.line) << ToUtf8(row.command);
}

TEST(CompileCommandTest, ANameIsOneWord)
{
    for (const Text& id : std::initializer_list<Text>{u"a b", u"a\tb", u"it's a \"x\"", u"\"dq\"", u"'a", u"o'b c",
                                                      u"50% \\", u"O'BRIEN", u"\"a\" b"})
        for (TextView command : {u"BASIC %FILENAME% %ITEMID%", u"BASIC %FILENAME% '%ITEMID%'"})
            EXPECT_EQ(SplitCommand(BuildCompileCommand(command, u"(O -x", u"MY FILE", id)),
                      (std::vector<Text>{u"BASIC", u"MY FILE", id, u"(O", u"-x"}))
                << ToUtf8(id);
    for (TextView id : {u"-o", u"--help", u"(L", u"a\"b'c d"})
        EXPECT_THROW(BuildCompileCommand(u"BASIC", u"", u"BP", id), Error) << ToUtf8(id);
    EXPECT_THROW(BuildCompileCommand(u"BASIC --item=%ITEMID%", u"", u"BP", u"a b"), Error);
}

TEST(CompileOutputTest, Filter)
{
    const std::pair<TextView, TextView> rows[] = {
        {u"", u""},
        {u"one", u"one"},
        {u"one\r\n", u"one"},
        {u"====\r\n\r\n  ---  \r\n****\r\n..", u""},
        {u"AA\r\n11\r\n[[ x\r\n** x\r\n#\r\n  indented \r\n!!\r\naa", u"AA\r\n11\r\n[[ x\r\n#\r\n  indented \r\naa"},
        {u"  \t \r\nx", u"  \t \r\nx"},
        {u"a\rb\nc", u"a b c"},
        {u"a\x1B[31;1mred\x1B[0m b\x9B"
         u"2Kc",
         u"ared bc"},
        {u"\x1B]0;title\x07x\x1B]8;;http://y\x1B\\z\x1B(B!\x1B", u"xz!"},
        {u"\x1B[31", u""},
        {u"a\x00 b\x07\x7F\x85", u"a"},
        {u"\xD800 \xD83D\xDE00 \xDC00", u"\uFFFD \xD83D\xDE00 \uFFFD"}};
    for (const auto& [output, shown] : rows) EXPECT_EQ(FilterCompileOutput(output), shown) << ToUtf8(output);
    EXPECT_EQ(FilterCompileOutput(TextView(u"a\0b\u0007c", 5)), u"a b c");
}

TEST(CompileOutputTest, EndlessOutputKeepsBothEnds)
{
    Text output = u"first";
    for (int i = 0; i < 100'000; ++i) output += u"\r\nerror in line 7 of a program that has many of them";
    output += u"\r\nlast";
    const Text shown = FilterCompileOutput(output);
    EXPECT_LT(shown.size(), size_t{5} << 20);
    EXPECT_TRUE(shown.starts_with(u"first\r\nerror in line 7"));
    EXPECT_TRUE(shown.ends_with(u"\r\nlast"));
    EXPECT_NE(shown.find(u" lines are left out here)\r\nerror"), Text::npos);

    const Text single = FilterCompileOutput(Text(5'000'000, u'x'));
    EXPECT_LT(single.size(), 25'000U);
    EXPECT_TRUE(single.ends_with(u"x ..."));
}

struct ShownResults final : ResultsWindow {
    explicit ShownResults(TestProgram& program) { program.program.Services().results = this; }
    void ShowResults(TextView text) override { shown.emplace_back(text); }
    void KeepResults(TextView text) override { kept.emplace_back(text); }
    void AddOutput(TextView lines, bool first) override { added.push_back((first ? u"> " : u"") + Text(lines)); }
    void ResetResults(TextView) override {}
    void AddResultLine(TextView, int32_t, int32_t, bool) override {}
    std::vector<Text> shown;
    std::vector<Text> kept;
    std::vector<Text> added;
};
using Shown = std::vector<Text>;

TEST(CompileTest, RunsTheCommandAndShowsTheOutput)
{
    TestProgram t;
    ShownResults results(t);
    auto document = t.StoreAndOpen(kMain, u"text", true);
    EXPECT_TRUE(document->CanCompile());
    t.Store().session.output = u"====\r\n  Line 3: no\r\n";
    t.Store().session.whileExecuting = [&] {
        EXPECT_TRUE(t.window.waiting);
        EXPECT_EQ(t.window.status[1], u"Compiling program on host system");
        document->FileClose(false); // by another program
    };
    t.program.EditorSettings().CompileOptions = u"(L";
    document->Compile();
    EXPECT_EQ(t.Store().session.commands, Shown{u"BASIC BP MAIN (L"});
    EXPECT_EQ(results.shown, Shown{u"  Line 3: no"});
    EXPECT_EQ(t.boxes.beeps, 1);
    t.Store().session.whileExecuting = nullptr;
    t.Store().session.output = u"----\r\n----";
    t.Open(kMain)->Compile();
    EXPECT_EQ(results.shown.back(), u"\r\n") << "an empty line where there is nothing to show";
    t.ExpectCalm();
}

TEST(CompileTest, OutputComesAsItIsPrinted)
{
    TestProgram t;
    ShownResults results(t);
    auto document = t.StoreAndOpen(kMain, u"text");
    t.Store().session.output = u"1 error(s)";
    t.Store().session.printing = {u"====\r\n\r\n", u"Line 3: no\r\n----\r\nx\x1B[0my", u"", u"Line 4: no"};
    t.Store().session.whileExecuting = [&] {
        EXPECT_EQ(results.added, (Shown{u"> Line 3: no\r\nxy", u"Line 4: no"}));
        EXPECT_EQ(t.program.Services().compiled.itemId, u"MAIN");
    };
    document->Compile();
    EXPECT_EQ(results.shown, Shown{u"1 error(s)"}) << "all of it in the end";
}

TEST(CompileTest, ACleanCompileIsALineInTheStatusBar)
{
    TestProgram t;
    ShownResults results(t);
    std::vector<Text> told;
    t.program.Services().onCompiled = [&](TextView output) { told.emplace_back(output); };
    auto document = t.StoreAndOpen(kMain, u"text");
    const struct {
        Text output;
        bool shown;
        Text status;
    } rows[] = {{u"0 error(s)\r\nCompiled 1 program(s) with no errors\r\n", false,
                 u"BP MAIN: Compiled 1 program(s) with no errors"},
                {u"3 lines checked, no error found.", false, u"BP MAIN: 3 lines checked, no error found."},
                {u"Warning: X is not used\r\n0 error(s)", true, u""},
                {u"Line 3: X is odd\r\n0 error(s)", true, u""},
                {u"done", true, u""},
                {u"1 error(s)", true, u""}};
    for (const auto& row : rows) {
        SCOPED_TRACE(ToUtf8(row.output));
        results.shown.clear();
        results.kept.clear();
        t.Store().session.output = row.output;
        document->Compile();
        EXPECT_EQ(results.shown.size(), row.shown ? 1U : 0U);
        EXPECT_EQ(results.kept.size(), row.shown ? 0U : 1U);
        EXPECT_EQ(t.window.status[1], row.status);
    }
    EXPECT_EQ(told.size(), std::size(rows));
}

TEST(CompileTest, ACleanCompileIsWhatItsCompilerSays)
{
    const std::pair<TextView, bool> rows[] = {
        {u"Compiling BP X\r\n0 error(s)\r\nCompiled 1 program(s) with no errors", true},
        {u"Compiling BP X\r\n2: no\r\n**\r\nWARNING: Y\r\n10 error(s)\r\nCompiled 1 program(s) with errors in:", false},
        {u"0 error(s)\nCompiling BP Y\n1 error(s)", false},
        {u"WARNING: Y is not assigned a value\n0 error(s)", true},
        {u"1 line checked, no error found.", true},
        {u"Line 3: The string that begins with \" is not closed.", false},
        {u"Cannot read source record 'X'", false},
        {u"3: PRINT \"0 error(s)\" is wrong", false},
        {u"done", false},
        {u"", false}};
    for (const auto& [output, clean] : rows) EXPECT_EQ(IsCleanCompile(output), clean) << ToUtf8(output);
}

TEST(CompileTest, ACleanCompileIsFollowedByItsCommand)
{
    TestProgram t;
    ShownResults results(t);
    auto document = t.StoreAndOpen(kMain, u"text");
    FakeSession& host = t.Store().session;
    MvEdit& settings = t.program.EditorSettings();
    const auto compile = [&](TextView output, TextView command) {
        settings.CleanCompileCommand = command;
        host.commands.clear();
        results.shown.clear();
        host.output = output;
        host.whileExecuting = [&] {
            if (host.commands.size() == 2) host.output = u"MAIN added\r\n";
        };
        document->Compile();
        return host.commands.size();
    };
    settings.CompileOptions = u"(L";
    EXPECT_EQ(compile(u"0 error(s)", u""), 1U);
    EXPECT_EQ(compile(u"1 error(s)", u"CATALOGUE"), 1U);
    EXPECT_EQ(compile(u"0 error(s)", u"CATALOGUE %FILENAME% %ITEMID% LOCAL"), 2U);
    EXPECT_EQ(host.commands.back(), u"CATALOGUE BP MAIN LOCAL");
    EXPECT_EQ(results.shown, Shown{u"0 error(s)\r\nMAIN added"});
    settings.CleanCompileCommand = u"CATALOGUE";
    results.kept.clear();
    host.output = u"0 error(s)";
    for (size_t failing : {1U, 2U}) {
        host.commands.clear();
        host.whileExecuting = [&] {
            if (host.commands.size() == failing) throw Error{error_number::kStorage, u"no such verb"};
        };
        EXPECT_THROW(document->Compile(), Error);
        EXPECT_EQ(results.kept.size(), failing - 1);
    }
    EXPECT_EQ(results.kept, Shown{u"0 error(s)"}) << "what the compiler said is there";
    t.ExpectCalm();
}

TEST(CompileTest, Refusals)
{
    TestProgram t;
    ShownResults results(t);
    t.Store(kMain, u"text");
    t.Store(kLocal, u"text");
    auto fresh = t.New();
    fresh->Compile();
    EXPECT_FALSE(fresh->CanCompile());
    EXPECT_EQ(t.boxes.Take(), Boxes{Warning(u"Unable to compile un-saved document! Use Save-As from the File menu to "
                                            u"save the document, then compile it.")});
    auto local = t.Open(kLocal);
    local->SetText(u"modified");
    local->Compile();
    EXPECT_FALSE(local->CanCompile());
    EXPECT_EQ(t.boxes.Take(), Boxes{Warning(u"Unable to compile document saved as a local file!")});
    t.Store().session.executes = false;
    auto host = t.Open(kMain);
    host->Compile();
    EXPECT_FALSE(host->CanCompile());
    const ShownBox plain{u"Host does not allow Nib to EXECUTE any utilities. Please enable this feature!", 0};
    EXPECT_EQ(t.boxes.Take(), Boxes{plain});
    EXPECT_TRUE(t.Store().session.commands.empty());
    EXPECT_TRUE(results.shown.empty());
}

TEST(CompileTest, AModifiedDocumentIsSavedFirst)
{
    const Text question = u"Unable to compile un-saved document! Do you want to save the document, then compile it?";
    TestProgram t;
    ShownResults results(t);
    auto document = t.StoreAndOpen(kMain, u"old");
    document->SetText(u"new");
    t.boxes.Answer({kNo});
    document->Compile();
    EXPECT_EQ(t.boxes.Take(), Boxes{Question(question)});
    EXPECT_EQ(t.Stored(kMain), u"old");
    t.Store().writeFailure = Error{error_number::kStorage, u"Disk full"};
    t.boxes.Answer({kYes});
    document->Compile();
    EXPECT_EQ(t.boxes.Take(), (Boxes{Question(question), Warning(u"Disk full")}));
    EXPECT_TRUE(results.shown.empty());
    t.Store().writeFailure.reset();
    t.boxes.Answer({kYes});
    document->Compile();
    EXPECT_EQ(t.boxes.Take(), Boxes{Question(question)});
    EXPECT_EQ(t.Stored(kMain), u"new");
    EXPECT_EQ(results.shown.size(), 1U);
}

} // namespace nib::test::compile_test
