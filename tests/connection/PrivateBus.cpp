#include "PrivateBus.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

namespace {

// Services are activated on demand only from the test's own directory.
constexpr char kConfig[] = R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>system</type>
  <listen>unix:dir=%1</listen>
  <servicedir>%2</servicedir>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow user="*"/>
    <allow own="*"/>
    <allow send_destination="*"/>
    <allow receive_sender="*"/>
  </policy>
</busconfig>
)";

} // namespace

PrivateBus::~PrivateBus()
{
    stop();
}

QString PrivateBus::daemonPath()
{
    return QStandardPaths::findExecutable(QStringLiteral("dbus-daemon"));
}

QString PrivateBus::servicesDir() const
{
    return m_dir.filePath(QStringLiteral("services"));
}

bool PrivateBus::start(QString& error)
{
    if (!m_dir.isValid()) {
        error = QStringLiteral("no temporary directory: %1").arg(m_dir.errorString());
        return false;
    }
    if (!QDir(m_dir.path()).mkpath(QStringLiteral("services"))) {
        error = QStringLiteral("cannot create %1").arg(servicesDir());
        return false;
    }
    const QString configPath = m_dir.filePath(QStringLiteral("bus.conf"));
    QFile config(configPath);
    if (!config.open(QIODevice::WriteOnly)
        || config.write(QString::fromLatin1(kConfig).arg(m_dir.path(), servicesDir()).toUtf8()) < 0) {
        error = QStringLiteral("cannot write %1: %2").arg(configPath, config.errorString());
        return false;
    }
    config.close();

    m_daemon.setProgram(daemonPath());
    m_daemon.setArguments({ QStringLiteral("--config-file=") + configPath, QStringLiteral("--nofork"),
        QStringLiteral("--print-address") });
    m_daemon.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_daemon.start();
    if (!m_daemon.waitForStarted(5000)) {
        error = QStringLiteral("dbus-daemon did not start: %1").arg(m_daemon.errorString());
        return false;
    }
    const QDeadlineTimer deadline(10000);
    while (!m_daemon.canReadLine() && !deadline.hasExpired()) {
        if (!m_daemon.waitForReadyRead(int(deadline.remainingTime())))
            break;
    }
    m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
    if (m_address.isEmpty()) {
        error = QStringLiteral("dbus-daemon printed no address");
        stop();
        return false;
    }
    return true;
}

void PrivateBus::stop()
{
    if (m_daemon.state() == QProcess::NotRunning)
        return;
    m_daemon.terminate();
    if (!m_daemon.waitForFinished(5000)) {
        m_daemon.kill();
        m_daemon.waitForFinished(5000);
    }
}
