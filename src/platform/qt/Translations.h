#pragma once
#include <QLocale>
#include <QTranslator>

namespace nib {

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
