#include "platform/qt/QtLooks.h"
#include "platform/qt/QtText.h"
#include "platform/qt/ShownTexts.h"
#include "shell/assist/QtPhrase.h"

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

TEST(Translations, OneOfOursInTheUsersLanguageAndNamesAsTheyAre)
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
        for (TextView name : {u"BP INVOICE", u"\u00d6"}) EXPECT_EQ(Translated(name), ToQString(name));
    }
    EXPECT_EQ(Translated(u"&Open"), QStringLiteral("&Open")) << "the language goes with the object";
}

TEST(Translations, MessagesKeepTheirNamesAndAreWholeOrNotAtAll)
{
    const Translations translations{QLocale(QStringLiteral("de_DE"))};
    struct Case {
        const char* message;
        const char* translated; ///< null: it stays as it is
    };
    for (const Case& row : {Case{"Save changes to BP %2 ?", "\u00c4nderungen an BP %2 speichern?"},
                            {"The following error has occurred:\nFile Yes does not exist in account %1.",
                             "Es ist ein Fehler aufgetreten:\nDie Datei Yes gibt es im Konto %1 nicht."},
                            {"The following error has occurred:\nNobody knows.", nullptr},
                            {"Settings cannot be stored: /a: b cannot be saved: Nobody knows.",
                             "Die Einstellungen lassen sich nicht speichern: /a: b l\u00e4sst sich nicht speichern: "
                             "Nobody knows."},
                            {"Save changes?", nullptr},
                            {"Ln 12, Col 3", "Z 12, Sp 3"}}) {
        const auto translated = TranslatedMessage(QString::fromUtf8(row.message));
        EXPECT_EQ(translated.has_value(), row.translated != nullptr) << row.message;
        if (translated && row.translated) EXPECT_EQ(*translated, QString::fromUtf8(row.translated));
    }
}

TEST(Translations, PlacesKeepTheirNames)
{
    const Translations translations{QLocale(QStringLiteral("de_DE"))};
    for (const auto& [place, shown] : {std::pair(u"DEMO on vm", "DEMO auf vm"),
                                       {u"A on %2 on vm", "A on %2 auf vm"},
                                       {u"/x/Notes on y", "/x/Notes on y"}})
        EXPECT_EQ(TranslatedPlace(place).toStdString(), shown);
}

TEST(Translations, NoMessageIsTakenForAnother)
{
    const Translations translations{QLocale(QStringLiteral("de_DE"))};
    const auto filled = [](QString text) { return text.replace(QRegularExpression("%(\\d)"), "Name\\1"); };
    for (const auto& texts : {kMessageTexts, kHostTexts}) {
        for (const char* entry : texts) {
            const QString english = QString::fromUtf8(entry);
            if (english.contains("%8") || english.contains("%9")) continue;
            const QString expected = filled(QCoreApplication::translate("Message", entry));
            EXPECT_EQ(TranslatedMessage(filled(english)).value_or(QString()).toStdString(), expected.toStdString());
        }
    }
}

TEST(Translations, WhatIsSaidOfProgramsTakesTheWordOrderOfTheLanguage)
{
    const Phrase where{Wording::LineOf, {Text(u"3"), Text(u"BP %1")}};
    const Phrase what{Wording::ClosedBefore, {Text(u"THEN"), Text(u"END"), Text(u"NEXT"), where}};
    const Phrase said{Wording::InPlace, {where, what}};
    EXPECT_EQ(English(said), u"in line 3 of BP %1: THEN is not closed by END before NEXT in line 3 of BP %1.");
    const Translations translations{QLocale(QStringLiteral("de_DE"))};
    EXPECT_EQ(ShownText(said),
              u"in Zeile 3 von BP %1: THEN ist nicht mit END geschlossen, bevor in Zeile 3 von BP %1 NEXT kommt.");
    for (const FindingKind& kind : FindingKinds()) EXPECT_NE(ShownHelp(kind), ToQString(kind.help));
}

TEST(Looks, BoxesCanBeSeenOnDarkWindows)
{
    const QPalette usual = QApplication::palette();
    QPalette dark(QColor(49, 54, 59));
    dark.setColor(QPalette::Base, QColor(35, 38, 41));
    QApplication::setPalette(dark);
    MendLooks();
    QCheckBox box;
    QRadioButton option;
    for (QWidget* widget : {static_cast<QWidget*>(&box), static_cast<QWidget*>(&option)}) {
        widget->resize(widget->sizeHint());
        const QImage image = widget->grab().toImage();
        int lightest = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) lightest = std::max(lightest, image.pixelColor(x, y).lightness());
        EXPECT_GT(lightest, 100) << widget->metaObject()->className();
    }
    QApplication::setPalette(usual);
}

} // namespace nib::test::widget_resources_test
