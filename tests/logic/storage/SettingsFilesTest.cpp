#include "StoreFixture.h"
#include "persistence/store/SettingsStore.h"
#include "persistence/store/modPersistSettings.h"

#include <limits>

namespace nib::test::settings_files_test {

using namespace std::string_literals;

using ProfileTest = StoreTest;

constexpr TextView kSection{u"Sec"};

std::string Utf16(const std::string& ascii)
{
    std::string bytes = "\xFF\xFE";
    for (char c : ascii) bytes += {c, '\0'};
    return bytes;
}

TEST_F(ProfileTest, FindsValuesInWhateverTheFileHolds)
{
    const std::pair<std::string, Text> rows[] = {{"[Sec]\r\nKey=v\r\n", u"v"},
                                                 {"[sEC]\nkEY = v w \nKey=second\n", u"v w"},
                                                 {" [ Sec ] tail\r\tKey\t=\t'v'\r", u"v"},
                                                 {"Key=outside\n[Other]\nKey=x\n[Sec]\n;Key=comment\nKey=\"v\"", u"v"},
                                                 {"[Sec]\nKey=\"\"v\"\"\n", u"\"v\""},
                                                 {"[Sec]\nKey=\"v'\n", u"\"v'"},
                                                 {"[Sec]\nKey=\"\n", u"\""},
                                                 {"[Sec]\nKey=a=b;c\n", u"a=b;c"},
                                                 {"[Sec]\nKey=\xE9\n", u"\u00E9"},
                                                 {"[Sec]\na=1\n[Other]\nKey=x\n[Sec]\nKey=v\n", u"v"},
                                                 {Utf16("[Sec]\r\nKey=v\r\n"), u"v"},
                                                 {Utf16("[Sec]\r\nKey=v") + "x", u"v"},
                                                 {"\xEF\xBB\xBF[Sec]\nKey=\xC3\xA9\n", u"\u00E9"},
                                                 {"\0\x01\xFF\"[[\n]=\n=\n[Sec\n[Sec]\n\0\0\n=x\nKey=v"s, u"v"},
                                                 {"[Sec]\nKey=\n", u"default"},
                                                 {"[Sec]\nKey\n", u"default"},
                                                 {"[Sec]\nKeys=v\n", u"default"},
                                                 {"[Sec\nKey=v\n", u"default"},
                                                 {"\xFE\xFF\0["s, u"default"},
                                                 {"", u"default"}};
    for (const auto& [bytes, value] : rows) {
        SCOPED_TRACE(bytes);
        folder.File("f.ini", bytes);
        EXPECT_EQ(ProfileGetString(kSection, u" Key ", u"default", Path("f.ini")), value);
    }
}

TEST_F(ProfileTest, ASecondFileAnswersForWhatTheFirstLacks)
{
    folder.File("a.ini", "[Sec]\nempty=\nmine=1\n");
    folder.File("b.ini", "[Sec]\nempty=b\nmine=2\nonly=7 apples\n");
    const auto get = [&](TextView key) { return ProfileGetString(kSection, key, u"-", Path("a.ini"), Path("b.ini")); };
    EXPECT_EQ(get(u"mine"), u"1");
    EXPECT_EQ(get(u"empty"), u"b");
    EXPECT_EQ(get(u"none"), u"-");
    EXPECT_EQ(ProfileGetInt(kSection, u"only", 3, Path("a.ini"), Path("b.ini")), 7);
    EXPECT_EQ(ProfileGetInt(kSection, u"none", 3, Path("a.ini"), Path("b.ini")), 3);
    EXPECT_EQ(ProfileGetInt(kSection, u"empty", 3, Path("a.ini"), Path("b.ini")), 0);

    ProfileWriteString(disk, kSection, u"mine", u"2", u"other", Path("a.ini"), Path("b.ini"));
    ProfileWriteString(disk, kSection, u"only", u"default", u"default", Path("a.ini"), Path("b.ini"));
    EXPECT_EQ(BytesOf(folder / "a.ini"), "[Sec]\nempty=\nonly=default\n");
}

TEST_F(ProfileTest, AWriteChangesOneLine)
{
    const std::string rich = "; mine\n\n[Sec]\n  key = old \nb=2\n\n; about other\n[Other]\nKey=x\n";
    const std::tuple<std::string, Text, std::string> rows[] = {
        {"", u"v", "[Sec]\r\nKey=v\r\n"},
        {"[Other]\na=1", u"v", "[Other]\na=1\n[Sec]\nKey=v\n"},
        {rich, u"new", "; mine\n\n[Sec]\n  key = new \nb=2\n\n; about other\n[Other]\nKey=x\n"},
        {rich, u"", "; mine\n\n[Sec]\nb=2\n\n; about other\n[Other]\nKey=x\n"},
        {rich, u"default", "; mine\n\n[Sec]\nb=2\n\n; about other\n[Other]\nKey=x\n"},
        {rich, u"Default", "; mine\n\n[Sec]\n  key = Default \nb=2\n\n; about other\n[Other]\nKey=x\n"},
        {"[sec]\na=1\n\n; end\n[Z]\n", u"v", "[sec]\na=1\nKey=v\n\n; end\n[Z]\n"},
        {"[Sec]", u"v", "[Sec]\r\nKey=v\r\n"},
        {"[Sec]\nKey=1\nkey=2\n[Sec]\nKEY=3\n", u"", "[Sec]\n[Sec]\n"},
        {"[Sec]\n", u" v", "[Sec]\nKey=\" v\"\n"},
        {"[Sec]\n", u"v ", "[Sec]\nKey=\"v \"\n"},
        {"[Sec]\n", u"\"v", "[Sec]\nKey=\"\"v\"\n"},
        {"[Sec]\n", u"v'", "[Sec]\nKey=\"v'\"\n"},
        {"[Sec]\n", u"v\r\n[Other]", "[Sec]\nKey=v\n"},
        {"[Sec]\n", u"\u00E9", "[Sec]\nKey=\xE9\n"},
        {"[Sec]\nb=\xE9\n", u"\u4E2D", Utf16("[Sec]\nb=\xE9\nKey=") + "\x2D\x4E\n\0"s},
        {"\0junk\n[Sec\n\"\n[Sec]\nb=2\n"s, u"v", "\0junk\n[Sec\n\"\n[Sec]\nb=2\nKey=v\n"s},
        {Utf16("[Sec]\r\nb=1\r\n"), u"v", Utf16("[Sec]\r\nb=1\r\nKey=v\r\n")},
        {"\xEF\xBB\xBF[Sec]\n", u"\u4E2D", "\xEF\xBB\xBF[Sec]\nKey=\xE4\xB8\xAD\n"}};
    for (const auto& [before, value, after] : rows) {
        SCOPED_TRACE(after);
        folder.File("f.ini", before);
        ProfileWriteString(disk, kSection, u"Key", value, u"default", Path("f.ini"));
        EXPECT_EQ(BytesOf(folder / "f.ini"), after);
    }
}

TEST_F(ProfileTest, NamesThatAnIniFileCannotHoldAreNotWritten)
{
    folder.File("f.ini", "[Sec]\n");
    for (TextView key : {u"", u" ", u"a=b", u"[a", u";a", u"a\nb"})
        ProfileWriteString(disk, kSection, key, u"v", u"", Path("f.ini"));
    ProfileWriteString(disk, u"a]b", u"Key", u"v", u"", Path("f.ini"));
    ProfileWriteString(disk, u"", u"Key", u"v", u"", Path("f.ini"));
    EXPECT_EQ(BytesOf(folder / "f.ini"), "[Sec]\n");
}

TEST_F(ProfileTest, LongValuesAreWhole)
{
    ProfileWriteString(disk, kSection, u"Key", Text(5000, u'1'), u"", Path("f.ini"));
    EXPECT_EQ(ProfileGetString(kSection, u"Key", u"", Path("f.ini")), Text(5000, u'1'));
    EXPECT_EQ(ProfileGetInt(kSection, u"Key", 0, Path("f.ini")), std::numeric_limits<int32_t>::max());
}

TEST_F(ProfileTest, AFileThatCannotBeReadIsLeftAlone)
{
    folder.File("huge.ini", "[Sec]\nKey=v\n");
    std::filesystem::resize_file(folder / "huge.ini", 17 << 20);
    folder.Folder("folder.ini");
    for (const char* name : {"huge.ini", "folder.ini", "no/such/folder.ini"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(ProfileGetString(kSection, u"Key", u"default", Path(name)), u"default");
        ProfileWriteString(disk, kSection, u"Key", u"new", u"", Path(name));
        EXPECT_EQ(ProfileGetString(kSection, u"Key", u"default", Path(name)), u"default");
    }
    EXPECT_EQ(std::filesystem::file_size(folder / "huge.ini"), size_t{17} << 20);
}

TEST_F(ProfileTest, AWriteThatFailsLeavesTheOldFile)
{
    folder.File("f.ini", "[Sec]\nKey=old\n");
    {
        const FullDisk full(4);
        ProfileWriteString(disk, kSection, u"Key", u"new", u"", Path("f.ini"));
        ProfileWriteString(disk, kSection, u"Key", u"\u4E2D", u"", Path("f.ini"));
    }
    EXPECT_EQ(BytesOf(folder / "f.ini"), "[Sec]\nKey=old\n");
}

TEST_F(ProfileTest, RunningCopiesDoNotUndoEachOther)
{
    constexpr int kKeys = 40;
    std::vector<std::function<void()>> writers;
    for (const char16_t name : {u'a', u'b', u'c'}) {
        writers.emplace_back([this, name] {
            for (int i = 0; i < kKeys; ++i)
                ProfileWriteString(disk, kSection, name + Decimal(i), Decimal(i + 1), u"", Path("f.ini"));
        });
    }
    InProcesses(writers);
    for (const char16_t name : {u'a', u'b', u'c'})
        for (int i = 0; i < kKeys; ++i) EXPECT_EQ(ProfileGetInt(kSection, name + Decimal(i), 0, Path("f.ini")), i + 1);
}

TEST_F(ProfileTest, ACopyThatHangsDoesNotHoldUpTheOthers)
{
    const FileHold held = disk.Hold(Path("f.ini"));
    ProfileWriteString({disk.saver, std::chrono::milliseconds{20}}, kSection, u"Key", u"v", u"", Path("f.ini"));
    EXPECT_EQ(ProfileGetString(kSection, u"Key", u"", Path("f.ini")), u"v");
}

TEST(LeadingNumberTest, Table)
{
    const std::pair<TextView, int32_t> rows[] = {{u"2", 2},   {u"  -7x", -7},   {u"+3", 3}, {u"2.5", 2}, {u"3.5", 4},
                                                 {u".6", 1},  {u"-1.6e1", -16}, {u"x", 0},  {u"", 0},    {u"--5", 0},
                                                 {u"+-5", 0}, {u"5-3", 5},      {u"5e", 5}, {u"e5", 0},  {u"1e-999", 0},
                                                 {u"inf", 0}, {u"nan", 0}};
    for (const auto& [text, number] : rows) EXPECT_EQ(LeadingInt(text), number) << ToUtf8(text);
    EXPECT_EQ(LeadingInt(u"1e999"), INT32_MAX);
    EXPECT_EQ(LeadingInt(u"-99999999999"), INT32_MIN);
}

constexpr TextView kTextKey{u"Software\\Orlin\\MultiValue Editor\\Settings"};

struct HiveFileTest : StoreTest {
    HiveFile Hive() { return HiveFile(disk, Path("config/Orlin/hive.conf")); }
    Text Value(TextView keyPath, TextView name)
    {
        const auto value = Hive().Get(keyPath, name);
        return value.value_or(u"<none>");
    }
};

TEST_F(HiveFileTest, AnyNameHoldsAnyText)
{
    std::vector<Text> texts =
        Split(u"|@| | a |a=b|[a]|;a|a\r\nb\n|\"a|'a'|\t|%|%u0041|%U0042|\\n|\u00E9\u4E2D|#General", u'|');
    texts.insert(texts.end(), {u"\xD83D\xDE00", u"\xD83D", u"\xDE00x", Text(u"\0x", 2), Text(9000, u'y')});
    auto hive = Hive();
    int number = 0;
    for (const Text& name : texts) {
        EXPECT_FALSE(hive.Get(kTextKey, name));
        hive.Set(kTextKey, name, texts[static_cast<size_t>(number)]);
        hive.Set(name, u"n", Decimal(number++));
    }
    EXPECT_TRUE(hive.Flush());
    number = 0;
    for (const Text& name : texts) {
        EXPECT_EQ(Value(kTextKey, name), texts[static_cast<size_t>(number)]) << ToUtf8(name);
        EXPECT_EQ(Value(name, u"N"), Decimal(number++)) << ToUtf8(name);
    }
}

TEST_F(HiveFileTest, DamagedFilesKeepTheirGoodValues)
{
    const std::pair<std::string, TextView> rows[] = {{"[K]\njunk\"\x01\n[K\na=good\n", u"good"},
                                                     {"\0\0\0\0\n[K]\n\xFF\xFE\xFF=x\na=good"s, u"good"},
                                                     {"[K]\na=\"go", u"\"go"},
                                                     {"[K]\na=%uD8\n", u"%uD8"},
                                                     {"[K]\n", u"<none>"},
                                                     {"", u"<none>"}};
    for (const auto& [bytes, value] : rows) {
        SCOPED_TRACE(bytes);
        folder.File("config/Orlin/hive.conf", bytes);
        EXPECT_EQ(Value(u"K", u"a"), value);
        auto hive = Hive();
        hive.Set(u"K", u"b", u"new");
        EXPECT_TRUE(hive.Flush());
        EXPECT_EQ(Value(u"K", u"a"), value);
        EXPECT_EQ(Value(u"K", u"b"), u"new");
    }
}

TEST_F(HiveFileTest, ChangesOfOthersAreSeenAndKept)
{
    auto one = Hive();
    auto two = Hive();
    for (int i = 0; i < 50; ++i) {
        one.Set(u"K", u"a", Decimal(i));
        two.Set(u"K", u"b", Decimal(i));
        EXPECT_TRUE(one.Flush());
        EXPECT_TRUE(two.Flush());
        EXPECT_EQ(two.Get(u"k", u"A"), Decimal(i));
        EXPECT_EQ(one.Get(u"k", u"B"), Decimal(i));
    }
}

TEST_F(HiveFileTest, AHiveThatCannotBeWrittenLastsForTheRun)
{
    folder.File("config/Orlin/hive.conf", "[K]\na=old\n");
    {
        const FullDisk full;
        auto hive = Hive();
        Text told;
        hive.TellTrouble([&](TextView why) { told = why; });
        hive.Set(u"K", u"a", u"new");
        EXPECT_FALSE(hive.Flush());
        EXPECT_EQ(hive.Get(u"K", u"a"), u"new");
        EXPECT_NE(told.find(u"hive.conf cannot be saved: File too large"), Text::npos);
    }
    EXPECT_EQ(Value(u"K", u"a"), u"old");

    std::filesystem::remove(folder / "config/Orlin/hive.conf");
    folder.Folder("config/Orlin/hive.conf");
    auto hive = Hive();
    hive.Set(u"K", u"a", u"new");
    EXPECT_FALSE(hive.Flush());
    EXPECT_EQ(hive.Get(u"K", u"a"), u"new");
    // The way is free again: the next change takes the older ones along.
    std::filesystem::remove(folder / "config/Orlin/hive.conf");
    hive.Set(u"K", u"b", u"2");
    EXPECT_TRUE(hive.Flush());
    EXPECT_EQ(Value(u"K", u"a"), u"new");
}

TEST_F(HiveFileTest, WhatIsStoredAlreadyIsNotWrittenAgain)
{
    auto hive = Hive();
    hive.Set(u"K", u"a", u"1");
    EXPECT_TRUE(hive.Flush());
    const FileStamp before = StampOf(folder / "config/Orlin/hive.conf");
    hive.Set(u"K", u"a", u"1");
    EXPECT_TRUE(hive.Flush());
    EXPECT_EQ(StampOf(folder / "config/Orlin/hive.conf"), before);
}

} // namespace nib::test::settings_files_test
