#include "ConnectionWatcher.h"

#include "HostIds.h"
#include "veltsdk.h"

#include <QMetaObject>
#include <QPointer>

#include <atomic>

namespace {
// The SDK calls a plain function, so the watcher is found through this.
std::atomic<ConnectionWatcher*> s_watcher { nullptr };
} // namespace

ConnectionWatcher::ConnectionWatcher(QObject* parent)
    : QObject(parent)
{ }

ConnectionWatcher::~ConnectionWatcher()
{
    stop();
}

bool ConnectionWatcher::start()
{
    if (m_bRegistered)
        return true;
    ConnectionWatcher* expected = nullptr;
    if (!s_watcher.compare_exchange_strong(expected, this))
        return false;
    if (VELT_Statistics_RegisterStatisticsCallbackEvent(&ConnectionWatcher::onSdkEvent) != 0) {
        s_watcher = nullptr;
        return false;
    }
    m_bRegistered = true;
    return true;
}

void ConnectionWatcher::stop()
{
    if (!m_bRegistered)
        return;
    VELT_Statistics_UnRegisterStatisticsCallbackEvent(&ConnectionWatcher::onSdkEvent);
    s_watcher = nullptr;
    m_bRegistered = false;
}

// Runs on the SDK's thread: read the byte here, act on the GUI thread.
int ConnectionWatcher::onSdkEvent(int event, void* data)
{
    ConnectionWatcher* watcher = s_watcher.load();
    if (event != VELT_EVENT_STATISTICS_CHANGED || !data || !watcher)
        return 0;
    const bool connected = *static_cast<const unsigned char*>(data) != 0;
    QMetaObject::invokeMethod(
        watcher, [watcher, connected] { watcher->setConnected(connected); }, Qt::QueuedConnection);
    return 0;
}

void ConnectionWatcher::setConnected(bool connected)
{
    const int status = connected ? int(HostIds::StatusConnected) : int(HostIds::StatusDisconnected);
    if (status == m_iLastStatus)
        return;
    m_iLastStatus = status;
    emit statusChanged(unsigned(status));
}
