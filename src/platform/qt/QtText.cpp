#include "platform/qt/QtText.h"

#include <QCoreApplication>
#include <QLibraryInfo>

#include <algorithm>
#include <iterator>

// Outside of any namespace: the macro declares a function of the resource compiler.
static void LoadTranslationsResource()
{
    Q_INIT_RESOURCE(translations);
}

namespace nib {

namespace {

/// The logic knows no translator; what it says and what is not fixed is gathered here.
constexpr const char* kTexts[] = {
    // buttons of message boxes
    QT_TRANSLATE_NOOP("Logic", "OK"),
    QT_TRANSLATE_NOOP("Logic", "Cancel"),
    QT_TRANSLATE_NOOP("Logic", "&Abort"),
    QT_TRANSLATE_NOOP("Logic", "&Retry"),
    QT_TRANSLATE_NOOP("Logic", "&Ignore"),
    QT_TRANSLATE_NOOP("Logic", "&Try Again"),
    QT_TRANSLATE_NOOP("Logic", "&Continue"),
    QT_TRANSLATE_NOOP("Logic", "&Reload"),
    QT_TRANSLATE_NOOP("Logic", "&Keep"),
    QT_TRANSLATE_NOOP("Logic", "C&ompare"),
    QT_TRANSLATE_NOOP("Logic", "C&lose"),
    // panels of the status bar
    QT_TRANSLATE_NOOP("Logic", "Account and connection"),
    QT_TRANSLATE_NOOP("Logic", "Lock of the item"),
    QT_TRANSLATE_NOOP("Logic", "Character set"),
    QT_TRANSLATE_NOOP("Logic", "Line ends"),
    QT_TRANSLATE_NOOP("Logic", "Dialect of programs"),
    QT_TRANSLATE_NOOP("Logic", "No dialect"),
    QT_TRANSLATE_NOOP("Logic", "Locked here"),
    QT_TRANSLATE_NOOP("Logic", "Not locked"),
    QT_TRANSLATE_NOOP("Logic", "Read only"),
    QT_TRANSLATE_NOOP("Logic", "LF, mixed"),
    QT_TRANSLATE_NOOP("Logic", "CR LF, mixed"),
    QT_TRANSLATE_NOOP("Logic", "CR, mixed"),
    // the search
    QT_TRANSLATE_NOOP("Logic", "There is no such escape."),
    QT_TRANSLATE_NOOP("Logic", "There is no such class of characters."),
    QT_TRANSLATE_NOOP("Logic", "A parenthesis has no partner."),
    QT_TRANSLATE_NOOP("Logic", "The number is too large."),
    QT_TRANSLATE_NOOP("Logic", "Braces hold one number, or two with a comma."),
    QT_TRANSLATE_NOOP("Logic", "The larger number stands before the smaller one."),
    QT_TRANSLATE_NOOP("Logic", "There is no such group."),
    QT_TRANSLATE_NOOP("Logic", "What is looked for behind must have a greatest length."),
    QT_TRANSLATE_NOOP("Logic", "A bracket has no partner."),
    QT_TRANSLATE_NOOP("Logic", "The range begins behind its end."),
    QT_TRANSLATE_NOOP("Logic", "The expression is too large."),
    QT_TRANSLATE_NOOP("Logic", "The expression is not understood here."),
    QT_TRANSLATE_NOOP("Logic", "The search was stopped: the expression takes too much time."),
    QT_TRANSLATE_NOOP("Logic", "The search was stopped: the expression needs too much memory."),
    // the picker
    QT_TRANSLATE_NOOP("Logic", "&Open"),
    QT_TRANSLATE_NOOP("Logic", "&Save"),
    QT_TRANSLATE_NOOP("Logic", "&Export"),
    QT_TRANSLATE_NOOP("Logic", "I&mport"),
    QT_TRANSLATE_NOOP("Logic", "It cannot be read."),
    QT_TRANSLATE_NOOP("Logic", "No name matches the filter."),
    QT_TRANSLATE_NOOP("Logic", "Nothing here."),
    QT_TRANSLATE_NOOP("Logic", "Only hidden files here."),
    QT_TRANSLATE_NOOP("Logic", "Select one place to go into, or the items to open."),
    // the start page
    QT_TRANSLATE_NOOP("Logic", "Open an item or a file"),
    QT_TRANSLATE_NOOP("Logic", "New document"),
    QT_TRANSLATE_NOOP("Logic", "Open DEMO"),
    QT_TRANSLATE_NOOP("Logic", "the sample account"),
    QT_TRANSLATE_NOOP("Logic", "Open the last session"),
    QT_TRANSLATE_NOOP("Logic", "Open a program, change it, save it"),
    QT_TRANSLATE_NOOP("Logic", "See what is wrong while you type, then compile"),
    QT_TRANSLATE_NOOP("Logic", "Find a name in all programs of an account"),
    QT_TRANSLATE_NOOP("Logic", "The first hour: a guide"),
};

/// The first of the user's languages that there is a file for. The texts in the source are English, so whoever would
/// rather read English than a later language of the list gets it.
void Install(QTranslator& translator, const QLocale& locale, const QString& folder, const QString& name)
{
    for (QString language : locale.uiLanguages()) {
        language.replace(QLatin1Char('-'), QLatin1Char('_'));
        if (language == QLatin1String("C") || language.section(QLatin1Char('_'), 0, 0) == QLatin1String("en")) return;
        if (!translator.load(name + QLatin1Char('_') + language, folder)) continue;
        QCoreApplication::installTranslator(&translator);
        return;
    }
}

} // namespace

QColor ToColor(TextView name)
{
    const QString color = ToQString(Trim(name));
    return QColor::isValidColor(color) ? QColor(color) : QColor();
}

QString Translated(TextView text)
{
    const QString plain = ToQString(text);
    const bool known = std::any_of(std::begin(kTexts), std::end(kTexts),
                                   [&](const char* entry) { return plain == QLatin1String(entry); });
    return known ? QCoreApplication::translate("Logic", plain.toLatin1().constData()) : plain;
}

Translations::Translations(const QLocale& locale)
{
    LoadTranslationsResource();
    Install(qt_, locale, QLibraryInfo::path(QLibraryInfo::TranslationsPath), QStringLiteral("qtbase"));
    Install(ours_, locale, QStringLiteral(":/translations"), QStringLiteral("nibpad71"));
}

} // namespace nib
