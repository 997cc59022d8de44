#pragma once
#include "base/Text.h"

#include <QString>

namespace nib {

inline QString ToQString(TextView text)
{
    return QString(reinterpret_cast<const QChar*>(text.data()), static_cast<qsizetype>(text.size()));
}

inline Text FromQString(const QString& text)
{
    return Text(reinterpret_cast<const char16_t*>(text.utf16()), static_cast<size_t>(text.size()));
}

} // namespace nib
