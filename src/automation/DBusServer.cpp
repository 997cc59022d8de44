#include "automation/DBusServer.h"

#include "diagnostics/Guarded.h"
#include "platform/qt/QtText.h"

#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QLibrary>

#include <algorithm>
#include <cmath>
#include <limits>

namespace nib {

namespace {

constexpr int kRetryDelay = 20;
constexpr int kFlushLimit = 10000;
// Well below what a socket takes at once.
constexpr int64_t kFlushSize = int64_t{32} * 1024;
constexpr int64_t kSmallMessage = 256;
constexpr char kName[] = "com.orlin.NibPad71";
constexpr char kBus[] = "org.freedesktop.DBus";
constexpr char kBusPath[] = "/org/freedesktop/DBus";

BusValue Whole(double number)
{
    constexpr double kLeast = std::numeric_limits<int32_t>::min();
    constexpr double kMost = std::numeric_limits<int32_t>::max();
    number = std::nearbyint(number);
    if (!(number >= kLeast && number <= kMost)) return {};
    return static_cast<int32_t>(number);
}

/// A variant gives what is in it; a whole number of any width counts as one if it fits. What no member takes is
/// nothing.
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

/// Null characters go and halves of surrogate pairs are replaced: they would cost the connection.
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

QString Root()
{
    return QString::fromUtf8(kApplicationPath.data(), static_cast<qsizetype>(kApplicationPath.size()));
}

BusRequest RequestOf(const QDBusMessage& message)
{
    BusRequest request{message.service().toStdString(),   message.path().toStdString(),
                       message.interface().toStdString(), message.member().toStdString(),
                       message.signature().toStdString(), {}};
    for (const QVariant& argument : message.arguments()) request.arguments.push_back(FromBus(argument));
    return request;
}

QVariantMap MapOf(const BusReply& reply)
{
    QVariantMap map;
    for (auto& [name, value] : reply.map) map.insert(QString::fromStdString(name), ToBus(value));
    return map;
}

QDBusMessage MessageOf(const QDBusMessage& call, const BusReply& reply)
{
    switch (reply.form) {
    case BusReply::Form::Error:
        return call.createErrorReply(QString::fromStdString(reply.errorName), ToBusString(reply.errorText));
    case BusReply::Form::Map: return call.createReply(QVariant(MapOf(reply)));
    case BusReply::Form::Variant: return call.createReply(QVariant::fromValue(QDBusVariant(ToBus(reply.value))));
    case BusReply::Form::Value: break;
    }
    if (std::holds_alternative<std::monostate>(reply.value)) return call.createReply();
    return call.createReply(ToBus(reply.value));
}

/// By default libdbus stops reading while more than 63 MB of messages are at work, and Qt cannot start it again from
/// the thread on which they are done with: after one large text no call would ever arrive.
void NeverStopReading(const QDBusConnection& connection)
{
    using SetLimit = void (*)(void*, long);
    auto set = reinterpret_cast<SetLimit>(
        QLibrary::resolve(QStringLiteral("dbus-1"), 3, "dbus_connection_set_max_received_size"));
    if (set && connection.internalPointer()) set(connection.internalPointer(), std::numeric_limits<long>::max() / 2);
}

} // namespace

DBusServer::DBusServer() : connection_(QString())
{
    retry_.setInterval(kRetryDelay);
    QObject::connect(&retry_, &QTimer::timeout, this, [this] { RunWaiting(); });
}

DBusServer::~DBusServer()
{
    Stop();
}

void DBusServer::Serve(Application& application, const DebugLog& log)
{
    log_ = &log;
    connection_ = QDBusConnection::sessionBus();
    auto fails = [&](TextView why, const QDBusError& error) {
        log.Write([&] { return u"automation: " + Text(why) + u" " + ToText(error.message()); }, trace::kErrors);
        connection_ = QDBusConnection(QString());
    };
    if (!connection_.isConnected()) return fails(u"there is no session bus:", connection_.lastError());
    NeverStopReading(connection_);
    application_ = &application;
    objects_.emplace(application);
    watcher_.onLeft = [this](const QString& client) { application_->Left(client.toStdString()); };
    watcher_.onDisconnected = [this] { application_->AllLeft(); };
    connection_.connect(kBus, kBusPath, kBus, "NameOwnerChanged", &watcher_,
                        SLOT(OwnerChanged(QString, QString, QString)));
    connection_.connect(QString(), "/org/freedesktop/DBus/Local", "org.freedesktop.DBus.Local", "Disconnected",
                        &watcher_, SLOT(Disconnected()));
    connection_.registerVirtualObject(Root(), this, QDBusConnection::SubPath);
    if (connection_.registerService(kName)) return;
    QDBusError error = connection_.lastError();
    connection_.unregisterObject(Root(), QDBusConnection::UnregisterTree);
    connection_.disconnect(kBus, kBusPath, kBus, "NameOwnerChanged", &watcher_,
                           SLOT(OwnerChanged(QString, QString, QString)));
    watcher_.onLeft = nullptr;
    watcher_.onDisconnected = nullptr;
    objects_.reset();
    fails(u"somebody else has the name on the bus.", error);
}

void DBusServer::Ready()
{
    ready_ = true;
    retry_.start(); // and not from within the start itself
}

void DBusServer::Stop()
{
    if (!objects_) return;
    retry_.stop();
    waiting_.clear();
    watcher_.onLeft = nullptr;
    watcher_.onDisconnected = nullptr;
    connection_.unregisterObject(Root(), QDBusConnection::UnregisterTree);
    connection_.unregisterService(kName);
    objects_.reset();
}

// Calls

QString DBusServer::introspect(const QString&) const
{
    return {}; // asked of handleMessage first, which knows every object
}

bool DBusServer::handleMessage(const QDBusMessage& message, const QDBusConnection&)
{
    if (!objects_) return false;
    const auto take = [&] {
        BusRequest request = RequestOf(message);
        objects_->Arrived(request);
        if (!MustWait(request)) return Run(message, request);
        waiting_.push_back({message, std::move(request)});
        retry_.start();
    };
    Guarded(*log_, u"DBusServer.handleMessage", take, [](const Error&) {});
    return true;
}

bool DBusServer::MustWait(const BusRequest& request) const
{
    // What a client asks for in a row is done in that order.
    bool behind = std::any_of(waiting_.begin(), waiting_.end(),
                              [&](const Pending& pending) { return pending.request.client == request.client; });
    return !ready_ || behind || objects_->MustWait(request);
}

void DBusServer::RunWaiting()
{
    std::vector<std::string> held; // clients of which a call waits still
    for (size_t i = 0; ready_ && objects_ && i < waiting_.size();) {
        const BusRequest& request = waiting_[i].request;
        bool behind = std::find(held.begin(), held.end(), request.client) != held.end();
        if (behind || objects_->MustWait(request)) {
            if (!behind) held.push_back(request.client);
            ++i;
            continue;
        }
        Pending next = std::move(waiting_[i]);
        waiting_.erase(waiting_.begin() + static_cast<std::ptrdiff_t>(i));
        Guarded(
            *log_, u"DBusServer.RunWaiting", [&] { Run(next.message, next.request); }, [](const Error&) {});
        // A dialog in that call may have let this function in again: the queue is another one now.
        held.clear();
        i = 0;
    }
    if (waiting_.empty()) retry_.stop();
}

void DBusServer::Run(const QDBusMessage& message, const BusRequest& request)
{
    const BusReply reply = objects_->Handle(request);
    if (message.isReplyRequired() && objects_) Answer(message, reply);
}

void DBusServer::Answer(const QDBusMessage& call, const BusReply& reply)
{
    connection_.send(MessageOf(call, reply));
    unflushed_ += kSmallMessage;
    if (auto* text = std::get_if<Text>(&reply.value)) unflushed_ += static_cast<int64_t>(text->size());
    if (reply.form == BusReply::Form::Map || unflushed_ > kFlushSize) Flush();
}

/// Qt goes on writing what the socket did not take at once only when the same thread sends or waits again.
void DBusServer::Flush()
{
    unflushed_ = 0;
    connection_.call(QDBusMessage::createMethodCall(kBus, kBusPath, kBus, "GetId"), QDBus::Block, kFlushLimit);
}

// Events

void DBusServer::Send(const std::string& path, const char* interface, const char* name, const QVariantList& arguments)
{
    if (!objects_) return;
    QDBusMessage signal = QDBusMessage::createSignal(QString::fromStdString(path), QString::fromLatin1(interface),
                                                     QString::fromLatin1(name));
    signal.setArguments(arguments);
    connection_.send(signal);
}

void DBusServer::Quit()
{
    Send(std::string(kApplicationPath), ApplicationInterface().name, "Quit", {});
    if (objects_) Flush(); // the process ends soon
}

void DBusServer::Custom(TextView name)
{
    Send(std::string(kApplicationPath), ApplicationInterface().name, "Custom", {ToBusString(name)});
}

void DBusServer::DocumentClose(int32_t documentId)
{
    Send(PathOf(documentId).path, DocumentInterface().name, "DocumentClose", {});
}

} // namespace nib
