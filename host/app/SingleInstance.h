// One window per user: a second start hands over to the running instance
// through a local socket in the runtime folder, asking it to come forward.
#pragma once

#include <QLocalServer>
#include <QObject>

class SingleInstance : public QObject
{
    Q_OBJECT
public:
    // $XDG_RUNTIME_DIR/netinfo-<user>.socket; the user name keeps a shared
    // fallback folder apart.
    static QString socketName();

    // Asks a running instance to show its window; true when one took it.
    static bool activateRunning(const QString& name = socketName(), int timeoutMs = 2000);

    explicit SingleInstance(QObject* parent = nullptr);
    // Call while holding the instance lock: a stale socket is replaced.
    bool listen(const QString& name = socketName());

signals:
    void showRequested();

private:
    QLocalServer m_server;
};
