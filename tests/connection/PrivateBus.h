// A message bus of the test's own: a dbus-daemon child process whose policy
// lets anyone own any name, so a test can stand in for system services.
#pragma once

#include <QDBusConnection>
#include <QDBusError>
#include <QDeadlineTimer>
#include <QDir>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

class PrivateBus
{
public:
    ~PrivateBus() { stop(); }

    // Empty when dbus-daemon is not installed.
    static QString daemonPath() { return QStandardPaths::findExecutable(QStringLiteral("dbus-daemon")); }
    QString address() const { return m_address; }
    // Where *.service files for on-demand activation go: only the test's own.
    QString servicesDir() const { return m_dir.filePath(QStringLiteral("services")); }

    // Starts the daemon; on failure returns false and says why in error.
    bool start(QString& error)
    {
        const QString configPath = m_dir.filePath(QStringLiteral("bus.conf"));
        QFile config(configPath);
        if (!m_dir.isValid() || !QDir().mkpath(servicesDir()) || !config.open(QIODevice::WriteOnly)
            || config.write(QStringLiteral(
                   R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig><type>system</type><listen>unix:dir=%1</listen><servicedir>%2</servicedir><auth>EXTERNAL</auth>
  <policy context="default"><allow user="*"/><allow own="*"/><allow send_destination="*"/>
  <allow receive_sender="*"/></policy></busconfig>)")
                                .arg(m_dir.path(), servicesDir())
                                .toUtf8())
                < 0) {
            error = QStringLiteral("cannot write %1: %2").arg(configPath, config.errorString());
            return false;
        }
        config.close();
        m_daemon.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_daemon.start(daemonPath(), { "--config-file=" + configPath, "--nofork", "--print-address" });
        if (m_daemon.waitForStarted(5000)) {
            const QDeadlineTimer deadline(10000);
            while (!m_daemon.canReadLine() && m_daemon.waitForReadyRead(int(deadline.remainingTime()))) { }
        }
        m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
        if (m_address.isEmpty())
            error = QStringLiteral("dbus-daemon printed no address: %1").arg(m_daemon.errorString());
        return !m_address.isEmpty();
    }

    // Starts the daemon as this process's system bus, with service on demand
    // only touching activationMarker(): a test can tell that nothing started it.
    bool startAsSystemBus(const QString& service, QString& error)
    {
        if (!start(error))
            return false;
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", m_address.toUtf8());
        QFile file(servicesDir() + QLatin1Char('/') + service + QStringLiteral(".service"));
        if (!file.open(QIODevice::WriteOnly)
            || file.write(QStringLiteral("[D-BUS Service]\nName=%1\nExec=%2 %3\n")
                              .arg(service, QStandardPaths::findExecutable(QStringLiteral("touch")),
                                  activationMarker())
                              .toUtf8())
                < 0) {
            error = QStringLiteral("cannot write %1: %2").arg(file.fileName(), file.errorString());
            return false;
        }
        if (!QDBusConnection::systemBus().isConnected()) {
            error = QDBusConnection::systemBus().lastError().message();
            return false;
        }
        return true;
    }
    QString activationMarker() const { return m_dir.filePath(QStringLiteral("activated")); }

    void stop()
    {
        if (m_daemon.state() == QProcess::NotRunning)
            return;
        m_daemon.terminate();
        if (!m_daemon.waitForFinished(5000)) {
            m_daemon.kill();
            m_daemon.waitForFinished(5000);
        }
    }

private:
    QTemporaryDir m_dir;
    QProcess m_daemon;
    QString m_address;
};
