// Answers what the host asks NetworkManager, records the Disconnect calls
// per device, and refuses or hangs when a test says so.
#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusObjectPath>
#include <QMap>
#include <QObject>

class StandInDevice : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.NetworkManager.Device")
public:
    static constexpr char Hang[] = "hang"; // as errorName: never answer

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

public slots:
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
