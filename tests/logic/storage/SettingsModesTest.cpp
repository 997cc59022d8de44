#include "StoreFixture.h"
#include "editing/MvEdit.h"
#include "fakes/MemorySettings.h"
#include "persistence/store/modPersistSettings.h"

#include <filesystem>
#include <type_traits>

namespace nib::test {
namespace {

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

class SettingsModesTest : public StoreTest {
protected:
    SettingsModesTest() { std::filesystem::current_path(folder.Folder("cwd")); }
    ~SettingsModesTest() override { std::filesystem::current_path("/"); }

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

} // namespace
} // namespace nib::test
