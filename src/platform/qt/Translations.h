#pragma once
#include "base/Text.h"

#include <QLocale>
#include <QString>
#include <QTranslator>

namespace nib {

/// A text that the logic has made, in the user's language where it is one that may be translated; all others as they
/// are.
QString Translated(TextView text);

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
