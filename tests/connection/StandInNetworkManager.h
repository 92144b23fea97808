// Answers what the host asks NetworkManager, records the Disconnect calls
// per device, and refuses or hangs when a test says so. Register with
// ExportAllProperties to serve the properties a watcher reads.
#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QMap>
#include <QObject>

// Sends org.freedesktop.DBus.Properties.PropertiesChanged as NetworkManager does.
inline bool announceChanged(
    QDBusConnection bus, const QString& path, const QString& interface, const QVariantMap& changed)
{
    QDBusMessage signal = QDBusMessage::createSignal(
        path, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("PropertiesChanged"));
    signal << interface << changed << QStringList();
    return bus.send(signal);
}

class StandInActive : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.NetworkManager.Connection.Active")
    Q_PROPERTY(QString Id MEMBER id)
public:
    QString id;
};

class StandInDevice : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.NetworkManager.Device")
    Q_PROPERTY(QString Interface MEMBER interfaceName)
    Q_PROPERTY(QString IpInterface MEMBER ipInterface)
    Q_PROPERTY(QDBusObjectPath ActiveConnection MEMBER activeConnection)
    Q_PROPERTY(uint Metered MEMBER metered)
public:
    static constexpr char Hang[] = "hang"; // as errorName: never answer

    QString interfaceName;
    QString ipInterface;
    QDBusObjectPath activeConnection { QStringLiteral("/") };
    uint metered = 0; // NM_METERED

    int calls = 0;
    QString errorName; // answered instead of success when set

public slots:
    void Disconnect()
    {
        ++calls;
        if (errorName == QLatin1String(Hang))
            setDelayedReply(true);
        else if (!errorName.isEmpty())
            sendErrorReply(errorName, QStringLiteral("the stand-in refuses"));
    }
};

class StandInManager : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.NetworkManager")
public:
    QMap<QString, QString> devicePaths; // IP interface name -> device object path
    QList<QDBusObjectPath> devices; // what GetDevices answers

signals:
    void DeviceRemoved(const QDBusObjectPath& device);

public slots:
    QList<QDBusObjectPath> GetDevices() { return devices; }

    QDBusObjectPath GetDeviceByIpIface(const QString& iface)
    {
        if (!devicePaths.contains(iface)) {
            sendErrorReply(QStringLiteral("org.freedesktop.NetworkManager.UnknownDevice"),
                QStringLiteral("No device found for the requested iface."));
            return {};
        }
        return QDBusObjectPath(devicePaths.value(iface));
    }
};
