#include "NetSource.h"

#include "LinuxLog.h"

#include <QFile>

#include <algorithm>
#include <climits>
#include <tuple>
#include <utility>

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>
#include <sys/socket.h>

namespace velt {

namespace {
constexpr unsigned kRouteUp = 0x0001;     // RTF_UP
constexpr unsigned kRouteReject = 0x0200; // RTF_REJECT: the kernel's "unreachable" placeholders

bool parseHex(const QByteArray& field, quint64& value)
{
    bool ok = false;
    value = field.toULongLong(&ok, 16);
    return ok;
}
} // namespace

QList<DeviceCounters> parseNetDev(const QByteArray& text, int* malformedLines)
{
    QList<DeviceCounters> devices;
    int malformed = 0;
    const QList<QByteArray> lines = text.split('\n');
    for (const QByteArray& line : lines) {
        const int colon = line.indexOf(':');
        if (colon < 0)
            continue; // the two header lines and the empty last one
        const QByteArray name = line.left(colon).trimmed();
        const QList<QByteArray> fields = line.mid(colon + 1).simplified().split(' ');
        bool receivedOk = false;
        bool sentOk = false;
        DeviceCounters device;
        if (fields.size() >= 16) {
            device.received = fields.at(0).toULongLong(&receivedOk);
            device.sent = fields.at(8).toULongLong(&sentOk);
        }
        if (name.isEmpty() || !receivedOk || !sentOk) {
            ++malformed;
            continue;
        }
        device.name = QString::fromUtf8(name);
        devices.append(device);
    }
    if (malformedLines)
        *malformedLines = malformed;
    return devices;
}

QString parseDefaultRoute(const QByteArray& ipv4Routes, const QByteArray& ipv6Routes)
{
    QByteArray best;
    quint64 bestMetric = ULLONG_MAX;
    auto consider = [&](const QByteArray& name, quint64 flags, quint64 metric) {
        if (name.isEmpty() || name == "lo" || !(flags & kRouteUp) || (flags & kRouteReject))
            return;
        if (best.isEmpty() || metric < bestMetric) {
            best = name;
            bestMetric = metric;
        }
    };

    // Iface Destination Gateway Flags RefCnt Use Metric Mask ...; hex fields.
    for (const QByteArray& line : ipv4Routes.split('\n')) {
        const QList<QByteArray> f = line.simplified().split(' ');
        quint64 destination, flags, mask;
        if (f.size() < 8 || !parseHex(f.at(1), destination) || !parseHex(f.at(3), flags) || !parseHex(f.at(7), mask))
            continue;
        bool metricOk = false;
        const quint64 metric = f.at(6).toULongLong(&metricOk);
        if (metricOk && destination == 0 && mask == 0)
            consider(f.at(0), flags, metric);
    }
    if (!best.isEmpty())
        return QString::fromUtf8(best);

    // destination prefix-length source prefix-length next-hop metric refcnt use flags iface
    for (const QByteArray& line : ipv6Routes.split('\n')) {
        const QList<QByteArray> f = line.simplified().split(' ');
        quint64 prefix, metric, flags;
        if (f.size() < 10 || !parseHex(f.at(1), prefix) || !parseHex(f.at(5), metric) || !parseHex(f.at(8), flags))
            continue;
        if (prefix == 0 && f.at(0).count('0') == f.at(0).size())
            consider(f.at(9), flags, metric);
    }
    return QString::fromUtf8(best);
}

bool isMobileBroadbandName(const QString& name)
{
    for (const char* prefix : {"ww", "ppp", "usb", "rmnet"}) {
        if (name.startsWith(QLatin1String(prefix)))
            return true;
    }
    return false;
}

QString chooseInterface(const QString& fixed, const QList<InterfaceCandidate>& present, const QString& defaultRoute)
{
    if (!fixed.isEmpty())
        return fixed;
    QList<InterfaceCandidate> mobile;
    for (const InterfaceCandidate& candidate : present) {
        if (isMobileBroadbandName(candidate.name))
            mobile.append(candidate);
    }
    if (mobile.isEmpty())
        return defaultRoute;
    auto rank = [&defaultRoute](const InterfaceCandidate& c) {
        return std::make_tuple(!c.connected, c.name != defaultRoute, c.name);
    };
    return std::min_element(mobile.cbegin(), mobile.cend(),
                            [&rank](const auto& a, const auto& b) { return rank(a) < rank(b); })
        ->name;
}

LinkState systemLinkState(const QString& name)
{
    LinkState state;
    const QByteArray wanted = name.toUtf8();
    ifaddrs* list = nullptr;
    if (getifaddrs(&list) != 0)
        return state;
    for (const ifaddrs* entry = list; entry; entry = entry->ifa_next) {
        if (!entry->ifa_name || wanted != entry->ifa_name)
            continue;
        state.exists = true;
        state.up = entry->ifa_flags & IFF_UP;
        state.running = entry->ifa_flags & IFF_RUNNING;
        if (!entry->ifa_addr)
            continue;
        if (entry->ifa_addr->sa_family == AF_INET) {
            state.hasAddress = true;
        } else if (entry->ifa_addr->sa_family == AF_INET6) {
            // A link-local address alone does not reach the network.
            const auto* address = reinterpret_cast<const sockaddr_in6*>(entry->ifa_addr);
            if (!IN6_IS_ADDR_LINKLOCAL(&address->sin6_addr))
                state.hasAddress = true;
        }
    }
    freeifaddrs(list);
    if (state.exists)
        state.ifindex = if_nametoindex(wanted.constData());
    return state;
}

NetSource::NetSource(QString procRoot, LinkStateFn linkState)
    : m_root(std::move(procRoot))
    , m_linkState(linkState ? std::move(linkState) : LinkStateFn(systemLinkState))
{
}

QByteArray NetSource::readFile(const QString& relativePath) const
{
    QFile file(m_root + QLatin1Char('/') + relativePath);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

bool NetSource::isReadable() const
{
    return QFile::exists(m_root + QStringLiteral("/self/net/dev"));
}

bool NetSource::readDevices(QList<DeviceCounters>& devices)
{
    QFile file(m_root + QStringLiteral("/self/net/dev"));
    if (!file.open(QIODevice::ReadOnly)) {
        if (!std::exchange(m_warnedUnreadable, true))
            qCWarning(lcLinux, "LinuxBackend: cannot read interface counters from %s: %s",
                      qUtf8Printable(file.fileName()), qUtf8Printable(file.errorString()));
        return false;
    }
    m_warnedUnreadable = false;
    int malformed = 0;
    devices = parseNetDev(file.readAll(), &malformed);
    if (malformed > 0 && !std::exchange(m_warnedMalformed, true))
        qCWarning(lcLinux, "LinuxBackend: skipped %d unreadable line(s) of %s", malformed,
                  qUtf8Printable(file.fileName()));
    return true;
}

QString NetSource::defaultRouteInterface() const
{
    return parseDefaultRoute(readFile(QStringLiteral("self/net/route")), readFile(QStringLiteral("self/net/ipv6_route")));
}

LinkState NetSource::linkState(const QString& name) const
{
    return name.isEmpty() ? LinkState() : m_linkState(name);
}

QByteArray NetSource::bootId() const
{
    return readFile(QStringLiteral("sys/kernel/random/boot_id")).trimmed();
}

} // namespace velt
