#include "StoreFixture.h"
#include "persistence/store/modPersistSettings.h"

#include <filesystem>

namespace nib::test {
namespace {

using namespace std::string_literals;

constexpr TextView kTextKey{u"Software\\Orlin\\MultiValue Editor\\Settings"};

class HiveFileTest : public StoreTest {
protected:
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

} // namespace
} // namespace nib::test
