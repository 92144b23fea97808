// Disconnects through NetworkManager on the system bus: the interface's
// device is looked up by its IP interface name and told to disconnect.
#pragma once

#include "ConnectionControl.h"

#include <QDBusConnection>

class QDBusPendingCall;
class QDBusPendingCallWatcher;

class NetworkManagerControl final : public ConnectionControl
{
    Q_OBJECT
public:
    // Long enough for a busy NetworkManager, short enough that a hung one
    // is reported while the user still remembers asking.
    static constexpr int DefaultTimeoutMs = 5000;

    // The system bus honours DBUS_SYSTEM_BUS_ADDRESS.
    explicit NetworkManagerControl(const QDBusConnection& bus = QDBusConnection::systemBus(),
        int timeoutMs = DefaultTimeoutMs, QObject* parent = nullptr);
    ~NetworkManagerControl() override;

    // Asks the bus whether NetworkManager owns its name; blocks for at most the timeout.
    bool canDisconnect() const override;
    void disconnectInterface(const QString& interfaceName) override;

    static QString notRunningMessage();
    static QString noBusMessage();

private:
    QDBusPendingCallWatcher* callAsync(
        const QString& path, const QString& interface, const QString& method, const QVariantList& arguments);
    void onDeviceFound(QDBusPendingCallWatcher* watcher, const QString& interfaceName);
    void onDisconnectReplied(QDBusPendingCallWatcher* watcher, const QString& interfaceName);
    void fail(const QString& interfaceName, const QString& step, const QString& errorName,
        const QString& errorMessage);

    QDBusConnection m_bus;
    int m_iTimeoutMs;
};
