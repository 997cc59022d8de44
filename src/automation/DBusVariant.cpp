#include "automation/DBusVariant.h"

#include "base/Error.h"
#include "platform/qt/QtText.h"

#include <QDBusObjectPath>
#include <QDBusVariant>

#include <cmath>
#include <limits>

namespace nib {

namespace {

// A message holds 128 MiB at most; a longer one would cost the connection.
constexpr int64_t kLongestText = 127 * 1024 * 1024;
constexpr char16_t kReplacement = u'\uFFFD';

bool IsHigh(char16_t unit)
{
    return (unit & 0xFC00) == 0xD800;
}

bool IsLow(char16_t unit)
{
    return (unit & 0xFC00) == 0xDC00;
}

struct Measure {
    int64_t bytes = 0; ///< as UTF-8
    bool hasNull = false;
    bool lone = false; ///< half of a surrogate pair
};

Measure MeasureOf(TextView text)
{
    Measure measure;
    for (size_t i = 0; i < text.size(); ++i) {
        char16_t unit = text[i];
        if (unit < 0x80) {
            measure.hasNull |= unit == 0;
            ++measure.bytes;
        } else if (unit < 0x800) {
            measure.bytes += 2;
        } else if (IsHigh(unit) && i + 1 < text.size() && IsLow(text[i + 1])) {
            measure.bytes += 4;
            ++i;
        } else {
            measure.lone |= IsHigh(unit) || IsLow(unit);
            measure.bytes += 3;
        }
    }
    return measure;
}

QString WithoutLoneSurrogates(TextView text)
{
    Text clean(text);
    for (size_t i = 0; i < clean.size(); ++i) {
        if (IsHigh(clean[i]) && i + 1 < clean.size() && IsLow(clean[i + 1]))
            ++i;
        else if (IsHigh(clean[i]) || IsLow(clean[i]))
            clean[i] = kReplacement;
    }
    return ToQString(clean);
}

QString ToBusString(TextView text)
{
    Measure measure = MeasureOf(text);
    if (measure.hasNull)
        throw Error{error_number::kInvalidCall, u"The text holds a null character, which the bus cannot carry."};
    if (measure.bytes > kLongestText) throw Error{error_number::kOutOfMemory, u"The text is too long for one message."};
    return measure.lone ? WithoutLoneSurrogates(text) : ToQString(text);
}

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

QString ToBusMessage(TextView text)
{
    return WithoutLoneSurrogates(text).remove(QChar(u'\0'));
}

} // namespace nib
