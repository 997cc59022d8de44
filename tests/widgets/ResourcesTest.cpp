#include "platform/qt/QtText.h"

#include <QtTest>
#include <QtWidgets>

#include <gtest/gtest.h>

#include <set>

namespace nib::test::widget_resources_test {

struct Row {
    const char* file;
    size_t colours; ///< that a large picture has at least
};

constexpr Row kRows[] = {
    {"com.orlin.NibPad71.svg", 20}, {"com.orlin.NibPad71-symbolic.svg", 2}, {"text-x-mvbasic.svg", 20}};

QImage Drawn(const char* file, int side)
{
    const QIcon icon(QStringLiteral(NIB_SOURCE_DIR "/resources/icons/") + QLatin1String(file));
    return icon.pixmap(side, side).toImage().convertToFormat(QImage::Format_ARGB32);
}

TEST(Icons, AreDrawnInEachSizeOnNothing)
{
    for (const Row& row : kRows) {
        for (const int side : {16, 22, 32, 48, 128, 256}) {
            const QImage image = Drawn(row.file, side);
            ASSERT_EQ(image.size(), QSize(side, side)) << row.file;
            std::set<QRgb> colours;
            int inked = 0;
            for (int y = 0; y < side; ++y) {
                for (int x = 0; x < side; ++x) {
                    colours.insert(image.pixel(x, y));
                    if (qAlpha(image.pixel(x, y)) > 200) ++inked;
                }
            }
            EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0) << row.file << " fills its corner at " << side;
            EXPECT_GT(inked, side * side / 5) << row.file << " is all but empty at " << side;
            EXPECT_GE(colours.size(), row.colours) << row.file << " at " << side;
        }
    }
}

TEST(Translations, OneOfOursInTheUsersLanguageAndFixedTextsAsTheyAre)
{
    struct Case {
        const char* locale;
        const char* open;
        const char* preview;
    };
    for (const Case& row : {Case{"de_DE", "&\u00d6ffnen", "Vorschau"},
                            {"de_AT", "&\u00d6ffnen", "Vorschau"},
                            {"en_GB", "&Open", "Preview"},
                            {"C", "&Open", "Preview"},
                            {"fi_FI", "&Open", "Preview"}}) {
        const Translations translations{QLocale(QLatin1String(row.locale))};
        EXPECT_EQ(Translated(u"&Open"), QString::fromUtf8(row.open)) << row.locale;
        EXPECT_EQ(QCoreApplication::translate("Printing", "Preview"), QString::fromUtf8(row.preview)) << row.locale;
        for (TextView fixed : {u"&Yes", u"Save changes?", u"\u00d6"}) EXPECT_EQ(Translated(fixed), ToQString(fixed));
    }
    EXPECT_EQ(Translated(u"&Open"), QStringLiteral("&Open")) << "the language goes with the object";
}

} // namespace nib::test::widget_resources_test
