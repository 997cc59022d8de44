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
using Actions = std::vector<CommandLineAction>;

const std::pair<Text, Actions> kLines[] = {
    {u"", {}},
    {u"   ", {}},
    {u"/L", {{Kind::ReadOnly, u""}}},
    {u"/l d.txt", {{Kind::ReadOnly, u""}, {Kind::OpenFile, u"d.txt"}}},
    {u"/LX", {}},
    {u"a.txt  b.txt", {{Kind::OpenFile, u"a.txt"}, {Kind::OpenFile, u"b.txt"}}},
    {u"\"C:\\a b\\c.txt\" /L d.txt",
     {{Kind::OpenFile, u"C:\\a b\\c.txt"}, {Kind::ReadOnly, u""}, {Kind::OpenFile, u"d.txt"}}},
    {u"\"c.txt\" d.txt", {{Kind::OpenFile, u"c.txt"}, {Kind::OpenFile, u"d.txt"}}},
    {u"\"a b /L c", {{Kind::OpenFile, u"a b /L c"}}},
    {u"\"a b  c", {{Kind::OpenFile, u"a b"}, {Kind::OpenFile, u"c"}}},
    {u"\"\" a", {{Kind::OpenFile, u"a"}}},
    {u"/F=\"MY FILE\" /I=PROG1", {{Kind::Folder, u"MY FILE"}, {Kind::OpenItem, u"PROG1"}}},
    {u"/F=\"BP\" /I=X", {{Kind::Folder, u"BP"}, {Kind::OpenItem, u"X"}}},
    {u"/F=\"A B C", {{Kind::Folder, u"A B C"}}},
    {u"/F=\"\"BP\"\"", {{Kind::Folder, u"BP"}}},
    {u"/F=", {{Kind::Folder, u""}}},
    {u"/t=file /h=h1 /a=ACC /f=BP /i=X",
     {{Kind::Provider, u"file"},
      {Kind::Server, u"h1"},
      {Kind::Database, u"ACC"},
      {Kind::Folder, u"BP"},
      {Kind::OpenItem, u"X"}}},
    {u"/I=a/b /I=/c/d", {{Kind::OpenItem, u"a/b"}, {Kind::OpenItem, u"/c/d"}}},
    {u"/Z=\"not a\" file.txt", {{Kind::OpenFile, u"file.txt"}}},
    {u"/Z /", {}},
    {u"/home/x/a.txt /L/x", {{Kind::OpenFile, u"/home/x/a.txt"}, {Kind::OpenFile, u"/L/x"}}},
};

TEST(CommandLineTest, Lines)
{
    for (auto& [line, actions] : kLines) EXPECT_EQ(ParseCommandLine(line), actions) << ToUtf8(line);
}

} // namespace
} // namespace test
} // namespace nib
