#include "StoreFixture.h"
#include "editing/MvEdit.h"
#include "fakes/Failure.h"
#include "fakes/MemorySettings.h"
#include "persistence/store/TextFile.h"
#include "persistence/store/modPersistSettings.h"

#include <type_traits>

namespace nib::test::persist_settings_test {

using namespace std::string_literals;

struct PersistSettingsTest : StoreTest {
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

TEST(SettingsPathTest, DotToAbsPath)
{
    const std::pair<TextView, TextView> rows[] = {{u"./d", u"/o/n/d"}, {u"./", u"/o/n/"},    {u"../x", u"/o/x"},
                                                  {u"..", u"/o"},      {u"../../x", u"/x"},  {u"../../../x", u"/x"},
                                                  {u"../../..", u"/"}, {u".", u"."},         {u".x/../y", u".x/y"},
                                                  {u"/a//b", u"/a/b"}, {u"/a///b", u"/a/b"}, {u"/a/./b", u"/a/./b"},
                                                  {u"/a/../..", u"/"}, {u"", u"/"},          {u"a/b/../c", u"a/c"},
                                                  {u"a/..", u"a"},     {u"//s/t", u"/s/t"}};
    for (const auto& [path, absolute] : rows) EXPECT_EQ(DotToAbsPath(path, u"/o/n"), absolute) << ToUtf8(path);
}

TEST(SettingsPathTest, References)
{
    const Environment environment = [](TextView name) -> std::optional<Text> {
        return name == u"A" ? std::optional<Text>(u"one") : std::nullopt;
    };
    const std::pair<TextView, TextView> rows[] = {{u"x%A%y%A%", u"xoneyone"}, {u"%B%%A%", u"one"}, {u"100%", u"100%"},
                                                  {u"%A%50%", u"one50%"},     {u"%%x", u"x"},      {u"%B", u"%B"}};
    for (const auto& [text, expanded] : rows) EXPECT_EQ(ExpandEnviron(text, environment), expanded);
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
    const std::string root = folder.Path();
    const std::tuple<std::string, std::string, bool> rows[] = {{".", "./", true},
                                                               {".\\", root + "/p/q/", true},
                                                               {".\\data\\deep", root + "/p/q/data/deep/", true},
                                                               {"..\\..\\x", root + "/x/", true},
                                                               {"./%HERE%", root + "/p/q/sub/", true},
                                                               {"%EMPTY%", root + "/p/q/", true},
                                                               {"%HERE%", "sub/", false},
                                                               {"%HERE%\\y", root + "/p/q/", true},
                                                               {root + "/file/z", root + "/p/q/", true},
                                                               {root + "/j\xC3\xB6rg", root + "/j\xC3\xB6rg/", true}};
    for (const auto& [value, resolved, made] : rows) {
        SCOPED_TRACE(value);
        auto store = Store("PersistSettings=0\nAppDataDirectory=" + value + "\nUserDataDirectory=" + value);
        store.InitPersistSettings();
        EXPECT_EQ(ToUtf8(store.AppDataDirectory()), resolved);
        EXPECT_EQ(store.UserDataDirectory(), store.AppDataDirectory());
        EXPECT_EQ(std::filesystem::is_directory(resolved), made);
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

/// Off its default, and within the limits of every field.
template <typename Field>
void Change(Field& field, TextView name)
{
    if constexpr (std::is_same_v<Field, Text>)
        field = u" " + Text(name) + u" \u4E2D \"x";
    else if constexpr (std::is_same_v<Field, bool>)
        field = !field;
    else if constexpr (std::is_same_v<Field, clsRecentList>)
        for (TextView entry : {u"one", u"two\u00E9"}) field.AddItem(entry);
    else if constexpr (std::is_same_v<Field, clsKeywords>)
        field.SetKeywordList(4, u",", u"END THING-,OPEN+," + Text(6000, u'W'));
    else
        field = static_cast<Field>(field == 2 ? 1 : 2);
}

MvEdit Changed()
{
    MvEdit settings;
    for (const SettingRow& row : kSettings)
        std::visit(
            [&](auto member) {
                if constexpr (std::is_same_v<decltype(member), RecentMember>)
                    Change(settings.*member.list, row.name);
                else
                    Change(settings.*member, row.name);
            },
            row.member);
    return settings;
}

StoredValues Saved(const MvEdit& settings)
{
    MemorySettings store;
    settings.SaveSettings(store);
    return store.values;
}

struct SettingsModesTest : PersistSettingsTest {
    /// What a later run of the program finds.
    MvEdit NextRun(HiveFile& hive)
    {
        modPersistSettings store(hive, disk, Path("program"), [](TextView) { return std::optional<Text>(); });
        MvEdit settings;
        settings.LoadSettings({store, u"Courier New", {}});
        return settings;
    }
};

TEST(SettingsTest, ACloneAndAnUpdateTakeEverySettingAlong)
{
    const MvEdit changed = Changed();
    MvEdit clone = changed.Clone();
    EXPECT_EQ(Saved(clone), Saved(changed));
    MvEdit settings;
    settings.UpdateFrom(changed);
    EXPECT_EQ(Saved(settings), Saved(changed));
    clone.UpdateFrom(MvEdit());
    EXPECT_EQ(Saved(clone), Saved(MvEdit()));
    settings.UpdateFrom(settings);
    EXPECT_EQ(Saved(settings), Saved(changed)) << "nothing else notices";
}

TEST_F(SettingsModesTest, EverySettingLastsInTheHiveAndTheIniFileAndNowhereElse)
{
    const MvEdit changed = Changed();
    for (int32_t mode : {1, 2, 0}) {
        SCOPED_TRACE(mode);
        const std::string name = "mode" + std::to_string(mode);
        folder.File("program/isolation.ini",
                    "[Isolation]\nPersistSettings=" + std::to_string(mode) + "\nAppDataDirectory=../" + name + "\n");
        {
            HiveFile hive(disk, Path(name + "/hive.conf"));
            modPersistSettings store(hive, disk, Path("program"), [](TextView) { return std::optional<Text>(); });
            changed.SaveSettings(store);
            hive.Flush();
        }
        HiveFile hive(disk, Path(name + "/hive.conf"));
        StoredValues found = Saved(NextRun(hive));
        StoredValues expected = mode == 0 ? Saved(NextRun(hive)) : Saved(changed);
        EXPECT_EQ(found, expected);
        EXPECT_EQ(found == Saved(changed), mode != 0);
        EXPECT_EQ(std::filesystem::exists(ToUtf8(Path(name + "/appstate.ini"))), mode == 2);
    }
}

struct TextFileTest : StoreTest {
    FileSaver saver{folder / "backups"};
};

TEST_F(TextFileTest, EncodingsByTheTable)
{
    const std::tuple<int32_t, Text, std::string, int32_t> rows[] = {
        {-1, u"Aé", "A\0\xE9\0"s, 1},
        {0, u"Aé", "A\xE9", 1},
        {0, u"A€", "\xFF\xFE\x41\0\xAC\x20"s, 3},
        {1, u"Aé", "A\xE9", 1},
        {2, u"Aé", "A\xC3\xA9", 2},
        {3, u"Aé", "\xFF\xFE\x41\0\xE9\0"s, 3},
        {4, u"Aé", "A\xC3\xA9", 2},
        {5, u"Aé", "\xFF\xFE\x41\0\xE9\0"s, 3},
        {9, u"Aé", "A\xE9", 1},
        {3, u"", "\xFF\xFE", 3},
        {3, u"a\r\nb\n", "\xFF\xFE\x61\0\r\0\n\0b\0\n\0"s, 3}};
    for (const auto& [code, text, bytes, detected] : rows) {
        SCOPED_TRACE(code);
        EXPECT_TRUE(WriteTextFile(saver, Path("f"), text, code, false));
        EXPECT_EQ(BytesOf(folder / "f"), bytes);
        int32_t encoding = code;
        EXPECT_EQ(ReadTextFile(Path("f"), encoding, false), text);
        EXPECT_EQ(encoding, code == 0 ? detected : code);
        EXPECT_EQ(DetectEncoding(bytes), detected);
    }
}

TEST_F(TextFileTest, Failures)
{
    folder.File("f", "old");
    folder.Folder("d/e");
    std::filesystem::create_symlink("loop", folder / "loop");
    int32_t encoding = 1;
    const std::pair<const char*, int32_t> rows[] = {{"none", 53}, {"none/f", 76}, {"f/f", 76},
                                                    {"loop", 76}, {"d", 5},       {"f", 0}};
    for (const auto& row : rows) {
        const auto& name = row.first;
        const int32_t number = row.second;
        SCOPED_TRACE(name);
        EXPECT_EQ(ErrorOf([&] { ReadTextFile(Path(name), encoding, false); }).number, number);
        EXPECT_EQ(ErrorOf([&] { ReadTextFile(Path(name), encoding, true); }).number, 0);
    }
    EXPECT_EQ(ErrorOf([&] { ReadTextFile(Path(std::string(300, 'x')), encoding, false); }).number, 123);
    EXPECT_EQ(ErrorOf([&] { WriteTextFile(saver, Path("none/f"), u"", 1, false); }).number, 76);
    EXPECT_FALSE(WriteTextFile(saver, Path("none/f"), u"", 1, true));
    EXPECT_EQ(ErrorOf([&] { KillFile(Path("none"), false); }).number, 53);
    EXPECT_EQ(ErrorOf([&] { KillFile(Path(std::string(300, 'x')), false); }).number, 5);
    EXPECT_FALSE(KillFile(Path("none"), true));

    {
        const FullDisk full(100);
        EXPECT_EQ(ErrorOf([&] { WriteTextFile(saver, Path("f"), Text(500, u'x'), 1, false); }).number, 61);
    }
    EXPECT_EQ(BytesOf(folder / "f"), "old");
    EXPECT_TRUE(KillFile(Path("f"), false));
}

TEST_F(TextFileTest, WideCharsAndUnicodeFiles)
{
    EXPECT_FALSE(HasWideChars(u"aÿ", false));
    EXPECT_TRUE(HasWideChars(u"\xF8FC", false));
    EXPECT_FALSE(HasWideChars(u"\xF8FC\xF8FD\xF8FE", true));
    EXPECT_TRUE(HasWideChars(u"\xF8FB", true));
    EXPECT_FALSE(HasWideChars(u"", false));

    folder.File("narrow", "k=\xE9\n");
    EXPECT_FALSE(CheckUnicodeFile(saver, Path("narrow"), u"ÿ"));
    EXPECT_EQ(BytesOf(folder / "narrow"), "k=\xE9\n");
    for (int twice = 0; twice < 2; ++twice) {
        EXPECT_TRUE(CheckUnicodeFile(saver, Path("narrow"), u"€"));
        EXPECT_EQ(BytesOf(folder / "narrow"), "\xFF\xFEk\0=\0\xE9\0\n\0"s);
    }
    EXPECT_TRUE(CheckUnicodeFile(saver, Path("new"), u"€"));
    EXPECT_EQ(BytesOf(folder / "new"), "\xFF\xFE");
    EXPECT_TRUE(CheckUnicodeFile(saver, Path("none/new"), u"€"));
}

} // namespace nib::test::persist_settings_test
