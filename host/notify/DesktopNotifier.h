// Desktop notifications through org.freedesktop.Notifications: a popup per
// limit crossing, with "Disconnect" and "Open" buttons when the server draws
// actions. Each notification remembers the device it warned about, so a
// button acts on that device and no other.
#pragma once

#include <QDBusConnection>
#include <QHash>
#include <QObject>
#include <QStringList>

class DesktopNotifier : public QObject
{
    Q_OBJECT
public:
    static constexpr char ActionDisconnect[] = "disconnect";
    static constexpr char ActionOpen[] = "open";

    explicit DesktopNotifier(
        const QDBusConnection& bus = QDBusConnection::sessionBus(), QObject* parent = nullptr);

    // False (logged) when no server answers.
    bool notify(const QString& summary, const QString& body, const QString& device);
    // The server's capabilities, asked once.
    bool hasActions();

signals:
    void disconnectRequested(const QString& device);
    void openRequested();

private slots:
    void onActionInvoked(uint id, const QString& action);
    void onClosed(uint id, uint reason);

private:
    QDBusConnection m_bus;
    QHash<uint, QString> m_devices; // open notifications and their device
    int m_actions = -1; // -1: not asked yet
};
