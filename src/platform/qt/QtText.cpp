#include "platform/qt/QtText.h"

#include "platform/qt/ShownTexts.h"

#include <QCoreApplication>
#include <QHash>
#include <QLibraryInfo>
#include <QSet>

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

constexpr QChar kHolder = u'%';
constexpr QChar kSentence = u'9';
constexpr QChar kCaption = u'8';
constexpr QStringView kWords = u"67";

/// What stands in a message for the place holders of its pattern; nothing for a message of another kind.
std::optional<QHash<QChar, QString>> ValuesOf(QStringView pattern, QStringView text)
{
    QHash<QChar, QString> values;
    for (;;) {
        const qsizetype at = pattern.indexOf(kHolder);
        if (at < 0) return text == pattern ? std::optional(values) : std::nullopt;
        if (!text.startsWith(pattern.left(at))) return std::nullopt;
        const QChar number = pattern[at + 1];
        text = text.mid(at);
        pattern = pattern.mid(at + 2);
        const qsizetype next = pattern.indexOf(kHolder);
        const QStringView behind = next < 0 ? pattern : pattern.left(next);
        const qsizetype end = next < 0 ? text.size() - behind.size() : text.indexOf(behind);
        if (end < 0) return std::nullopt;
        values.insert(number, text.left(end).toString());
        text = text.mid(end);
    }
}

/// A value in the user's language where it is to be in it; nothing where it has to be and cannot.
std::optional<QString> Inner(QChar number, const QString& value)
{
    if (number == kSentence) return TranslatedMessage(value);
    if (number == kCaption) return Translated(ViewOf(value));
    return kWords.contains(number) ? TranslatedText(ViewOf(value)) : value;
}

std::optional<QString> Filled(QString message, const QHash<QChar, QString>& values)
{
    // From behind: a value may look like a place holder itself.
    for (qsizetype at = message.lastIndexOf(kHolder); at >= 0; at = message.lastIndexOf(kHolder, at - 1)) {
        const QChar number = at + 1 < message.size() ? message[at + 1] : QChar();
        const auto value = values.constFind(number);
        if (value == values.constEnd()) continue;
        const std::optional<QString> inner = Inner(number, *value);
        if (!inner) return std::nullopt;
        message.replace(at, 2, *inner);
        if (at == 0) break;
    }
    return message;
}

} // namespace

QColor ToColor(TextView name)
{
    const QString color = ToQString(Trim(name));
    return QColor::isValidColor(color) ? QColor(color) : QColor();
}

QString Translated(TextView text)
{
    static const QSet<QString> known = [] {
        QSet<QString> all;
        for (const char* entry : kCaptionTexts) all.insert(QString::fromUtf8(entry));
        return all;
    }();
    const QString plain = ToQString(text);
    return known.contains(plain) ? QCoreApplication::translate("Logic", plain.toUtf8().constData()) : plain;
}

std::optional<QString> TranslatedMessage(const QString& text)
{
    for (const auto& texts : {kMessageTexts, kHostTexts}) {
        for (const char* entry : texts) {
            const auto found = ValuesOf(QString::fromUtf8(entry), text);
            if (found) return Filled(QCoreApplication::translate("Message", entry), *found);
        }
    }
    return std::nullopt;
}

QString TranslatedText(TextView text)
{
    if (text.empty()) return {};
    const QString plain = ToQString(text);
    const QString caption = Translated(text);
    return caption == plain ? TranslatedMessage(plain).value_or(plain) : caption;
}

QString TranslatedPlace(TextView place)
{
    constexpr TextView kOn{u" on "};
    const size_t at = place.rfind(kOn);
    if (at == TextView::npos || place.starts_with(u'/')) return ToQString(place);
    return QCoreApplication::translate("Message", "%1 on %2")
        .arg(ToQString(place.substr(0, at)), ToQString(place.substr(at + kOn.size())));
}

Translations::Translations(const QLocale& locale)
{
    LoadTranslationsResource();
    Install(qt_, locale, QLibraryInfo::path(QLibraryInfo::TranslationsPath), QStringLiteral("qtbase"));
    Install(ours_, locale, QStringLiteral(":/translations"), QStringLiteral("nibpad71"));
}

} // namespace nib
