#include "persistence/store/QtSettingsHive.h"
#include "persistence/store/SettingsStore.h"
#include "platform/qt/QtText.h"

#include <QtTest>
#include <QtWidgets>
#include <gtest/gtest.h>

namespace nib::test::widget_settings_hive_test {

struct SettingsHiveTest : testing::Test {
    Text Path() const { return ToText(folder.filePath(QStringLiteral("Orlin/hive.conf"))); }

    QTemporaryDir folder;
    ProfileDisk disk{FileSaver(folder.filePath(QStringLiteral("backups")).toStdString())};
};

TEST_F(SettingsHiveTest, ChangesReachTheDiskTogetherAtTheNextTurnOfTheEventLoop)
{
    QtSettingsHive one(disk, Path());
    QtSettingsHive two(disk, Path());
    one.Set(kSettingsKey, u"FontName", u"Mono");
    one.Set(kSettingsKey, u"", u"7.1");
    two.Set(kSettingsKey, u"MainLeft", u"1200");
    EXPECT_EQ(one.Get(kSettingsKey, u"FontName"), u"Mono");
    EXPECT_FALSE(two.Get(kSettingsKey, u"FontName"));
    QCoreApplication::processEvents();
    EXPECT_EQ(two.Get(kSettingsKey, u"FontName"), u"Mono");
    EXPECT_EQ(one.Get(kSettingsKey, u"MainLeft"), u"1200");

    QFile file(ToQString(Path()));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "[Software\\Orlin\\MultiValue Editor\\Settings]\nFontName=Mono\n@=7.1\nMainLeft=1200\n");
}

TEST_F(SettingsHiveTest, TheLastChangesAreWrittenAtTheEnd)
{
    {
        QtSettingsHive hive(disk, Path());
        hive.Set(u"K", u"a", u"");
    }
    EXPECT_EQ(QtSettingsHive(disk, Path()).Get(u"K", u"a"), u"");
}

TEST_F(SettingsHiveTest, TheHiveIsInTheUsersFolderOfConfigurations)
{
    const QByteArray before = qgetenv("XDG_CONFIG_HOME");
    qputenv("XDG_CONFIG_HOME", "/somewhere/config");
    EXPECT_EQ(QtSettingsHive::DefaultPath(), u"/somewhere/config/Orlin/hive.conf");
    qputenv("XDG_CONFIG_HOME", before);
    if (before.isEmpty()) qunsetenv("XDG_CONFIG_HOME");
}

} // namespace nib::test::widget_settings_hive_test
