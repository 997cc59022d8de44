#pragma once
// Automation on the session bus: the object tree under /com/orlin/NibPad71. Calls arrive on the main thread through its
// event loop, those inside a dialog included.

#include "automation/AutomationObjects.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QVariant>

#include <deque>
#include <functional>
#include <optional>

namespace nib {

/// What the bus tells of its own accord. One subscription for all clients, made before any call: none can leave unseen.
class BusWatcher final : public QObject {
    Q_OBJECT

public:
    std::function<void(const QString& client)> onLeft;
    std::function<void()> onDisconnected;

public slots: // NOLINT(readability-redundant-access-specifiers): moc's own
    void OwnerChanged(const QString& name, const QString&, const QString& owner)
    {
        if (owner.isEmpty() && name.startsWith(QLatin1Char(':')) && onLeft) onLeft(name);
    }
    void Disconnected()
    {
        if (onDisconnected) onDisconnected();
    }
};

class DBusServer final : public QDBusVirtualObject, public AutomationEvents {
public:
    DBusServer();
    ~DBusServer() override;

    /// Takes the name on the bus. Without a bus, or when somebody has the name, the log says so and nothing is served.
    /// Calls wait until Ready. Both outlive what is between this and Stop.
    void Serve(Application& application, const DebugLog& log);
    void Stop();

    // AutomationEvents
    void Ready() override;
    void Quit() override;
    void Custom(TextView name) override;
    void DocumentClose(int32_t documentId) override;

    // QDBusVirtualObject
    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    struct Pending {
        QDBusMessage message;
        BusRequest request;
    };

    bool MustWait(const BusRequest& request) const;
    void RunWaiting();
    void Run(const QDBusMessage& message, const BusRequest& request);
    void Answer(const QDBusMessage& call, const BusReply& reply);
    void Flush();
    void Send(const std::string& path, const char* interface, const char* name, const QVariantList& arguments);

    QDBusConnection connection_;
    BusWatcher watcher_;
    Application* application_ = nullptr;
    std::optional<AutomationObjects> objects_;
    const DebugLog* log_ = nullptr;
    std::deque<Pending> waiting_;
    QTimer retry_;
    int64_t unflushed_ = 0;
    bool ready_ = false;
};

} // namespace nib
