// Which links NetworkManager calls metered, kept up to date from its signals
// on the system bus. The sampler asks snapshot() from its own thread every
// second, so the answer is a cached copy; the bus is only read here, on the
// thread that owns this object.
#pragma once

#include "LinkInfo.h"

#include <QDBusConnection>
#include <QList>
#include <QMutex>
#include <QObject>
#include <QTimer>

class QDBusMessage;
class QDBusServiceWatcher;

class MeteredLinks : public QObject
{
    Q_OBJECT
public:
    // NM_METERED: YES and GUESS_YES count as metered.
    static bool isMetered(uint nmMetered) { return nmMetered == 1 || nmMetered == 3; }

    // The system bus honours DBUS_SYSTEM_BUS_ADDRESS. Never starts
    // NetworkManager: without it the list stays empty.
    explicit MeteredLinks(
        const QDBusConnection& bus = QDBusConnection::systemBus(), QObject* parent = nullptr);
    ~MeteredLinks() override;

    // Every device with an active connection. Thread-safe.
    QList<velt::LinkInfo> snapshot() const;

signals:
    // After each refresh that changed the list (on the owner's thread).
    void changed();

private slots:
    void onPropertiesChanged(const QDBusMessage& message);
    void scheduleRefresh();

private:
    void refresh();
    void publish(const QList<velt::LinkInfo>& links);

    QDBusConnection m_bus;
    QDBusServiceWatcher* m_serviceWatcher = nullptr;
    QTimer m_refreshTimer; // coalesces bursts of signals into one refresh
    bool m_bRefreshing = false;
    bool m_bRefreshAgain = false;

    mutable QMutex m_mutex;
    QList<velt::LinkInfo> m_links;
};
