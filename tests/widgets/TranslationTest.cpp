#include "platform/qt/QtText.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

namespace nib::test {
namespace {

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

} // namespace
} // namespace nib::test
