#pragma once
#include <QObject>
#include <QString>

#include <functional>

namespace nib {

/// What the bus tells of its own accord. One subscription for all clients, made before any call: none can leave unseen.
class BusWatcher final : public QObject {
    Q_OBJECT

public:
    std::function<void(const QString& client)> onLeft;
    std::function<void()> onDisconnected;

public slots:
    void OwnerChanged(const QString& name, const QString&, const QString& owner)
    {
        if (owner.isEmpty() && name.startsWith(QLatin1Char(':')) && onLeft) onLeft(name);
    }
    void Disconnected()
    {
        if (onDisconnected) onDisconnected();
    }
};

} // namespace nib
