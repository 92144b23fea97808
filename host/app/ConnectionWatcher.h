// Follows the SDK's connection state through the host's own statistics
// callback and reports each change on the GUI thread.
#pragma once

#include <QObject>

class ConnectionWatcher : public QObject
{
    Q_OBJECT
public:
    explicit ConnectionWatcher(QObject* parent = nullptr);
    ~ConnectionWatcher() override;

    // Registers with the SDK; false when the SDK refused. One watcher at a time.
    bool start();
    // Once this returns the callback no longer runs.
    void stop();

signals:
    // 1 connected, 0 disconnected; emitted on the first tick and on every change.
    void statusChanged(unsigned int status);

private:
    static int onSdkEvent(int event, void* data);
    void setConnected(bool connected);

    bool m_bRegistered = false;
    int m_iLastStatus = -1;
};
