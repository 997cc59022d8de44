#include "automation/DBusVariant.h"

#include "platform/qt/QtText.h"

#include <QDBusObjectPath>
#include <QDBusVariant>

#include <cmath>
#include <limits>

namespace nib {

namespace {

BusValue Whole(double number)
{
    constexpr double kLeast = std::numeric_limits<int32_t>::min();
    constexpr double kMost = std::numeric_limits<int32_t>::max();
    number = std::nearbyint(number);
    if (!(number >= kLeast && number <= kMost)) return {};
    return static_cast<int32_t>(number);
}

} // namespace

BusValue FromBus(const QVariant& value)
{
    if (value.metaType() == QMetaType::fromType<QDBusVariant>()) return FromBus(value.value<QDBusVariant>().variant());
    if (value.metaType() == QMetaType::fromType<QDBusObjectPath>())
        return ObjectPath{value.value<QDBusObjectPath>().path().toStdString()};
    switch (value.typeId()) {
    case QMetaType::Bool: return value.toBool();
    case QMetaType::QString: return ToText(value.toString());
    case QMetaType::Int: return static_cast<int32_t>(value.toInt());
    case QMetaType::UChar:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double: return Whole(value.toDouble());
    default: return {};
    }
}

QVariant ToBus(const BusValue& value)
{
    if (auto* flag = std::get_if<bool>(&value)) return *flag;
    if (auto* number = std::get_if<int32_t>(&value)) return *number;
    if (auto* text = std::get_if<Text>(&value)) return ToBusString(*text);
    if (auto* object = std::get_if<ObjectPath>(&value))
        return QVariant::fromValue(QDBusObjectPath(QString::fromStdString(object->path)));
    if (auto* objects = std::get_if<ObjectPaths>(&value)) {
        QList<QDBusObjectPath> paths;
        for (const ObjectPath& object : *objects) paths.append(QDBusObjectPath(QString::fromStdString(object.path)));
        return QVariant::fromValue(paths);
    }
    return {};
}

QString ToBusString(TextView text)
{
    QString whole = ToQString(text).remove(QChar::Null);
    QChar* const units = whole.data();
    for (qsizetype i = 0; i < whole.size(); ++i) {
        if (units[i].isHighSurrogate() && i + 1 < whole.size() && units[i + 1].isLowSurrogate())
            ++i;
        else if (units[i].isSurrogate())
            units[i] = QChar::ReplacementCharacter;
    }
    return whole;
}

} // namespace nib
