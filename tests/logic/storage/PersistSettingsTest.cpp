#include "StoreFixture.h"
#include "persistence/store/modPersistSettings.h"

#include <filesystem>

namespace nib::test {

namespace {

using namespace std::string_literals;

class PersistSettingsTest : public StoreTest {
protected:
    PersistSettingsTest() { std::filesystem::current_path(folder.Folder("cwd")); }
    ~PersistSettingsTest() override { std::filesystem::current_path("/"); }

    modPersistSettings Store(const std::string& switches)
    {
        folder.File("p/q/isolation.ini", "[Isolation]\n" + switches);
        return modPersistSettings(hive, disk, Path("p/q"), environment);
    }

    bool InHive(TextView name) { return hive.Get(kSettingsKey, name).has_value(); }

    HiveFile hive{disk, Path("hive.conf")};
    Environment environment = [](TextView name) -> std::optional<Text> {
        if (name == u"HERE") return u"sub";
        if (name == u"EMPTY") return u"";
        return std::nullopt;
    };
};

} // namespace

TEST(SettingsPathTest, DotToAbsPath)
{
    struct Row {
        TextView path, absolute;
    };
    const Row rows[] = {{u"./data", u"/opt/nib/data"},
                        {u"./", u"/opt/nib/"},
                        {u"../x", u"/opt/x"},
                        {u"..", u"/opt"},
                        {u"../../x", u"/x"},
                        {u"../../../../x", u"/x"},
                        {u"../../..", u"/"},
                        {u".", u"."},
                        {u".x/../y", u".x/y"},
                        {u"/a//b///c", u"/a/b/c"},
                        {u"/a/./b", u"/a/./b"},
                        {u"/a/../..", u"/"},
                        {u"", u"/"},
                        {u"a/b/../c", u"a/c"},
                        {u"a/..", u"a"},
                        {u"//server/share", u"/server/share"}};
    for (const Row& row : rows) EXPECT_EQ(DotToAbsPath(row.path, u"/opt/nib"), row.absolute) << ToUtf8(row.path);
}

TEST(SettingsPathTest, References)
{
    const Environment environment = [](TextView name) -> std::optional<Text> {
        return name == u"A" ? std::optional<Text>(u"one") : std::nullopt;
    };
    struct Row {
        TextView text, expanded;
    };
    const Row rows[] = {{u"x%A%y%A%", u"xoneyone"}, {u"%B%%A%", u"one"}, {u"100%", u"100%"},
                        {u"%A%50%", u"one50%"},     {u"%%x", u"x"},      {u"%B", u"%B"}};
    for (const Row& row : rows) EXPECT_EQ(ExpandEnviron(row.text, environment), row.expanded);
}

TEST_F(PersistSettingsTest, ASwitchFileThatCannotBeReadCountsAsMissingAndIsTold)
{
    EXPECT_EQ(Store("PersistSettings=1\n").SwitchFileFault(), u"");
    std::filesystem::remove(folder / "p/q/isolation.ini");
    modPersistSettings store(hive, disk, Path("p/q"), environment);
    EXPECT_EQ(store.SwitchFileFault(), u"") << "there is none";
    folder.Folder("p/q/isolation.ini");
    EXPECT_NE(store.SwitchFileFault().find(u"isolation.ini cannot be read: "), Text::npos);
    store.Save(u"Name", u"value");
    EXPECT_TRUE(InHive(u"Name"));
}

TEST_F(PersistSettingsTest, ModesOfTheSwitchFile)
{
    const std::pair<std::string, int> rows[] = {{"", 1},
                                                {"PersistSettings=\n", 1},
                                                {"PersistSettings=2\n", 2},
                                                {"persistsettings=\"2 files\"\n", 2},
                                                {"PersistSettings=yes\n", 0},
                                                {"PersistSettings=-1\n", 0},
                                                {"PersistSettings=3\n", 0},
                                                {"PersistSettings=65538\n", 0}};
    int number = 0;
    for (const auto& [switches, mode] : rows) {
        SCOPED_TRACE(switches);
        auto store = Store(switches);
        const Text name = u"n" + Decimal(++number);
        store.Save(name, u"1");
        EXPECT_EQ(InHive(name), mode == 1);
        EXPECT_EQ(std::filesystem::remove("./appstate.ini"), mode == 2);
        EXPECT_EQ(store.Get(name, u""), mode == 1 ? u"1" : u"");
        EXPECT_EQ(store.UserDataDirectory(), u"./");
    }
    modPersistSettings none(hive, disk, Path("nowhere"), environment);
    none.Save(u"a", u"1");
    EXPECT_TRUE(InHive(u"a"));
}

TEST_F(PersistSettingsTest, DataFolders)
{
    folder.File("file", "");
    struct Row {
        std::string value, resolved;
        bool made;
    };
    const std::string root = folder.Path();
    const Row rows[] = {{".", "./", true},
                        {".\\", root + "/p/q/", true},
                        {".\\data\\deep", root + "/p/q/data/deep/", true},
                        {"..\\..\\x", root + "/x/", true},
                        {"./%HERE%", root + "/p/q/sub/", true},
                        {"%EMPTY%", root + "/p/q/", true},
                        {"%HERE%", "sub/", false},
                        {"%HERE%\\y", root + "/p/q/", true},
                        {root + "/file/z", root + "/p/q/", true},
                        {root + "/j\xC3\xB6rg", root + "/j\xC3\xB6rg/", true}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.value);
        auto store = Store("PersistSettings=0\nAppDataDirectory=" + row.value + "\nUserDataDirectory=" + row.value);
        store.InitPersistSettings();
        EXPECT_EQ(ToUtf8(store.AppDataDirectory()), row.resolved);
        EXPECT_EQ(store.UserDataDirectory(), store.AppDataDirectory());
        EXPECT_EQ(std::filesystem::is_directory(row.resolved), row.made);
    }
}

TEST_F(PersistSettingsTest, IniMode)
{
    auto store = Store("PersistSettings=2\nAppDataDirectory=./data");
    const std::string path = folder / "p/q/data/appstate.ini";
    EXPECT_EQ(store.Get(u"", u"none"), u"none");
    EXPECT_FALSE(std::filesystem::exists(path));
    store.Save(u"Font", u"Mono", u"Mono");
    EXPECT_EQ(BytesOf(path), "\xFF\xFE");
    for (const Text& value : {Text(u"7.1"), Text(u" x"), Text(u"\"q"), Text(u"'"), Text(u"\u4E2D"), Text(u"\t")}) {
        store.Save(u"", value);
        EXPECT_EQ(store.Get(u"", u""), value);
    }
    store.Save(u"", u"7.1");
    const std::string expected = "[MultiValueEditor_Settings]\r\n@=7.1\r\n";
    std::string text;
    const std::string bytes = BytesOf(path);
    for (size_t i = 2; i < bytes.size(); i += 2) text.push_back(bytes[i]);
    EXPECT_EQ(text, expected);
    store.Save(u"", u"");
    EXPECT_EQ(store.Get(u"", u"gone"), u"gone");
    EXPECT_FALSE(InHive(u"Font") || InHive(u""));
}

TEST_F(PersistSettingsTest, CopiesThatStartTogetherKeepEachOthersFirstValues)
{
    for (int round = 0; round < 10; ++round) {
        const std::string switches = "PersistSettings=2\nAppDataDirectory=./r" + std::to_string(round);
        auto store = Store(switches);
        InProcesses({[&] { store.Save(u"a", u"1"); }, [&] { store.Save(u"b", u"1"); }});
        EXPECT_EQ(store.Get(u"a", u"") + store.Get(u"b", u""), u"11");
    }
}

} // namespace nib::test
