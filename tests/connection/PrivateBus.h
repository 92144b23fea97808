// A message bus of the test's own: a dbus-daemon child process whose policy
// lets anyone own any name, so a test can stand in for system services.
#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

class PrivateBus
{
public:
    PrivateBus() = default;
    ~PrivateBus();
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    static QString daemonPath(); // empty when dbus-daemon is not installed

    // Starts the daemon; on failure returns false and says why in error.
    bool start(QString& error);
    void stop();
    QString address() const { return m_address; }
    // Where *.service files for on-demand activation go.
    QString servicesDir() const;

private:
    QTemporaryDir m_dir;
    QProcess m_daemon;
    QString m_address;
};
