// Where the Linux backend's readings come from: the kernel's per-namespace
// tables under /proc (byte counters, routes, boot id), the interfaces' link
// state and speed. The roots and the link state can be replaced by a test.
//
// On the real system the counter table stays open and is re-read in place,
// and everything else (link state, routes, speeds) is cached until the
// kernel announces a change of links, addresses or routes on a netlink
// socket, so that a quiet sample costs two system calls.
#pragma once

#include "veltsdk.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>

#include <functional>

namespace velt {

struct DeviceCounters
{
    QString name;
    quint64 received = 0;
    quint64 sent = 0;
};

struct LinkState
{
    bool exists = false;
    bool up = false;
    bool running = false; // carrier, or the link is otherwise operational
    bool hasAddress = false; // a routable IPv4 or IPv6 address
    quint32 ifindex = 0;

    bool connected() const { return exists && up && running && hasAddress; }
};

// The device lines of net/dev; lines that do not parse are skipped.
VELTSDK_EXPORT QList<DeviceCounters> parseNetDev(const QByteArray& text, int* malformedLines = nullptr);
// The interface of the default route with the lowest metric, IPv4 first,
// else IPv6 (mobile networks may be IPv6-only); empty when there is none.
VELTSDK_EXPORT QString parseDefaultRoute(const QByteArray& ipv4Routes, const QByteArray& ipv6Routes);
// wwan*/ww* (modems), ppp* (dial-up and modems), usb* (tethering), rmnet*.
VELTSDK_EXPORT bool isMobileBroadbandName(const QString& name);
// From getifaddrs, which like /proc/self/net follows the process's namespace.
VELTSDK_EXPORT LinkState systemLinkState(const QString& name);

class VELTSDK_EXPORT NetSource
{
public:
    using LinkStateFn = std::function<LinkState(const QString& name)>;

    // procRoot is a directory laid out like /proc: self/net/dev,
    // self/net/route, self/net/ipv6_route, sys/kernel/random/boot_id.
    // sysRoot is laid out like /sys: class/net/<name>/speed.
    explicit NetSource(QString procRoot = QStringLiteral("/proc"), LinkStateFn linkState = {},
        QString sysRoot = QStringLiteral("/sys"));
    ~NetSource();
    NetSource(const NetSource&) = delete;
    NetSource& operator=(const NetSource&) = delete;

    bool isReadable() const;
    // False (with one warning per failure spell) when net/dev cannot be read.
    // On the real system, between link changes, only the counters of the
    // interfaces last passed to setWanted() are current: they are read from
    // sysfs, which costs far less than the whole table.
    bool readDevices(QList<DeviceCounters>& devices);
    void setWanted(const QStringList& names);
    // Changes whenever the set of interfaces may have changed.
    quint64 devicesVersion() const { return m_devicesVersion; }
    // Whether links, addresses or routes may have changed since the last
    // call; always true where no change notification is available.
    bool linksChanged();
    struct RemovedLink
    {
        QString name;
        quint32 ifindex = 0;
        quint64 received = 0;
        quint64 sent = 0;
    };
    // Links removed since the last call, with their last counters (real
    // system only).
    QList<RemovedLink> takeRemovedLinks();
    QString defaultRouteInterface();
    LinkState linkState(const QString& name);
    // What the link can carry, from its reported speed; 0 when unknown.
    quint64 linkBytesPerSecond(const QString& name);
    // Identifies this boot, so counters of an earlier boot are never compared.
    QByteArray bootId() const;

private:
    QByteArray readFile(const QString& relativePath) const;
    bool readTable(QList<DeviceCounters>& devices);
    void noteRemovedLinks(const char* data, size_t size);
    bool readWanted();
    void forget();

    struct CounterFiles
    {
        int received = -1;
        int sent = -1;
    };

    QString m_root;
    QString m_sysRoot;
    LinkStateFn m_linkState;
    bool m_cached = false; // real system: answers cached until netlink says otherwise
    int m_devFd = -1;
    int m_netlinkFd = -1;
    QByteArray m_buffer;
    QList<DeviceCounters> m_devices; // as of the last full read, the wanted ones kept current
    bool m_devicesKnown = false;
    quint64 m_devicesVersion = 0;
    QStringList m_wanted;
    QHash<QString, CounterFiles> m_counterFiles;
    QList<RemovedLink> m_removed;
    QString m_defaultRoute;
    bool m_defaultRouteKnown = false;
    QHash<QString, LinkState> m_linkStates;
    QHash<QString, quint64> m_speeds;
    bool m_warnedUnreadable = false;
    bool m_warnedMalformed = false;
};

// The links that the RTM_DELLINK messages of one netlink datagram remove, with
// their last counters; other messages, and links without a name or counters,
// are skipped. data must be aligned as a netlink header.
VELTSDK_EXPORT QList<NetSource::RemovedLink> parseRemovedLinks(const char* data, size_t size);

} // namespace velt
