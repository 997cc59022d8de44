#include "shell/CommandLine.h"

#include <gtest/gtest.h>

namespace nib {

void PrintTo(const CommandLineAction& action, std::ostream* out)
{
    *out << static_cast<int32_t>(action.kind) << " '" << ToUtf8(action.value) << "'";
}

namespace test {
namespace {

using Kind = CommandLineAction::Kind;
using Words = std::vector<Text>;

struct Row {
    Words arguments;
    std::vector<CommandLineAction> actions;
    Words unknown;
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
    const std::pair<Words, bool> rows[] = {{{u"x", u"-h"}, true},         {{u"--help"}, true},
                                           {{u"/L", u"--version"}, true}, {{u"--", u"-h", u"--help"}, false},
                                           {{u"-H", u"/h"}, false},       {{}, false}};
    testing::internal::CaptureStdout();
    for (auto& [arguments, answers] : rows) EXPECT_EQ(AnswersOnTerminal(arguments), answers);
    EXPECT_NE(testing::internal::GetCapturedStdout().find("/I=ITEM"), std::string::npos);
}

} // namespace
} // namespace test
} // namespace nib
