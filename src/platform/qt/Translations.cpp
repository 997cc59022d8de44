#include "platform/qt/Translations.h"

#include <QCoreApplication>
#include <QLibraryInfo>

// Outside of any namespace: the macro declares a function of the resource compiler.
static void LoadTranslationsResource()
{
    Q_INIT_RESOURCE(translations);
}

namespace nib {

namespace {

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

Translations::Translations(const QLocale& locale)
{
    LoadTranslationsResource();
    Install(qt_, locale, QLibraryInfo::path(QLibraryInfo::TranslationsPath), QStringLiteral("qtbase"));
    Install(ours_, locale, QStringLiteral(":/translations"), QStringLiteral("nibpad71"));
}

} // namespace nib
