#include "automation/AutomationObjects.h"
#include "automation/MemberTables.h"
#include "fakes/Failure.h"
#include "fakes/TestProgram.h"

namespace nib::test::automation_test {

/// The program behind the host, with the parts of the frame that automation uses.
struct HeardShell final : AutomationShell {
    void LoadHostConfiguration() override { ++configured; }
    void AddCommand(TextView, TextView, int32_t) override {}
    void PrintText(mvDocument&) override { throw Error{error_number::kNotImplemented, u"no printer"}; }

    int32_t configured = 0;
};

struct Automation {
    TestProgram test;
    HeardShell shell;
    Application application{test.program.Services(), shell, test.events, true};
    AutomationObjects objects{application};

    BusRequest Request(const std::string& path, const std::string& interface, const std::string& member,
                       const std::string& signature = "", std::vector<BusValue> arguments = {})
    {
        return {":1.5", path, interface, member, signature, std::move(arguments)};
    }
    BusReply Send(const BusRequest& request)
    {
        objects.Arrived(request);
        return objects.Handle(request);
    }
    BusReply Root(const std::string& member) { return Send(Request(std::string(kApplicationPath), "", member)); }
    BusReply Set(const std::string& name, BusValue value)
    {
        return Send(Request(std::string(kApplicationPath), "org.freedesktop.DBus.Properties", "Set", "ssv",
                            {Text(), FromUtf8(name), std::move(value)}));
    }
};

TEST(AutomationTest, WrongCallsAreNamedByTheBusesOwnErrors)
{
    const std::string root(kApplicationPath), documents(kDocumentsPath), properties = "org.freedesktop.DBus.Properties";
    const Text own = u"com.orlin.NibPad71.mvDocument";
    const std::tuple<std::string, std::string, std::string, std::string, std::vector<BusValue>, std::string> rows[] = {
        {root + "/Nothing", "", "Activate", "", {}, "UnknownObject"},
        {documents + "/2", "", "FileSave", "", {}, "UnknownObject"},
        {documents + "/+1", "", "FileSave", "", {}, "UnknownObject"},
        {documents + "/1", "com.orlin.NibPad71.Application", "Activate", "", {}, "UnknownInterface"},
        {documents + "/1", "", "Text", "", {}, "UnknownMethod"},
        {documents + "/1", "", "DocumentClose", "", {}, "UnknownMethod"},
        {documents + "/1", "", "GotoLine", "s", {u"1"}, "InvalidArgs"},
        {documents + "/1", "", "GotoLine", "ii", {1, 1}, "InvalidArgs"},
        {documents + "/1", "", "FileClose", "s", {u"1"}, "InvalidArgs"},
        {documents + "/1", properties, "Get", "s", {own}, "InvalidArgs"},
        {documents + "/1", properties, "Get", "ss", {own, u"Nothing"}, "UnknownProperty"},
        {documents + "/1", properties, "Get", "ss", {u"x", u"Text"}, "UnknownInterface"},
        {documents + "/1", properties, "Set", "ssv", {own, u"Path", u"x"}, "PropertyReadOnly"},
        {documents + "/1", properties, "Set", "ssv", {own, u"Text", BusValue()}, "InvalidArgs"},
        {documents + "/1", properties, "Nothing", "", {}, "UnknownMethod"}};
    Automation a;
    a.test.New();
    for (const auto& [path, interface, member, signature, arguments, error] : rows) {
        BusReply reply = a.Send(a.Request(path, interface, member, signature, arguments));
        EXPECT_EQ(reply.errorName, "org.freedesktop.DBus.Error." + error) << path << " " << member;
    }
}

TEST(AutomationTest, FailuresOfMembersCarryTheirNumbers)
{
    EXPECT_EQ(ErrorNameOf(error_number::kNotImplemented), "com.orlin.NibPad71.Error.N2147500033");
    Automation a;
    auto document = a.test.New();
    std::string path = PathOf(document->DocumentID()).path;
    BusReply reply = a.Send(a.Request(path, "", "GotoLabel", "s", {u"NONE"}));
    EXPECT_EQ(reply.errorName, "com.orlin.NibPad71.Error.N32767");
    EXPECT_EQ(reply.errorText, u"Target label not found!");
    EXPECT_EQ(
        a.test.trace.lines.back(),
        (std::pair<int32_t, Text>{trace::kErrors, u"mvDocument.GotoLabel: error=0x7FFF Target label not found!"}));
    EXPECT_EQ(a.Send(a.Request(path, "", "PrintText")).errorName, "com.orlin.NibPad71.Error.N2147500033");
    document->SetText(Text(u"a\0b", 3));
    BusReply get = a.Send(a.Request(path, "org.freedesktop.DBus.Properties", "Get", "ss", {Text(), u"Text"}));
    EXPECT_EQ(get.errorName, "com.orlin.NibPad71.Error.N5") << "the bus cannot carry it";
}

TEST(AutomationTest, Item)
{
    Automation a;
    a.test.New();
    a.test.New();
    a.test.Documents().Item(1)->FileClose(false);
    const std::string second = PathOf(2).path;
    const std::pair<BusValue, std::string> rows[] = {{1, second}, {u"2", second}, {0, "9"},    {2, "9"},
                                                     {u"1", "5"}, {u"02", "5"},   {true, "5"}, {{}, "5"}};
    for (const auto& [index, answer] : rows) {
        BusReply reply = a.Send(a.Request(std::string(kDocumentsPath), "", "Item", "v", {index}));
        if (reply.form == BusReply::Form::Error)
            EXPECT_EQ(reply.errorName, "com.orlin.NibPad71.Error.N" + answer);
        else
            EXPECT_EQ(std::get<ObjectPath>(reply.value).path, answer);
    }
}

TEST(AutomationTest, LocationSetters)
{
    Automation a;
    a.Set("Provider", u"");
    a.Set("Folder", u"BP");
    EXPECT_EQ(a.shell.configured, 0);
    EXPECT_EQ(a.application.Provider(), u"mvdb");
    EXPECT_EQ(a.application.Folder(), u"");
    a.Set("ServerName", u"HOST");
    a.Set("Database", u"DEMO");
    EXPECT_EQ(a.shell.configured, 2);
    EXPECT_EQ(a.test.program.Place().now.ServerName, u"HOST");
    EXPECT_EQ(a.test.program.Place().now.Database, u"DEMO");
}

TEST(AutomationTest, HoldersAndTheEnd)
{
    Automation a;
    a.test.trace.wanted = trace::kObjects;
    EXPECT_FALSE(a.application.IsAlive());
    a.Root("Activate");
    a.Root("Hold");
    a.Root("Release");
    EXPECT_TRUE(a.application.IsAlive());
    a.Root("Release");
    EXPECT_FALSE(a.application.IsAlive());
    EXPECT_TRUE(a.test.window.ending);
    ASSERT_EQ(a.test.trace.lines.size(), 4u);
    EXPECT_TRUE(a.test.trace.lines[0].second.starts_with(u"application initialize begin: process="));
    EXPECT_EQ(a.test.trace.lines[3].second, u"applicaiton terminate end");

    a.Root("Activate"); // in time
    EXPECT_FALSE(a.test.window.ending);
    auto document = a.test.New();
    a.application.Left(":1.7");
    a.application.Left(":1.5");
    EXPECT_TRUE(a.application.IsAlive()) << "a document made under automation holds the program";
    EXPECT_FALSE(a.test.window.ending);
    document->FileClose(false);
    EXPECT_TRUE(a.test.journal.Has(u"DocumentClose 1"));
    EXPECT_TRUE(a.test.window.ending);
    a.test.window.ending = false;
    a.application.RaiseQuit();
    EXPECT_FALSE(a.test.journal.Has(u"Quit")) << "nobody is left to hear it";
    a.Root("Release");
    EXPECT_TRUE(a.test.window.ending) << "a client that only lets go must not keep a program that it started";
}

TEST(AutomationTest, WhatMayAskWaitsWhileTheUserIsAsked)
{
    Automation a;
    std::string path = PathOf(a.test.New()->DocumentID()).path;
    for (auto [member, waits] :
         {std::pair{"FileClose", true}, {"FileSave", true}, {"Format", false}, {"Nothing", false}}) {
        a.test.window.modal = false;
        EXPECT_FALSE(a.objects.MustWait(a.Request(path, "", member))) << member;
        a.test.window.modal = true;
        EXPECT_EQ(a.objects.MustWait(a.Request(path, "", member)), waits) << member;
    }
}

TEST(AutomationTest, IntrospectionNamesEveryMember)
{
    for (const BusInterface* interface : {&ApplicationInterface(), &DocumentsInterface(), &DocumentInterface()}) {
        std::string xml = IntrospectionXml(interface, {"7"});
        for (const Member& member : interface->members)
            EXPECT_NE(xml.find(std::string(" name=\"") + member.name + "\""), std::string::npos) << member.name;
        EXPECT_NE(xml.find("<node name=\"7\"/>"), std::string::npos);
    }
    std::string xml = IntrospectionXml(&ApplicationInterface(), {});
    EXPECT_NE(xml.find("<arg name=\"Shortcut\" type=\"i\" direction=\"in\"/>"), std::string::npos);
    EXPECT_NE(xml.find("<property name=\"Documents\" type=\"o\" access=\"read\">"), std::string::npos);
}

TEST(AutomationTest, ExtendedCommands)
{
    TestProgram test;
    AutomationHost& host = test.program.ClientCommands();
    host.AddCommand(u"Deploy", u"&Deploy", 6);
    const MenuTool& tool = test.program.Menus().Tool(Band::MainMenu, u"Deploy");
    EXPECT_EQ(tool.shortcut, u"Ctrl+F");
    EXPECT_EQ(tool.menu->key, u"Tools");
    EXPECT_TRUE(host.Knows(u"Deploy"));
    EXPECT_FALSE(host.Knows(u"deploy"));
    host.AddCommand(u"file_upload", u"x", 0);
    host.AddCommand(u"miWListing", u"x", 0);
    for (TextView taken :
         {u"Deploy", u"Compile", u"compile", u"tab_close", u"ctxGoto", u"file_1", u"FILE_12", u"miWList3"})
        EXPECT_EQ(ErrorOf([&] { host.AddCommand(taken, u"x", 0); }).number, error_number::kKeyInUse) << ToUtf8(taken);
    EXPECT_FALSE(host.Knows(u"Compile")) << "a command of the program stays the program's";
}

} // namespace nib::test::automation_test
