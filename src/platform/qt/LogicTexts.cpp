#include "platform/qt/LogicTexts.h"

#include "platform/qt/QtText.h"

#include <QCoreApplication>

#include <algorithm>
#include <iterator>

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
};

} // namespace

QString Translated(TextView text)
{
    const QString plain = ToQString(text);
    const bool known = std::any_of(std::begin(kTexts), std::end(kTexts),
                                   [&](const char* entry) { return plain == QLatin1String(entry); });
    return known ? QCoreApplication::translate("Logic", plain.toLatin1().constData()) : plain;
}

} // namespace nib
