#pragma once
// Between the program's text and Qt's: both are UTF-16, so a conversion is one copy and a view is free.

#include "base/Text.h"

#include <QColor>
#include <QLocale>
#include <QString>
#include <QTranslator>

#include <optional>

namespace nib {

inline QString ToQString(TextView text)
{
    return QString(reinterpret_cast<const QChar*>(text.data()), static_cast<qsizetype>(text.size()));
}

inline Text ToText(QStringView text)
{
    return Text(text.utf16(), static_cast<size_t>(text.size()));
}

/// A window's title as it reads: "[*]" has a meaning of its own in Qt's titles; doubled it is plain text.
inline QString PlainTitle(TextView title)
{
    return ToQString(title).replace(QLatin1String("[*]"), QLatin1String("[*][*]"));
}

/// Lives no longer than `text`.
inline TextView ViewOf(QStringView text)
{
    return TextView(text.utf16(), static_cast<size_t>(text.size()));
}

/// By its name or as #RRGGBB; not valid for anything else.
QColor ToColor(TextView name);

/// A text that the logic has made, in the user's language where it is one that may be translated; all others as they
/// are.
QString Translated(TextView text);
/// The same for a message with names and numbers in it; nothing where it, or a message in it, cannot be translated.
std::optional<QString> TranslatedMessage(const QString& text);
/// Of a text that may be of either kind.
QString TranslatedText(TextView text);
/// Of an account and its host; folders and names stay as they are.
QString TranslatedPlace(TextView place);

/// The user's language for the texts of the program that may be translated, and for Qt's own dialogs. In force while it
/// lives, for windows that are made afterwards.
class Translations {
public:
    explicit Translations(const QLocale& locale = QLocale());

private:
    QTranslator qt_;
    QTranslator ours_;
};

} // namespace nib
